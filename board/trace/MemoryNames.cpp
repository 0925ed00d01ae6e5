/* SPDX-License-Identifier: MIT */
#include "board/trace/MemoryNames.h"

#include "ctl/Colors.h"
#include "fpga/font_tables.h"
#include "hw/fpga_map.h"

#include <QStringList>

namespace
{

const int MOST_PIECES = 6; // of a line

struct SRegion {
    quint32 u32Begin;
    quint32 u32Bytes;
    QString (*pfnPlace)(quint32 u32Offset);
};

QString graphicPlace(quint32 u32Offset)
{
    const quint32 u32Pixel = u32Offset % FPGA_GRAPHIC_PAGE_STRIDE;
    return QStringLiteral("graphic page %1 pixel %2,%3")
        .arg(u32Offset / FPGA_GRAPHIC_PAGE_STRIDE)
        .arg(u32Pixel % VIDEO_WIDTH)
        .arg(u32Pixel / VIDEO_WIDTH);
}

QString glyphPlace(quint32 u32Offset)
{
    return QStringLiteral("glyph %1").arg(u32Offset / FPGA_GLYPH_BYTES);
}

QString cellPlace(quint32 u32Offset)
{
    const quint32 u32Page = u32Offset / FPGA_TEXT_PAGE_STRIDE;
    const quint32 u32Cell = u32Offset % FPGA_TEXT_PAGE_STRIDE / FPGA_TEXT_CELL_BYTES;
    return (u32Page == 0 ? QString() : QStringLiteral("text page %1 ").arg(u32Page)) +
           QStringLiteral("cell %1,%2").arg(u32Cell % FPGA_TEXT_ROW_CELLS).arg(u32Cell / FPGA_TEXT_ROW_CELLS);
}

QString cursorPlace(quint32 u32Offset)
{
    return QStringLiteral("cursor image row %1").arg(u32Offset / 4);
}

QString graphicColorPlace(quint32 u32Offset)
{
    return QStringLiteral("graphic colour %1").arg(u32Offset / 4);
}

QString foregroundPlace(quint32 u32Offset)
{
    return QStringLiteral("text colour %1").arg(u32Offset / 4);
}

QString backgroundPlace(quint32 u32Offset)
{
    return QStringLiteral("text background colour %1").arg(u32Offset / 4);
}

QString framePlace(quint32 u32Offset)
{
    const quint32 u32Line = u32Offset / VIDEO_LINE_BYTES;
    return QStringLiteral("stored frame pixel %1,%2")
        .arg(u32Offset % VIDEO_LINE_BYTES / 4)
        .arg(u32Line % VIDEO_FIELD_LINES * 2 + u32Line / VIDEO_FIELD_LINES);
}

const SRegion REGIONS[] = {
    {FPGA_GRAPHIC_PAGES,   FPGA_PAGES* FPGA_GRAPHIC_PAGE_STRIDE,        graphicPlace     },
    {FPGA_GLYPHS,          FPGA_GLYPH_COUNT* FPGA_GLYPH_BYTES,          glyphPlace       },
    {FPGA_TEXT_PAGES,      FPGA_PAGES* FPGA_TEXT_PAGE_STRIDE,           cellPlace        },
    {FPGA_CURSOR_IMAGE,    512,                                         cursorPlace      },
    {FPGA_GRAPHIC_PALETTE, FPGA_TEXT_FOREGROUND - FPGA_GRAPHIC_PALETTE, graphicColorPlace},
    {FPGA_TEXT_FOREGROUND, FPGA_TEXT_BACKGROUND - FPGA_TEXT_FOREGROUND, foregroundPlace  },
    {FPGA_TEXT_BACKGROUND, FPGA_TEXT_BACKGROUND - FPGA_TEXT_FOREGROUND, backgroundPlace  },
    {FPGA_VIDEO_IMAGE,     VIDEO_FRAME_BYTES,                           framePlace       },
};

const SRegion* regionOf(quint32 u32Address)
{
    for (const SRegion& rsRegion : REGIONS)
        if (u32Address >= rsRegion.u32Begin && u32Address - rsRegion.u32Begin < rsRegion.u32Bytes)
            return &rsRegion;
    return nullptr;
}

QString letter(uchar u8Code, int iSet)
{
    const quint16 u16Letter = font_sets[iSet - 1].unicode->characters[u8Code];
    if (u8Code == 0)
        return QStringLiteral(" ");
    if (u16Letter < 0x20)
        return QStringLiteral("\\x%1").arg(int(u8Code), 2, 16, QLatin1Char('0'));
    const QString cLetter{QChar(u16Letter)};
    return cLetter == QLatin1String("\"") || cLetter == QLatin1String("\\") ? QLatin1Char('\\') + cLetter
                                                                            : cLetter;
}

/// How many cells from iCell on have the same colours, up to the end of the row.
int runOfCells(quint32 u32Address, const QByteArray& rcBytes, int iCell)
{
    const int iColumn = static_cast<int>((u32Address - FPGA_TEXT_PAGES) % FPGA_TEXT_PAGE_STRIDE /
                                         FPGA_TEXT_CELL_BYTES % FPGA_TEXT_ROW_CELLS);
    const int iMost = qMin(rcBytes.size() / 2 - iCell, static_cast<int>(FPGA_TEXT_ROW_CELLS) - iColumn);
    int iRun = 1;
    while (iRun < iMost && rcBytes[2 * (iCell + iRun) + 1] == rcBytes[2 * iCell + 1])
        ++iRun;
    return iRun;
}

/// Cells of the same colours.
QString cellsText(const QByteArray& rcCells, int iSet)
{
    QString cText;
    for (int i = 0; i < rcCells.size(); i += 2)
        cText += letter(static_cast<uchar>(rcCells[i]), iSet);
    const auto u8Color = static_cast<uchar>(rcCells[1]);
    return QStringLiteral("\"%1\" %2 on %3").arg(cText, colorName(u8Color >> 4), colorName(u8Color & 0xf));
}

/// Cell by cell, as far as they are known.
QString allCells(quint32 u32Address, const QByteArray& rcBytes, int iCount, int iSet)
{
    QStringList cPieces;
    int iCell = 0;
    while (iCell < rcBytes.size() / 2 && cPieces.size() < MOST_PIECES) {
        const quint32 u32Cell = u32Address + static_cast<quint32>(2 * iCell);
        const int iRun = runOfCells(u32Cell, rcBytes, iCell);
        cPieces << QStringLiteral("%1 %2 at %3")
                       .arg(iRun == 1 ? QStringLiteral("cell") : QStringLiteral("cells"),
                            cellsText(rcBytes.mid(2 * iCell, 2 * iRun), iSet),
                            memoryPlace(u32Cell).remove(QStringLiteral("cell ")));
        iCell += iRun;
    }
    if (2 * iCell < iCount)
        cPieces << QStringLiteral("...");
    return cPieces.join(QStringLiteral(", "));
}

bool isEmpty(const QByteArray& rcBytes)
{
    return rcBytes.count('\0') == rcBytes.size();
}

} // namespace

