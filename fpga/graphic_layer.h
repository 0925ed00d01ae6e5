/* SPDX-License-Identifier: MIT */
/* The graphic layer: nine pages, 0-8, of 720 × 288 pixels; the FPGA shows one. A pixel is a byte, an index
 * into the graphic palette; of a colour only the low 8 bits count. Lines are field lines. x counts from the
 * left, y from the top, both from 0.
 *
 * Nothing is clipped: a drawing that reaches beyond the right edge continues on the next line, one that
 * reaches beyond the bottom continues in the memory behind the page. Calls with a page that doesn't exist, or
 * without a screen record (init_screen()), draw nothing.
 *
 * Functions with a result return that of their last device primitive, or -1 if nothing was drawn.
 */
#ifndef HALDEND_FPGA_GRAPHIC_LAYER_H
#define HALDEND_FPGA_GRAPHIC_LAYER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Byte address of each page in FPGA memory. */
extern const uint32_t graphic_page_addr_offset[9];

/* Writes std_graphic_color_tab to the palette. */
int init_fpga_graphic_layer(void);

/* Zeroes the 288 lines of all nine pages. Needs no screen record. */
int clear_graphic_memory(void);

/* Zeroes one page, in the screen record's geometry. */
void clear_graphic_page(int page);

/* Stores the page in the screen record if it is below 9. No drawing function uses it.
 *
 * Kept: the spelling of the name, which service tools call. */
void set_active_grahic_write_page(int page);

/* Makes the FPGA show a page; nothing if there is no such page. */
void show_graphic_page(int page);

/* The colour in the screen record, for callers; no drawing function uses it. 0 without a record. */
unsigned int get_active_graphic_color(void);
void set_active_graphic_color(unsigned int color);

/* Reads length bytes from the start of a page into the buffer, beyond its end too. Returns -1 if there is no
 * such page. */
int get_graphic_image(void* buffer, int page, size_t length);

/* Draws count pixels of a colour from (x, y) on, to the right. The screen's graphic offsets are not added. */
int write_graphic_pixel_xy(unsigned int x, unsigned int y, unsigned int color, size_t count, int page);

/* Fills a rectangle of width × height pixels; the screen's graphic offsets are added to x and y. */
int write_graphic_window(unsigned int x, unsigned int y, unsigned int width, unsigned int height,
                         unsigned int color, int page);

/* Draws an image with a palette of its own; the screen's graphic offsets are added to x and y.
 *
 * The image has little-endian numbers at any alignment: width and height in pixels and the number of palette
 * entries P (16 bits each), 16 unused bits, P 32-bit ARGB entries, then width × height pixels, top line
 * first. The palette goes to the entries from base on, by register writes.
 *
 * Kept: the low byte of base is added to the pixels in the caller's buffer. A caller that draws the same
 * buffer twice gets its colours shifted twice. */
int write_graphic_image_xy(unsigned int x, unsigned int y, unsigned char* image, int page, unsigned int base);

#ifdef __cplusplus
}
#endif

#endif
