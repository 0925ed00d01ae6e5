/* SPDX-License-Identifier: MIT */
/* The Lime display controller: its register windows, its registers, and the bits that programs switch.
 *
 * Names and offsets are those of the controller's data sheet. The field table, regdb/regs_lime.cpp, lists all
 * other bits; static_asserts there compare it with the bits given here.
 */
#ifndef HALDEND_HW_LIME_REGISTERS_H
#define HALDEND_HW_LIME_REGISTERS_H

/* Register windows: byte offsets from the base of the mapping. */
#define LIME_HOST_WINDOW 0x1fc0000u
#define LIME_DISP_WINDOW 0x1fd0000u
#define LIME_CAPT_WINDOW 0x1fd8000u
#define LIME_DRAW_WINDOW 0x1ff0000u
#define LIME_PIO_WINDOW  0x1ff8000u
#define LIME_WINDOWS_END 0x2000000u

/* Registers of the capture window: byte offsets in it. */
#define LIME_VCM    0x0000u /* video capture mode */
#define LIME_CSC    0x0004u /* capture scale: vertical << 16 | horizontal, each 5.11 fixed point */
#define LIME_CBM    0x0010u /* capture buffer: mode and stride */
#define LIME_CBOA   0x0014u /* capture buffer: origin in memory */
#define LIME_CBLA   0x0018u /* capture buffer: limit in memory */
#define LIME_CIHSTR 0x001cu /* captured image: start */
#define LIME_CIHEND 0x0020u /* captured image: end */
#define LIME_CHP    0x0028u /* pixels of a line */
#define LIME_CVP    0x002cu /* lines of a frame */
#define LIME_CBDA0  0x0034u /* capture buffer: display address 0 */
#define LIME_CBDA1  0x0038u /* capture buffer: display address 1 */
#define LIME_CMSS   0x0048u /* magnification: source size */
#define LIME_CMDS   0x004cu /* magnification: display size */
#define LIME_CDCN   0x4000u /* data count of NTSC */
#define LIME_CDCP   0x4004u /* data count of PAL */

/* Registers of the display window: the same. */
#define LIME_L0M   0x0020u /* mode and stride */
#define LIME_L0OA  0x0024u /* origin in memory */
#define LIME_L0DA  0x0028u /* display address in memory */
#define LIME_L0DXY 0x002cu /* display position: y << 16 | x */
#define LIME_L1M   0x0030u /* mode */
#define LIME_L0BLD 0x00b4u /* blending */
#define LIME_L0TC  0x00bcu /* transparency */
#define LIME_L32TC 0x00c0u /* transparency of layers 3 and 2 */
#define LIME_DCM1  0x0100u /* display control mode 1 */
#define LIME_DCM2  0x0104u /* display control mode 2 */
#define LIME_DCM3  0x0108u /* display control mode 3 */
#define LIME_L0EM  0x0110u /* extended mode */
#define LIME_L0WXY 0x0114u /* window position: y << 16 | x */
#define LIME_L0WWH 0x0118u /* window size: height << 16 | width */
#define LIME_L1EM  0x0120u /* extended mode */
#define LIME_L1WXY 0x0124u /* window position: y << 16 | x */
#define LIME_L1WWH 0x0128u /* window size: height << 16 | width */
#define LIME_DLS   0x0180u /* order of the layers, a nibble each, the lowest names the one on top */
#define LIME_DBGC  0x0184u /* background colour, 0x00rrggbb */
#define LIME_L1BLD 0x0188u /* blending */
#define LIME_L0ETC 0x01a0u /* extended transparency, layers 0 to 5 */
#define LIME_L1ETC 0x01a4u
#define LIME_L2ETC 0x01a8u
#define LIME_L3ETC 0x01acu
#define LIME_L4ETC 0x01b0u
#define LIME_L5ETC 0x01b4u /* Kept: the register table has L1ETC's offset in its place */

/* Layers, and what switches them. */
#define LIME_LAYERS            6
#define LIME_DCM1_DISPLAY      (1u << 31)             /* den */
#define LIME_DCM1_LAYER(layer) (1u << (16 + (layer))) /* l0e to l5e */
#define LIME_LETC(layer)       (LIME_L0ETC + 4u * (layer))
#define LIME_LETC_ZERO         (1u << 31) /* l0etz to l5etz: extended zero transparency */
#define LIME_L0M_16_BIT        (1u << 31) /* l0c */
#define LIME_L0TC_ZERO         (1u << 15) /* l0zt: pixels of value 0 are transparent */

#endif
