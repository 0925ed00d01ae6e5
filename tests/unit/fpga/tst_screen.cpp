/* SPDX-License-Identifier: MIT */
/* The screen record, the start-up sequence, and the choice between the glyph sets. */
#include "fpga/font.h"
#include "fpga/screen.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <cstring>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

using start_up = without_screen;

/* The glyph set is process-wide, and each of these leaves another one behind. */
void load_another_font()
{
    static int unknown = 1000;
    load_font(++unknown);
    fpga_recorded().clear();
}

/* Comes first, before other tests load one. */
TEST_F(start_up, the_first_glyph_set_of_the_process_is_written)
{
    EXPECT_EQ(1, load_font(1));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x200000, 16384}
    }),
              fpga_recorded());
}

TEST_F(start_up, init_screen_fills_the_record_and_takes_CTRL)
{
    text_cursor cursor = {};
    screen record;
    memset(&record, 0xee, sizeof(record));
    fpga_set_register(0xff0000, 0x00820002);
    EXPECT_EQ(0x00820002u, init_screen(&record, &cursor));
    EXPECT_EQ((fpga_accesses{
                  {read_register, 0xff0000, 0x00820002}
    }),
              fpga_recorded());
    EXPECT_EQ(&record, current_screen);
    EXPECT_EQ(0u, record.text_write_page);
    EXPECT_EQ(0x18u, record.text_color);
    EXPECT_EQ(&cursor, record.cursor);
    EXPECT_EQ(53u, record.text_columns);
    EXPECT_EQ(26u, record.text_lines);
    EXPECT_EQ(0u, record.graphic_write_page);
    EXPECT_EQ(1u, record.graphic_color);
    EXPECT_EQ(720u, record.graphic_width);
    EXPECT_EQ(288u, record.graphic_height);
    EXPECT_EQ(40u, record.graphic_x_offset);
    EXPECT_EQ(7u, record.graphic_y_offset);
    EXPECT_EQ(0x00820002u, record.control_shadow);
}

TEST_F(start_up, init_fpga_needs_no_screen_and_keeps_its_order)
{
    load_another_font();
    EXPECT_EQ(0, init_fpga());

    fpga_accesses expected = {
        {write_memory, 0x200000, 16384}, // glyph set
        {write_memory, 0xff1800, 64   }, // text foreground palette
        {write_memory, 0xff1840, 64   }, // text background palette
        {write_memory, 0xff1400, 148  }, // graphic palette
        {write_memory, 0xff0800, 512  }, // cursor image
    };
    for (uint32_t page = 0; page < 9; ++page)
        expected.push_back({write_memory, 0x300000 + page * 0xe00, 3584});
    for (uint32_t page = 0; page < 9; ++page)
        for (uint32_t line = 0; line < 288; ++line)
            expected.push_back({write_memory, page * 0x33400 + line * 720, 720});
    EXPECT_EQ(expected, fpga_recorded());
}

TEST_F(start_up, the_glyph_set_outlives_a_second_init_fpga)
{
    load_another_font();
    init_fpga();
    load_font(2);
    fpga_recorded().clear();
    init_fpga();
    EXPECT_EQ((fpga_access{write_memory, 0x200000, 16384}), fpga_recorded().front());
    fpga_recorded().clear();
    init_fpga();
    EXPECT_EQ((fpga_access{write_memory, 0xff1800, 64}), fpga_recorded().front());
}

TEST_F(start_up, load_font_twice_writes_once)
{
    load_another_font();
    EXPECT_EQ(1, load_font(1));
    EXPECT_EQ(0, load_font(1));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x200000, 16384}
    }),
              fpga_recorded());
}

TEST_F(start_up, load_font_0_does_nothing_and_keeps_the_current_set)
{
    load_another_font();
    EXPECT_EQ(1, load_font(3));
    fpga_recorded().clear();
    EXPECT_EQ(0, load_font(0));
    load_font(3);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(start_up, load_font_of_an_unknown_number_becomes_current_without_writing)
{
    for (const int unknown : {7, -1, 4, 0x7fffffff}) {
        load_another_font();
        EXPECT_EQ(0, load_font(unknown));
        EXPECT_EQ(0, load_font(unknown));
        EXPECT_EQ(fpga_accesses{}, fpga_recorded()) << unknown;
        load_font(1);
        EXPECT_EQ(1u, fpga_recorded().size()) << unknown;
    }
}

TEST_F(start_up, internal_load_font_swaps_every_row_and_writes_what_is_asked_for)
{
    std::vector<unsigned char> table(FONT_MAP_LENGTH);
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<unsigned char>(i * 7 + i / 256);
    EXPECT_EQ(1, internal_load_font(table.data(), 6));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x200000, 6}
    }),
              fpga_recorded());
    EXPECT_EQ((std::vector<unsigned char>{table[1], table[0], table[3], table[2], table[5], table[4], 0, 0}),
              fpga_bytes(0x200000, 8));

    internal_load_font(table.data(), FONT_MAP_LENGTH);
    for (size_t i = 0; i < table.size(); i += 2) {
        ASSERT_EQ(table[i], fpga_memory()[0x200000 + i + 1]) << i;
        ASSERT_EQ(table[i + 1], fpga_memory()[0x200000 + i]) << i;
    }
}

/* No memory follows this table. */
TEST_F(start_up, internal_load_font_reads_no_more_than_the_table)
{
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t length = FONT_MAP_LENGTH + page;
    void* memory = mmap(nullptr, length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(MAP_FAILED, memory);
    const auto* table = static_cast<const unsigned char*>(memory);
    ASSERT_EQ(0, mprotect(static_cast<unsigned char*>(memory) + FONT_MAP_LENGTH, page, PROT_NONE));
    EXPECT_EQ(1, internal_load_font(table, FONT_MAP_LENGTH));
    munmap(memory, length);
}

TEST_F(start_up, internal_load_font_sends_no_more_than_the_table)
{
    const std::vector<unsigned char> table(FONT_MAP_LENGTH);
    internal_load_font(table.data(), size_t{FONT_MAP_LENGTH} * 2);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x200000, FONT_MAP_LENGTH}
    }),
              fpga_recorded());
}

} // namespace
