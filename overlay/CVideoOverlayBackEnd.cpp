/* SPDX-License-Identifier: MIT */
#include "overlay/CVideoOverlayBackEnd.h"

#include "fpga/font.h"
#include "fpga/overlay_switches.h"
#include "fpga/text_layer.h"
#include "hw/video_geometry.h"
#include "overlay/Alphabets.h"
#include "overlay/CIso8859_16Codec.h"
#include "overlay/COverlayText.h"

#include <QTextCodec>
#include <QTextEncoder>

#include <algorithm>
#include <cstdio>

namespace
{

const unsigned short COLUMNS = VIDEO_TEXT_COLUMNS;
const unsigned short ROWS = VIDEO_TEXT_ROWS;

const unsigned char BLANK = 0x20;
const char SUBSTITUTE = '?';
const unsigned int TRANSPARENT = 0;

const unsigned short NOWHERE = 0xffff;

QTextCodec* codecForMib(int iMib)
{
    CIso8859_16Codec::provide();
    return QTextCodec::codecForMib(iMib);
}

template <typename... TArguments>
void ignore(const TArguments&... /*rcArguments*/)
{
}

} // namespace

CVideoOverlayBackEnd::CVideoOverlayBackEnd()
    : m_pcTextDataHash(new QHash<const COverlayText*, TOverlayTextData*>),
      m_pcTextCodec(nullptr),
      m_bOverlayEnabled(false),
      m_u64NextTurn(0)
{
}

CVideoOverlayBackEnd::~CVideoOverlayBackEnd()
{
    qDeleteAll(*m_pcTextDataHash);
    delete m_pcTextDataHash;
}

bool CVideoOverlayBackEnd::isOverlayEnabled() const
{
    return m_bOverlayEnabled;
}

void CVideoOverlayBackEnd::setOverlayEnabled(bool bEnabled)
{
    m_bOverlayEnabled = bEnabled;
    if (bEnabled) {
        graphic_overlay_on();
        text_overlay_on();
    } else {
        graphic_overlay_off();
        text_overlay_off();
    }
}

void CVideoOverlayBackEnd::drawText(const COverlayText& rcText)
{
    const unsigned short x = globalCoordinateToInternalCoordinate(rcText.getX());
    const unsigned short y = globalCoordinateToInternalCoordinate(rcText.getY());
    // The end wraps at 256, like every coordinate of clients.
    const auto u16End = static_cast<unsigned short>(x + rcText.getTextStrLength());
    const unsigned short endX =
        std::min<unsigned short>(internalCoordinateToGlobalCoordinate(u16End), COLUMNS);

    TOverlayTextData& rsData = *obtainTextData(rcText);
    if (y == rsData.y) {
        clearText(endX, rsData.endX, y);
        clearText(rsData.startX, x, y);
    } else {
        clearText(rsData.startX, rsData.endX, rsData.y);
    }
    // Kept: when a text leaves column 255, its old neighbours are not drawn again. The pictures that clients
    // get depend on it.
    const bool bMoved = x != rsData.startX || endX != rsData.endX || y != rsData.y;
    if (rsData.startX != 255 && bMoved)
        redrawCollidingTexts(rsData);

    setPlace(rsData, {x, y, endX}, rcText);
    drawText(x, endX, y, rcText);
}

void CVideoOverlayBackEnd::clearText(const COverlayText& rcText)
{
    const TOverlayTextData* psData = m_pcTextDataHash->take(&rcText);
    if (psData == nullptr)
        return;
    clearText(psData->startX, psData->endX, psData->y);
    m_cPlaces.remove(*psData, psData->u64Turn);
    redrawCollidingTexts(*psData);
    delete psData;
}

void CVideoOverlayBackEnd::drawGraphic(const COverlayGraphic& /*rcGraphic*/) {}

void CVideoOverlayBackEnd::clearGraphic(const COverlayGraphic& /*rcGraphic*/) {}

void CVideoOverlayBackEnd::loadCharacterSetForLocale(const QString& rcLocaleName)
{
    const SAlphabet sAlphabet = alphabetOf(QLocale(rcLocaleName).country());
    load_font(sAlphabet.iGlyphSet);
    m_pcTextCodec = codecForMib(sAlphabet.iMib);
    m_pcEncoder.reset();
}

unsigned int CVideoOverlayBackEnd::getMaxTextLineWidth() const
{
    return COLUMNS;
}

unsigned int CVideoOverlayBackEnd::getMaxTextLineCount() const
{
    return ROWS;
}

