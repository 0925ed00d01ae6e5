/* SPDX-License-Identifier: MIT */
/* The FPGA's store trigger: stores the live picture in the image memory.
 *
 * The image memory holds a frame as two fields: the even frame lines first, then the odd ones. The live
 * picture is the camera's, or the frame generator's colour while that is on.
 */
#include "board/devices/devices.h"
#include "hw/fpga_map.h"

#include <string.h>

static const uint32_t OPAQUE = 0xff000000;

static uint32_t fpga_word(const struct board* board, uint32_t address)
{
    uint32_t word;
    memcpy(&word, board->fpga + address, sizeof word);
    return le32toh(word);
}

static void fill_line(uint8_t* line, uint32_t pixel)
{
    uint32_t word = htole32(pixel);
    for (unsigned x = 0; x < VIDEO_WIDTH; ++x)
        memcpy(line + 4 * x, &word, sizeof word);
}

void store_live_picture(const struct board* board)
{
    bool generated = (fpga_word(board, FPGA_CTRL) & FPGA_CTRL_FGON) != 0;
    uint8_t status = board->i2c[SAA7113_SLAVE * 256 + SAA7113_STATUS];
    bool camera = !generated && (status & SAA7113_STATUS_NO_LOCK) == 0;
    uint32_t color = OPAQUE | (generated ? fpga_word(board, FPGA_FGCC) : 0);
    for (size_t y = 0; y < VIDEO_HEIGHT; ++y) {
        uint8_t* stored =
            board->fpga + FPGA_VIDEO_IMAGE + (y / 2 + y % 2 * VIDEO_FIELD_LINES) * VIDEO_LINE_BYTES;
        if (camera)
            memcpy(stored, board->camera + y * VIDEO_LINE_BYTES, VIDEO_LINE_BYTES);
        else
            fill_line(stored, color);
    }
}
