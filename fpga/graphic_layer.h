/* The graphic layer: nine pages of 720 × 288 pixels, of which the FPGA shows one. A pixel is a byte, an index
 * into the graphic palette. Lines are field lines; x counts from the left, y from the top.
 *
 * Nothing is clipped: what reaches beyond the right edge continues on the next line, what reaches beyond the
 * bottom lands in the next page. Drawing on a page that isn't there (beyond 8, or negative) does nothing.
 * Functions with a result return the last device primitive's, or -1 if nothing was drawn.
 */
#ifndef HALDEND_FPGA_GRAPHIC_LAYER_H
#define HALDEND_FPGA_GRAPHIC_LAYER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Byte address of each page. */
extern const uint32_t graphic_page_addr_offset[9];

/* Writes the palette. */
int init_fpga_graphic_layer(void);

/* Zeroes the 288 lines of all nine pages. */
int clear_graphic_memory(void);

/* Zeroes one page, in the screen's geometry. */
void clear_graphic_page(int page);

/* Stores the page in the screen record if it is below 9. No drawing function uses it. */
void set_active_grahic_write_page(int page);

/* Makes the FPGA show a page. */
void show_graphic_page(int page);

unsigned int get_active_graphic_color(void);
void set_active_graphic_color(unsigned int color);

/* Reads length bytes from the start of a page. */
int get_graphic_image(void* buffer, int page, size_t length);

/* Draws count pixels of a colour from (x, y) on. The screen's graphic offsets are not added. */
int write_graphic_pixel_xy(unsigned int x, unsigned int y, unsigned int color, size_t count, int page);

/* Fills a rectangle; the screen's graphic offsets are added to x and y. */
int write_graphic_window(unsigned int x, unsigned int y, unsigned int width, unsigned int height,
                         unsigned int color, int page);

/* Draws an image with a palette of its own; the screen's graphic offsets are added to x and y.
 *
 * The image, all numbers little-endian, at any alignment: width and height in pixels and the number of
 * palette entries P (16 bits each), 16 bits unused, P 32-bit ARGB entries, width × height pixels, top line
 * first. Its palette goes to the entries from base on, by register writes; the low byte of base is added to
 * the pixels in the caller's buffer, so drawing the same buffer twice shifts its colours twice. */
int write_graphic_image_xy(unsigned int x, unsigned int y, unsigned char* image, int page, unsigned int base);

#ifdef __cplusplus
}
#endif

#endif
