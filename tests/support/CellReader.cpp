/* SPDX-License-Identifier: MIT */
#include "tests/support/CellReader.h"

#include "fpga/font_tables.h"
#include "hw/fpga_map.h"
#include "tests/support/Luma.h"

#include <QVector>

namespace
{

const int LEFT = 42;
const int TOP = 28;
const int CELL_WIDTH = 12;
const int CELL_HEIGHT = 20;
const int FIRST_CODE = 32; // blank
const int CODES = 256;
const int HALF_ROWS = 16;
const int ROW_PIXELS = 16;

using CBits = QVector<bool>; ///< of a cell's pixels, line by line

/// As the FPGA shows it: even lines are its first half, odd ones its second.
CBits glyph(int iCode)
{
    const unsigned char* pu8Glyph = font_sets[0].glyphs->rows + iCode * FPGA_GLYPH_BYTES;
    CBits cBits;
    for (int y = 0; y < CELL_HEIGHT; ++y) {
        const unsigned char* pu8Row = pu8Glyph + 2 * (y % 2 * HALF_ROWS + y / 2);
        const int iRow = pu8Row[0] << 8 | pu8Row[1];
        for (int x = 0; x < CELL_WIDTH; ++x)
            cBits << ((iRow >> (ROW_PIXELS - 1 - x) & 1) != 0);
    }
    return cBits;
}

/// A pixel is ink if it is nearer to that than to paper.
CBits cell(const QImage& rcPicture, int iLeft, int iTop, int iInk, int iPaper)
{
    CBits cBits;
    for (int y = 0; y < CELL_HEIGHT; ++y)
        for (int x = 0; x < CELL_WIDTH; ++x) {
            const int iLuma = lumaOf(rcPicture.pixel(iLeft + x, iTop + y));
            cBits << (qAbs(iLuma - iInk) < qAbs(iLuma - iPaper));
        }
    return cBits;
}

int differences(const CBits& rcOne, const CBits& rcOther)
{
    int iCount = 0;
    for (int i = 0; i < rcOne.size(); ++i)
        iCount += rcOne[i] != rcOther[i] ? 1 : 0;
    return iCount;
}

} // namespace

QByteArray readCells(const QImage& rcPicture, int iColumn, int iRow, int iCount, QRgb uInk, QRgb uPaper)
{
    QVector<CBits> cGlyphs;
    for (int i = 0; i < CODES; ++i)
        cGlyphs << glyph(i);
    QByteArray cCodes;
    for (int i = 0; i < iCount; ++i) {
        const CBits cCell = cell(rcPicture, LEFT + (iColumn + i) * CELL_WIDTH, TOP + iRow * CELL_HEIGHT,
                                 lumaOf(uInk), lumaOf(uPaper));
        int iBest = FIRST_CODE;
        for (int iCode = FIRST_CODE + 1; iCode < CODES; ++iCode)
            if (differences(cCell, cGlyphs[iCode]) < differences(cCell, cGlyphs[iBest]))
                iBest = iCode;
        cCodes += static_cast<char>(iBest);
    }
    return cCodes;
}
