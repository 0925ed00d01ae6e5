/* SPDX-License-Identifier: MIT */
/* The FPGA's memory by name: text cells, glyphs, palettes, graphic pages, the cursor's image, the stored frame. */
#ifndef HALDEND_BOARD_TRACE_MEMORYNAMES_H
#define HALDEND_BOARD_TRACE_MEMORYNAMES_H

#include <QByteArray>
#include <QString>

/// A place in the memory, such as "cell 12,5", "text page 3 cell 12,5", "graphic page 0 pixel 20,7", "glyph 65"; the
/// address if nothing is there.
QString memoryPlace(quint32 u32Address);

/// Bytes at a place. Cells show as what they hold: "cell "A" white on navy at 12,5"; iSet is the glyph set, from 1.
/// iCount is the number of bytes, which can be more than those that are known.
QString memoryText(quint32 u32Address, const QByteArray& rcBytes, int iCount, int iSet);

/// A cell of two bytes: "A" white on navy.
QString cellText(const QByteArray& rcCell, int iSet);

/// Which set a glyph memory holds; 0 if none.
int glyphSetOf(const QByteArray& rcMemory);

#endif
