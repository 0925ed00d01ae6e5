/* SPDX-License-Identifier: MIT */
/* The FPGA's store trigger: stores the live picture in the image memory.
 *
 * The image memory holds a frame as two fields: the even frame lines first, then the odd ones. The live
 * picture is the camera's behind the decoder, or the frame generator's colour while that is on.
 */
#include "board/camera/live.h"
#include "board/camera/words.h"
#include "board/devices/devices.h"

#include <string.h>
#include <sys/mman.h>

NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)

enum { PIXELS = VIDEO_WIDTH * VIDEO_HEIGHT };

static const uint32_t OPAQUE = 0xff000000;

static uint32_t fpga_word(const struct board* board, uint32_t address)
{
    uint32_t word;
    memcpy(&word, board->fpga + address, sizeof word);
    return le32toh(word);
}

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
    if ((fpga_word(board, FPGA_CTRL) & FPGA_CTRL_FGON) != 0) {
        for (size_t i = 0; i < PIXELS; ++i)
            pixels[i] = OPAQUE | fpga_word(board, FPGA_FGCC);
        return;
    }
    if (moving)
        live.moving = moving_prepare(pixels + PIXELS);
    live_picture(&live, pixels);
}

static void store_picture(const struct board* board, const uint32_t* pixels)
{
    for (size_t y = 0; y < VIDEO_HEIGHT; ++y) {
        size_t stored = y / 2 + y % 2 * VIDEO_FIELD_LINES;
        words_store(board->fpga + FPGA_VIDEO_IMAGE + stored * VIDEO_LINE_BYTES, pixels + y * VIDEO_WIDTH,
                    VIDEO_WIDTH);
    }
}

void store_live_picture(const struct board* board)
{
    int saved = errno;
    bool moving = live_needs_moving(board->control);
    size_t bytes = VIDEO_FRAME_BYTES + (moving ? moving_bytes() : 0);
    void* memory = next_mmap64()(NULL, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory != MAP_FAILED) {
        take_picture(board, memory, moving);
        store_picture(board, memory);
        munmap(memory, bytes);
    }
    errno = saved;
}
