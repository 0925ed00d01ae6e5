/* SPDX-License-Identifier: MIT */
/* The text layer: which device calls, in which order, and the contents of the cells. */
#include "fpga/font.h"
#include "fpga/palettes.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "tests/support/hw/failing_malloc.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace
{

using bytes = std::vector<unsigned char>;

class text_layer : public with_screen
{
};

using text_layer_without_screen = without_screen;

std::string written_output(const std::string& text, unsigned int x, unsigned int y, int* result)
{
    testing::internal::CaptureStderr();
    *result = write_text_xyc(text.c_str(), x, y, 0x18);
    return testing::internal::GetCapturedStderr();
}

const char MALLOC_ERROR[] = "malloc error in write_text_xyc\n";

TEST_F(text_layer_without_screen, drawing_does_nothing)
{
    EXPECT_EQ(-1, write_text_xyc("text", 0, 0, 0x18));
    EXPECT_EQ(-1, write_ch_xyc('c', 0, 0, 0x18));
    EXPECT_EQ(-1, write_ch('c'));
    EXPECT_EQ(-1, clear_text_page(0));
    EXPECT_EQ(-1, clear_all_text_pages());
    set_active_text_color(1);
    set_active_text_write_page(1);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(text_layer, a_string_is_written_in_one_block)
{
    EXPECT_EQ(1, write_text_xyc("Ab", 3, 2, 0x1f));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + (3 + 2 * 64) * 2, 4}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{'A', 0x1f, 'b', 0x1f}), fpga_bytes(0x300106, 4));
}

TEST_F(text_layer, the_screen_record_says_how_many_columns_and_rows_there_are)
{
    record.text_columns = 10;
    record.text_lines = 2;
    write_text_xyc("a string", 7, 0, 0x18);
    clear_text_page(1);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + 7 * 2,         6 },
                  {write_memory, 0x300000 + 0xe00,         20},
                  {write_memory, 0x300000 + 0xe00 + 0x080, 20}
    }),
              fpga_recorded());
}

TEST_F(text_layer, drawing_keeps_no_memory)
{
    const size_t before = allocated_blocks();
    for (const char* text : {"", "x", "a longer text"})
        EXPECT_EQ(1, write_text_xyc(text, 0, 0, 0x18));
    EXPECT_EQ(before, allocated_blocks());
}

TEST_F(text_layer, characters_are_bytes_on_every_processor)
{
    write_text_xyc("\xff\x80\xa4", 0, 0, 0x118);
    EXPECT_EQ((bytes{0xff, 0x18, 0x80, 0x18, 0xa4, 0x18}), fpga_bytes(0x300000, 6));
}

TEST_F(text_layer, a_string_of_60_at_column_0_writes_53_cells)
{
    write_text_xyc(std::string(60, 'x').c_str(), 0, 25, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + 25 * 128, 106}
    }),
              fpga_recorded());
    EXPECT_EQ(bytes(22, 0), fpga_bytes(0x300000 + 25 * 128 + 106, 22));
}

TEST_F(text_layer, a_string_of_60_at_column_50_writes_3_cells)
{
    write_text_xyc(std::string(60, 'x').c_str(), 50, 0, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + 50 * 2, 6}
    }),
              fpga_recorded());
}

TEST_F(text_layer, a_string_that_just_fits_is_not_cut)
{
    write_text_xyc(std::string(53, 'x').c_str(), 0, 0, 0x18);
    write_text_xyc("xyz", 50, 0, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000, 106},
                  {write_memory, 0x300064, 6  }
    }),
              fpga_recorded());
}

TEST_F(text_layer, an_empty_string_writes_a_zero_length_block)
{
    EXPECT_EQ(1, write_text_xyc("", 5, 1, 0x18));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + (5 + 64) * 2, 0}
    }),
              fpga_recorded());
}

TEST_F(text_layer, at_column_53_nothing_is_left_of_a_string)
{
    write_text_xyc("text", 53, 0, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + 53 * 2, 0}
    }),
              fpga_recorded());
}

TEST_F(text_layer, beyond_column_53_the_allocation_fails)
{
    for (const unsigned int x : {54u, 255u, 70000u, static_cast<unsigned int>(INT_MAX) - 4}) {
        int result = 0;
        EXPECT_EQ(MALLOC_ERROR, written_output("text", x, 0, &result)) << x;
        EXPECT_EQ(-1, result);
    }
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(text_layer, columns_are_compared_as_signed_numbers)
{
    write_text_xyc("text", static_cast<unsigned int>(-1), 1, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + 63 * 2, 8}
    }),
              fpga_recorded());
}

