/* SPDX-License-Identifier: MIT */
/* The I2C chips' device primitives on the virtual board. */
#include "hw/saa71xx_device.h"
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

class saa71xx_device : public testing::Test
{
protected:
    void TearDown() override
    {
        if (saafd != -1)
            close_saa71xx_device();
    }

    int open_device(int slave)
    {
        testing::internal::CaptureStdout();
        const int result = open_saa71xx_device(board.path("i2c-1").c_str(), slave);
        output = testing::internal::GetCapturedStdout();
        return result;
    }

    hw_board board;
    std::string output;
};

reg_bf_group entry(uint32_t addr, uint32_t value, uint8_t valid)
{
    return {'X', addr, "REG", 8, value, nullptr, valid, ""};
}

/* Comes first, before other tests set the descriptor. With 0, the calls would go to the standard input. */
TEST(saa71xx_device_at_the_start, is_closed)
{
    EXPECT_EQ(-1, saafd);
}

TEST_F(saa71xx_device, that_can_not_be_opened_is_reported)
{
    board.fail(BOARD_OPERATION_I2C_OPEN, ENXIO);
    EXPECT_EQ(-1, open_device(SAA7113_SLAVE));
    EXPECT_EQ("Error: cannot open i2c device\n", output);
    EXPECT_EQ(-1, saafd);
}

TEST_F(saa71xx_device, a_slave_that_can_not_be_selected_is_reported_and_nothing_stays_open)
{
    board.fail(BOARD_OPERATION_I2C_SLAVE, EBUSY);
    EXPECT_EQ(-1, open_device(SAA7113_SLAVE));
    EXPECT_EQ("I2C_SLAVE - communication break up\n", output);
    EXPECT_EQ(-1, saafd);
    const lines trace = board.trace();
    ASSERT_EQ(3u, trace.size());
    EXPECT_EQ("i2c slave 0x25 ! EBUSY", trace[1]);
    EXPECT_EQ("i2c close", trace[2]);
}

TEST_F(saa71xx_device, bytes_go_to_the_selected_chip)
{
    ASSERT_EQ(0, open_device(SAA7129_SLAVE));
    EXPECT_EQ("", output);
    board.trace();
    EXPECT_EQ(1, saa71xx_device_write_reg(0x3a, 0x13));
    EXPECT_EQ(0x13, saa71xx_device_read_reg(0x3a));
    EXPECT_EQ(0, saa71xx_device_read_reg(0x39));
    EXPECT_EQ((lines{"i2c write 0x3a 0x13", "i2c read 0x3a = 0x13", "i2c read 0x39 = 0x00"}), board.trace());
    EXPECT_EQ(bytes{0x13}, board.bytes("i2c-1", 0x44 * 256 + 0x3a, 1));
    EXPECT_EQ(bytes{0x00}, board.bytes("i2c-1", 0x25 * 256 + 0x3a, 1));
}

TEST_F(saa71xx_device, the_last_open_says_which_chip_is_reached)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    saa71xx_device_write_reg(0x58, 0x08); /* both have that one */
    close_saa71xx_device();
    ASSERT_EQ(0, open_device(SAA7129_SLAVE));
    EXPECT_EQ(0, saa71xx_device_read_reg(0x58));
    close_saa71xx_device();
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    EXPECT_EQ(0x08, saa71xx_device_read_reg(0x58));
}

TEST_F(saa71xx_device, a_failed_read_gives_minus_1_and_0xff_in_a_register)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    board.fail(BOARD_OPERATION_I2C_READ, EIO);
    EXPECT_EQ(-1, saa71xx_device_read_reg(0x1f));
    reg_bf_group reg = entry(0x1f, 0x00123456, 1);
    EXPECT_EQ(1, read_saa71xx_reg(&reg));
    EXPECT_EQ(0xff123456u, reg.value);
}

TEST_F(saa71xx_device, a_failed_write_is_not_reported)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    board.fail(BOARD_OPERATION_I2C_WRITE, EIO);
    EXPECT_EQ(1, saa71xx_device_write_reg(0x01, 0x08));
}

TEST_F(saa71xx_device, that_is_closed_reaches_no_other_file)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    const int fd = saafd;
    close_saa71xx_device();
    /* The same device under the same number, opened by another part of the program. */
    const int opened = open(board.path("i2c-1").c_str(), O_RDWR);
    ASSERT_EQ(fd, opened == fd ? fd : dup2(opened, fd));
    board.trace();
    EXPECT_EQ(-1, saa71xx_device_read_reg(0x1f));
    EXPECT_EQ(1, saa71xx_device_write_reg(0x1f, 1));
    EXPECT_EQ(lines{}, board.trace());
    close(fd);
    if (opened != fd)
        close(opened);
}

TEST_F(saa71xx_device, table_entries_use_the_top_byte_of_the_value_and_the_low_byte_of_the_address)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    board.trace();
    reg_bf_group reg = entry(0x1106, 0xe9123456, 1);
    EXPECT_EQ(1, write_saa71xx_reg(&reg));
    EXPECT_EQ((lines{"i2c write 0x06 0xe9"}), board.trace());
    board.set_bytes("i2c-1", 0x25 * 256 + 0x06, {0x42});
    EXPECT_EQ(1, read_saa71xx_reg(&reg));
    EXPECT_EQ(0x42123456u, reg.value);
    EXPECT_EQ(0x42u, reg_value(&reg));
}

TEST_F(saa71xx_device, an_invalid_entry_makes_no_system_call)
{
    ASSERT_EQ(0, open_device(SAA7113_SLAVE));
    board.trace();
    reg_bf_group reg = entry(0x06, 0xe9000000, 0);
    EXPECT_EQ(-1, write_saa71xx_reg(&reg));
    EXPECT_EQ(lines{}, board.trace());
}

} // namespace
