/* SPDX-License-Identifier: MIT */
/* The overlay's palettes: 32-bit ARGB numbers in the host's byte order, alpha in the top byte, 0 fully
 * transparent. An index is the colour number that callers use.
 *
 * Foreground, background and the first 16 graphic colours are equal.
 */
#ifndef HALDEND_FPGA_PALETTES_H
#define HALDEND_FPGA_PALETTES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define TEXT_COLORS    16
#define GRAPHIC_COLORS 37

/* Kept: the spelling of "forderground". Service tools link to the name. */
extern const uint32_t text_forderground_color_tab[TEXT_COLORS];
extern const uint32_t text_background_color_tab[TEXT_COLORS];
extern const uint32_t std_graphic_color_tab[GRAPHIC_COLORS];

#ifdef __cplusplus
}
#endif

#endif
