/* SPDX-License-Identifier: MIT */
/* The Cyrillic letters whose shapes ASCII doesn't have. */
#ifndef HALDEND_FPGA_GLYPHS_CYRILLIC_H
#define HALDEND_FPGA_GLYPHS_CYRILLIC_H

#include "fpga/glyphs_ascii.h"

namespace glyphs
{

// clang-format off
/* U+0411 CYRILLIC CAPITAL LETTER BE */
inline constexpr glyph cyrillic_capital_be = picture(
    "............"
    ".########..."
    ".##........."
    ".##........."
    ".########..."
    ".##.....##.."
    ".##.....##.."
    ".########..."
    "............"
    "............");

/* U+0413 CYRILLIC CAPITAL LETTER GHE */
inline constexpr glyph cyrillic_capital_ghe = picture(
    "............"
    ".########..."
    ".##........."
    ".##........."
    ".##........."
    ".##........."
    ".##........."
    ".##........."
    "............"
    "............");

/* U+0414 CYRILLIC CAPITAL LETTER DE */
inline constexpr glyph cyrillic_capital_de = picture(
    "............"
    "....######.."
    "....##..##.."
    "....##..##.."
    "...##...##.."
    "...##...##.."
    "..##....##.."
    ".##########."
    ".##......##."
    "............");

/* U+0416 CYRILLIC CAPITAL LETTER ZHE */
inline constexpr glyph cyrillic_capital_zhe = picture(
    "............"
    ".##..##..##."
    ".##..##..##."
    "..##.##.##.."
    "...######..."
    "..##.##.##.."
    ".##..##..##."
    ".##..##..##."
    "............"
    "............");

/* U+0417 CYRILLIC CAPITAL LETTER ZE */
inline constexpr glyph cyrillic_capital_ze = picture(
    "............"
    "..#######..."
    ".##.....##.."
    "........##.."
    "....####...."
    "........##.."
    ".##.....##.."
    "..#######..."
    "............"
    "............");

/* U+0418 CYRILLIC CAPITAL LETTER I */
inline constexpr glyph cyrillic_capital_i = shifted(mirrored(capital_n), -1);

/* U+041B CYRILLIC CAPITAL LETTER EL */
inline constexpr glyph cyrillic_capital_el = picture(
    "............"
    "....######.."
    "....##..##.."
    "....##..##.."
    "...##...##.."
    "...##...##.."
    "...##...##.."
    ".###....##.."
    "............"
    "............");

/* U+041F CYRILLIC CAPITAL LETTER PE */
inline constexpr glyph cyrillic_capital_pe = picture(
    "............"
    ".#########.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    "............"
    "............");

/* U+0423 CYRILLIC CAPITAL LETTER U */
inline constexpr glyph cyrillic_capital_u = picture(
    "............"
    ".##......##."
    "..##....##.."
    "...##..##..."
    "....####...."
    ".....##....."
    "....##......"
    ".###........"
    "............"
    "............");

/* U+0424 CYRILLIC CAPITAL LETTER EF */
inline constexpr glyph cyrillic_capital_ef = picture(
    "............"
    ".....##....."
    "..########.."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    "..########.."
    ".....##....."
    "............"
    "............");

/* U+0426 CYRILLIC CAPITAL LETTER TSE */
inline constexpr glyph cyrillic_capital_tse = picture(
    "............"
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##########."
    ".........##."
    ".........''.");

/* U+0427 CYRILLIC CAPITAL LETTER CHE */
inline constexpr glyph cyrillic_capital_che = picture(
    "............"
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    "..########.."
    "........##.."
    "........##.."
    "........##.."
    "............"
    "............");

/* U+0428 CYRILLIC CAPITAL LETTER SHA */
inline constexpr glyph cyrillic_capital_sha = picture(
    "............"
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##########."
    "............"
    "............");

/* U+0429 CYRILLIC CAPITAL LETTER SHCHA */
inline constexpr glyph cyrillic_capital_shcha = picture(
    "............"
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "###########."
    ".........##."
    ".........''.");

/* U+042A CYRILLIC CAPITAL LETTER HARD SIGN */
inline constexpr glyph cyrillic_capital_hard_sign = picture(
    "............"
    ".####......."
    "...##......."
    "...##......."
    "...#######.."
    "...##....##."
    "...##....##."
    "...#######.."
    "............"
    "............");

/* U+042B CYRILLIC CAPITAL LETTER YERU */
inline constexpr glyph cyrillic_capital_yeru = picture(
    "............"
    ".##......##."
    ".##......##."
    ".##......##."
    ".#####...##."
    ".##..##..##."
    ".##..##..##."
    ".#####...##."
    "............"
    "............");

/* U+042C CYRILLIC CAPITAL LETTER SOFT SIGN */
inline constexpr glyph cyrillic_capital_soft_sign = picture(
    "............"
    ".##........."
    ".##........."
    ".##........."
    ".########..."
    ".##.....##.."
    ".##.....##.."
    ".########..."
    "............"
    "............");

/* U+0404 CYRILLIC CAPITAL LETTER UKRAINIAN IE */
inline constexpr glyph cyrillic_capital_ukrainian_ie = picture(
    "............"
    "...######..."
    "..##....##.."
    ".##........."
    ".########..."
    ".##........."
    "..##....##.."
    "...######..."
    "............"
    "............");

/* U+042D CYRILLIC CAPITAL LETTER E */
inline constexpr glyph cyrillic_capital_e = shifted(mirrored(cyrillic_capital_ukrainian_ie), -1);

/* U+042E CYRILLIC CAPITAL LETTER YU */
inline constexpr glyph cyrillic_capital_yu = picture(
    "............"
    ".##...####.."
    ".##..##..##."
    ".##..##..##."
    ".######..##."
    ".##..##..##."
    ".##..##..##."
    ".##...####.."
    "............"
    "............");

/* U+042F CYRILLIC CAPITAL LETTER YA */
inline constexpr glyph cyrillic_capital_ya = shifted(mirrored(capital_r), -1);

/* U+0402 CYRILLIC CAPITAL LETTER DJE */
inline constexpr glyph cyrillic_capital_dje = picture(
    "............"
    ".#######...."
    "...##......."
    "...#######.."
    "...##....##."
    "...##....##."
    "...##....##."
    "...##....##."
    "......####.."
    "............");

/* U+0409 CYRILLIC CAPITAL LETTER LJE */
inline constexpr glyph cyrillic_capital_lje = picture(
    "............"
    "..#####....."
    ".##..##....."
    ".##..##....."
    ".##..#####.."
    ".##..##..##."
    ".##..##..##."
    "##...#####.."
    "............"
    "............");

/* U+040A CYRILLIC CAPITAL LETTER NJE */
inline constexpr glyph cyrillic_capital_nje = picture(
    "............"
    ".##..##....."
    ".##..##....."
    ".##..##....."
    ".#########.."
    ".##..##..##."
    ".##..##..##."
    ".##..#####.."
    "............"
    "............");

/* U+040B CYRILLIC CAPITAL LETTER TSHE */
inline constexpr glyph cyrillic_capital_tshe = picture(
    "............"
    ".#######...."
    "...##......."
    "...#######.."
    "...##....##."
    "...##....##."
    "...##....##."
    "...##....##."
    "............"
    "............");

/* U+040F CYRILLIC CAPITAL LETTER DZHE */
inline constexpr glyph cyrillic_capital_dzhe = picture(
    "............"
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".##.....##.."
    ".#########.."
    "....###....."
    "............");

/* U+0431 CYRILLIC SMALL LETTER BE */
inline constexpr glyph cyrillic_small_be = picture(
    "........##.."
    "...######..."
    "..##........"
    "..#######..."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "...######..."
    "............"
    "............");

/* U+0432 CYRILLIC SMALL LETTER VE */
inline constexpr glyph cyrillic_small_ve = picture(
    "............"
    "............"
    "............"
    "..#######..."
    "..##....##.."
    "..#######..."
    "..##....##.."
    "..#######..."
    "............"
    "............");

/* U+0433 CYRILLIC SMALL LETTER GHE */
inline constexpr glyph cyrillic_small_ghe = picture(
    "............"
    "............"
    "............"
    "..#######..."
    "..##........"
    "..##........"
    "..##........"
    "..##........"
    "............"
    "............");

/* U+0434 CYRILLIC SMALL LETTER DE */
inline constexpr glyph cyrillic_small_de = picture(
    "............"
    "............"
    "............"
    "...######..."
    "...##..##..."
    "...##..##..."
    "...##..##..."
    ".##########."
    ".##......##."
    "............");

/* U+0436 CYRILLIC SMALL LETTER ZHE */
inline constexpr glyph cyrillic_small_zhe = picture(
    "............"
    "............"
    "............"
    ".##..##..##."
    "..##.##.##.."
    "...######..."
    "..##.##.##.."
    ".##..##..##."
    "............"
    "............");

/* U+0437 CYRILLIC SMALL LETTER ZE */
inline constexpr glyph cyrillic_small_ze = picture(
    "............"
    "............"
    "............"
    "..#######..."
    "........##.."
    "....####...."
    "........##.."
    "..#######..."
    "............"
    "............");

/* U+0438 CYRILLIC SMALL LETTER I */
inline constexpr glyph cyrillic_small_i = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##..####.."
    "..##.##.##.."
    "..####..##.."
    "..##....##.."
    "............"
    "............");

