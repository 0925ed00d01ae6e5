/* SPDX-License-Identifier: MIT */
/* The overlay FPGA's address map: one address space for memory (block transfers) and registers (ioctl).
 *
 * Memory takes 16- and 32-bit quantities little-endian. Registers are 32-bit numbers; the driver puts their
 * bytes in order. The map and the bits are the contract of the FPGA's design with the driver and this daemon.
 */
#ifndef HALDEND_HW_FPGA_MAP_H
#define HALDEND_HW_FPGA_MAP_H

#include "hw/video_geometry.h"

/* Memory */
#define FPGA_GRAPHIC_PAGES       0x0000000u /* pages 0-8, one every FPGA_GRAPHIC_PAGE_STRIDE bytes */
#define FPGA_GRAPHIC_PAGE_STRIDE 0x33400u
#define FPGA_GLYPHS              0x0200000u /* one glyph set */
#define FPGA_TEXT_PAGES          0x0300000u /* pages 0-8, one every FPGA_TEXT_PAGE_STRIDE bytes */
#define FPGA_TEXT_PAGE_STRIDE    0xe00u
#define FPGA_CURSOR_IMAGE        0x0ff0800u /* 512 bytes: 32 rows of 32 pixels, a bit each, then unused */
#define FPGA_GRAPHIC_PALETTE     0x0ff1400u /* 32-bit ARGB entries */
#define FPGA_TEXT_FOREGROUND     0x0ff1800u /* 16 32-bit ARGB entries */
#define FPGA_TEXT_BACKGROUND     0x0ff1840u /* the same */
#define FPGA_VIDEO_IMAGE         0x1000000u /* the stored frame, field after field */

#define FPGA_END (FPGA_VIDEO_IMAGE + VIDEO_FRAME_BYTES)

#define FPGA_PAGES 9u /* of text and of graphics each */

/* A text page is 28 rows of 64 cells of 2 bytes. The monitor shows the upper left VIDEO_TEXT_COLUMNS x
 * VIDEO_TEXT_ROWS cells. A glyph set is 256 glyphs of 64 bytes. */
#define FPGA_TEXT_CELL_BYTES 2u
#define FPGA_TEXT_ROW_CELLS  64u
#define FPGA_TEXT_ROW_BYTES  (FPGA_TEXT_ROW_CELLS * FPGA_TEXT_CELL_BYTES)
#define FPGA_GLYPH_COUNT     256u
#define FPGA_GLYPH_BYTES     64u

/* Registers */
#define FPGA_CTRL         0xff0000u /* display control */
#define FPGA_FGCC         0xff0004u /* frame generator: mode and colour */
#define FPGA_STORE_VIDEO  0xff0008u /* store trigger */
#define FPGA_SRIC         0xff000cu /* numbers of the image to store and to restore */
#define FPGA_CURSOR_X     0xff0a00u /* pixels */
#define FPGA_CURSOR_Y     0xff0a04u /* lines */
#define FPGA_CURSOR_SIZE  0xff0a08u /* width << 8 | (height + 1) */
#define FPGA_CURSOR_COLOR 0xff0a0cu /* ARGB */
#define FPGA_GRAPHIC_SHOW 0xff1008u /* byte address of the displayed graphic page >> 8 */
#define FPGA_TSXP         0xff1a00u /* text layer, first pixel */
#define FPGA_TSYP         0xff1a04u /* text layer, first line */
#define FPGA_TESZ         0xff1a08u /* cell size */
#define FPGA_TEMO         0xff1a0cu /* byte address of the displayed text page */

/* Bits of FPGA_CTRL. Control set A mixes the picture for the monitor, set C the one that is recorded.
 * static_asserts in the field table, regdb/regs_fpga.cpp, compare its fields with these bits. */
#define FPGA_CTRL_AGO  (1u << 0)  /* A: graphic overlay */
#define FPGA_CTRL_ATO  (1u << 1)  /* A: text overlay */
#define FPGA_CTRL_ACO  (1u << 2)  /* A: cursor */
#define FPGA_CTRL_AGP  (1u << 3)  /* A: graphics cover text */
#define FPGA_CTRL_AVR  (1u << 4)  /* A: stored frame in place of the video */
#define FPGA_CTRL_CGO  (1u << 16) /* C: graphic overlay */
#define FPGA_CTRL_CTO  (1u << 17) /* C: text overlay */
#define FPGA_CTRL_CCO  (1u << 18) /* C: cursor */
#define FPGA_CTRL_CVR  (1u << 20) /* C: stored frame in place of the video */
#define FPGA_CTRL_FGON (1u << 23) /* frame generator */
#define FPGA_CTRL_POR  (3u << 24) /* both bits: play, else record */

#endif
