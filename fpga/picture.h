/* SPDX-License-Identifier: MIT */
/* Pictures of marks, turned into words of pixels at compile time. Glyphs and cursor shapes are written as
 * such.
 *
 *   #  drawn     '  where a row is two frame lines: only in the upper one
 *   .  not       ,  likewise, only in the lower one
 *
 * A wrong picture is a compile error: it calls a function that doesn't exist at compile time, whose name says
 * what is wrong. */
#ifndef HALDEND_FPGA_PICTURE_H
#define HALDEND_FPGA_PICTURE_H

#include <cstddef>

namespace pictures
{

void picture_has_a_mark_that_means_nothing();

constexpr bool is_drawn(char mark, int line_of_row, int lines_a_row)
{
    switch (mark) {
    case '#':
        return true;
    case '.':
        return false;
    case '\'':
        if (lines_a_row == 2)
            return line_of_row == 0;
        break;
    case ',':
        if (lines_a_row == 2)
            return line_of_row == 1;
        break;
    default:
        break;
    }
    picture_has_a_mark_that_means_nothing();
    return false;
}

/* Draws a picture, its rows one after the other, into lines of pixels, one or two lines a row. The leftmost
 * pixel is a word's most significant bit. */
template <int columns, int lines_a_row, typename word, std::size_t lines, std::size_t length>
constexpr void draw(word (&line)[lines], const char (&marks)[length])
{
    static_assert(length == lines / lines_a_row * columns + 1,
                  "a picture is rows of as many marks as columns");
    constexpr auto LEFTMOST = static_cast<word>(word{1} << (8 * sizeof(word) - 1));
    for (int i = 0; i < static_cast<int>(lines); ++i)
        for (int column = 0; column < columns; ++column)
            if (is_drawn(marks[i / lines_a_row * columns + column], i % lines_a_row, lines_a_row))
                line[i] = static_cast<word>(line[i] | LEFTMOST >> column);
}

} // namespace pictures

#endif
