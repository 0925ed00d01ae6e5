/* SPDX-License-Identifier: MIT */
/* Frames of box characters. */
#include "fpga/box.h"
#include "tests/support/hw/failing_malloc.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <string>

#include <gtest/gtest.h>

namespace
{

class box : public with_screen
{
protected:
    void TearDown() override
    {
        expect_blocks_whole(); // a box frees its line never
        with_screen::TearDown();
    }
};

/* The codes of n cells from column x of row y on. */
std::string codes(uint32_t x, uint32_t y, size_t n)
{
    std::string text;
    for (size_t i = 0; i < n; ++i)
        text += static_cast<char>(fpga_memory()[0x300000 + (x + y * 64 + i) * 2]);
    return text;
}

TEST_F(box, of_four_rows_has_both_lines_before_its_middle_rows)
{
    write_box(2, 3, 5, 4, 0x1f, 1);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + (2 + 3 * 64) * 2, 10},
                  {write_memory, 0x300000 + (2 + 6 * 64) * 2, 10},
                  {write_memory, 0x300000 + (2 + 4 * 64) * 2, 10},
                  {write_memory, 0x300000 + (2 + 5 * 64) * 2, 10}
    }),
              fpga_recorded());
    EXPECT_EQ("\xc9\xcd\xcd\xcd\xbb", codes(2, 3, 5));
    EXPECT_EQ("\xba   \xba", codes(2, 4, 5));
    EXPECT_EQ("\xba   \xba", codes(2, 5, 5));
    EXPECT_EQ("\xc8\xcd\xcd\xcd\xbc", codes(2, 6, 5));
    EXPECT_EQ(0x1f, fpga_memory()[0x300000 + (2 + 3 * 64) * 2 + 1]);
}

TEST_F(box, styles_have_their_codes)
{
    write_box(0, 0, 3, 3, 0x18, 2);
    EXPECT_EQ("\xda\xc4\xbf", codes(0, 0, 3));
    EXPECT_EQ("\xb3 \xb3", codes(0, 1, 3));
    EXPECT_EQ("\xc0\xc4\xd9", codes(0, 2, 3));
    write_box(0, 0, 3, 3, 0x18, 0);
    for (uint32_t row = 0; row < 3; ++row)
        EXPECT_EQ("   ", codes(0, row, 3));
}

TEST_F(box, of_two_rows_has_no_middle)
{
    write_box(0, 0, 10, 2, 0x18, 1);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000, 20},
                  {write_memory, 0x300080, 20}
    }),
              fpga_recorded());
}

TEST_F(box, of_one_row_ends_as_its_bottom_line)
{
    write_box(0, 4, 3, 1, 0x18, 1);
    EXPECT_EQ(2u, fpga_recorded().size());
    EXPECT_EQ("\xc8\xcd\xbc", codes(0, 4, 3));
}

TEST_F(box, of_width_1_keeps_its_right_ends)
{
    write_box(0, 0, 1, 3, 0x18, 1);
    EXPECT_EQ("\xbb", codes(0, 0, 1));
    EXPECT_EQ("\xba", codes(0, 1, 1));
    EXPECT_EQ("\xbc", codes(0, 2, 1));
}

TEST_F(box, is_cut_at_the_right_edge)
{
    write_box(50, 0, 10, 2, 0x18, 1);
    EXPECT_EQ((fpga_access{write_memory, 0x300000 + 100, 6}), fpga_recorded()[0]);
    EXPECT_EQ("\xc9\xcd\xcd", codes(50, 0, 3));
}

TEST_F(box, without_width_style_or_memory_is_not_drawn)
{
    write_box(0, 0, 0, 3, 0x18, 1);
    write_box(0, 0, 3, 3, 0x18, 3);
    write_box(0, 0, 3, 3, 0x18, 0xffffffff);
    {
        failing_malloc failing;
        write_box(0, 0, 3, 3, 0x18, 1);
    }
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

/* The length of its line, one byte more, is 0 on the target. */
TEST_F(box, of_the_largest_width_is_not_drawn)
{
    write_box(0, 0, 0xffffffff, 3, 0x18, 1);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

} // namespace
