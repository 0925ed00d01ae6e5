/* SPDX-License-Identifier: MIT */
/* The overlay's palettes. */
#include "fpga/palettes.h"

/* The sixteen text colours.
 *
 * Kept: 7 repeats 4, and clients use both numbers. */
// clang-format off
#define TEXT_PALETTE                                             \
    0x00000000, /*  0 nothing, fully transparent              */ \
    0xffffffff, /*  1 white                                   */ \
    0xff800000, /*  2 maroon                                  */ \
    0xff008000, /*  3 green                                   */ \
    0xff008080, /*  4 teal                                    */ \
    0xff000080, /*  5 navy                                    */ \
    0xff800080, /*  6 purple                                  */ \
    0xff008080, /*  7 teal, as 4                              */ \
    0xa0808080, /*  8 grey, part-transparent: text background */ \
    0xffc0c0c0, /*  9 silver                                  */ \
    0xffff0000, /* 10 red                                     */ \
    0xff00ff00, /* 11 lime                                    */ \
    0xffffff00, /* 12 yellow                                  */ \
    0x80000080, /* 13 navy, part-transparent                  */ \
    0xffff00ff, /* 14 fuchsia                                 */ \
    0xff000000  /* 15 black                                   */

const uint32_t text_forderground_color_tab[TEXT_COLORS] = {TEXT_PALETTE};

const uint32_t text_background_color_tab[TEXT_COLORS] = {TEXT_PALETTE};

/* Kept: 28 to 32 and 34 to 36 repeat earlier colours. Callers draw by number, so each number keeps its
 * colour. */
const uint32_t std_graphic_color_tab[GRAPHIC_COLORS] = {
    TEXT_PALETTE,
    0xff00ffff, /* 16 aqua                     */
    0xc0c0c0c0, /* 17 silver, part-transparent */
    0x80808080, /* 18 grey, part-transparent   */
    0xffc0dcc0, /* 19 money green              */
    0xffa6caff, /* 20 sky blue                 */
    0xfffffbf0, /* 21 cream                    */
    0xffa0a0a4, /* 22 medium grey              */
    0x80800000, /* 23 maroon, half             */
    0x80008000, /* 24 green, half              */
    0x80008080, /* 25 teal, half               */
    0x80000080, /* 26 navy, half               */
    0x80800080, /* 27 purple, half             */
    0x80008080, /* 28 as 25                    */
    0x80808080, /* 29 as 18                    */
    0xc0c0c0c0, /* 30 as 17                    */
    0x80800000, /* 31 as 23                    */
    0x80008000, /* 32 as 24                    */
    0x80808000, /* 33 olive, half              */
    0x80000080, /* 34 as 26                    */
    0x80800080, /* 35 as 27                    */
    0x80008080, /* 36 as 25                    */
};
// clang-format on
