/* SPDX-License-Identifier: MIT */
/* The live picture: what the FPGA gets from the camera, through the video decoder. */
#ifndef HALDEND_BOARD_CAMERA_LIVE_H
#define HALDEND_BOARD_CAMERA_LIVE_H

#include "board/camera/moving.h"
#include "board/layout/board_layout.h"

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The board's files that have a part in it, mapped. */
struct live {
    const char* directory;
    struct board_control* control;
    const uint8_t* i2c;          /* BOARD_I2C */
    const uint8_t* camera;       /* BOARD_CAMERA */
    const uint8_t* frames;       /* BOARD_FRAMES */
    const struct moving* moving; /* may be null while live_needs_moving() says no */
};

/* Whether the source is the moving camera. */
bool live_needs_moving(const struct board_control* control);

/* Chooses a source, from now on. fixed: 0, or 1 + the number of the only frame. Returns the choice's number. */
uint32_t live_choose(struct board_control* control, enum board_camera_source source, uint32_t fixed);

/* The number of the camera's frame now. After a new start of the machine it counts from there. */
uint32_t live_frame_number(const struct board_control* control);

/* Whether the decoder gets a signal: the camera is plugged in, and its source lives. */
bool live_has_signal(const struct live* live);

/* The camera's picture, before the decoder: 720 x 576 pixels 0xffRRGGBB, as numbers. Black without a source. */
void live_camera(const struct live* live, uint32_t* pixels);

/* The picture behind the decoder; black without a signal, and from a decoder that is all zeros. */
void live_picture(const struct live* live, uint32_t* pixels);

#ifdef __cplusplus
}
#endif

#endif
