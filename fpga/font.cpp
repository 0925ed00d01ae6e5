/* SPDX-License-Identifier: MIT */
/* The choice between the glyph sets. */
#include "fpga/font.h"

#include "fpga/font_tables.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"

#include <algorithm>

static int current_font = 0;

int internal_load_font(const unsigned char* table, size_t length)
{
    unsigned char swapped[FONT_MAP_LENGTH];
    for (size_t row = 0; row < FONT_MAP_LENGTH; row += 2) {
        swapped[row] = table[row + 1];
        swapped[row + 1] = table[row];
    }
    return write_fpga_block(FPGA_GLYPHS, swapped, std::min(length, sizeof(swapped)));
}

int load_font(int set)
{
    if (set == current_font || set == 0)
        return 0;
    current_font = set;
    if (set < 0 || set > FONT_SETS)
        return 0;
    return internal_load_font(font_sets[set - 1].glyphs->rows, FONT_MAP_LENGTH);
}
