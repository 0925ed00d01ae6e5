/* The text layer: nine pages of character cells, of which the FPGA shows one.
 *
 * A page is 28 rows of 64 cells, of which 26 rows of 53 columns are seen. A cell is two bytes: the character
 * code, an index into the loaded glyph set, and the colour byte, foreground << 4 | background. Columns count
 * from the left, rows from the top. Page numbers are not checked: pages beyond 8 lie where the formula puts
 * them.
 *
 * What writes to the FPGA returns the last device primitive's result, or -1 if it needs a screen record and there
 * is none.
 */
#ifndef HALDEND_FPGA_TEXT_LAYER_H
#define HALDEND_FPGA_TEXT_LAYER_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Byte address of a text page. */
uint32_t text_page_addr_offset(unsigned int page);

/* Writes both text palettes. */
int init_fpga_text_layer(void);

/* Zeroes all nine pages, the unseen cells too. */
int clear_text_memory(void);

/* Writes a zero-terminated string from column x of row y on, in one colour, into the active write page. Cut
 * at the right edge, never continued on the next row. Returns the device primitive's result; without memory
 * for the cells, and with an x beyond the right edge, a line on standard error and -1. */
int write_text_xyc(const char* text, unsigned int x, unsigned int y, unsigned int color);

/* Writes one cell of the active write page. Nothing is checked. */
int write_ch_xyc(unsigned int ch, unsigned int x, unsigned int y, unsigned int color);

/* Writes one cell at the text cursor of the screen in the active colour; nothing without a cursor. */
int write_ch(unsigned int ch);

void set_active_text_color(unsigned int color);
void set_active_text_write_page(unsigned int page);

/* Makes the FPGA show a page. */
int show_text_page(unsigned int page);

/* Zeroes the 53 columns of the 26 rows of a page, and nothing beside them. */
int clear_text_page(unsigned int page);
int clear_all_text_pages(void);

#ifdef __cplusplus
}
#endif

#endif
