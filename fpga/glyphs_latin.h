/* SPDX-License-Identifier: MIT */
/* Letters and signs of the Latin repertoires beyond ASCII. The sets compose letters with accents where they
 * list them. */
#ifndef HALDEND_FPGA_GLYPHS_LATIN_H
#define HALDEND_FPGA_GLYPHS_LATIN_H

#include "fpga/glyphs_ascii.h"

namespace glyphs
{

// clang-format off
/* Stroke of D */
inline constexpr glyph stroke_of_capital_d = picture(
    "............"
    "............"
    "............"
    "............"
    "######......"
    "............"
    "............"
    "............"
    "............"
    "............");

/* Stroke of d, with the stem it crosses */
inline constexpr glyph stroke_of_small_d = picture(
    "........##.."
    ".....#######"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* U+00A1 INVERTED EXCLAMATION MARK */
inline constexpr glyph inverted_exclamation_mark = flipped(exclamation_mark);

/* U+00A2 CENT SIGN */
inline constexpr glyph cent_sign = picture(
    "............"
    "............"
    ".....##....."
    "...#######.."
    "..##.##....."
    "..##.##....."
    "..##.##....."
    "...#######.."
    ".....##....."
    "............");

/* U+00A3 POUND SIGN */
inline constexpr glyph pound_sign = picture(
    "............"
    "....#####..."
    "...##...##.."
    "...##......."
    ".#######...."
    "...##......."
    "...##......."
    ".#########.."
    "............"
    "............");

/* U+20AC EURO SIGN */
inline constexpr glyph euro_sign = picture(
    "............"
    "....######.."
    "...##......."
    ".########..."
    "...##......."
    ".#######...."
    "...##......."
    "....######.."
    "............"
    "............");

/* U+00A5 YEN SIGN */
inline constexpr glyph yen_sign = picture(
    "............"
    ".##......##."
    "..##....##.."
    "...##..##..."
    "..########.."
    ".....##....."
    "..########.."
    ".....##....."
    "............"
    "............");

/* U+00A7 SECTION SIGN */
inline constexpr glyph section_sign = picture(
    "...######..."
    "..##....##.."
    "...###......"
    "..##.###...."
    "..##...##..."
    "...###.##..."
    ".....###...."
    "..##....##.."
    "...######..."
    "............");

/* U+00A9 COPYRIGHT SIGN */
inline constexpr glyph copyright_sign = picture(
    "...######..."
    ".##......##."
    "##...###..##"
    "##.##...####"
    "##.##.....##"
    "##.##...####"
    "##...###..##"
    ".##......##."
    "...######..."
    "............");

/* U+00AA FEMININE ORDINAL INDICATOR */
inline constexpr glyph feminine_ordinal_indicator = picture(
    "...#####...."
    ".......##..."
    "...######..."
    "..##...##..."
    "...######..."
    "............"
    "..#######..."
    "............"
    "............"
    "............");

/* U+00AB LEFT-POINTING DOUBLE ANGLE QUOTATION MARK */
inline constexpr glyph left_double_angle_quotation_mark = picture(
    "............"
    "............"
    "............"
    "....##..##.."
    "...##..##..."
    "..##..##...."
    "...##..##..."
    "....##..##.."
    "............"
    "............");

/* U+00AC NOT SIGN */
inline constexpr glyph not_sign = picture(
    "............"
    "............"
    "............"
    "............"
    "..########.."
    "........##.."
    "........##.."
    "............"
    "............"
    "............");

/* U+00AE REGISTERED SIGN */
inline constexpr glyph registered_sign = picture(
    "...######..."
    ".##......##."
    "##.#####..##"
    "##.##..##.##"
    "##.#####..##"
    "##.##.##..##"
    "##.##..##.##"
    ".##......##."
    "...######..."
    "............");

/* U+00AF MACRON */
inline constexpr glyph macron = picture(
    "............"
    "..########.."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* U+00B0 DEGREE SIGN */
inline constexpr glyph degree_sign = picture(
    "............"
    "....####...."
    "...##..##..."
    "....####...."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* U+00B1 PLUS-MINUS SIGN */
inline constexpr glyph plus_minus_sign = picture(
    "............"
    ".....##....."
    ".....##....."
    "..########.."
    ".....##....."
    ".....##....."
    "............"
    "..########.."
    "............"
    "............");

/* U+00B2 SUPERSCRIPT TWO */
inline constexpr glyph superscript_two = picture(
    "............"
    "...#####...."
    ".......##..."
    "....####...."
    "...##......."
    "...######..."
    "............"
    "............"
    "............"
    "............");

/* U+00B3 SUPERSCRIPT THREE */
inline constexpr glyph superscript_three = picture(
    "............"
    "...#####...."
    ".......##..."
    "....####...."
    ".......##..."
    "...#####...."
    "............"
    "............"
    "............"
    "............");

/* U+00B5 MICRO SIGN */
inline constexpr glyph micro_sign = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..###.####.."
    "..##........"
    "..##........");

/* U+00B6 PILCROW SIGN */
inline constexpr glyph pilcrow_sign = picture(
    "............"
    "...#######.."
    "..#####.##.."
    "..#####.##.."
    "...####.##.."
    ".....##.##.."
    ".....##.##.."
    ".....##.##.."
    "............"
    "............");

/* U+00B7 MIDDLE DOT */
inline constexpr glyph middle_dot = picture(
    "............"
    "............"
    "............"
    "............"
    "....###....."
    "....###....."
    "............"
    "............"
    "............"
    "............");

/* U+00B9 SUPERSCRIPT ONE */
inline constexpr glyph superscript_one = picture(
    "............"
    ".....##....."
    "...####....."
    ".....##....."
    ".....##....."
    "...######..."
    "............"
    "............"
    "............"
    "............");

/* U+00BA MASCULINE ORDINAL INDICATOR */
inline constexpr glyph masculine_ordinal_indicator = picture(
    "....####...."
    "...##..##..."
    "...##..##..."
    "...##..##..."
    "....####...."
    "............"
    "...######..."
    "............"
    "............"
    "............");

/* U+00BB RIGHT-POINTING DOUBLE ANGLE QUOTATION MARK */
inline constexpr glyph right_double_angle_quotation_mark = mirrored(left_double_angle_quotation_mark);

/* U+00BF INVERTED QUESTION MARK */
inline constexpr glyph inverted_question_mark = turned(question_mark);

/* U+201E DOUBLE LOW-9 QUOTATION MARK */
inline constexpr glyph double_low_9_quotation_mark = picture(
    "............"
    "............"
    "............"
    "............"
    "............"
    "............"
    "....##..##.."
    "....##..##.."
    "...##..##..."
    "............");

/* U+201D RIGHT DOUBLE QUOTATION MARK */
inline constexpr glyph right_double_quotation_mark = picture(
    "............"
    "....##..##.."
    "....##..##.."
    "...##..##..."
    "............"
    "............"
    "............"
    "............"
    "............"
    "............");

/* U+00C6 LATIN CAPITAL LETTER AE */
inline constexpr glyph capital_ae = picture(
    "............"
    "...########."
    "..##.##....."
    "..##.##....."
    "..########.."
    ".##..##....."
    ".##..##....."
    ".##..######."
    "............"
    "............");

/* U+00E6 LATIN SMALL LETTER AE */
inline constexpr glyph small_ae = picture(
    "............"
    "............"
    "............"
    ".####.####.."
    "....##..##.."
    ".#########.."
    "##..##......"
    ".####.#####."
    "............"
    "............");

/* U+0152 LATIN CAPITAL LIGATURE OE */
inline constexpr glyph capital_oe = picture(
    "............"
    "...########."
    "..##.##....."
    ".##..##....."
    ".##..#####.."
    ".##..##....."
    "..##.##....."
    "...########."
    "............"
    "............");

/* U+0153 LATIN SMALL LIGATURE OE */
inline constexpr glyph small_oe = picture(
    "............"
    "............"
    "............"
    ".####.####.."
    "##..##..##.."
    "##..######.."
    "##..##......"
    ".####.#####."
    "............"
    "............");

/* U+0110 LATIN CAPITAL LETTER D WITH STROKE, and U+00D0 LATIN CAPITAL LETTER ETH */
inline constexpr glyph capital_d_with_stroke = shifted(capital_d, 1) | stroke_of_capital_d;

/* U+00F0 LATIN SMALL LETTER ETH */
inline constexpr glyph small_eth = picture(
    "....##......"
    "...#######.."
    ".......##..."
    "...#######.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "...######..."
    "............"
    "............");

/* U+0111 LATIN SMALL LETTER D WITH STROKE */
inline constexpr glyph small_d_with_stroke = small_d | stroke_of_small_d;

/* U+00D8 LATIN CAPITAL LETTER O WITH STROKE */
inline constexpr glyph capital_o_with_stroke = picture(
    "..........##"
    "...########."
    "..##....##.."
    ".##....####."
    ".##..##..##."
    ".####....##."
    "..##....##.."
    ".########..."
    "##.........."
    "............");

/* U+00F8 LATIN SMALL LETTER O WITH STROKE */
inline constexpr glyph small_o_with_stroke = picture(
    "............"
    "............"
    ".........##."
    "...#######.."
    "..##...###.."
    "..##.##.##.."
    "..###...##.."
    "..#######..."
    ".##........."
    "............");

/* U+00DE LATIN CAPITAL LETTER THORN */
inline constexpr glyph capital_thorn = picture(
    "............"
    ".##........."
    ".########..."
    ".##.....##.."
    ".##.....##.."
    ".########..."
    ".##........."
    ".##........."
    "............"
    "............");

/* U+00FE LATIN SMALL LETTER THORN */
inline constexpr glyph small_thorn = small_b | small_p;

/* U+00DF LATIN SMALL LETTER SHARP S */
inline constexpr glyph small_sharp_s = picture(
    "............"
    "...#####...."
    "..##...##..."
    "..##..##...."
    "..##.####..."
    "..##....##.."
    "..##....##.."
    "..##.####..."
    "............"
    "............");

/* U+0141 LATIN CAPITAL LETTER L WITH STROKE */
inline constexpr glyph capital_l_with_stroke = picture(
    "............"
    "...##......."
    "...##......."
    "...##,##'..."
    "...###'....."
    ".,###......."
    ".'###......."
    "...#######.."
    "............"
    "............");

/* U+0142 LATIN SMALL LETTER L WITH STROKE */
inline constexpr glyph small_l_with_stroke = picture(
    "............"
    "...####....."
    ".....##....."
    ".....##.,,.."
    ".....###'..."
    "...,###....."
    "..''.##....."
    "......####.."
    "............"
    "............");

/* U+00D7 MULTIPLICATION SIGN */
inline constexpr glyph multiplication_sign = picture(
    "............"
    "............"
    "............"
    "..'#,..,#'.."
    "....'##'...."
    "....,##,...."
    "..,#'..'#,.."
    "............"
    "............"
    "............");

/* U+00F7 DIVISION SIGN */
inline constexpr glyph division_sign = picture(
    "............"
    "............"
    "............"
    ".....##....."
    "............"
    "..########.."
    "............"
    ".....##....."
    "............"
    "............");
// clang-format on

} // namespace glyphs

#endif
