/* SPDX-License-Identifier: MIT */
/* The FPGA's device primitives on the virtual board: which device calls they make, and how they fail. */
#include "hw/fpga_device.h"
#include "tests/support/hw/hw_board.h"

#include <cerrno>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

using lines = std::vector<std::string>;
using bytes = std::vector<unsigned char>;

class fpga_device : public testing::Test
{
protected:
    void SetUp() override { fbfd = -1; }
    void TearDown() override { fbfd = -1; }

    /* Opens the device; its opening is not in the trace. */
    void open_device()
    {
        ASSERT_EQ(0, init_fpga_framebuffer(board.path("fpgamem").c_str()));
        board.trace();
    }

    hw_board board;
};

reg_bf_group entry(uint32_t addr, uint32_t value, uint8_t valid)
{
    return {'X', addr, "REG", 32, value, nullptr, valid, ""};
}

/* Comes first, before other tests set the descriptor. With 0, the standard input would get the data. */
TEST(fpga_device_at_the_start, is_closed)
{
    EXPECT_EQ(-1, fbfd);
}

TEST_F(fpga_device, that_can_not_be_opened_is_reported)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(-1, init_fpga_framebuffer("/nonexistent/fpgamem"));
    EXPECT_EQ("Error: cannot open fpga framebuffer device\n", testing::internal::GetCapturedStdout());
    EXPECT_EQ(-1, fbfd);

    board.fail(BOARD_OPERATION_FPGA_OPEN, ENXIO);
    testing::internal::CaptureStdout();
    EXPECT_EQ(-1, init_fpga_framebuffer(board.path("fpgamem").c_str()));
    EXPECT_EQ("Error: cannot open fpga framebuffer device\n", testing::internal::GetCapturedStdout());
    EXPECT_EQ((lines{"fpga open ! ENXIO"}), board.trace());
}

TEST_F(fpga_device, that_is_closed_reaches_no_other_file)
{
    open_device();
    const int fd = fbfd;
    destroy_fpga_framebuffer();
    EXPECT_EQ((lines{"fpga close"}), board.trace());
    EXPECT_EQ(-1, fbfd);

    /* Another file gets the number, but must not get the data. */
    const std::string stranger = board.path("stranger");
    const int opened = open(stranger.c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(fd, opened == fd ? fd : dup2(opened, fd));
    write_fpga_block(0, "data", 4);
    EXPECT_EQ(0, lseek(fd, 0, SEEK_END));
    close(fd);
    if (opened != fd)
        close(opened);
}

TEST_F(fpga_device, registers_are_read_and_written_32_bits_wide)
{
    open_device();
    testing::internal::CaptureStdout();
    EXPECT_EQ(0, fpga_device_write_reg(0xff0000, 0x00820002));
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ(0x00820002u, fpga_device_read_reg(0xff0000));
    EXPECT_EQ((lines{"fpga write32 0x00ff0000 0x00820002", "fpga read32 0x00ff0000 = 0x00820002"}),
              board.trace());
    EXPECT_EQ((bytes{0x02, 0x00, 0x82, 0x00}), board.bytes("fpgamem", 0xff0000, 4));
}

TEST_F(fpga_device, widths_of_8_and_16_have_requests_of_their_own)
{
    open_device();
    for (const char* operation :
         {"read16 0x00ff1a00", "read8 0x00ff1a04", "write16 0x00ff1a00", "write8 0x00ff1a04"})
        board.announce_judgement(std::string("fpga ") + operation + ": not 32 bits wide");
    fpga_reg_transfer record = {0xff1a00, 0x1234};
    EXPECT_EQ(0, l_writeout(&record, fbfd, 16));
    record = {0xff1a04, 0x56};
    EXPECT_EQ(0, l_writeout(&record, fbfd, 8));
    record = {0xff1a00, 0};
    EXPECT_EQ(0, l_readin(&record, fbfd, 16));
    EXPECT_EQ(0x1234u, record.value);
    record = {0xff1a04, 0};
    EXPECT_EQ(0, l_readin(&record, fbfd, 8));
    EXPECT_EQ(0x56u, record.value);
    EXPECT_EQ((lines{"fpga write16 0x00ff1a00 0x1234", "fpga write8 0x00ff1a04 0x56",
                     "fpga read16 0x00ff1a00 = 0x1234", "fpga read8 0x00ff1a04 = 0x56"}),
              board.trace());
}

TEST_F(fpga_device, other_widths_call_nothing_and_return_the_descriptor)
{
    open_device();
    fpga_reg_transfer record = {0xff0000, 0x77};
    testing::internal::CaptureStdout();
    for (const int width : {24, 0, -1, 64, 31}) {
        EXPECT_EQ(fbfd, l_readin(&record, fbfd, width));
        EXPECT_EQ(fbfd, l_writeout(&record, fbfd, width));
    }
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ(lines{}, board.trace());
    EXPECT_EQ(0x77u, record.value);
}

TEST_F(fpga_device, a_refused_read_gives_0)
{
    open_device();
    fpga_device_write_reg(0xff0000, 0x00820002);
    board.fail(BOARD_OPERATION_FPGA_IOCTL_READ, EIO);
    EXPECT_EQ(0u, fpga_device_read_reg(0xff0000));
}

TEST_F(fpga_device, a_refused_write_prints_two_lines_and_returns_the_result)
{
    open_device();
    board.fail(BOARD_OPERATION_FPGA_IOCTL_WRITE, EIO);
    testing::internal::CaptureStdout();
    EXPECT_EQ(-1, fpga_device_write_reg(0xff0000, 0x00820002));
    EXPECT_EQ("ioctl error#-1  in l_writeout\nl_write_reg call A:00ff0000 V:00820002\n R:-1",
              testing::internal::GetCapturedStdout());
}

TEST_F(fpga_device, that_is_not_open_answers_like_one_that_refuses)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(0u, fpga_device_read_reg(0xff0000));
    EXPECT_EQ(-1, fpga_device_write_reg(0xff0000, 1));
    EXPECT_EQ("ioctl error#-1  in l_writeout\nl_write_reg call A:00ff0000 V:00000001\n R:-1",
              testing::internal::GetCapturedStdout());
    char buffer[4] = {1, 2, 3, 4};
    EXPECT_EQ(1, read_fpga_block(0, buffer, sizeof(buffer)));
    EXPECT_EQ(1, write_fpga_block(0, buffer, sizeof(buffer)));
    EXPECT_EQ(1, buffer[0]);
}

