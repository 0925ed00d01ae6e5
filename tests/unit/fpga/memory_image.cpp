/* SPDX-License-Identifier: MIT */
/* Draws with every function of the overlay library on a recorded FPGA, and writes the contents of the FPGA's
 * memory to a file. ./check compares the files of this machine's processor and the target's. */
#include "fpga/box.h"
#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/graphic_layer.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "fpga/video_image.h"
#include "tests/support/hw/fpga_recorder.h"

#include <cstdio>
#include <fstream>
#include <vector>

/* Numbers without a pattern, the same on every processor. */
static unsigned char next_byte()
{
    static uint32_t state = 1;
    state = state * 1664525 + 1013904223;
    return static_cast<unsigned char>(state >> 24);
}

static void draw_text()
{
    for (unsigned int page = 0; page < 9; ++page) {
        set_active_text_write_page(page);
        write_text_xyc("Overlay \xa4\xff\x80", page, page, 0x18 + page);
        write_ch_xyc(0xe0 + page, 52, 25, 0xf0);
        write_box(10, 10, 20, 5, 0x1f, page % 3);
    }
    show_text_page(4);
    clear_text_page(8);
    write_ch('c');
}

static void draw_graphics()
{
    std::vector<unsigned char> image = {20, 0, 10, 0, 3, 0, 0, 0};
    for (int i = 0; i < 3 * 4 + 20 * 10; ++i)
        image.push_back(next_byte());
    for (int page = 0; page < 9; ++page) {
        write_graphic_window(10, 10, 100, 20, 0x100 + static_cast<unsigned int>(page), page);
        write_graphic_pixel_xy(700, 287, 9, 20, page);
        write_graphic_image_xy(200, 100, image.data(), page, 250);
    }
    show_graphic_page(7);
    clear_graphic_page(6);
}

static void draw_video()
{
    std::vector<unsigned char> frame(VIDEO_IMAGE_SIZE);
    for (unsigned char& byte : frame)
        byte = next_byte();
    write_video_image_to_fpga(frame.data(), 0, frame.size());
    get_video_image_from_fpga(frame.data(), 0, frame.size());
    write_video_image_to_fpga(frame.data(), 0, frame.size());
}

static void draw_cursor(screen* record, text_cursor* cursor)
{
    const text_cursor_parameters parameters = {82, 28, 12, 20, 5, 6, 52, 25, 1, cursor_shapes};
    init_text_cursor(cursor, &parameters);
    move_text_cursor(cursor, CURSOR_KEY_RIGHT);
    record->cursor = cursor;
}

static void switch_all()
{
    fpga_set_register(0xff0000, 0x12345678);
    fpga_play_mode();
    text_overlay_on();
    graphic_overlay_toggle();
    cursor_overlay_on();
    graphic_priority_on();
    video_restore_toggle();
    frame_generator_on();
    store_video();
}

int main(int argc, char* argv[])
{
    if (argc != 2) {
        fputs("Usage: memory_image FILE\n", stderr);
        return 2;
    }
    screen record = {};
    text_cursor cursor = {};
    init_fpga();
    init_screen(&record, nullptr);
    draw_cursor(&record, &cursor);
    draw_text();
    draw_graphics();
    draw_video();
    switch_all();

    std::ofstream file(argv[1], std::ios::binary);
    for (const int set : {1, 2, 3}) {
        load_font(set);
        file.write(reinterpret_cast<const char*>(fpga_memory().data()),
                   static_cast<std::streamsize>(fpga_memory().size()));
    }
    file.close();
    return file.good() ? 0 : 1;
}