/* U+043A CYRILLIC SMALL LETTER KA */
inline constexpr glyph cyrillic_small_ka = picture(
    "............"
    "............"
    "............"
    "..##...,##.."
    "..##.,##'..."
    "..####......"
    "..##.'##,..."
    "..##...'##.."
    "............"
    "............");

/* U+043B CYRILLIC SMALL LETTER EL */
inline constexpr glyph cyrillic_small_el = picture(
    "............"
    "............"
    "............"
    "....######.."
    "....##..##.."
    "....##..##.."
    "...##...##.."
    "..##....##.."
    "............"
    "............");

/* U+043C CYRILLIC SMALL LETTER EM */
inline constexpr glyph cyrillic_small_em = picture(
    "............"
    "............"
    "............"
    ".##......##."
    ".####..####."
    ".##.####.##."
    ".##..##..##."
    ".##......##."
    "............"
    "............");

/* U+043D CYRILLIC SMALL LETTER EN */
inline constexpr glyph cyrillic_small_en = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##....##.."
    "..########.."
    "..##....##.."
    "..##....##.."
    "............"
    "............");

/* U+043F CYRILLIC SMALL LETTER PE */
inline constexpr glyph cyrillic_small_pe = picture(
    "............"
    "............"
    "............"
    "..########.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "............"
    "............");

