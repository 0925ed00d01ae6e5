/* SPDX-License-Identifier: MIT */
/* Any calls of the overlay library, with any numbers: texts, frames, pixels, rectangles, pages, cursors, glyph sets.
 *
 * A drawing whose place and size fit its page may write to that page alone.
 */
#include "fpga/box.h"
#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/graphic_layer.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/input_reader.h"
#include "tests/support/hw/fpga_recorder.h"

#include <cstring>
#include <string>
#include <vector>

namespace
{

const int STEPS = 40;

/* A place: mostly on the page, sometimes anywhere. */
struct place {
    uint32_t x;
    uint32_t y;
    bool fits;
};

place place_of(input_reader& reader, uint32_t width, uint32_t height)
{
    const uint32_t kind = reader.below(8);
    if (kind == 0)
        return {reader.number(4), reader.number(4), false};
    return {reader.below(width), reader.below(height), true};
}

void expect_in(uint32_t begin, uint32_t length)
{
    for (const fpga_access& access : fpga_recorded())
        if (access.kind == write_memory)
            EXPECT(access.addr >= begin && access.addr - begin + access.value <= length);
}

void expect_on_text_page()
{
    expect_in(text_page_addr_offset(current_screen->text_write_page), FPGA_TEXT_PAGE_STRIDE);
}

void expect_on_graphic_page(int page)
{
    expect_in(graphic_page_addr_offset[page], FPGA_GRAPHIC_PAGE_STRIDE);
}

void draw_string(input_reader& reader)
{
    const place at = place_of(reader, VIDEO_TEXT_COLUMNS, VIDEO_TEXT_ROWS);
    const uint32_t color = reader.number(4);
    const std::string text = reader.bytes(reader.below(80));
    write_text_xyc(text.c_str(), at.x, at.y, color);
    if (!at.fits)
        return;
    const uint32_t shown = std::min(static_cast<uint32_t>(strlen(text.c_str())),
                                    static_cast<uint32_t>(VIDEO_TEXT_COLUMNS) - at.x);
    const uint32_t address = text_page_addr_offset(current_screen->text_write_page) +
                             (at.x + at.y * FPGA_TEXT_ROW_CELLS) * FPGA_TEXT_CELL_BYTES;
    EXPECT((fpga_recorded() == fpga_accesses{
                                   {write_memory, address, shown * FPGA_TEXT_CELL_BYTES}
    }));
    const unsigned char* cells = fpga_memory().data() + address;
    for (size_t i = 0; i < shown; ++i) {
        EXPECT(cells[2 * i] == static_cast<unsigned char>(text[i]));
        EXPECT(cells[2 * i + 1] == (color & 0xff));
    }
}

void draw_cell(input_reader& reader)
{
    const place at = place_of(reader, VIDEO_TEXT_COLUMNS, VIDEO_TEXT_ROWS);
    write_ch_xyc(reader.number(4), at.x, at.y, reader.number(4));
    if (at.fits)
        expect_on_text_page();
}

void draw_box(input_reader& reader)
{
    const place at = place_of(reader, VIDEO_TEXT_COLUMNS, VIDEO_TEXT_ROWS);
    const uint32_t width = reader.below(100);
    const uint32_t height = reader.below(VIDEO_TEXT_ROWS) + 1;
    write_box(at.x, at.y, width, height, reader.number(4), reader.below(5));
    if (at.fits && at.y + height <= VIDEO_TEXT_ROWS)
        expect_on_text_page();
}

int page_of(input_reader& reader)
{
    return static_cast<int>(reader.below(12)) - 1;
}

void draw_pixels(input_reader& reader)
{
    const place at = place_of(reader, VIDEO_WIDTH, VIDEO_FIELD_LINES);
    const int page = page_of(reader);
    const size_t count = reader.below(VIDEO_WIDTH);
    const int result = write_graphic_pixel_xy(at.x, at.y, reader.number(4), count, page);
    if (page < 0 || page >= static_cast<int>(FPGA_PAGES))
        EXPECT(result == -1 && fpga_recorded().empty());
    else if (at.fits)
        expect_on_graphic_page(page);
}

void draw_window(input_reader& reader)
{
    const place at = place_of(reader, VIDEO_WIDTH, 200);
    const uint32_t width = reader.below(VIDEO_WIDTH);
    const uint32_t height = reader.below(60);
    const int page = page_of(reader);
    const int result = write_graphic_window(at.x, at.y, width, height, reader.number(4), page);
    if (page < 0 || page >= static_cast<int>(FPGA_PAGES))
        EXPECT(result == -1 && fpga_recorded().empty());
    else if (at.fits)
        expect_on_graphic_page(page);
}

int key_of(input_reader& reader)
{
    static const int keys[] = {CURSOR_KEY_DOWN,        CURSOR_KEY_UP,        CURSOR_KEY_LEFT,
                               CURSOR_KEY_RIGHT,       CURSOR_KEY_FIRST_ROW, CURSOR_KEY_FIRST_COLUMN,
                               CURSOR_KEY_LAST_COLUMN, CURSOR_KEY_LAST_ROW};
    const uint32_t choice = reader.below(10);
    return choice < std::size(keys) ? keys[choice] : static_cast<int>(reader.number(4));
}

void expect_cursor_at(const text_cursor& cursor, const text_cursor_parameters& parameters)
{
    EXPECT(cursor.column <= parameters.last_column && cursor.row <= parameters.last_row);
    EXPECT(fpga_register(FPGA_CURSOR_X) == uint32_t{cursor.column} * parameters.x_step + parameters.x_origin);
    const auto y_origin = static_cast<uint16_t>(parameters.y_origin - 1);
    EXPECT(fpga_register(FPGA_CURSOR_Y) == uint32_t{cursor.row} * parameters.y_step + y_origin);
}

void move_cursor(input_reader& reader)
{
    text_cursor_parameters parameters = {};
    for (uint16_t* number : {&parameters.last_column, &parameters.last_row, &parameters.x_step,
                             &parameters.y_step, &parameters.x_origin, &parameters.y_origin})
        *number = static_cast<uint16_t>(reader.number(2));
    /* As many rows as the shape has, and not one more. */
    const auto height = static_cast<uint16_t>(reader.below(CURSOR_ROWS + 1));
    const std::vector<uint32_t> rows(height, reader.number(4));
    const std::vector<cursor_shape> shapes(CURSOR_SHAPES, {16, height, reader.number(4), rows.data()});
    parameters.shape = static_cast<uint16_t>(reader.below(8));
    parameters.shapes = shapes.data();
    text_cursor cursor = {};
    init_text_cursor(&cursor, &parameters);
    set_cursor_xy(reader.number(4), reader.number(4), &cursor);
    expect_cursor_at(cursor, parameters);
    for (int step = 0; step < 4; ++step) {
        move_text_cursor(&cursor, key_of(reader));
        expect_cursor_at(cursor, parameters);
    }
    expect_in(FPGA_CURSOR_IMAGE, CURSOR_ROWS * sizeof(uint32_t));
}

void change_pages(input_reader& reader)
{
    const int page = page_of(reader);
    set_active_text_write_page(reader.below(FPGA_PAGES));
    set_active_grahic_write_page(page);
    show_graphic_page(page);
    clear_text_page(reader.below(FPGA_PAGES));
    clear_graphic_page(page);
    load_font(static_cast<int>(reader.below(8)) - 2);
    switch (reader.below(4)) {
    case 0:
        text_overlay_toggle();
        break;
    case 1:
        graphic_priority_toggle();
        break;
    case 2:
        video_restore_off();
        break;
    default:
        cursor_overlay_on();
        break;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static void (*const steps[])(input_reader&) = {draw_string, draw_cell,   draw_box,    draw_pixels,
                                                   draw_window, move_cursor, change_pages};
    input_reader reader(data, size);
    screen record = {};
    init_screen(&record, nullptr);
    for (int step = 0; step < STEPS && !reader.at_end(); ++step) {
        fpga_recorded().clear();
        steps[reader.below(std::size(steps))](reader);
    }
    current_screen = nullptr;
    return INPUT_TAKEN;
}
