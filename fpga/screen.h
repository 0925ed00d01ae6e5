/* The screen record: the overlay library's one piece of state, shared by text, graphics and switches.
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
    struct text_cursor* cursor;  /* used by write_ch() only; may be null; stays its owner's */
    uint32_t text_columns;       /* cells of a text line */
    uint32_t text_lines;         /* text lines of a page */
    uint32_t graphic_write_page; /* kept for callers; drawing functions take their page as an argument */
    uint32_t graphic_color;      /* kept for callers */
    uint32_t graphic_width;      /* bytes (pixels) of a graphic line */
    uint32_t graphic_height;     /* graphic lines of a page */
    uint32_t graphic_x_offset;   /* pixels added to x by windows and images */
    uint32_t graphic_y_offset;   /* lines added to y by the same */
    uint32_t control_shadow;     /* CTRL as the switches last knew it */
};

/* The current screen; null before the first init_screen(). Without one, what needs the record does
 * nothing. */
extern struct screen* current_screen;

/* Fills the record with the board's geometry, takes CTRL from the FPGA into the shadow, and makes the
 * record the current screen. It stays the caller's and has to live as long as it is the current one.
 * Returns the value of CTRL. */
uint32_t init_screen(struct screen* record, struct text_cursor* cursor);

/* Brings the overlay's memories up: glyph set 1, palettes, an empty cursor, empty text and graphic pages.
 * Needs no screen record: at start it comes before init_screen(). Returns 0. */
int init_fpga(void);

#ifdef __cplusplus
}
#endif

#endif