/* U+0442 CYRILLIC SMALL LETTER TE */
inline constexpr glyph cyrillic_small_te = picture(
    "............"
    "............"
    "............"
    "..########.."
    ".....##....."
    ".....##....."
    ".....##....."
    ".....##....."
    "............"
    "............");

/* U+0444 CYRILLIC SMALL LETTER EF */
inline constexpr glyph cyrillic_small_ef = picture(
    "............"
    ".....##....."
    ".....##....."
    "..########.."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    "..########.."
    ".....##....."
    ".....##.....");

/* U+0446 CYRILLIC SMALL LETTER TSE */
inline constexpr glyph cyrillic_small_tse = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..#########."
    ".........##."
    ".........''.");

/* U+0447 CYRILLIC SMALL LETTER CHE */
inline constexpr glyph cyrillic_small_che = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##....##.."
    "...#######.."
    "........##.."
    "........##.."
    "............"
    "............");

/* U+0448 CYRILLIC SMALL LETTER SHA */
inline constexpr glyph cyrillic_small_sha = picture(
    "............"
    "............"
    "............"
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##..##..##."
    ".##########."
    "............"
    "............");

/* U+0449 CYRILLIC SMALL LETTER SHCHA */
inline constexpr glyph cyrillic_small_shcha = picture(
    "............"
    "............"
    "............"
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "##..##..##.."
    "###########."
    ".........##."
    ".........''.");

