/* SPDX-License-Identifier: MIT */
/* The capitals that carry accents, a row shorter: rows 2-7. Each lacks the row that is missed least. */
#ifndef HALDEND_FPGA_GLYPHS_SHORT_H
#define HALDEND_FPGA_GLYPHS_SHORT_H

#include "fpga/glyphs_cyrillic.h"
#include "fpga/glyphs_latin.h"

namespace glyphs
{

inline constexpr glyph short_a = squeezed(capital_a, 3);
inline constexpr glyph short_c = squeezed(capital_c, 4);
inline constexpr glyph short_e = squeezed(capital_e, 2);
inline constexpr glyph short_i = squeezed(capital_i, 3);
inline constexpr glyph short_n = squeezed(capital_n, 1);
inline constexpr glyph short_o = squeezed(capital_o, 4);
inline constexpr glyph short_s = squeezed(capital_s, 2);
inline constexpr glyph short_u = squeezed(capital_u, 3);
inline constexpr glyph short_y = squeezed(capital_y, 6);
inline constexpr glyph short_z = squeezed(capital_z, 3);

/* The Cyrillic ones. */
inline constexpr glyph short_ghe = squeezed(cyrillic_capital_ghe, 3);
inline constexpr glyph short_k = squeezed(capital_k, 1);
inline constexpr glyph short_cyrillic_i = squeezed(cyrillic_capital_i, 1);
inline constexpr glyph short_cyrillic_u = squeezed(cyrillic_capital_u, 5);

} // namespace glyphs

#endif
