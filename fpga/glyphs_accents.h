/* SPDX-License-Identifier: MIT */
/* Accents: the marks over and under letters.
 *
 * A small letter has two rows above it and a free one between. A capital under an accent is a row shorter; it
 * leaves one and a half rows and a free line. Marks for capitals are flatter and have "high" in the name. */
#ifndef HALDEND_FPGA_GLYPHS_ACCENTS_H
#define HALDEND_FPGA_GLYPHS_ACCENTS_H

#include "fpga/glyph.h"

namespace glyphs
{

// clang-format off
/* The dot of i and j */
inline constexpr glyph dot_of_i = picture(
    "............"
    ".....##....."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Acute */
inline constexpr glyph acute = picture(
    "......,##'.."
    "....,##'...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Grave */
inline constexpr glyph grave = mirrored(acute);

/* Circumflex */
inline constexpr glyph circumflex = picture(
    "....,##,...."
    "...##..##..."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Caron */
inline constexpr glyph caron = picture(
    "...##..##..."
    "....'##'...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Breve */
inline constexpr glyph breve = picture(
    "...##..##..."
    "....####...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Tilde */
inline constexpr glyph tilde_above = picture(
    "..,###,.##.."
    "..##.'###'.."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Diaeresis */
inline constexpr glyph diaeresis = picture(
    "............"
    "..##....##.."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Double acute */
inline constexpr glyph double_acute = picture(
    "....##...##."
    "...##...##.."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Ring */
inline constexpr glyph ring = picture(
    "...,#''#,..."
    "...'#,,#'..."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Dot above */
inline constexpr glyph dot_above = picture(
    "............"
    "....###....."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Acute */
inline constexpr glyph high_acute = picture(
    "......,##'.."
    ".....'''...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Grave */
inline constexpr glyph high_grave = mirrored(high_acute);

/* Circumflex */
inline constexpr glyph high_circumflex = picture(
    "...,,##,,..."
    "..'''..'''.."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Caron */
inline constexpr glyph high_caron = picture(
    "..'##,,##'.."
    ".....''....."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Breve */
inline constexpr glyph high_breve = picture(
    "...##..##..."
    "....''''...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Tilde */
inline constexpr glyph high_tilde = picture(
    "..,#'#,.##.."
    "..''..'''..."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Diaeresis */
inline constexpr glyph high_diaeresis = lowered(diaeresis, -2);

/* Double acute */
inline constexpr glyph high_double_acute = picture(
    "...,#'..,#'."
    "..''...''..."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Dot */
inline constexpr glyph high_dot = lowered(dot_above, -2);

/* Cedilla */
inline constexpr glyph cedilla = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    ".....##....."
    "...###......");

/* Comma below: a frame line away from the letter, so that it isn't taken for a cedilla. */
inline constexpr glyph comma_below = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    ".....,,,,..."
    "....,###'...");

/* Ogonek */
inline constexpr glyph ogonek = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    ".......##..."
    "........##..");
// clang-format on

} // namespace glyphs

#endif
