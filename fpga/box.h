/* SPDX-License-Identifier: MIT */
/* Frames of box characters on the text layer. */
#ifndef HALDEND_FPGA_BOX_H
#define HALDEND_FPGA_BOX_H

#ifdef __cplusplus
extern "C" {
#endif

/* Draws a frame of w × h cells, its top left cell at (x, y), in the active text write page, and blanks its
 * inside. color is the colour byte of all its cells, foreground << 4 | background. Styles: 0 blanks, 1 double
 * line, 2 single line. The frame is cut at the right edge. A width of 0 or of 2^32 - 1 and an unknown style
 * draw nothing.
 *
 * Kept: the lines are codes of code page 437. The glyph sets have letters and signs at those codes, so
 * callers of styles 1 and 2 see those. */
void write_box(unsigned int x, unsigned int y, unsigned int w, unsigned int h, unsigned int color,
               unsigned int style);

#ifdef __cplusplus
}
#endif

#endif
