/* SPDX-License-Identifier: MIT */
/* Box pieces, shades and squares: codes 128-155.
 *
 * Strokes run to the edges of the cell, so that pieces meet across cells in both directions. */
#ifndef HALDEND_FPGA_GLYPHS_BOX_H
#define HALDEND_FPGA_GLYPHS_BOX_H

#include "fpga/glyph.h"

namespace glyphs
{

// clang-format off
/* Single line from the middle to the left edge */
inline constexpr glyph single_left = picture(
    "............"
    "............"
    "............"
    "............"
    "#######....."
    "............"
    "............"
    "............"
    "............"
    "............");

/* Single line from the middle to the right edge */
inline constexpr glyph single_right = picture(
    "............"
    "............"
    "............"
    "............"
    ".....#######"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Single line from the middle to the upper edge */
inline constexpr glyph single_up = picture(
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##....."
    "............"
    "............"
    "............"
    "............"
    "............");

/* Single line from the middle to the lower edge */
inline constexpr glyph single_down = picture(
    "............"
    "............"
    "............"
    "............"
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##.....");

/* Single lines across and down */
inline constexpr glyph single_cross = 
    single_up | single_down | single_left | single_right;

/* Double lines across */
inline constexpr glyph double_horizontal = picture(
    "............"
    "............"
    "............"
    "############"
    "............"
    "............"
    "############"
    "............"
    "............"
    "............");

/* Double lines from top to bottom */
inline constexpr glyph double_vertical = picture(
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##..");

/* Double corner, down and right */
inline constexpr glyph double_down_right = picture(
    "............"
    "............"
    "............"
    "..##########"
    "..##........"
    "..##........"
    "..##....####"
    "..##....##.."
    "..##....##.."
    "..##....##..");

/* Double lines across, and down from them */
inline constexpr glyph double_down_horizontal = picture(
    "............"
    "............"
    "............"
    "############"
    "............"
    "............"
    "####....####"
    "..##....##.."
    "..##....##.."
    "..##....##..");

/* Double lines from top to bottom, and right from them */
inline constexpr glyph double_vertical_right = picture(
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....####"
    "..##........"
    "..##........"
    "..##....####"
    "..##....##.."
    "..##....##.."
    "..##....##..");

/* A quarter of the double cross */
inline constexpr glyph double_inner_corner = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "........####"
    "........##.."
    "........##.."
    "........##..");

/* Double lines across and down */
inline constexpr glyph double_cross = 
    double_inner_corner | mirrored(double_inner_corner) |
    flipped(double_inner_corner) | turned(double_inner_corner);

inline constexpr glyph full_block = picture(
    "############"
    "############"
    "############"
    "############"
    "############"
    "############"
    "############"
    "############"
    "############"
    "############");

inline constexpr glyph medium_shade = picture(
    "##..##..##.."
    "..##..##..##"
    "##..##..##.."
    "..##..##..##"
    "##..##..##.."
    "..##..##..##"
    "##..##..##.."
    "..##..##..##"
    "##..##..##.."
    "..##..##..##");

inline constexpr glyph light_shade = picture(
    "##..##..##.."
    "............"
    "##..##..##.."
    "............"
    "##..##..##.."
    "............"
    "##..##..##.."
    "............"
    "##..##..##.."
    "............");

inline constexpr glyph grid = picture(
    "############"
    "##....##...."
    "##....##...."
    "##....##...."
    "##....##...."
    "############"
    "##....##...."
    "##....##...."
    "##....##...."
    "##....##....");

inline constexpr glyph lower_square = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "...######..."
    "...######..."
    "...######..."
    "............");

inline constexpr glyph upper_square = flipped(lower_square);
// clang-format on

} // namespace glyphs

#endif
