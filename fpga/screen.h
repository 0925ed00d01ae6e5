/* SPDX-License-Identifier: MIT */
/* The screen record: the one piece of state of the overlay library, shared by text, graphics and switches.
 *
 * Sizes and offsets are in the units of the layers: cells, pixels, field lines.
 */
#ifndef HALDEND_FPGA_SCREEN_H
#define HALDEND_FPGA_SCREEN_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct text_cursor;

struct screen {
    uint32_t text_write_page;    /* page that text writes go to, 0-8 */
    uint32_t text_color;         /* colour byte of write_ch(): foreground << 4 | background */
    struct text_cursor* cursor;  /* used by write_ch() only; may be null; not owned */
    uint32_t text_columns;       /* cells of a text line */
    uint32_t text_lines;         /* text lines of a page */
    uint32_t graphic_write_page; /* for callers: drawing functions take their page as an argument */
    uint32_t graphic_color;      /* for callers, likewise */
    uint32_t graphic_width;      /* bytes (pixels) of a graphic line */
    uint32_t graphic_height;     /* graphic lines of a page */
    uint32_t graphic_x_offset;   /* pixels added to x by windows and images */
    uint32_t graphic_y_offset;   /* lines added to y by the same */
    uint32_t control_shadow;     /* CTRL as the switches last knew it */
};

/* The current screen record; null before the first init_screen(). Functions that need a record do nothing
 * without one. */
extern struct screen* current_screen;

/* Fills the record with the board's geometry, reads CTRL from the FPGA into the shadow, and makes the record
 * the current screen. The caller owns the record, which must live as long as it is the current one. Returns
 * the value of CTRL, 0 if the driver refused. */
uint32_t init_screen(struct screen* record, struct text_cursor* cursor);

/* Sets up the overlay's memories: glyph set 1, palettes, an empty cursor, empty text and graphic pages. Needs
 * no screen record: at start it comes before init_screen(). Always returns 0. */
int init_fpga(void);

#ifdef __cplusplus
}
#endif

#endif
