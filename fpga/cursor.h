/* SPDX-License-Identifier: MIT */
/* The hardware cursor: its image and place, and the text cursor that moves it from cell to cell.
 *
 * Places are pixels and lines from the top left; cells are columns and rows, counted from 0. All functions
 * return the result of their last device primitive, hw/fpga_device.h. */
#ifndef HALDEND_FPGA_CURSOR_H
#define HALDEND_FPGA_CURSOR_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define CURSOR_ROWS   32 /* rows of every cursor image */
#define CURSOR_SHAPES 5

/* A bit for each of 32 pixels, bit 31 of a row the leftmost; set bits are drawn in the shape's colour. */
struct cursor_image {
    uint32_t rows[CURSOR_ROWS];
};

/* An image with its size and colour. The image stays its owner's. */
struct cursor_shape {
    uint16_t width;        /* pixels, up to 32 */
    uint16_t height;       /* rows, up to 32 */
    uint32_t color;        /* ARGB */
    const uint32_t* image; /* CURSOR_ROWS rows of a cursor_image */
};

extern const struct cursor_image cursor_cross_image;
extern const struct cursor_image cursor_arrow_image;
extern const struct cursor_image cursor_block_image;
extern const struct cursor_image cursor_line_image;
extern const struct cursor_image cursor_carret_image;

/* Cross, arrow, block, line, caret. The last three fit a character cell of 12 pixels by 20 lines. */
extern const struct cursor_shape cursor_shapes[CURSOR_SHAPES];

/* The parameters of a text cursor. */
struct text_cursor_parameters {
    uint16_t x_origin; /* pixels, of column 0 */
    uint16_t y_origin; /* lines, of row 0 */
    uint16_t x_step;   /* pixels a column */
    uint16_t y_step;   /* lines a row */
    uint16_t column;
    uint16_t row;
    uint16_t last_column;
    uint16_t last_row;
    uint16_t shape;                    /* index into the shapes */
    const struct cursor_shape* shapes; /* CURSOR_SHAPES of them */
};

/* A text cursor: the same, but y_origin is the given one less 1.
 *
 * Kept: the given column and row take effect with the first set_cursor_xy() or move_text_cursor(); before
 * that the cursor stands at the origin. Service tools place it after init_text_cursor(). */
struct text_cursor {
    uint16_t x_origin;
    uint16_t y_origin;
    uint16_t x_step;
    uint16_t y_step;
    uint16_t column;
    uint16_t row;
    uint16_t last_column;
    uint16_t last_row;
    uint16_t shape;
    const struct cursor_shape* shapes;
};

/* Zeroes the cursor image memory, 512 bytes: no cursor is seen. */
int init_cursor(void);

/* Loads a shape: its rows, size and colour. The height must not exceed CURSOR_ROWS. */
int set_cursor_image(const struct cursor_shape* shape);

/* Copies the parameters into the cursor, puts it at the origin and loads the shape. An index beyond the
 * shapes loads none. The cursor keeps the pointer to the shapes. */
int init_text_cursor(struct text_cursor* cursor, const struct text_cursor_parameters* parameters);

/* Puts the cursor on a cell, and stores that in *cursor. A column or row beyond the last becomes the last. */
int set_cursor_xy(unsigned int column, unsigned int row, struct text_cursor* cursor);

/* Moves the cursor by a key code, wrapping at the edges. Other codes write its place once more. */
int move_text_cursor(struct text_cursor* cursor, int key);

#define CURSOR_KEY_DOWN         258
#define CURSOR_KEY_UP           259
#define CURSOR_KEY_LEFT         260 /* from column 0 to the end of the row above */
#define CURSOR_KEY_RIGHT        261 /* from the last column to the start of the row below */
#define CURSOR_KEY_FIRST_ROW    264
#define CURSOR_KEY_FIRST_COLUMN 273
#define CURSOR_KEY_LAST_COLUMN  348
#define CURSOR_KEY_LAST_ROW     349

#ifdef __cplusplus
}
#endif

#endif
