/* SPDX-License-Identifier: MIT */
/* Pictures of the glyph sets. Everything is drawn in frame pixels first, then enlarged as a whole. */
#include "board/picture/CGlyphSheet.h"

#include "fpga/font_tables.h"
#include "fpga/palettes.h"
#include "hw/fpga_map.h"

namespace
{

const int CELL_WIDTH = 12;
const int CELL_HEIGHT = 20;
/* A glyph is two half tables, even lines and odd lines, of two bytes a line. */
const int HALF_BYTES = FPGA_GLYPH_BYTES / 2;

/* Colours of the contact sheet. */
const QRgb SHEET = qRgb(0x30, 0x38, 0x48);
const QRgb CELL_COLOR = qRgb(0x10, 0x14, 0x1c);
const QRgb GLYPH = qRgb(0xff, 0xff, 0xff);
const QRgb MARGIN = qRgb(0xff, 0xe0, 0x60);

const int FULL_BLOCK = 150;

bool isSet(int iSet)
{
    return iSet >= 1 && iSet <= FONT_SETS;
}

bool isDrawn(const unsigned char* pu8Table, int iCode, int iX, int iLine)
{
    const int row = (2 * iCode + iLine % 2) * HALF_BYTES + iLine / 2 * 2;
    return (pu8Table[row + iX / 8] << (iX % 8) & 0x80) != 0;
}

void drawCell(QImage& frame, int iX, int iY, const unsigned char* pu8Table, int iCode, QRgb ink, QRgb paper)
{
    for (int line = 0; line < CELL_HEIGHT; ++line)
        for (int x = 0; x < CELL_WIDTH; ++x)
            frame.setPixel(iX + x, iY + line, isDrawn(pu8Table, iCode, x, line) ? ink : paper);
}

int codeOf(const font_unicode_tab& unicode, QChar character)
{
    for (int code = 0; code < 256; ++code)
        if (unicode.characters[code] == character.unicode() && !character.isNull())
            return code;
    return FULL_BLOCK;
}

} // namespace

QImage CGlyphSheet::contactSheet(const unsigned char* pu8Table, int iLines)
{
    const int pitchX = CELL_WIDTH + 4;
    const int pitchY = CELL_HEIGHT + 4;
    QImage sheet(17 * pitchX + 4, 17 * pitchY + 4, QImage::Format_RGB32);
    sheet.fill(SHEET);
    for (int i = 0; i < 16; ++i) {
        const int digit = i < 10 ? '0' + i : 'A' + i - 10;
        drawCell(sheet, 4, 4 + (i + 1) * pitchY, pu8Table, digit, MARGIN, SHEET);
        drawCell(sheet, 4 + (i + 1) * pitchX, 4, pu8Table, digit, MARGIN, SHEET);
    }
    for (int code = 0; code < 256; ++code)
        drawCell(sheet, 4 + (code % 16 + 1) * pitchX, 4 + (code / 16 + 1) * pitchY, pu8Table, code, GLYPH,
                 CELL_COLOR);
    return enlarged(sheet, iLines);
}

QByteArray CGlyphSheet::encoded(int iSet, const QString& text)
{
    QByteArray codes;
    for (const QChar character : text)
        codes.append(
            static_cast<char>(isSet(iSet) ? codeOf(*font_sets[iSet - 1].unicode, character) : FULL_BLOCK));
    return codes;
}

QImage CGlyphSheet::textLine(const QString& rcText, QRgb uInk, QRgb uPaper)
{
    const QByteArray cCodes = encoded(1, rcText);
    QImage cLine(CELL_WIDTH * cCodes.size(), CELL_HEIGHT, QImage::Format_RGB32);
    for (int i = 0; i < cCodes.size(); ++i)
        drawCell(cLine, i * CELL_WIDTH, 0, font_sets[0].glyphs->rows, static_cast<uchar>(cCodes[i]), uInk,
                 uPaper);
    return cLine;
}

QImage CGlyphSheet::enlarged(const QImage& frame, int iLines)
{
    const int columns = 16 * iLines; // a pixel's width in fifteenths of a column
    const int width = (frame.width() * columns + 14) / 15;
    QImage result(width, frame.height() * iLines, QImage::Format_RGB32);
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < width; ++x) {
            const int last = frame.width() - 1;
            const int first = qMin(x * 15 / columns, last);
            const int second = qMin(first + 1, last);
            const int share = qBound(0, (first + 1) * columns - x * 15, 15);
            const QRgb a = frame.pixel(first, y / iLines);
            const QRgb b = frame.pixel(second, y / iLines);
            const auto mean = [share](int left, int right) {
                return (left * share + right * (15 - share) + 7) / 15;
            };
            result.setPixel(
                x, y, qRgb(mean(qRed(a), qRed(b)), mean(qGreen(a), qGreen(b)), mean(qBlue(a), qBlue(b))));
        }
    return result;
}
