/* SPDX-License-Identifier: MIT */
/* The FPGA's store trigger: stores the live picture in the image memory. The live picture is the camera's behind the
 * decoder, or the frame generator's colour while that is on. */
#include "board/camera/live.h"
#include "board/devices/devices.h"
#include "board/devices/stored_frame.h"

#include <sys/mman.h>

NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)

enum { PIXELS = VIDEO_WIDTH * VIDEO_HEIGHT };

struct live board_live(const struct board* board)
{
    return (struct live){.directory = board->directory,
                         .control = board->control,
                         .i2c = board->i2c,
                         .camera = board->camera,
                         .frames = board->frames};
}

/* pixels: with room for the tables of the moving camera behind them, if that is the source. */
static void take_picture(const struct board* board, uint32_t* pixels, bool moving)
{
    struct live live = board_live(board);
    if (stored_frame_generate(board->fpga, pixels))
        return;
    if (moving)
        live.moving = moving_prepare(pixels + PIXELS);
    live_picture(&live, pixels);
}

void store_live_picture(const struct board* board)
{
    int saved = errno;
    bool moving = live_needs_moving(board->control);
    size_t bytes = VIDEO_FRAME_BYTES + (moving ? moving_bytes() : 0);
    void* memory = next_mmap64()(NULL, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory != MAP_FAILED) {
        take_picture(board, memory, moving);
        stored_frame_write(board->fpga, memory);
        munmap(memory, bytes);
    }
    errno = saved;
}
