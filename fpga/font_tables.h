/* SPDX-License-Identifier: MIT */
/* The glyph sets of the overlay's character generator.
 *
 * A set is 256 glyphs of 64 bytes, the glyph of code c at c * 64: 32 rows of 16 pixels. A row is two bytes,
 * the left eight pixels first, a byte's most significant bit leftmost, on every host. Rows 0-15 and 16-31 are
 * two half-images of one character, one for each field of the interlaced picture: frame line 2k shows row k
 * of the first half, 2k + 1 row k of the second. The drawn part is 12 pixels by 10 rows of each half, top
 * left; the rest is zero.
 *
 * Codes 0-155 are the same in all sets: ASCII to 127, then box pieces, a block, shades, a grid and squares.
 * Codes 160-255 are those of the repertoire that a set is named after. The compiler makes the sets from the
 * pictures in glyphs_*.h; the tables are constants. */
#ifndef HALDEND_FPGA_FONT_TABLES_H
#define HALDEND_FPGA_FONT_TABLES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct font_map_tab {
    unsigned char rows[16384];
};

extern const struct font_map_tab font_map_tab_iso8859_15;
extern const struct font_map_tab font_map_tab_iso8859_16;
extern const struct font_map_tab font_map_tab_iso8859_5;

/* The Unicode character that each code of a set shows; 0 for a code that shows none. It follows the picture:
 * box pieces have the characters of Unicode's box drawing block, and code 156 of the Cyrillic set is the
 * degree sign. The small squares of codes 154 and 155 have the lower and the upper half block, the nearest
 * characters of Unicode. */
struct font_unicode_tab {
    uint16_t characters[256];
};

extern const struct font_unicode_tab font_unicode_tab_iso8859_15;
extern const struct font_unicode_tab font_unicode_tab_iso8859_16;
extern const struct font_unicode_tab font_unicode_tab_iso8859_5;

/* A glyph set that load_font() can load. */
struct font_set {
    const char* name; /* of its repertoire, such as "ISO 8859-15" */
    const struct font_map_tab* glyphs;
    const struct font_unicode_tab* unicode;
};

/* The sets, set 1 first. */
#define FONT_SETS 3
extern const struct font_set font_sets[FONT_SETS];

#ifdef __cplusplus
}
#endif

#endif