TEST_F(fpga_device, blocks_are_a_seek_and_a_transfer)
{
    open_device();
    EXPECT_EQ(1, write_fpga_block(0x300006, "A\x18", 2));
    bytes buffer(4);
    EXPECT_EQ(1, read_fpga_block(0x300005, buffer.data(), 4));
    EXPECT_EQ((bytes{0, 'A', 0x18, 0}), buffer);
    EXPECT_EQ((lines{"fpga seek 0x00300006", "fpga write 2 = 2 : 41 18", "fpga seek 0x00300005",
                     "fpga read 4 = 4 : 00 41 18 00"}),
              board.trace());
}

TEST_F(fpga_device, failed_and_short_transfers_are_not_reported)
{
    open_device();
    board.fail(BOARD_OPERATION_FPGA_SEEK, EIO, 1);
    board.fail(BOARD_OPERATION_FPGA_WRITE, EIO);
    board.fail(BOARD_OPERATION_FPGA_READ, EIO);
    bytes buffer(4, 0xee);
    EXPECT_EQ(1, write_fpga_block(0x300000, "data", 4));
    EXPECT_EQ(1, read_fpga_block(0x300000, buffer.data(), 4));
    EXPECT_EQ(bytes(4, 0xee), buffer);
    EXPECT_EQ((lines{"fpga seek 0x00300000", "fpga write 4 ! EIO", "fpga seek 0x00300000 ! EIO",
                     "fpga read 4 ! EIO"}),
              board.trace());
}

TEST_F(fpga_device, offsets_use_all_32_bits)
{
    open_device();
    board.announce_judgement("fpga read 0xfffffff0 1: not all of it is memory");
    char byte = 0;
    read_fpga_block(0xfffffff0, &byte, 1);
    EXPECT_EQ((lines{"fpga seek 0xfffffff0", "fpga read 1 = 0"}), board.trace());
}

TEST_F(fpga_device, set_ioctl_makes_its_request)
{
    open_device();
    EXPECT_EQ(0, set_ioctl(1, 2, nullptr));
    EXPECT_EQ(1u, board.trace().size());
}

TEST_F(fpga_device, table_entries_are_read_and_written)
{
    open_device();
    reg_bf_group reg = entry(0xff0004, 0x01123456, 1);
    EXPECT_EQ(1, write_fpga_reg(&reg));
    reg.value = 0;
    EXPECT_EQ(1, read_fpga_reg(&reg));
    EXPECT_EQ(0x01123456u, reg.value);
    EXPECT_EQ((lines{"fpga write32 0x00ff0004 0x01123456", "fpga read32 0x00ff0004 = 0x01123456"}),
              board.trace());
}

TEST_F(fpga_device, an_invalid_entry_makes_no_system_call)
{
    open_device();
    reg_bf_group reg = entry(0xff0004, 0x01123456, 0);
    EXPECT_EQ(-1, write_fpga_reg(&reg));
    EXPECT_EQ(lines{}, board.trace());
}

} // namespace
