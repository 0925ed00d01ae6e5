/* SPDX-License-Identifier: MIT */
/* Glyphs as pictures, and pictures made of other pictures, all at compile time.
 *
 * A picture is ten rows of twelve marks:
 *   #  drawn in both half-images     '  only in the first, the upper frame line of the row
 *   .  not drawn                     ,  only in the second, the lower frame line
 *
 * How the sets are drawn: the base line is the bottom of row 7. Capitals and digits fill rows 1-7, small
 * letters rows 3-7 with ascenders from row 1 and descenders to row 9. Verticals are two pixels wide and
 * horizontals one row, which is a line of each field, so that nothing flickers. Marks in one half only are
 * for shapes that need the finer grid of 20 lines: accents, and strokes that lean by more than a pixel a row.
 *
 * A wrong picture is a compile error: it calls a function that doesn't exist at compile time, whose name says
 * what is wrong. */
#ifndef HALDEND_FPGA_GLYPH_H
#define HALDEND_FPGA_GLYPH_H

#include "fpga/picture.h"

#include <cstddef>
#include <cstdint>

namespace glyphs
{

constexpr int GLYPH_COLUMNS = 12;
constexpr int GLYPH_ROWS = 10;
constexpr int GLYPH_LINES = 2 * GLYPH_ROWS;

/* A character cell as the monitor shows it: frame lines from top to bottom, the even ones the first
 * half-image's; bit 15 is the leftmost pixel, bits 3-0 are zero. */
struct glyph {
    std::uint16_t line[GLYPH_LINES];
};

void glyph_leaves_its_cell();

constexpr std::uint16_t pixel(int column)
{
    return static_cast<std::uint16_t>(0x8000U >> column);
}

/* The glyph of a picture: ten rows of twelve marks. */
template <std::size_t length>
constexpr glyph picture(const char (&marks)[length])
{
    glyph drawn{};
    pictures::draw<GLYPH_COLUMNS, 2>(drawn.line, marks);
    return drawn;
}

/* Both shapes, one over the other. */
constexpr glyph operator|(const glyph& a, const glyph& b)
{
    glyph both{};
    for (int line = 0; line < GLYPH_LINES; ++line)
        both.line[line] = static_cast<std::uint16_t>(a.line[line] | b.line[line]);
    return both;
}

/* The shape with left and right swapped. */
constexpr glyph mirrored(const glyph& shape)
{
    glyph result{};
    for (int line = 0; line < GLYPH_LINES; ++line)
        for (int column = 0; column < GLYPH_COLUMNS; ++column)
            if (shape.line[line] & pixel(column))
                result.line[line] =
                    static_cast<std::uint16_t>(result.line[line] | pixel(GLYPH_COLUMNS - 1 - column));
    return result;
}

/* The shape with top and bottom swapped. */
constexpr glyph flipped(const glyph& shape)
{
    glyph result{};
    for (int line = 0; line < GLYPH_LINES; ++line)
        result.line[line] = shape.line[GLYPH_LINES - 1 - line];
    return result;
}

/* The shape turned by half a turn. */
constexpr glyph turned(const glyph& shape)
{
    return mirrored(flipped(shape));
}

/* The shape moved by that number of pixels to the right, or to the left if negative. */
constexpr glyph shifted(const glyph& shape, int columns)
{
    constexpr std::uint32_t CELL = 0xfff0;
    glyph result{};
    for (int line = 0; line < GLYPH_LINES; ++line) {
        const std::uint32_t pixels = std::uint32_t{shape.line[line]};
        const std::uint32_t moved = columns > 0 ? pixels >> columns : pixels << -columns;
        if ((columns > 0 ? moved << columns : moved >> -columns) != pixels || (moved & ~CELL) != 0)
            glyph_leaves_its_cell();
        result.line[line] = static_cast<std::uint16_t>(moved);
    }
    return result;
}

/* The shape moved down by that number of frame lines, or up if negative. */
constexpr glyph lowered(const glyph& shape, int lines)
{
    glyph result{};
    for (int line = 0; line < GLYPH_LINES; ++line) {
        const int target = line + lines;
        if (target >= 0 && target < GLYPH_LINES)
            result.line[target] = shape.line[line];
        else if (shape.line[line] != 0)
            glyph_leaves_its_cell();
    }
    return result;
}

/* The shape without one of its rows; the rows above it move down. Makes room for an accent over a capital. */
constexpr glyph squeezed(const glyph& shape, int row)
{
    if ((shape.line[0] | shape.line[1]) != 0)
        glyph_leaves_its_cell();
    glyph result = shape;
    for (int line = 2 * row + 1; line > 1; --line)
        result.line[line] = shape.line[line - 2];
    return result;
}

} // namespace glyphs

#endif
