/* SPDX-License-Identifier: MIT */
/* The hardware cursor and the text cursor. */
#include "fpga/cursor.h"

#include "fpga/fpga_block.h"
#include "hw/fpga_map.h"

#include <algorithm>

int init_cursor(void)
{
    const unsigned char zeros[512] = {};
    return write_fpga_block(FPGA_CURSOR_IMAGE, zeros, sizeof(zeros));
}

int set_cursor_image(const cursor_shape* shape)
{
    write_fpga_words<CURSOR_ROWS>(FPGA_CURSOR_IMAGE, shape->image, shape->height);
    fpga_device_write_reg(FPGA_CURSOR_SIZE, static_cast<uint32_t>(shape->width) << 8 | (shape->height + 1u));
    return fpga_device_write_reg(FPGA_CURSOR_COLOR, shape->color);
}

int init_text_cursor(text_cursor* cursor, const text_cursor_parameters* parameters)
{
    *cursor = {parameters->x_origin,    static_cast<uint16_t>(parameters->y_origin - 1),
               parameters->x_step,      parameters->y_step,
               parameters->column,      parameters->row,
               parameters->last_column, parameters->last_row,
               parameters->shape,       parameters->shapes};
    fpga_device_write_reg(FPGA_CURSOR_X, cursor->x_origin);
    const int result = fpga_device_write_reg(FPGA_CURSOR_Y, cursor->y_origin);
    return cursor->shape < CURSOR_SHAPES ? set_cursor_image(&cursor->shapes[cursor->shape]) : result;
}

int set_cursor_xy(unsigned int column, unsigned int row, text_cursor* cursor)
{
    cursor->column = static_cast<uint16_t>(std::min<unsigned int>(column, cursor->last_column));
    cursor->row = static_cast<uint16_t>(std::min<unsigned int>(row, cursor->last_row));
    const uint32_t x = static_cast<uint32_t>(cursor->column) * cursor->x_step + cursor->x_origin;
    const uint32_t y = static_cast<uint32_t>(cursor->row) * cursor->y_step + cursor->y_origin;
    fpga_device_write_reg(FPGA_CURSOR_X, x);
    return fpga_device_write_reg(FPGA_CURSOR_Y, y);
}

/* One step on or back between 0 and last, wrapping at either end. Returns whether it wrapped. */
static bool step_on(uint16_t* place, uint16_t last)
{
    const bool round = *place == last;
    *place = round ? uint16_t{0} : static_cast<uint16_t>(*place + 1);
    return round;
}

static bool step_back(uint16_t* place, uint16_t last)
{
    const bool round = *place == 0;
    *place = round ? last : static_cast<uint16_t>(*place - 1);
    return round;
}

int move_text_cursor(text_cursor* cursor, int key)
{
    switch (key) {
    case CURSOR_KEY_DOWN:
        step_on(&cursor->row, cursor->last_row);
        break;
    case CURSOR_KEY_UP:
        step_back(&cursor->row, cursor->last_row);
        break;
    case CURSOR_KEY_LEFT:
        if (step_back(&cursor->column, cursor->last_column))
            step_back(&cursor->row, cursor->last_row);
        break;
    case CURSOR_KEY_RIGHT:
        if (step_on(&cursor->column, cursor->last_column))
            step_on(&cursor->row, cursor->last_row);
        break;
    case CURSOR_KEY_FIRST_ROW:
        cursor->row = 0;
        break;
    case CURSOR_KEY_FIRST_COLUMN:
        cursor->column = 0;
        break;
    case CURSOR_KEY_LAST_COLUMN:
        cursor->column = cursor->last_column;
        break;
    case CURSOR_KEY_LAST_ROW:
        cursor->row = cursor->last_row;
        break;
    default:
        break;
    }
    return set_cursor_xy(cursor->column, cursor->row, cursor);
}
