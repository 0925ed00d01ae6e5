/* SPDX-License-Identifier: MIT */
#include "board/picture/CFpgaMixer.h"

#include "board/picture/CPlaybackPicture.h"
#include "board/state/CBoard.h"
#include "hw/fpga_map.h"

#include <QtEndian>

namespace
{

const quint32 OPAQUE_MIX = 0xff000000;

const int TEXT_ROW_BYTES = FPGA_TEXT_ROW_BYTES;
const int GLYPH_BYTES = FPGA_GLYPH_BYTES;
const int GLYPH_HALF_ROWS = 16;
const int GLYPH_PIXELS = 16;
const int CURSOR_PIXELS = 32;

/// The bits of CTRL that one control set has. Set C has no graphic priority.
struct SControlBits {
    quint32 u32Graphic;
    quint32 u32Text;
    quint32 u32Cursor;
    quint32 u32Priority;
    quint32 u32Restore;
};

const SControlBits CONTROL_BITS[] = {
    {FPGA_CTRL_AGO, FPGA_CTRL_ATO, FPGA_CTRL_ACO, FPGA_CTRL_AGP, FPGA_CTRL_AVR}, // A
    {FPGA_CTRL_CGO, FPGA_CTRL_CTO, FPGA_CTRL_CCO, 0,             FPGA_CTRL_CVR}, // C
};

QRgb blend(QRgb uUnder, QRgb uOver)
{
    const int iAlpha = qAlpha(uOver);
    if (iAlpha == 0)
        return uUnder;
    if (iAlpha == 255)
        return uOver;
    const auto cMix = [iAlpha](int iUnder, int iOver) {
        return (iUnder * (255 - iAlpha) + iOver * iAlpha + 127) / 255;
    };
    return qRgb(cMix(qRed(uUnder), qRed(uOver)), cMix(qGreen(uUnder), qGreen(uOver)),
                cMix(qBlue(uUnder), qBlue(uOver)));
}

quint32 word(const QByteArray& rcMemory, int iIndex)
{
    return qFromLittleEndian<quint32>(rcMemory.constData() + 4 * iIndex);
}

QRgb* line(QImage& rcImage, int iLine)
{
    return reinterpret_cast<QRgb*>(rcImage.scanLine(iLine));
}

} // namespace

CFpgaMixer::CFpgaMixer(const CBoard& rcBoard)
    : m_rcBoard(rcBoard),
      m_cFrame(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32),
      m_auForeground(),
      m_auBackground(),
      m_iCellWidth(0),
      m_iCellHeight(0),
      m_iTextLeft(0)
{
}

QImage CFpgaMixer::mix(EControlSet eSet)
{
    const quint32 u32Control = m_rcBoard.fpgaRegister(FPGA_CTRL);
    const SControlBits& rsBits = CONTROL_BITS[eSet];
    const bool bGraphic = (u32Control & rsBits.u32Graphic) != 0;
    const bool bPriority = (u32Control & rsBits.u32Priority) != 0;

    source(u32Control, (u32Control & rsBits.u32Restore) != 0);
    if (bGraphic && !bPriority)
        graphicLayer();
    if ((u32Control & rsBits.u32Text) != 0)
        textLayer();
    if (bGraphic && bPriority)
        graphicLayer();
    if ((u32Control & rsBits.u32Cursor) != 0)
        cursor();
    return m_cFrame;
}

void CFpgaMixer::source(quint32 u32Control, bool bRestore)
{
    if (bRestore)
        storedFrame();
    else if ((u32Control & FPGA_CTRL_POR) == FPGA_CTRL_POR)
        m_cFrame = CPlaybackPicture::frame(m_rcBoard);
    else if ((u32Control & FPGA_CTRL_FGON) != 0)
        m_cFrame.fill(OPAQUE_MIX | m_rcBoard.fpgaRegister(FPGA_FGCC));
    else
        m_rcBoard.takeLivePicture(line(m_cFrame, 0));
}

void CFpgaMixer::storedFrame()
{
    for (int y = 0; y < VIDEO_HEIGHT; ++y) {
        const int iStored = y / 2 + (y % 2) * VIDEO_FIELD_LINES;
        const QByteArray cLine = m_rcBoard.fpgaMemory(
            FPGA_VIDEO_IMAGE + static_cast<quint32>(iStored) * 4 * VIDEO_WIDTH, 4 * VIDEO_WIDTH);
        QRgb* puLine = line(m_cFrame, y);
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            puLine[x] = OPAQUE_MIX | word(cLine, x);
    }
}

void CFpgaMixer::graphicLayer()
{
    const QByteArray cPalette = m_rcBoard.fpgaMemory(FPGA_GRAPHIC_PALETTE, 4 * 256);
    const QByteArray cPage =
        m_rcBoard.fpgaMemory(m_rcBoard.fpgaRegister(FPGA_GRAPHIC_SHOW) << 8, VIDEO_WIDTH * VIDEO_FIELD_LINES);
    if (cPage.isEmpty())
        return;
    QRgb auPalette[256];
    for (int i = 0; i < 256; ++i)
        auPalette[i] = word(cPalette, i);
    for (int y = 0; y < VIDEO_HEIGHT; ++y) {
        const auto* pu8Pixels = reinterpret_cast<const uchar*>(cPage.constData()) + y / 2 * VIDEO_WIDTH;
        QRgb* puLine = line(m_cFrame, y);
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            puLine[x] = blend(puLine[x], auPalette[pu8Pixels[x]]);
    }
}

