/* SPDX-License-Identifier: MIT */
/* The overlay library down to the device calls, on the virtual board: their number, their order, and their
 * failures. */
#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "fpga/video_image.h"
#include "hw/fpga_device.h"
#include "tests/support/hw/hw_board.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using lines = std::vector<std::string>;

class device_calls : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(0, init_fpga_framebuffer(board.path("fpgamem").c_str()));
        load_font(-1);
        board.trace();
    }
    void TearDown() override
    {
        destroy_fpga_framebuffer();
        current_screen = nullptr;
    }

    /* The trace without the bytes that were written. */
    lines calls()
    {
        lines trace = board.trace();
        for (std::string& line : trace)
            line = line.substr(0, line.find(" :"));
        return trace;
    }

    hw_board board;
    screen record = {};
};

void expect_block(lines* expected, uint32_t offset, unsigned int length)
{
    char text[64];
    snprintf(text, sizeof(text), "fpga seek 0x%08x", offset);
    expected->push_back(text);
    snprintf(text, sizeof(text), "fpga write %u = %u", length, length);
    expected->push_back(text);
}

TEST_F(device_calls, of_init_fpga_are_one_seek_and_one_write_a_block)
{
    init_fpga();
    lines expected;
    expect_block(&expected, 0x200000, 16384);
    expect_block(&expected, 0xff1800, 64);
    expect_block(&expected, 0xff1840, 64);
    expect_block(&expected, 0xff1400, 148);
    expect_block(&expected, 0xff0800, 512);
    for (uint32_t page = 0; page < 9; ++page)
        expect_block(&expected, 0x300000 + page * 0xe00, 3584);
    for (uint32_t page = 0; page < 9; ++page)
        for (uint32_t line = 0; line < 288; ++line)
            expect_block(&expected, page * 0x33400 + line * 720, 720);
    EXPECT_EQ(expected, calls());
}

TEST_F(device_calls, of_a_string_are_one_seek_and_one_write)
{
    init_screen(&record, nullptr);
    write_text_xyc("text", 1, 1, 0x18);
    EXPECT_EQ((lines{"fpga read32 0x00ff0000 = 0x00000000", "fpga seek 0x00300082", "fpga write 8 = 8"}),
              calls());
}

TEST_F(device_calls, of_an_empty_string_are_a_seek_and_an_empty_write)
{
    init_screen(&record, nullptr);
    board.trace();
    write_text_xyc("", 0, 0, 0x18);
    EXPECT_EQ((lines{"fpga seek 0x00300000", "fpga write 0 = 0"}), calls());
}

TEST_F(device_calls, of_a_switch_are_one_and_of_a_mode_two)
{
    init_screen(&record, nullptr);
    board.trace();
    text_overlay_on();
    fpga_play_mode();
    EXPECT_EQ((lines{"fpga write32 0x00ff0000 0x00020002", "fpga read32 0x00ff0000 = 0x00020002",
                     "fpga write32 0x00ff0000 0x03020002"}),
              calls());
}

TEST_F(device_calls, of_a_frame_are_one_transfer_each_way)
{
    std::vector<unsigned char> frame(VIDEO_IMAGE_SIZE);
    get_video_image_from_fpga(frame.data(), 0, frame.size());
    write_video_image_to_fpga(frame.data(), 0, frame.size());
    EXPECT_EQ((lines{"fpga seek 0x01000000", "fpga read 1658880 = 1658880", "fpga seek 0x01000000",
                     "fpga write 1658880 = 1658880"}),
              calls());
}

TEST_F(device_calls, that_fail_are_all_made_nevertheless)
{
    init_fpga();
    const size_t all = calls().size();
    board.fail(BOARD_OPERATION_FPGA_SEEK, EIO);
    board.fail(BOARD_OPERATION_FPGA_WRITE, EIO);
    load_font(-1);
    EXPECT_EQ(0, init_fpga());
    EXPECT_EQ(all, calls().size());
}

/* The result of a drawing whose first register writes succeed; the later ones fail, with lines on standard
 * output. */
template <typename drawing>
int result_after(hw_board* board, uint32_t succeeding, drawing draw)
{
    board->fail(BOARD_OPERATION_FPGA_IOCTL_WRITE, EIO, succeeding);
    testing::internal::CaptureStdout();
    const int result = draw();
    testing::internal::GetCapturedStdout();
    return result;
}

TEST_F(device_calls, of_the_text_cursor_give_it_the_last_ones_result)
{
    text_cursor_parameters parameters = {82, 28, 12, 20, 5, 6, 52, 25, 2, cursor_shapes};
    text_cursor cursor = {};
    const auto init = [&] { return init_text_cursor(&cursor, &parameters); };
    EXPECT_EQ(-1, result_after(&board, 3, init));
    EXPECT_EQ(0, result_after(&board, 4, init));
    EXPECT_EQ(-1, result_after(&board, 1, [&] { return set_cursor_xy(3, 4, &cursor); }));
    EXPECT_EQ(0, result_after(&board, 2, [&] { return set_cursor_xy(3, 4, &cursor); }));
    EXPECT_EQ(-1, result_after(&board, 1, [&] { return move_text_cursor(&cursor, CURSOR_KEY_DOWN); }));
    EXPECT_EQ(0, result_after(&board, 2, [&] { return move_text_cursor(&cursor, CURSOR_KEY_DOWN); }));

    /* Without a shape the origin is written last. */
    parameters.shape = CURSOR_SHAPES;
    EXPECT_EQ(-1, result_after(&board, 1, init));
    EXPECT_EQ(0, result_after(&board, 2, init));
}

TEST_F(device_calls, that_fail_leave_a_frame_as_it_was_read)
{
    board.fail(BOARD_OPERATION_FPGA_READ, EIO);
    std::vector<unsigned char> frame(VIDEO_IMAGE_SIZE, 0xee);
    EXPECT_EQ(0, get_video_image_from_fpga(frame.data(), 0, frame.size()));
    EXPECT_EQ(std::vector<unsigned char>(VIDEO_IMAGE_SIZE, 0xee), frame);
}

TEST_F(device_calls, on_a_closed_device_reach_nothing)
{
    init_screen(&record, nullptr);
    destroy_fpga_framebuffer();
    board.trace();
    testing::internal::CaptureStdout();
    EXPECT_EQ(0, init_fpga());
    EXPECT_EQ(-1, text_overlay_on());
    EXPECT_NE("", testing::internal::GetCapturedStdout());
    EXPECT_EQ(lines{}, calls());
}

} // namespace
