/* SPDX-License-Identifier: MIT */
/* The screen record and the start-up of the overlay. */
#include "fpga/screen.h"

#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/graphic_layer.h"
#include "fpga/text_layer.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

screen* current_screen = nullptr;

uint32_t init_screen(screen* record, text_cursor* cursor)
{
    record->text_write_page = 0;
    record->text_color = 0x18;
    record->cursor = cursor;
    record->text_columns = VIDEO_TEXT_COLUMNS;
    record->text_lines = VIDEO_TEXT_ROWS;
    record->graphic_write_page = 0;
    record->graphic_color = 1;
    record->graphic_width = VIDEO_WIDTH;
    record->graphic_height = VIDEO_FIELD_LINES;
    record->graphic_x_offset = 40;
    record->graphic_y_offset = 7;
    record->control_shadow = fpga_device_read_reg(FPGA_CTRL);
    current_screen = record;
    return record->control_shadow;
}

int init_fpga(void)
{
    load_font(1);
    init_fpga_text_layer();
    init_fpga_graphic_layer();
    init_cursor();
    clear_text_memory();
    clear_graphic_memory();
    return 0;
}