void CFpgaMixer::textLayer()
{
    const quint32 u32Size = m_rcBoard.fpgaRegister(FPGA_TESZ);
    m_iCellWidth = static_cast<int>(u32Size >> 8 & 0x1f);
    m_iCellHeight = static_cast<int>(u32Size & 0x3f);
    m_iTextLeft = static_cast<int>(m_rcBoard.fpgaRegister(FPGA_TSXP) & 0xfff);
    const int iTop = 2 * static_cast<int>(m_rcBoard.fpgaRegister(FPGA_TSYP) & 0x1ff);
    const QByteArray cForeground = m_rcBoard.fpgaMemory(FPGA_TEXT_FOREGROUND, 64);
    const QByteArray cBackground = m_rcBoard.fpgaMemory(FPGA_TEXT_BACKGROUND, 64);
    for (int i = 0; i < 16; ++i) {
        m_auForeground[i] = word(cForeground, i);
        m_auBackground[i] = word(cBackground, i);
    }
    m_cGlyphs = m_rcBoard.fpgaMemory(FPGA_GLYPHS, 256 * GLYPH_BYTES);
    const QByteArray cPage =
        m_rcBoard.fpgaMemory(m_rcBoard.fpgaRegister(FPGA_TEMO), VIDEO_TEXT_ROWS * TEXT_ROW_BYTES);
    if (cPage.isEmpty() || m_iCellHeight == 0)
        return;
    for (int y = iTop; y < VIDEO_HEIGHT; ++y) {
        const int iRow = (y - iTop) / 2 / m_iCellHeight;
        if (iRow < VIDEO_TEXT_ROWS)
            textRow(y, iTop, cPage.constData() + iRow * TEXT_ROW_BYTES);
    }
}

// One frame line of a row of cells.
void CFpgaMixer::textRow(int iLine, int iTop, const char* pszCells)
{
    const int iGlyphRow = (iLine - iTop) / 2 % m_iCellHeight;
    const int iHalf = (iLine - iTop) % 2;
    QRgb* puLine = line(m_cFrame, iLine);
    for (int iCell = 0; iCell < VIDEO_TEXT_COLUMNS; ++iCell) {
        const int iLeft = m_iTextLeft + iCell * m_iCellWidth;
        const auto u8Code = static_cast<uchar>(pszCells[2 * iCell]);
        const auto u8Color = static_cast<uchar>(pszCells[2 * iCell + 1]);
        quint32 u32Bits = 0;
        if (iGlyphRow < GLYPH_HALF_ROWS)
            u32Bits = qFromLittleEndian<quint16>(m_cGlyphs.constData() + u8Code * GLYPH_BYTES +
                                                 (iHalf * GLYPH_HALF_ROWS + iGlyphRow) * 2);
        u32Bits <<= 32 - GLYPH_PIXELS; // the first pixel at the top, none behind the last
        const QRgb uForeground = m_auForeground[u8Color >> 4];
        const QRgb uBackground = m_auBackground[u8Color & 0xf];
        if (u32Bits == 0 && qAlpha(uBackground) == 0)
            continue;
        const int iRight = qMin<int>(VIDEO_WIDTH, iLeft + m_iCellWidth);
        for (int x = iLeft; x < iRight; ++x, u32Bits <<= 1)
            puLine[x] = blend(puLine[x], u32Bits >> 31 != 0 ? uForeground : uBackground);
    }
}

void CFpgaMixer::cursor()
{
    const quint32 u32Size = m_rcBoard.fpgaRegister(FPGA_CURSOR_SIZE);
    const int iWidth = qMin(static_cast<int>(u32Size >> 8 & 0xff), CURSOR_PIXELS);
    const int iHeight = qMin(static_cast<int>(u32Size & 0xff) - 1, CURSOR_PIXELS);
    const quint32 u32Left = m_rcBoard.fpgaRegister(FPGA_CURSOR_X);
    const quint32 u32Top = m_rcBoard.fpgaRegister(FPGA_CURSOR_Y);
    const QRgb uColor = m_rcBoard.fpgaRegister(FPGA_CURSOR_COLOR);
    const QByteArray cImage = m_rcBoard.fpgaMemory(FPGA_CURSOR_IMAGE, 4 * CURSOR_PIXELS);
    if (u32Left >= VIDEO_WIDTH || u32Top >= VIDEO_HEIGHT)
        return;
    for (int y = 0; y < iHeight && static_cast<int>(u32Top) + y < VIDEO_HEIGHT; ++y) {
        QRgb* puLine = line(m_cFrame, static_cast<int>(u32Top) + y) + u32Left;
        for (int x = 0; x < iWidth && static_cast<int>(u32Left) + x < VIDEO_WIDTH; ++x)
            if ((word(cImage, y) >> (CURSOR_PIXELS - 1 - x) & 1) != 0)
                puLine[x] = blend(puLine[x], uColor);
    }
}
