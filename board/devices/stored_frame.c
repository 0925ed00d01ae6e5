/* SPDX-License-Identifier: MIT */
#include "board/devices/stored_frame.h"

#include "board/camera/words.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <endian.h>
#include <stddef.h>
#include <string.h>

enum { PIXELS = VIDEO_WIDTH * VIDEO_HEIGHT };

static const uint32_t OPAQUE = 0xff000000;

static uint32_t fpga_word(const uint8_t* fpga, uint32_t address)
{
    uint32_t word;
    memcpy(&word, fpga + address, sizeof word);
    return le32toh(word);
}

bool stored_frame_generate(const uint8_t* fpga, uint32_t* pixels)
{
    if ((fpga_word(fpga, FPGA_CTRL) & FPGA_CTRL_FGON) == 0)
        return false;
    for (size_t i = 0; i < PIXELS; ++i)
        pixels[i] = OPAQUE | fpga_word(fpga, FPGA_FGCC);
    return true;
}

void stored_frame_write(uint8_t* fpga, const uint32_t* pixels)
{
    for (size_t y = 0; y < VIDEO_HEIGHT; ++y) {
        size_t stored = y / 2 + y % 2 * VIDEO_FIELD_LINES;
        words_store(fpga + FPGA_VIDEO_IMAGE + stored * VIDEO_LINE_BYTES, pixels + y * VIDEO_WIDTH,
                    VIDEO_WIDTH);
    }
}