/* U+044A CYRILLIC SMALL LETTER HARD SIGN */
inline constexpr glyph cyrillic_small_hard_sign = picture(
    "............"
    "............"
    "............"
    ".####......."
    "...##......."
    "...######..."
    "...##...##.."
    "...######..."
    "............"
    "............");

/* U+044B CYRILLIC SMALL LETTER YERU */
inline constexpr glyph cyrillic_small_yeru = picture(
    "............"
    "............"
    "............"
    ".##......##."
    ".##......##."
    ".#####...##."
    ".##..##..##."
    ".#####...##."
    "............"
    "............");

/* U+044C CYRILLIC SMALL LETTER SOFT SIGN */
inline constexpr glyph cyrillic_small_soft_sign = picture(
    "............"
    "............"
    "............"
    "..##........"
    "..##........"
    "..#######..."
    "..##....##.."
    "..#######..."
    "............"
    "............");

/* U+0454 CYRILLIC SMALL LETTER UKRAINIAN IE */
inline constexpr glyph cyrillic_small_ukrainian_ie = picture(
    "............"
    "............"
    "............"
    "....######.."
    "...##......."
    "..#######..."
    "...##......."
    "....######.."
    "............"
    "............");

/* U+044D CYRILLIC SMALL LETTER E */
inline constexpr glyph cyrillic_small_e = mirrored(cyrillic_small_ukrainian_ie);

/* U+044E CYRILLIC SMALL LETTER YU */
inline constexpr glyph cyrillic_small_yu = picture(
    "............"
    "............"
    "............"
    ".##...####.."
    ".##..##..##."
    ".######..##."
    ".##..##..##."
    ".##...####.."
    "............"
    "............");

/* U+044F CYRILLIC SMALL LETTER YA */
inline constexpr glyph cyrillic_small_ya = picture(
    "............"
    "............"
    "............"
    "...#######.."
    "..##....##.."
    "...#######.."
    "....##..##.."
    "..##....##.."
    "............"
    "............");

/* U+045B CYRILLIC SMALL LETTER TSHE */
inline constexpr glyph cyrillic_small_tshe = picture(
    "..##........"
    ".######....."
    "..##........"
    "..#######..."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "............"
    "............");

/* U+0452 CYRILLIC SMALL LETTER DJE */
inline constexpr glyph cyrillic_small_dje = picture(
    "..##........"
    ".######....."
    "..##........"
    "..#######..."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "........##.."
    "......###...");

/* U+0459 CYRILLIC SMALL LETTER LJE */
inline constexpr glyph cyrillic_small_lje = picture(
    "............"
    "............"
    "............"
    "..#####....."
    ".##..##....."
    ".##..#####.."
    ".##..##..##."
    "##...#####.."
    "............"
    "............");

/* U+045A CYRILLIC SMALL LETTER NJE */
inline constexpr glyph cyrillic_small_nje = picture(
    "............"
    "............"
    "............"
    ".##..##....."
    ".##..##....."
    ".#########.."
    ".##..##..##."
    ".##..#####.."
    "............"
    "............");

/* U+045F CYRILLIC SMALL LETTER DZHE */
inline constexpr glyph cyrillic_small_dzhe = picture(
    "............"
    "............"
    "............"
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..##....##.."
    "..########.."
    ".....##....."
    "............");

/* U+2116 NUMERO SIGN */
inline constexpr glyph numero_sign = picture(
    "............"
    "##..##......"
    "##..##......"
    "###.##..###."
    "######.##.##"
    "##.###..###."
    "##..##......"
    "##..##.#####"
    "............"
    "............");
// clang-format on

} // namespace glyphs

#endif
