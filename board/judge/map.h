/* SPDX-License-Identifier: MIT */
/* The judge's map of the board: addresses, and the bits that registers declare.
 *
 * It is a copy, made by hand, of the register tables and the headers in hw/, because the judge must not
 * depend on the sources of the programs that it judges; a unit test compares it with both. The lists are rows
 * for a macro of the reader.
 */
#ifndef HALDEND_BOARD_JUDGE_MAP_H
#define HALDEND_BOARD_JUDGE_MAP_H

/* The display controller's register windows: byte offsets in its memory. */
#define MAP_LIME_HOST    0x1fc0000u
#define MAP_LIME_DISPLAY 0x1fd0000u
#define MAP_LIME_CAPTURE 0x1fd8000u
#define MAP_LIME_DRAW    0x1ff0000u
#define MAP_LIME_PIO     0x1ff8000u
#define MAP_LIME_END     0x2000000u

/* The chips on the I2C bus: 7-bit addresses. */
#define MAP_I2C_DECODER 0x25u
#define MAP_I2C_ENCODER 0x44u

/* The FPGA's registers, which lie between these addresses: address, declared bits. The register that displays
 * a text page takes the page's whole address; its field in the tables is only the lower half. */
#define MAP_FPGA_REGISTERS_BEGIN 0xff0000u
#define MAP_FPGA_REGISTERS_END   0xff1a10u
#define MAP_FPGA_REGISTERS(REGISTER)                       \
    REGISTER(0xff0000u, 0x03971f1fu) /* display control */ \
    REGISTER(0xff0004u, 0x01ffffffu) /* frame generator */ \
    REGISTER(0xff0008u, 0xffffffffu) /* store trigger */   \
    REGISTER(0xff000cu, 0x0000ffffu) /* image numbers */   \
    REGISTER(0xff0a00u, 0xffffffffu) /* cursor: x */       \
    REGISTER(0xff0a04u, 0xffffffffu) /* y */               \
    REGISTER(0xff0a08u, 0xffffffffu) /* size */            \
    REGISTER(0xff0a0cu, 0xffffffffu) /* colour */          \
    REGISTER(0xff1008u, 0xffffffffu) /* graphic page */    \
    REGISTER(0xff1a00u, 0x00000fffu) /* text: x */         \
    REGISTER(0xff1a04u, 0x000001ffu) /* y */               \
    REGISTER(0xff1a08u, 0x00001f3fu) /* cell size */       \
    REGISTER(0xff1a0cu, 0x0030ffffu) /* page */

/* The palettes, which are memory and registers at once: graphic, 256 entries, then text. */
#define MAP_FPGA_PALETTES_BEGIN 0xff1400u
#define MAP_FPGA_PALETTES_END   0xff1880u

/* The FPGA's memory: first byte address, and the one behind the last. */
#define MAP_FPGA_MEMORY(REGION)                            \
    REGION(0x000000u, 0x1cd400u) /* graphic pages */       \
    REGION(0x200000u, 0x204000u) /* glyphs */              \
    REGION(0x300000u, 0x307e00u) /* text pages */          \
    REGION(0xff0800u, 0xff0a00u) /* cursor image */        \
    REGION(MAP_FPGA_PALETTES_BEGIN, MAP_FPGA_PALETTES_END) \
    REGION(0x1000000u, 0x1195000u) /* stored video image */

/* Registers of the chips on the I2C bus: chip, first and last sub-address. */
#define MAP_I2C_REGISTERS(RANGE)         \
    RANGE(MAP_I2C_DECODER, 0x00u, 0x17u) \
    RANGE(MAP_I2C_DECODER, 0x1fu, 0x1fu) \
    RANGE(MAP_I2C_DECODER, 0x40u, 0x40u) \
    RANGE(MAP_I2C_DECODER, 0x58u, 0x5bu) \
    RANGE(MAP_I2C_DECODER, 0x5eu, 0x5eu) \
    RANGE(MAP_I2C_ENCODER, 0x26u, 0x2du) \
    RANGE(MAP_I2C_ENCODER, 0x38u, 0x3au) \
    RANGE(MAP_I2C_ENCODER, 0x42u, 0x7fu)

/* The display controller's registers: window, offset, declared bits. Only the switch of layer 5's
 * transparency reaches the last one; the tables have its name at layer 1's offset. */
#define MAP_LIME_REGISTERS(REGISTER)                 \
    REGISTER(MAP_LIME_CAPTURE, 0x0000u, 0xd3100006u) \
    REGISTER(MAP_LIME_CAPTURE, 0x0004u, 0xffffffffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0010u, 0xf0ff77f1u) \
    REGISTER(MAP_LIME_CAPTURE, 0x0014u, 0x007fffffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0018u, 0x007fffffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x001cu, 0x0fff0fffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0020u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0028u, 0x000003ffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x002cu, 0x03ff03ffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0034u, 0x03ffffffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0038u, 0x03ffffffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x0048u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x004cu, 0x0fff0fffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x4000u, 0x1fff1fffu) \
    REGISTER(MAP_LIME_CAPTURE, 0x4004u, 0x1fff1fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0020u, 0x80ff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0024u, 0x03ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0028u, 0x03ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x002cu, 0x0fff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0030u, 0xf0ff0000u) \
    REGISTER(MAP_LIME_DISPLAY, 0x00b4u, 0x0001e0ffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x00bcu, 0x0000ffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x00c0u, 0xffffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0100u, 0xc03fbfcfu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0104u, 0x00000003u) \
    REGISTER(MAP_LIME_DISPLAY, 0x0108u, 0x0000073fu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0110u, 0xc0f00001u) \
    REGISTER(MAP_LIME_DISPLAY, 0x0114u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0118u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0120u, 0xc3f00000u) \
    REGISTER(MAP_LIME_DISPLAY, 0x0124u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0128u, 0x0fff0fffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0180u, 0x00ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0184u, 0x00ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x0188u, 0x0001e0ffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01a0u, 0x80ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01a4u, 0x80ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01a8u, 0x80ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01acu, 0x80ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01b0u, 0x80ffffffu) \
    REGISTER(MAP_LIME_DISPLAY, 0x01b4u, 0x80000000u)

#endif