QString memoryPlace(quint32 u32Address)
{
    const SRegion* psRegion = regionOf(u32Address);
    return psRegion != nullptr ? psRegion->pfnPlace(u32Address - psRegion->u32Begin)
                               : QStringLiteral("0x%1").arg(u32Address, 8, 16, QLatin1Char('0'));
}

QString memoryText(quint32 u32Address, const QByteArray& rcBytes, int iCount, int iSet)
{
    const SRegion* psRegion = regionOf(u32Address);
    const bool bCells = psRegion != nullptr && psRegion->u32Begin == FPGA_TEXT_PAGES && u32Address % 2 == 0;
    const bool bKnown = rcBytes.size() == iCount && iCount > 0;
    const QString cBytes = iCount == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(iCount);
    if (bKnown && iCount > static_cast<int>(FPGA_TEXT_CELL_BYTES) && isEmpty(rcBytes))
        return QStringLiteral("%1 of 0 from %2").arg(cBytes, memoryPlace(u32Address));
    if (bCells && rcBytes.size() >= static_cast<int>(FPGA_TEXT_CELL_BYTES))
        return allCells(u32Address, rcBytes, iCount, iSet);
    return QStringLiteral("%1 from %2").arg(cBytes, memoryPlace(u32Address));
}

QString cellText(const QByteArray& rcCell, int iSet)
{
    return cellsText(rcCell, iSet);
}

int glyphSetOf(const QByteArray& rcMemory)
{
    const int iBytes = static_cast<int>(FPGA_GLYPH_COUNT * FPGA_GLYPH_BYTES);
    for (int iSet = 1; rcMemory.size() == iBytes && iSet <= FONT_SETS; ++iSet) {
        // The memory has the rows little-endian, the tables have them big-endian.
        const unsigned char* pu8Rows = font_sets[iSet - 1].glyphs->rows;
        int i = 0;
        while (i < iBytes && static_cast<uchar>(rcMemory[i]) == pu8Rows[i ^ 1])
            ++i;
        if (i == iBytes)
            return iSet;
    }
    return 0;
}