#define NOT_IMPLEMENTED(method, passedOnBy, operation, parameters, arguments) \
    void CVideoOverlayBackEnd::operation parameters                           \
    {                                                                         \
        ignore arguments;                                                     \
        puts(#operation ": Not implemented for orbisk");                      \
    }
OVERLAY_FEATURES_AS_OPERATIONS(NOT_IMPLEMENTED)
NOT_IMPLEMENTED(, , setOsdTransparency, (int iValue), (iValue))
#undef NOT_IMPLEMENTED

void CVideoOverlayBackEnd::clearText(unsigned short fromX, unsigned short toX, unsigned short y)
{
    for (unsigned short x = fromX; x < toX && isValidPoint(x, y); ++x)
        write_ch_xyc(BLANK, x, y, TRANSPARENT);
}

void CVideoOverlayBackEnd::drawText(unsigned short fromX, unsigned short toX, unsigned short y,
                                    const COverlayText& rcText)
{
    if (fromX >= toX || y >= ROWS)
        return;
    const QByteArray cCodes = codesOf(rcText.getText().left(toX - fromX));
    const unsigned char u8Color = makeColor(rcText.getForegroundColor(), rcText.getBackgroundColor());
    for (unsigned short x = fromX; x < toX; ++x) {
        const int i = x - fromX;
        write_ch_xyc(i < cCodes.size() ? static_cast<unsigned char>(cCodes[i]) : BLANK, x, y, u8Color);
    }
}

// Qt's codecs give one byte for a surrogate pair and none for an invisible character. A text is as long as
// its code units, so either would move the rest of it to the left.
QByteArray CVideoOverlayBackEnd::codesOf(const QString& rcString)
{
    if (m_pcEncoder == nullptr)
        m_pcEncoder.reset(textCodec().makeEncoder());
    QByteArray cCodes = m_pcEncoder->fromUnicode(rcString);
    if (cCodes.size() == rcString.size())
        return cCodes;
    // It may hold the first half of a surrogate pair, which would come before the next text.
    m_pcEncoder.reset();
    cCodes.clear();
    for (const QChar cUnit : rcString) {
        const QByteArray cCode = textCodec().fromUnicode(QString(cUnit));
        cCodes.append(cCode.isEmpty() ? SUBSTITUTE : cCode[0]);
    }
    return cCodes;
}

// Looked up at the first text: Qt takes its time to search all codecs, and the daemon's start must be short.
QTextCodec& CVideoOverlayBackEnd::textCodec()
{
    if (m_pcTextCodec == nullptr)
        m_pcTextCodec = codecForMib(LATIN_9.iMib);
    return *m_pcTextCodec;
}

CVideoOverlayBackEnd::TOverlayTextData* CVideoOverlayBackEnd::obtainTextData(const COverlayText& rcText)
{
    TOverlayTextData*& rpsData = (*m_pcTextDataHash)[&rcText];
    if (rpsData == nullptr)
        rpsData = new TOverlayTextData{
            {NOWHERE, NOWHERE, NOWHERE},
            m_u64NextTurn++
        };
    return rpsData;
}

void CVideoOverlayBackEnd::setPlace(TOverlayTextData& rsData, const COverlayTextPlaces::SPlace& rsPlace,
                                    const COverlayText& rcText)
{
    if (rsPlace == rsData)
        return;
    m_cPlaces.remove(rsData, rsData.u64Turn);
    static_cast<COverlayTextPlaces::SPlace&>(rsData) = rsPlace;
    m_cPlaces.insert(rsPlace, rsData.u64Turn, rcText);
}

void CVideoOverlayBackEnd::redrawCollidingTexts(const TOverlayTextData& rsRegion)
{
    for (const COverlayText* pcText : m_cPlaces.collidingWith(rsRegion)) {
        const TOverlayTextData* psData = m_pcTextDataHash->value(pcText);
        if (psData != &rsRegion)
            drawText(psData->startX, psData->endX, psData->y, *pcText);
    }
}

unsigned short CVideoOverlayBackEnd::globalCoordinateToInternalCoordinate(unsigned char u8Coordinate) const
{
    return u8Coordinate;
}

unsigned char CVideoOverlayBackEnd::internalCoordinateToGlobalCoordinate(unsigned short u16Coordinate) const
{
    return static_cast<unsigned char>(u16Coordinate);
}

bool CVideoOverlayBackEnd::isValidPoint(unsigned short x, unsigned short y) const
{
    return x < COLUMNS && y < ROWS;
}

unsigned char CVideoOverlayBackEnd::makeColor(EOverlayTextColor eForeground,
                                              EOverlayTextColor eBackground) const
{
    return static_cast<unsigned char>(eForeground << 4 | eBackground);
}
