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

/* Loads glyph set 1 (ISO 8859-15), 2 (ISO 8859-16) or 3 (ISO 8859-5) into the FPGA. Asking for the current
 * set, or for 0, does nothing. Any other number becomes the current set without anything being loaded. Returns
 * the device primitive's result, 0 if nothing was loaded. */
int load_font(int set);

/* Writes length bytes of a glyph table (rows as big-endian bytes, all FONT_MAP_LENGTH of them there) to the
 * glyph memory. Returns the device primitive's result. */
int internal_load_font(const unsigned char* table, size_t length);

#ifdef __cplusplus
}
#endif

#endif
