/* SPDX-License-Identifier: MIT */
/* The frame in the FPGA's image memory: two fields, the even frame lines first, then the odd ones. */
#ifndef HALDEND_BOARD_DEVICES_STORED_FRAME_H
#define HALDEND_BOARD_DEVICES_STORED_FRAME_H

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* fpga: all of fpgamem. pixels: 720 x 576 numbers 0xffRRGGBB, top line first. */

/* If the frame generator is on, its picture, and true. */
bool stored_frame_generate(const uint8_t* fpga, uint32_t* pixels);

void stored_frame_write(uint8_t* fpga, const uint32_t* pixels);

#ifdef __cplusplus
}
#endif

#endif
