/* SPDX-License-Identifier: MIT */
#include "board/camera/live.h"

#include "board/camera/decoder.h"
#include "board/camera/frames.h"
#include "board/camera/words.h"

#include <time.h>

#define PIXELS     (VIDEO_WIDTH * VIDEO_HEIGHT)
#define FRAME_NS   40000000
#define FRAME_RATE 25

/* Frames since the start of the machine: all programs have the same. */
static uint32_t clock_frames(void)
{
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (uint32_t)((uint64_t)now.tv_sec * FRAME_RATE + (uint64_t)now.tv_nsec / FRAME_NS);
}

static uint32_t source_of(const struct board_control* control)
{
    return board_load(&control->camera.source);
}

bool live_needs_moving(const struct board_control* control)
{
    return source_of(control) == BOARD_CAMERA_MOVING;
}

uint32_t live_choose(struct board_control* control, enum board_camera_source source, uint32_t fixed)
{
    struct board_camera* camera = &control->camera;
    board_store(&camera->start, clock_frames());
    board_store(&camera->fixed, fixed);
    board_store(&camera->helper, FRAMES_STARTING);
    board_store(&camera->source, source);
    frames_count(&camera->choice);
    frames_count(&camera->wanted); /* for the helper of the last choice: it sees that it is over */
    return board_load(&camera->choice);
}

uint32_t live_frame_number(const struct board_control* control)
{
    uint32_t fixed = board_load(&control->camera.fixed);
    uint32_t now = clock_frames();
    uint32_t start = board_load(&control->camera.start);
    if (fixed != 0)
        return fixed - 1;
    return now >= start ? now - start : now;
}

bool live_has_signal(const struct live* live)
{
    uint8_t status = live->i2c[SAA7113_SLAVE * 256 + SAA7113_STATUS];
    return (status & SAA7113_STATUS_NO_LOCK) == 0 &&
           (source_of(live->control) != BOARD_CAMERA_FRAMES || frames_alive(live->control, live->directory));
}

static void fill_black(uint32_t* pixels)
{
    for (size_t i = 0; i < PIXELS; ++i)
        pixels[i] = 0xff000000u;
}

void live_camera(const struct live* live, uint32_t* pixels)
{
    uint32_t source = source_of(live->control);
    if (source == BOARD_CAMERA_MOVING && live->moving != NULL)
        moving_frame(live->moving, live_frame_number(live->control), pixels);
    else if (source == BOARD_CAMERA_STILL)
        words_load(pixels, live->camera, PIXELS);
    else if (source != BOARD_CAMERA_FRAMES ||
             !frames_take(live->control, live->directory, live->frames, pixels))
        fill_black(pixels);
}

void live_picture(const struct live* live, uint32_t* pixels)
{
    const uint8_t* decoder = live->i2c + SAA7113_SLAVE * 256;
    if (chip_is_zeroed(decoder) || !live_has_signal(live)) {
        fill_black(pixels);
        return;
    }
    live_camera(live, pixels);
    decoder_apply(decoder, pixels, PIXELS);
}
