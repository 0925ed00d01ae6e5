/* SPDX-License-Identifier: MIT */
/* Pictures of the glyph sets for people to look at. */
#ifndef HALDEND_BOARD_PICTURE_CGLYPHSHEET_H
#define HALDEND_BOARD_PICTURE_CGLYPHSHEET_H

#include <QByteArray>
#include <QImage>
#include <QString>

/// Draws glyph tables as the monitor would show them. It reads only the tables and needs no board.
///
/// The monitor stretches 720 x 576 pixels to 4:3, so a pixel is 16/15 as wide as a line is high. Repeating
/// whole pixels can't show that at a handy size. So a frame line becomes iLines rows, and a pixel 16/15 times
/// as many columns; a column that two pixels share is their mean, weighed in whole fifteenths. That is exact:
/// a picture is the same on every host and can be compared bit by bit.
class CGlyphSheet
{
public:
    /// All 256 glyphs of a table (16,384 bytes, as in fpga/font_tables.h) in 16 x 16 cells: a code's high
    /// digit down the side and its low one along the top. iLines: rows for each frame line, 1 or more.
    static QImage contactSheet(const unsigned char* pu8Table, int iLines = 3);

    /// The codes that show a text in set 1, 2 or 3. A character that the set lacks becomes the full block,
    /// which is easy to see.
    static QByteArray encoded(int iSet, const QString& text);

    /// A line of text in set 1, 12 x 20 frame pixels for each glyph.
    static QImage textLine(const QString& rcText, QRgb uInk, QRgb uPaper);

    /// The picture enlarged to iLines rows for each frame line, in the monitor's aspect.
    static QImage enlarged(const QImage& frame, int iLines);
};

#endif
