/* SPDX-License-Identifier: MIT */
/* The virtual camera's picture on every processor: the same bytes in the board's files. */
#include "board/camera/decoder.h"
#include "board/camera/moving.h"
#include "board/camera/words.h"
#include "hw/saa71xx_registers.h"
#include "hw/video_geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace
{

struct drive {
    std::vector<std::max_align_t> memory =
        std::vector<std::max_align_t>(moving_bytes() / sizeof(std::max_align_t) + 1);
    moving* tables = moving_prepare(memory.data());
    std::vector<uint32_t> pixels = std::vector<uint32_t>(VIDEO_WIDTH * VIDEO_HEIGHT);
};

/* FNV-1a of the pixels as they are stored. */
uint64_t hash(const std::vector<uint32_t>& pixels)
{
    std::vector<uint8_t> stored(VIDEO_FRAME_BYTES);
    words_store(stored.data(), pixels.data(), pixels.size());
    uint64_t result = 1469598103934665603ULL;
    for (const uint8_t byte : stored)
        result = (result ^ byte) * 1099511628211ULL;
    return result;
}

TEST(live_picture, the_moving_camera_is_the_same_everywhere)
{
    drive here;
    moving_frame(here.tables, 140, here.pixels.data());
    EXPECT_EQ(0x54610fb106172284U, hash(here.pixels));
    moving_frame(here.tables, 2147483646, here.pixels.data());
    EXPECT_EQ(0xb23862d9f6bcb880U, hash(here.pixels));
}

TEST(live_picture, the_decoder_works_the_same_everywhere)
{
    drive here;
    uint8_t registers[256] = {};
    registers[SAA7113_BRIGHTNESS] = 150;
    registers[SAA7113_CONTRAST] = 0xb0; // inverse
    registers[SAA7113_SATURATION] = 90;
    registers[SAA7113_HUE] = 0xe0; // -45 degrees
    moving_frame(here.tables, 400, here.pixels.data());
    decoder_apply(registers, here.pixels.data(), here.pixels.size());
    EXPECT_EQ(0x23299f444ec59fb4U, hash(here.pixels));
}

/* Sums of the transfer stay in 32 bits, which the sanitizer watches. */
TEST(live_picture, extreme_settings_stay_in_bounds)
{
    const int extremes[] = {0, 0x7f, 0x80, 0xff};
    std::vector<uint32_t> pixels;
    for (const int brightness : extremes)
        for (const int contrast : extremes)
            for (const int saturation : extremes)
                for (const int hue : {0, 32, 64, 96, 128, 192}) {
                    uint8_t registers[256] = {};
                    registers[SAA7113_BRIGHTNESS] = static_cast<uint8_t>(brightness);
                    registers[SAA7113_CONTRAST] = static_cast<uint8_t>(contrast);
                    registers[SAA7113_SATURATION] = static_cast<uint8_t>(saturation);
                    registers[SAA7113_HUE] = static_cast<uint8_t>(hue);
                    pixels = {0xff000000U, 0xffff0000U, 0xff00ff00U, 0xff0000ffU,
                              0xffffff00U, 0xff00ffffU, 0xffff00ffU, 0xffffffffU};
                    decoder_apply(registers, pixels.data(), pixels.size());
                    for (const uint32_t pixel : pixels)
                        EXPECT_EQ(0xffU, pixel >> 24);
                }
}

} // namespace
