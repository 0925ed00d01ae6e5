/* SPDX-License-Identifier: MIT */
/* The choice between the glyph sets. */
#ifndef HALDEND_FPGA_FONT_H
#define HALDEND_FPGA_FONT_H

#include "hw/fpga_map.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of a glyph set: 256 glyphs of 32 rows of 16 pixels. */
#define FONT_MAP_LENGTH (FPGA_GLYPH_COUNT * FPGA_GLYPH_BYTES)

/* Loads glyph set 1 (ISO 8859-15), 2 (ISO 8859-16) or 3 (ISO 8859-5) into the FPGA. The current set and 0 do
 * nothing. Returns the device primitive's result, or 0 if nothing was loaded.
 *
 * Any other number becomes the current set without a load; the glyphs that are loaded stay in use. */
int load_font(int set);

/* Writes the first length bytes of a glyph table to the glyph memory. The table has rows as big-endian byte
 * pairs and must be FONT_MAP_LENGTH bytes long; the FPGA takes the rows little-endian. Returns the device
 * primitive's result. */
int internal_load_font(const unsigned char* table, size_t length);

#ifdef __cplusplus
}
#endif

#endif
