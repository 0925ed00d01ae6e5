/* SPDX-License-Identifier: MIT */
#include "board/trace/CBoardComparison.h"

#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "board/trace/Hex.h"
#include "board/trace/MemoryNames.h"
#include "board/trace/RegisterNames.h"

#include <QColor>

namespace
{

QString difference(const QString& rcWhat, const QString& rcOne, const QString& rcOther)
{
    return QStringLiteral("%1: %2 | %3").arg(rcWhat, rcOne, rcOther);
}

// Registers

quint32 valueOf(const CBoard& rcBoard, const SRegisterPlace& rsPlace)
{
    switch (rsPlace.eKind) {
    case SRegisterPlace::FPGA:
        return rcBoard.fpgaRegister(rsPlace.u32Address);
    case SRegisterPlace::LIME:
        return rcBoard.limeRegister(static_cast<CBoard::ELimeWindow>(rsPlace.u32Base), rsPlace.u32Address);
    default:
        return rcBoard.i2cRegister(static_cast<quint8>(rsPlace.u32Base),
                                   static_cast<quint8>(rsPlace.u32Address));
    }
}

QString namedRegister(const CBoard& rcOne, const CBoard& rcOther)
{
    for (const SRegisterName& rsName : registerNames()) {
        const quint32 u32One = valueOf(rcOne, rsName.sPlace);
        const quint32 u32Other = valueOf(rcOther, rsName.sPlace);
        if (u32One != u32Other)
            return difference(QStringLiteral("register ") + rsName.cName, registerFields(rsName, u32One),
                              registerFields(rsName, u32Other));
    }
    return QString();
}

/// Words without a name, in the windows of the display controller.
QString limeWord(const CBoard& rcOne, const CBoard& rcOther)
{
    const CBoard::ELimeWindow WINDOWS[] = {CBoard::LIME_HOST, CBoard::LIME_DISPLAY, CBoard::LIME_CAPTURE,
                                           CBoard::LIME_DRAW, CBoard::LIME_PIO};
    for (int i = 0; i < 5; ++i) {
        const quint32 u32End = i < 4 ? static_cast<quint32>(WINDOWS[i + 1]) : LIME_WINDOWS_END;
        for (quint32 u32Offset = 0; u32Offset < u32End - WINDOWS[i]; u32Offset += 4) {
            const quint32 u32One = rcOne.limeRegister(WINDOWS[i], u32Offset);
            const quint32 u32Other = rcOther.limeRegister(WINDOWS[i], u32Offset);
            if (u32One != u32Other)
                return difference(
                    QStringLiteral("lime %1 %2").arg(limeWindowName(WINDOWS[i]), hex(u32Offset, 8)),
                    hex(u32One, 8), hex(u32Other, 8));
        }
    }
    return QString();
}

QString i2cByte(const CBoard& rcOne, const CBoard& rcOther)
{
    for (int i = 0; i < 128 * 256; ++i) {
        const auto u8Chip = static_cast<quint8>(i / 256);
        const auto u8Sub = static_cast<quint8>(i % 256);
        if (rcOne.i2cRegister(u8Chip, u8Sub) != rcOther.i2cRegister(u8Chip, u8Sub))
            return difference(QStringLiteral("i2c %1 %2").arg(chipName(u8Chip), hex(u8Sub, 2)),
                              hex(rcOne.i2cRegister(u8Chip, u8Sub), 2),
                              hex(rcOther.i2cRegister(u8Chip, u8Sub), 2));
    }
    return QString();
}

// Memory

/// A cell with its letter and colours, or a byte.
QString memoryAt(const CBoard& rcBoard, quint32 u32Address, bool bCell)
{
    const int iBytes = bCell ? static_cast<int>(FPGA_TEXT_CELL_BYTES) : 1;
    const QByteArray cBytes = rcBoard.fpgaMemory(u32Address, iBytes);
    if (!bCell)
        return hex(static_cast<uchar>(cBytes[0]), 2);
    const int iSet =
        glyphSetOf(rcBoard.fpgaMemory(FPGA_GLYPHS, static_cast<int>(FPGA_GLYPH_COUNT * FPGA_GLYPH_BYTES)));
    return cellText(cBytes, iSet == 0 ? 1 : iSet);
}

QString memoryDifference(const CBoard& rcOne, const CBoard& rcOther, quint32 u32Begin, quint32 u32End)
{
    const quint32 CHUNK = 0x10000;
    for (quint32 u32Address = u32Begin; u32Address < u32End; u32Address += CHUNK) {
        const int iBytes = static_cast<int>(qMin(CHUNK, u32End - u32Address));
        const QByteArray cOne = rcOne.fpgaMemory(u32Address, iBytes);
        const QByteArray cOther = rcOther.fpgaMemory(u32Address, iBytes);
        if (cOne == cOther)
            continue;
        int i = 0;
        while (cOne[i] == cOther[i])
            ++i;
        const quint32 u32Found = u32Address + static_cast<quint32>(i);
        const bool bCell = u32Begin == FPGA_TEXT_PAGES;
        const quint32 u32Place = bCell ? u32Found & ~(FPGA_TEXT_CELL_BYTES - 1) : u32Found;
        return difference(memoryPlace(u32Place), memoryAt(rcOne, u32Place, bCell),
                          memoryAt(rcOther, u32Place, bCell));
    }
    return QString();
}

QString anyMemory(const CBoard& rcOne, const CBoard& rcOther)
{
    const quint32 u32TextEnd = FPGA_TEXT_PAGES + FPGA_PAGES * FPGA_TEXT_PAGE_STRIDE;
    QString cFound = memoryDifference(rcOne, rcOther, FPGA_TEXT_PAGES, u32TextEnd);
    if (cFound.isEmpty())
        cFound = memoryDifference(rcOne, rcOther, 0, FPGA_TEXT_PAGES);
    return cFound.isEmpty() ? memoryDifference(rcOne, rcOther, u32TextEnd, BOARD_FPGA_BYTES) : cFound;
}

// Pictures

QString pixel(const char* pszPicture, const QImage& rcOne, const QImage& rcOther)
{
    if (rcOne == rcOther)
        return QString();
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            if (rcOne.pixel(x, y) != rcOther.pixel(x, y))
                return difference(
                    QStringLiteral("%1 pixel %2,%3").arg(QLatin1String(pszPicture)).arg(x).arg(y),
                    QColor(rcOne.pixel(x, y)).name(), QColor(rcOther.pixel(x, y)).name());
    return QString();
}

QString monitorPixel(const CBoard& rcOne, const CBoard& rcOther)
{
    return pixel("monitor", CBoardPicture::monitor(rcOne), CBoardPicture::monitor(rcOther));
}

QString recordedPixel(const CBoard& rcOne, const CBoard& rcOther)
{
    return pixel("recorded", CBoardPicture::recorded(rcOne), CBoardPicture::recorded(rcOther));
}

} // namespace

QString CBoardComparison::firstDifference(const CBoard& rcOne, const CBoard& rcOther)
{
    for (const auto& rfnLook : {namedRegister, limeWord, i2cByte, anyMemory, monitorPixel, recordedPixel}) {
        QString cFound = rfnLook(rcOne, rcOther);
        if (!cFound.isEmpty())
            return cFound;
    }
    return QString();
}
