/* SPDX-License-Identifier: MIT */
/* What the video decoder and the video encoder do to the picture, by their registers.
 *
 * The decoder's formulae are the data sheet's, on the digital signal, in which black is 16 and white 235:
 *
 *     Y  = contrast / 71 * (Y - 128) + brightness
 *     UV = saturation / 64 * UV, turned by the hue
 *
 * The virtual camera is adjusted to the register files that are shipped, whose brightness is 125 and whose saturation
 * is 126: its signal is 3 steps too bright, and has 64/126 of its colour. So these files show its picture unchanged.
 */
#ifndef HALDEND_BOARD_CAMERA_DECODER_H
#define HALDEND_BOARD_CAMERA_DECODER_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The settings that the camera is adjusted to. */
#define DECODER_BRIGHTNESS 125
#define DECODER_CONTRAST   71
#define DECODER_SATURATION 126
#define DECODER_HUE        0

/* Whether all registers of a chip but the decoder's status are 0: no program has set it up, and it is silent.
 * registers: 256 of them. */
bool chip_is_zeroed(const uint8_t* registers);

/* Puts pixels 0xffRRGGBB through a decoder with these 256 registers. */
void decoder_apply(const uint8_t* registers, uint32_t* pixels, size_t count);

#ifdef __cplusplus
}
#endif

#endif
