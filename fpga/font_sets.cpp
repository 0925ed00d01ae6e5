/* SPDX-License-Identifier: MIT */
/* The one list of the glyph sets. */
#include "fpga/font_tables.h"

// clang-format off
const font_set font_sets[FONT_SETS] = {
    {"ISO 8859-15", &font_map_tab_iso8859_15, &font_unicode_tab_iso8859_15},
    {"ISO 8859-16", &font_map_tab_iso8859_16, &font_unicode_tab_iso8859_16},
    {"ISO 8859-5",  &font_map_tab_iso8859_5,  &font_unicode_tab_iso8859_5},
};
// clang-format on
