/* SPDX-License-Identifier: MIT */
/* Frames that halden-camera delivers: a film's, or a video device's.
 *
 * halden-camera holds a lock on the byte of BOARD_CAMERA_LOCK that has the number of its choice. While somebody looks,
 * it puts frame after frame into the next place of BOARD_FRAMES, and counts it. When no one has looked for a while, it
 * says so and rests; a look wakes it up. A lock that is gone means that it has ended, or crashed: no signal.
 *
 * These are direct system calls, because the preloaded library takes the C library's functions over.
 */
#ifndef HALDEND_BOARD_CAMERA_FRAMES_H
#define HALDEND_BOARD_CAMERA_FRAMES_H

#include "board/layout/board_layout.h"

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What halden-camera does, in board_camera.helper. */
enum frames_state {
    FRAMES_STARTING, /* hasn't opened its source yet */
    FRAMES_RESTING,
    FRAMES_RUNNING
};

/* Milliseconds that a look waits for the first frame. */
#define FRAMES_PATIENCE_MS 1000

/* Whether the helper of the last choice lives. */
bool frames_alive(const struct board_control* control, const char* directory);

/* Looks at the frames: copies the newest one, pixels 0xffRRGGBB. frames: BOARD_FRAMES. False if the helper doesn't live,
 * or has no frame after FRAMES_PATIENCE_MS. */
bool frames_take(struct board_control* control, const char* directory, const uint8_t* frames,
                 uint32_t* pixels);

/* Waits until the word no longer has the value, at most so many milliseconds; may return early. */
void frames_wait(const uint32_t* word, uint32_t value, int milliseconds);

/* Adds 1 to the word, or sets it, and wakes all that wait for it. */
void frames_count(uint32_t* word);
void frames_set(uint32_t* word, uint32_t value);

#ifdef __cplusplus
}
#endif

#endif