TEST_F(text_layer, a_failed_allocation_is_reported)
{
    int result = 0;
    failing_malloc failing;
    EXPECT_EQ(MALLOC_ERROR, written_output("text", 0, 0, &result));
    EXPECT_EQ(-1, result);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(text_layer, a_character_is_a_cell_of_two_bytes)
{
    EXPECT_EQ(1, write_ch_xyc(0xa4, 52, 25, 0x2f));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x300000 + (52 + 25 * 64) * 2, 2}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{0xa4, 0x2f}), fpga_bytes(0x300000 + (52 + 25 * 64) * 2, 2));
}

TEST_F(text_layer, writes_go_to_the_active_page)
{
    set_active_text_write_page(8);
    write_text_xyc("a", 0, 0, 0x18);
    write_ch_xyc('b', 1, 0, 0x18);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x307000, 2},
                  {write_memory, 0x307002, 2}
    }),
              fpga_recorded());
}

TEST_F(text_layer, write_ch_needs_a_cursor)
{
    EXPECT_EQ(-1, write_ch('c'));
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(text_layer, write_ch_writes_at_the_cursor_in_the_active_colour)
{
    text_cursor cursor = {};
    cursor.column = 7;
    cursor.row = 3;
    init_screen(&record, &cursor);
    fpga_recorded().clear();
    write_ch('c');
    set_active_text_color(0x2f);
    write_ch('d');
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x30018e, 2},
                  {write_memory, 0x30018e, 2}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{'d', 0x2f}), fpga_bytes(0x30018e, 2));
}

TEST_F(text_layer, show_text_page_writes_the_pages_address_unchecked)
{
    EXPECT_EQ(0, show_text_page(0));
    show_text_page(8);
    show_text_page(9);
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff1a0c, 0x300000},
                  {write_register, 0xff1a0c, 0x307000},
                  {write_register, 0xff1a0c, 0x307e00}
    }),
              fpga_recorded());
}

TEST_F(text_layer, clear_text_page_clears_what_is_seen_and_nothing_else)
{
    const uint32_t page = 0x300000 + 2 * 0xe00;
    std::fill_n(fpga_memory().begin() + page - 1, 0xe02, static_cast<unsigned char>(0xee));
    EXPECT_EQ(1, clear_text_page(2));

    fpga_accesses expected;
    for (uint32_t row = 0; row < 26; ++row)
        expected.push_back({write_memory, page + row * 128, 106});
    EXPECT_EQ(expected, fpga_recorded());
    EXPECT_EQ(bytes(1, 0xee), fpga_bytes(page - 1, 1));
    for (uint32_t row = 0; row < 26; ++row)
        EXPECT_EQ(bytes(22, 0xee), fpga_bytes(page + row * 128 + 106, 22)) << row;
    EXPECT_EQ(bytes(2 * 128 + 1, 0xee), fpga_bytes(page + 26 * 128, 2 * 128 + 1));
}

TEST_F(text_layer, clear_all_text_pages_clears_pages_0_to_8)
{
    EXPECT_EQ(1, clear_all_text_pages());
    ASSERT_EQ(9u * 26, fpga_recorded().size());
    for (uint32_t page = 0; page < 9; ++page)
        EXPECT_EQ((fpga_access{write_memory, 0x300000 + page * 0xe00, 106}), fpga_recorded()[page * 26]);
}

TEST_F(text_layer, clear_text_memory_zeroes_whole_pages)
{
    std::fill_n(fpga_memory().begin() + 0x300000, 9 * 0xe00 + 1, static_cast<unsigned char>(0xee));
    EXPECT_EQ(1, clear_text_memory());
    fpga_accesses expected;
    for (uint32_t page = 0; page < 9; ++page)
        expected.push_back({write_memory, 0x300000 + page * 0xe00, 3584});
    EXPECT_EQ(expected, fpga_recorded());
    EXPECT_EQ(bytes(9 * 0xe00, 0), fpga_bytes(0x300000, 9 * 0xe00));
    EXPECT_EQ(bytes(1, 0xee), fpga_bytes(0x300000 + 9 * 0xe00, 1));
}

TEST_F(text_layer, palettes_land_little_endian)
{
    EXPECT_EQ(1, init_fpga_text_layer());
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0xff1800, 64},
                  {write_memory, 0xff1840, 64}
    }),
              fpga_recorded());
    for (uint32_t i = 0; i < TEXT_COLORS; ++i) {
        EXPECT_EQ(text_forderground_color_tab[i], fpga_register(0xff1800 + 4 * i));
        EXPECT_EQ(text_background_color_tab[i], fpga_register(0xff1840 + 4 * i));
    }
    EXPECT_EQ((bytes{0x80, 0x80, 0x80, 0xa0}), fpga_bytes(0xff1800 + 4 * 8, 4));
}

TEST(palettes, foreground_and_background_are_the_same)
{
    for (uint32_t i = 0; i < TEXT_COLORS; ++i)
        EXPECT_EQ(text_forderground_color_tab[i], text_background_color_tab[i]);
    EXPECT_EQ(0xff008080, text_forderground_color_tab[4]);
    EXPECT_EQ(0xff008080, text_forderground_color_tab[7]);
}

} // namespace
