/* SPDX-License-Identifier: MIT */
/* The text layer. */
#include "fpga/text_layer.h"

#include "fpga/cursor.h"
#include "fpga/fpga_block.h"
#include "fpga/palettes.h"
#include "fpga/screen.h"
#include "hw/fpga_map.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

uint32_t text_page_addr_offset(unsigned int page)
{
    return FPGA_TEXT_PAGES + page * FPGA_TEXT_PAGE_STRIDE;
}

static uint32_t cell_address(unsigned int x, unsigned int y)
{
    return text_page_addr_offset(current_screen->text_write_page) +
           (x + y * FPGA_TEXT_ROW_CELLS) * FPGA_TEXT_CELL_BYTES;
}

int init_fpga_text_layer(void)
{
    write_fpga_words<TEXT_COLORS>(FPGA_TEXT_FOREGROUND, text_forderground_color_tab, TEXT_COLORS);
    return write_fpga_words<TEXT_COLORS>(FPGA_TEXT_BACKGROUND, text_background_color_tab, TEXT_COLORS);
}

int clear_text_memory(void)
{
    const unsigned char zeros[FPGA_TEXT_PAGE_STRIDE] = {};
    int result = 0;
    for (unsigned int page = 0; page < FPGA_PAGES; ++page)
        result = write_fpga_block(text_page_addr_offset(page), zeros, sizeof(zeros));
    return result;
}

/* The number of cells of a string of that length that fit from column x on; negative if x is beyond the edge.
 * The sum is compared as a signed number, and wraps as one. */
static int32_t cells_that_fit(uint32_t length, uint32_t x)
{
    const uint32_t columns = current_screen->text_columns;
    const bool too_long = static_cast<int32_t>(x + length) > static_cast<int32_t>(columns);
    return static_cast<int32_t>(too_long ? columns - x : length);
}

int write_text_xyc(const char* text, unsigned int x, unsigned int y, unsigned int color)
{
    if (current_screen == nullptr)
        return -1;
    const int32_t n = cells_that_fit(static_cast<uint32_t>(strlen(text)), x);
    const size_t length = FPGA_TEXT_CELL_BYTES * static_cast<size_t>(n < 0 ? 0 : n);
    auto* cells = n < 0 ? nullptr : static_cast<unsigned char*>(malloc(length + 1));
    if (cells == nullptr) {
        fputs("malloc error in write_text_xyc\n", stderr);
        return -1;
    }
    for (size_t i = 0; i < length; i += FPGA_TEXT_CELL_BYTES) {
        cells[i] = static_cast<unsigned char>(text[i / FPGA_TEXT_CELL_BYTES]);
        cells[i + 1] = static_cast<unsigned char>(color);
    }
    const int result = write_fpga_block(cell_address(x, y), cells, length);
    free(cells);
    return result;
}

int write_ch_xyc(unsigned int ch, unsigned int x, unsigned int y, unsigned int color)
{
    if (current_screen == nullptr)
        return -1;
    const unsigned char cell[FPGA_TEXT_CELL_BYTES] = {static_cast<unsigned char>(ch),
                                                      static_cast<unsigned char>(color)};
    return write_fpga_block(cell_address(x, y), cell, sizeof(cell));
}

int write_ch(unsigned int ch)
{
    if (current_screen == nullptr || current_screen->cursor == nullptr)
        return -1;
    const text_cursor* cursor = current_screen->cursor;
    return write_ch_xyc(ch, cursor->column, cursor->row, current_screen->text_color);
}

void set_active_text_color(unsigned int color)
{
    if (current_screen != nullptr)
        current_screen->text_color = color;
}

void set_active_text_write_page(unsigned int page)
{
    if (current_screen != nullptr)
        current_screen->text_write_page = page;
}

int show_text_page(unsigned int page)
{
    return fpga_device_write_reg(FPGA_TEMO, text_page_addr_offset(page));
}

int clear_text_page(unsigned int page)
{
    if (current_screen == nullptr)
        return -1;
    const unsigned char zeros[FPGA_TEXT_ROW_BYTES] = {};
    const uint32_t used = current_screen->text_columns * FPGA_TEXT_CELL_BYTES;
    int result = 0;
    for (uint32_t row = 0; row < current_screen->text_lines; ++row)
        result = write_fpga_block(text_page_addr_offset(page) + row * FPGA_TEXT_ROW_BYTES, zeros,
                                  used < FPGA_TEXT_ROW_BYTES ? used : FPGA_TEXT_ROW_BYTES);
    return result;
}

int clear_all_text_pages(void)
{
    int result = 0;
    for (unsigned int page = 0; page < FPGA_PAGES; ++page)
        result = clear_text_page(page);
    return result;
}
