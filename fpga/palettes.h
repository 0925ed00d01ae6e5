/* The overlay's palettes: 32-bit ARGB, alpha in the top byte, 0 fully transparent.
 */
#ifndef HALDEND_FPGA_PALETTES_H
#define HALDEND_FPGA_PALETTES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define TEXT_COLORS    16
#define GRAPHIC_COLORS 37

extern const uint32_t text_forderground_color_tab[TEXT_COLORS];
extern const uint32_t text_background_color_tab[TEXT_COLORS];
extern const uint32_t std_graphic_color_tab[GRAPHIC_COLORS];

#ifdef __cplusplus
}
#endif

#endif
