/* SPDX-License-Identifier: MIT */
/* The letters that the moving camera puts into its picture: of 5 x 7 dots, as those of a camera are. */
#ifndef HALDEND_BOARD_CAMERA_DOTS_H
#define HALDEND_BOARD_CAMERA_DOTS_H

#include <stdint.h>

/* Writes a text of digits, points, blanks and "m", white with a black shadow, into a picture of 720 x 576 pixels. (x, y)
 * is its top left corner. What doesn't fit is left out. */
void dots_write(uint32_t* pixels, uint32_t x, uint32_t y, const char* text);

#endif
