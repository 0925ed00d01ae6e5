/* Frames of box characters on the text layer. */
#ifndef HALDEND_FPGA_BOX_H
#define HALDEND_FPGA_BOX_H

#ifdef __cplusplus
extern "C" {
#endif

/* Draws a frame of w × h cells, its top left cell at (x, y), in the active text write page, and blanks its
 * inside. Styles: 0 blanks, 1 double line, 2 single line, in code page 437; the glyph sets have letters and
 * signs at those codes, so that is what shows. Cut at the right edge. A width of 0 or of 2^32 - 1 and a
 * style that isn't there draw nothing. */
void write_box(unsigned int x, unsigned int y, unsigned int w, unsigned int h, unsigned int color,
               unsigned int style);

#ifdef __cplusplus
}
#endif

#endif
