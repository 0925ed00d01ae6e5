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
#define LIME_VCM    0x0000u
#define LIME_CSC    0x0004u /* capture scale: vertical << 16 | horizontal, each 5.11 fixed point */
#define LIME_CBM    0x0010u
#define LIME_CBOA   0x0014u
#define LIME_CBLA   0x0018u
#define LIME_CIHSTR 0x001cu
#define LIME_CIHEND 0x0020u
#define LIME_CHP    0x0028u
#define LIME_CVP    0x002cu
#define LIME_CBDA0  0x0034u
#define LIME_CBDA1  0x0038u
#define LIME_CMSS   0x0048u
#define LIME_CMDS   0x004cu
#define LIME_CDCN   0x4000u
#define LIME_CDCP   0x4004u

/* Registers of the display window: the same. */
#define LIME_L0M   0x0020u /* mode and stride */
#define LIME_L0OA  0x0024u /* origin in memory */
#define LIME_L0DA  0x0028u
#define LIME_L0DXY 0x002cu
#define LIME_L1M   0x0030u
#define LIME_L0BLD 0x00b4u
#define LIME_L0TC  0x00bcu /* transparency */
#define LIME_L32TC 0x00c0u
#define LIME_DCM1  0x0100u /* display control mode 1 */
#define LIME_DCM2  0x0104u
#define LIME_DCM3  0x0108u
#define LIME_L0EM  0x0110u
#define LIME_L0WXY 0x0114u /* window position: x << 16 | y */
#define LIME_L0WWH 0x0118u /* window size: width << 16 | height */
#define LIME_L1EM  0x0120u
#define LIME_L1WXY 0x0124u /* window position: y << 16 | x */
#define LIME_L1WWH 0x0128u /* window size: height << 16 | width */
#define LIME_DLS   0x0180u /* order of the layers, a nibble each, the lowest names the one on top */
#define LIME_DBGC  0x0184u /* background colour, 0x00rrggbb */
#define LIME_L1BLD 0x0188u
#define LIME_L0ETC 0x01a0u
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
