/* SPDX-License-Identifier: MIT */
/* The text layer: nine pages, 0-8, of character cells; the FPGA shows one.
 *
 * A page is 28 rows of 64 cells; the monitor shows the upper left 26 rows of 53 columns. A cell is two bytes:
 * the character code, an index into the loaded glyph set, and the colour byte, foreground << 4 | background.
 * Columns count from the left, rows from the top, both from 0. Page numbers are not checked: a page beyond 8
 * is wherever the address formula puts it.
 *
 * Functions with a result return that of their last device primitive, or -1 if they need a screen record
 * (init_screen()) and there is none.
 */
#ifndef HALDEND_FPGA_TEXT_LAYER_H
#define HALDEND_FPGA_TEXT_LAYER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Byte address of a text page in FPGA memory. */
uint32_t text_page_addr_offset(unsigned int page);

/* Writes both text palettes. */
int init_fpga_text_layer(void);

/* Zeroes all nine pages, the invisible cells too. Needs no screen record. */
int clear_text_memory(void);

/* Writes a string of character codes, ended by a zero, from column x of row y on into the active write page,
 * in one colour byte. It is cut at the right edge, never continued on the next row; y is not checked. Returns
 * -1 after a line on standard error if x is beyond the right edge, or there is no memory for the cells. */
int write_text_xyc(const char* text, unsigned int x, unsigned int y, unsigned int color);

/* Writes one cell of the active write page: the low bytes of ch and color. x and y are not checked. */
int write_ch_xyc(unsigned int ch, unsigned int x, unsigned int y, unsigned int color);

/* Writes one cell at the screen record's text cursor in its active colour. The cursor doesn't move. Returns
 * -1 without a cursor. */
int write_ch(unsigned int ch);

/* The colour byte of write_ch(), and the page of all cell writes, in the screen record. They don't change the
 * FPGA. */
void set_active_text_color(unsigned int color);
void set_active_text_write_page(unsigned int page);

/* Makes the FPGA show a page. */
int show_text_page(unsigned int page);

/* Zeroes the 53 columns of the 26 rows of a page, or of every page; the cells beside them stay. */
int clear_text_page(unsigned int page);
int clear_all_text_pages(void);

#ifdef __cplusplus
}
#endif

#endif
