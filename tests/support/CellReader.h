/* SPDX-License-Identifier: MIT */
/* Reads the overlay's text out of a picture, as eyes do: by the shapes of its letters. */
#ifndef HALDEND_TESTS_CELLREADER_H
#define HALDEND_TESTS_CELLREADER_H

#include <QByteArray>
#include <QImage>

/// The codes of glyph set 1 that are most like iCount cells of a picture, from a cell on: 12 x 20 pixels each, at the
/// place where the default register files put them. Of glyphs that look alike, the lowest code from 32 on. The colours of ink and
/// paper are those of the overlay; what a film makes of them may be off by a good deal.
QByteArray readCells(const QImage& rcPicture, int iColumn, int iRow, int iCount, QRgb uInk, QRgb uPaper);

#endif
