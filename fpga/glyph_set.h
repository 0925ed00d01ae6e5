/* SPDX-License-Identifier: MIT */
/* Turns the list of a set's glyphs into the table that the FPGA takes, at compile time. */
#ifndef HALDEND_FPGA_GLYPH_SET_H
#define HALDEND_FPGA_GLYPH_SET_H

#include "fpga/font_tables.h"
#include "fpga/glyph.h"
#include "hw/fpga_map.h"

namespace glyphs
{

/* One code of a set. */
struct set_row {
    unsigned char code;
    std::uint16_t character; /* Unicode; 0 if the code shows none */
    glyph shape;
};

inline constexpr glyph blank{};

/* The codes that the sets have in common, and those that each lists for itself. */
constexpr std::size_t FIRST_OWN_CODE = 156;
using common_rows = set_row[FIRST_OWN_CODE];
using own_rows = set_row[256 - FIRST_OWN_CODE];

/* Whether the rows list every code from first on, each once, in order. */
template <std::size_t length>
constexpr bool lists_codes_from(std::size_t first, const set_row (&rows)[length])
{
    for (std::size_t i = 0; i < length; ++i)
        if (rows[i].code != first + i)
            return false;
    return true;
}

constexpr int rows_that_differ(const glyph& shape)
{
    int count = 0;
    for (int line = 0; line < GLYPH_LINES; line += 2)
        count += shape.line[line] != shape.line[line + 1] ? 1 : 0;
    return count;
}

/* Whether both halves of every glyph have something in common. A glyph that differs in all rows would
 * flicker. */
template <std::size_t length>
constexpr bool halves_are_alike(const set_row (&rows)[length])
{
    for (const set_row& row : rows)
        if (rows_that_differ(row.shape) > 9)
            return false;
    return true;
}

constexpr const set_row& row_of(const common_rows& common, const own_rows& own, std::size_t code)
{
    return code < FIRST_OWN_CODE ? common[code] : own[code - FIRST_OWN_CODE];
}

constexpr font_map_tab map_of(const common_rows& common, const own_rows& own)
{
    constexpr std::size_t HALF_BYTES = 32;
    font_map_tab table{};
    for (std::size_t code = 0; code < 256; ++code) {
        const glyph& shape = row_of(common, own, code).shape;
        for (std::size_t line = 0; line < GLYPH_LINES; ++line) {
            const std::size_t at = code * FPGA_GLYPH_BYTES + line % 2 * HALF_BYTES + line / 2 * 2;
            table.rows[at] = static_cast<unsigned char>(shape.line[line] >> 8);
            table.rows[at + 1] = static_cast<unsigned char>(shape.line[line] & 0xff);
        }
    }
    return table;
}

constexpr font_unicode_tab characters_of(const common_rows& common, const own_rows& own)
{
    font_unicode_tab table{};
    for (std::size_t code = 0; code < 256; ++code)
        table.characters[code] = row_of(common, own, code).character;
    return table;
}

} // namespace glyphs

#endif
