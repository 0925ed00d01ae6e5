/* SPDX-License-Identifier: MIT */
/* The stored video frame: fields on the FPGA's side, a frame with the bottom line first on ours. */
#include "fpga/video_image.h"
#include "tests/support/hw/failing_malloc.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace
{

using bytes = std::vector<unsigned char>;
using video_image = without_screen;

const uint32_t IMAGE = 0x1000000;
const size_t LINE = 2880;

/* Fills every line of the FPGA's memory with its own number. */
void number_fpga_lines()
{
    for (size_t line = 0; line < 576; ++line)
        for (size_t i = 0; i < LINE; i += 2) {
            fpga_memory()[IMAGE + line * LINE + i] = static_cast<unsigned char>(line);
            fpga_memory()[IMAGE + line * LINE + i + 1] = static_cast<unsigned char>(line >> 8);
        }
}

/* The number in a line; -1 if it isn't the same all along. */
int number_of(const unsigned char* line)
{
    for (size_t i = 2; i < LINE; i += 2)
        if (line[i] != line[0] || line[i + 1] != line[1])
            return -1;
    return line[0] | line[1] << 8;
}

TEST_F(video_image, a_read_interleaves_the_fields_and_turns_the_frame_over)
{
    number_fpga_lines();
    bytes buffer(VIDEO_IMAGE_SIZE);
    EXPECT_EQ(0, get_video_image_from_fpga(buffer.data(), 0, buffer.size()));
    EXPECT_EQ((fpga_accesses{
                  {read_memory, IMAGE, VIDEO_IMAGE_SIZE}
    }),
              fpga_recorded());
    for (int k = 0; k <= 574; ++k) {
        const int frame_line = 575 - k;
        const int expected = frame_line % 2 == 0 ? frame_line / 2 : 288 + frame_line / 2;
        ASSERT_EQ(expected, number_of(buffer.data() + static_cast<size_t>(k) * LINE)) << k;
    }
}

TEST_F(video_image, copying_keeps_no_memory)
{
    const size_t before = allocated_blocks();
    bytes buffer(VIDEO_IMAGE_SIZE);
    get_video_image_from_fpga(buffer.data(), 0, buffer.size());
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(before, allocated_blocks());
}

TEST_F(video_image, the_last_line_of_a_read_is_the_raw_one)
{
    number_fpga_lines();
    bytes buffer(VIDEO_IMAGE_SIZE);
    get_video_image_from_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(575, number_of(buffer.data() + 575 * LINE));
}

TEST_F(video_image, a_read_and_a_write_give_back_all_but_the_frames_first_and_last_lines)
{
    number_fpga_lines();
    bytes buffer(VIDEO_IMAGE_SIZE);
    get_video_image_from_fpga(buffer.data(), 0, buffer.size());
    std::fill(fpga_memory().begin() + IMAGE, fpga_memory().end(), static_cast<unsigned char>(0xee));
    fpga_recorded().clear();
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ((fpga_accesses{
                  {write_memory, IMAGE, VIDEO_IMAGE_SIZE}
    }),
              fpga_recorded());
    /* Kept: frame line 0 has no place in the reversal, so the raw last line comes back there, as in all
     * pictures of clients. */
    for (int line = 1; line <= 574; ++line)
        ASSERT_EQ(line, number_of(fpga_memory().data() + IMAGE + static_cast<size_t>(line) * LINE)) << line;
    EXPECT_EQ(575, number_of(fpga_memory().data() + IMAGE));
}

TEST_F(video_image, a_write_leaves_the_buffer_in_field_order)
{
    number_fpga_lines();
    bytes buffer(VIDEO_IMAGE_SIZE);
    get_video_image_from_fpga(buffer.data(), 0, buffer.size());
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(fpga_bytes(IMAGE, VIDEO_IMAGE_SIZE), buffer);
}

TEST_F(video_image, the_odd_line_after_a_write_is_no_memory_of_ours)
{
    bytes buffer(VIDEO_IMAGE_SIZE, 0xee);
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(bytes(LINE, 0), fpga_bytes(IMAGE + 575 * LINE, LINE));
    EXPECT_EQ(bytes(LINE, 0xee), fpga_bytes(IMAGE + 574 * LINE, LINE));
}

TEST_F(video_image, a_read_of_less_than_the_frame_turns_over_no_line_that_is_not_there)
{
    number_fpga_lines();
    bytes buffer(300 * LINE);
    EXPECT_EQ(0, get_video_image_from_fpga(buffer.data(), 0, buffer.size()));
    EXPECT_EQ(275, number_of(buffer.data() + 275 * LINE)); // frame line 300 is not there
    EXPECT_EQ(0, number_of(buffer.data() + 276 * LINE));   // frame line 299 is of memory line 437
    EXPECT_EQ(149, number_of(buffer.data() + 277 * LINE));
}

TEST_F(video_image, a_write_leaves_what_is_behind_the_frame)
{
    bytes buffer(VIDEO_IMAGE_SIZE + 2 * LINE, 0xee);
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(bytes(2 * LINE, 0xee), bytes(buffer.end() - 2 * LINE, buffer.end()));
}

TEST_F(video_image, a_short_buffer_is_not_overrun)
{
    for (const size_t size : {size_t{0}, size_t{1}, LINE - 1, 300 * LINE + 5, size_t{VIDEO_IMAGE_SIZE} - 1}) {
        bytes buffer(size);
        EXPECT_EQ(0, get_video_image_from_fpga(buffer.data(), 0, size));
        write_video_image_to_fpga(buffer.data(), 0, size);
        EXPECT_EQ((fpga_access{write_memory, IMAGE, static_cast<uint32_t>(size)}), fpga_recorded().back());
    }
}

TEST_F(video_image, without_memory_nothing_is_read_or_written)
{
    bytes buffer(VIDEO_IMAGE_SIZE, 0xee);
    failing_malloc failing;
    EXPECT_EQ(-1, get_video_image_from_fpga(buffer.data(), 0, buffer.size()));
    write_video_image_to_fpga(buffer.data(), 0, buffer.size());
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
    EXPECT_EQ(0xee, buffer[0]);
}

} // namespace
