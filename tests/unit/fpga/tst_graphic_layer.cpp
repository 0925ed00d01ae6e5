/* SPDX-License-Identifier: MIT */
/* The graphic layer: which device calls, in which order, and which pixels. */
#include "fpga/graphic_layer.h"
#include "fpga/palettes.h"
#include "fpga/screen.h"
#include "tests/support/hw/failing_malloc.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <algorithm>
#include <climits>
#include <iterator>

#include <gtest/gtest.h>

namespace
{

using bytes = std::vector<unsigned char>;
using graphic_layer = with_screen;
using graphic_layer_without_screen = without_screen;

/* A 3 × 2 image of two palette entries, as it comes from a file. */
bytes small_image()
{
    return {3,    0,    2,    0,    2, 0, 0xee, 0xee, // width, height, palette entries, unused
            0x11, 0x22, 0x33, 0x44,                   // 0x44332211
            0xff, 0xee, 0xdd, 0xcc,                   // 0xccddeeff
            0,    1,    10,                           // top line
            255,  2,    0};
}

TEST_F(graphic_layer_without_screen, drawing_does_nothing)
{
    bytes image = small_image();
    EXPECT_EQ(-1, write_graphic_pixel_xy(0, 0, 1, 1, 0));
    EXPECT_EQ(-1, write_graphic_window(0, 0, 1, 1, 1, 0));
    EXPECT_EQ(-1, write_graphic_image_xy(0, 0, image.data(), 0, 0));
    clear_graphic_page(0);
    set_active_grahic_write_page(1);
    set_active_graphic_color(1);
    EXPECT_EQ(0u, get_active_graphic_color());
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
    EXPECT_EQ(small_image(), image);
}

TEST_F(graphic_layer, the_palette_lands_little_endian_in_one_block)
{
    EXPECT_EQ(1, init_fpga_graphic_layer());
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0xff1400, 148}
    }),
              fpga_recorded());
    for (uint32_t i = 0; i < GRAPHIC_COLORS; ++i)
        EXPECT_EQ(std_graphic_color_tab[i], fpga_register(0xff1400 + 4 * i));
}

TEST(graphic_palette, begins_with_the_text_palette_and_repeats_itself)
{
    for (uint32_t i = 0; i < TEXT_COLORS; ++i)
        EXPECT_EQ(text_forderground_color_tab[i], std_graphic_color_tab[i]);
    const int twins[][2] = {
        {17, 30},
        {18, 29},
        {23, 31},
        {24, 32},
        {25, 28},
        {25, 36},
        {26, 34},
        {27, 35}
    };
    for (const auto& twin : twins)
        EXPECT_EQ(std_graphic_color_tab[twin[0]], std_graphic_color_tab[twin[1]]) << twin[0];
    EXPECT_EQ(0x80808000u, std_graphic_color_tab[33]);
}

TEST(graphic_palette, has_colours_of_its_own_behind_those_of_texts)
{
    const uint32_t own[] = {0xff00ffff, 0xc0c0c0c0, 0x80808080, 0xffc0dcc0, 0xffa6caff, 0xfffffbf0,
                            0xffa0a0a4, 0x80800000, 0x80008000, 0x80008080, 0x80000080, 0x80800080};
    for (uint32_t i = 0; i < std::size(own); ++i)
        EXPECT_EQ(own[i], std_graphic_color_tab[TEXT_COLORS + i]) << i;
}

TEST(graphic_pages, lie_side_by_side)
{
    const uint32_t pages[] = {0x0,      0x33400,  0x66800,  0x99c00, 0xcd000,
                              0x100400, 0x133800, 0x166c00, 0x19a000};
    for (uint32_t page = 0; page < 9; ++page)
        EXPECT_EQ(pages[page], graphic_page_addr_offset[page]);
}

TEST_F(graphic_layer_without_screen, clear_graphic_memory_zeroes_all_pages_line_by_line)
{
    EXPECT_EQ(1, clear_graphic_memory());
    ASSERT_EQ(9u * 288, fpga_recorded().size());
    for (uint32_t i = 0; i < 9 * 288; ++i)
        EXPECT_EQ((fpga_access{write_memory, i / 288 * 0x33400 + i % 288 * 720, 720}), fpga_recorded()[i]);
}

TEST_F(graphic_layer, clear_graphic_page_uses_the_screens_geometry)
{
    record.graphic_width = 100;
    record.graphic_height = 3;
    std::fill_n(fpga_memory().begin() + 0x19a000, 301, static_cast<unsigned char>(0xee));
    clear_graphic_page(8);
    EXPECT_EQ(
        (fpga_accesses{
            {write_memory, 0x19a000, 100},
            {write_memory, 0x19a064, 100},
            {write_memory, 0x19a0c8, 100}
    }),
        fpga_recorded());
    bytes expected(301);
    expected.back() = 0xee;
    EXPECT_EQ(expected, fpga_bytes(0x19a000, 301));
}

TEST_F(graphic_layer, pages_that_are_not_there_are_not_drawn_on)
{
    bytes image = small_image();
    bytes buffer(8, 0xee);
    for (const int page : {9, 10, INT_MAX, -1, INT_MIN}) {
        clear_graphic_page(page);
        show_graphic_page(page);
        EXPECT_EQ(-1, write_graphic_pixel_xy(0, 0, 1, 1, page));
        EXPECT_EQ(-1, write_graphic_window(0, 0, 1, 1, 1, page));
        EXPECT_EQ(-1, write_graphic_image_xy(0, 0, image.data(), page, 1));
        EXPECT_EQ(-1, get_graphic_image(buffer.data(), page, buffer.size()));
    }
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
    EXPECT_EQ(small_image(), image);
    EXPECT_EQ(bytes(8, 0xee), buffer);
}

TEST_F(graphic_layer, the_write_page_is_kept_below_9)
{
    set_active_grahic_write_page(8);
    EXPECT_EQ(8u, record.graphic_write_page);
    set_active_grahic_write_page(9);
    EXPECT_EQ(8u, record.graphic_write_page);
    set_active_grahic_write_page(-1);
    EXPECT_EQ(0xffffffffu, record.graphic_write_page);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(graphic_layer, show_graphic_page_writes_the_address_shifted_by_8)
{
    show_graphic_page(0);
    show_graphic_page(1);
    show_graphic_page(8);
    show_graphic_page(9);
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff1008, 0     },
                  {write_register, 0xff1008, 0x334 },
                  {write_register, 0xff1008, 0x19a0}
    }),
              fpga_recorded());
}

TEST_F(graphic_layer, the_active_colour_is_only_kept)
{
    EXPECT_EQ(1u, get_active_graphic_color());
    set_active_graphic_color(0x12345678);
    EXPECT_EQ(0x12345678u, get_active_graphic_color());
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(graphic_layer, get_graphic_image_reads_from_the_pages_start)
{
    fpga_memory()[0x33400] = 0x42;
    bytes buffer(10, 0xee);
    EXPECT_EQ(1, get_graphic_image(buffer.data(), 1, 9));
    EXPECT_EQ((fpga_accesses{
                  {read_memory, 0x33400, 9}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{0x42, 0, 0, 0, 0, 0, 0, 0, 0, 0xee}), buffer);
}

TEST_F(graphic_layer, pixels_at_the_origin_are_the_pages_first)
{
    EXPECT_EQ(1, write_graphic_pixel_xy(0, 0, 0x1105, 3, 1));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0x33400, 3}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{5, 5, 5, 0}), fpga_bytes(0x33400, 4));
}

TEST_F(graphic_layer, pixels_are_placed_without_the_offsets)
{
    EXPECT_EQ(1, write_graphic_pixel_xy(719, 287, 5, 1, 0));
    EXPECT_EQ(1, write_graphic_pixel_xy(10, 2, 5, 0, 0));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 287 * 720 + 719, 1},
                  {write_memory, 2 * 720 + 10,    0}
    }),
              fpga_recorded());
}

TEST_F(graphic_layer, a_window_at_the_origin_starts_at_the_offsets)
{
    EXPECT_EQ(1, write_graphic_window(0, 0, 4, 2, 0x207, 0));
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 7 * 720 + 40, 4},
                  {write_memory, 8 * 720 + 40, 4}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{0, 7, 7, 7, 7, 0}), fpga_bytes(7 * 720 + 39, 6));
}

TEST_F(graphic_layer, a_window_without_lines_draws_nothing)
{
    EXPECT_EQ(0, write_graphic_window(0, 0, 4, 0, 7, 0));
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(graphic_layer, an_image_sets_its_palette_shifts_its_pixels_and_is_drawn)
{
    bytes image = small_image();
    EXPECT_EQ(1, write_graphic_image_xy(1, 2, image.data(), 0, 250));
    const uint32_t at = (2 + 7) * 720 + 1 + 40;
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff1400 + 4 * 250, 0x44332211},
                  {write_register, 0xff1400 + 4 * 251, 0xccddeeff},
                  {write_memory,   at,                 3         },
                  {write_memory,   at + 720,           3         }
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{250, 251, 4}), fpga_bytes(at, 3));
    EXPECT_EQ((bytes{249, 252, 250}), fpga_bytes(at + 720, 3));
    // In the caller's buffer too.
    EXPECT_EQ((bytes{250, 251, 4, 249, 252, 250}), bytes(image.begin() + 16, image.end()));
}

TEST_F(graphic_layer, an_image_ends_with_its_last_pixel)
{
    bytes image = small_image();
    image.push_back(0x55);
    write_graphic_image_xy(0, 0, image.data(), 0, 1);
    EXPECT_EQ(0x55, image.back());
}

TEST_F(graphic_layer, drawing_an_image_twice_shifts_it_twice)
{
    bytes image = small_image();
    write_graphic_image_xy(0, 0, image.data(), 0, 3);
    write_graphic_image_xy(0, 0, image.data(), 0, 3);
    EXPECT_EQ((bytes{6, 7, 16}), fpga_bytes(7 * 720 + 40, 3));
}

TEST_F(graphic_layer, only_the_low_byte_of_base_is_added)
{
    bytes image = small_image();
    write_graphic_image_xy(0, 0, image.data(), 0, 0x1ff);
    EXPECT_EQ((fpga_access{write_register, 0xff1400 + 4 * 0x1ff, 0x44332211}), fpga_recorded().front());
    EXPECT_EQ((bytes{255, 0, 9}), fpga_bytes(7 * 720 + 40, 3));
}

TEST_F(graphic_layer, an_image_without_palette_changes_no_entry)
{
    bytes image = {2, 0, 1, 0, 0, 0, 0, 0, 10, 20};
    write_graphic_image_xy(0, 0, image.data(), 0, 0);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 7 * 720 + 40, 2}
    }),
              fpga_recorded());
    EXPECT_EQ((bytes{10, 20}), fpga_bytes(7 * 720 + 40, 2));
}

/* Width, height and the number of palette entries have a high byte too. */
TEST_F(graphic_layer, an_image_may_have_more_than_255_of_all)
{
    const uint32_t width = 0x0102;
    const uint32_t height = 0x0103;
    const uint32_t colors = 0x0104;
    bytes image(8 + 4 * colors + width * height);
    image[0] = 0x02;
    image[1] = 0x01;
    image[2] = 0x03;
    image[3] = 0x01;
    image[4] = 0x04;
    image[5] = 0x01;
    const bytes last_entry = {0x78, 0x56, 0x34, 0x12};
    std::copy(last_entry.begin(), last_entry.end(), image.begin() + 8 + 4 * (colors - 1));
    image.back() = 0x42;
    write_graphic_image_xy(0, 0, image.data(), 0, 0);
    ASSERT_EQ(colors + height, fpga_recorded().size());
    EXPECT_EQ((fpga_access{write_register, 0xff1400 + 4 * (colors - 1), 0x12345678}),
              fpga_recorded()[colors - 1]);
    const uint32_t last_line = (height - 1 + 7) * 720 + 40;
    EXPECT_EQ((fpga_access{write_memory, last_line, width}), fpga_recorded().back());
    EXPECT_EQ(0x42, fpga_memory()[last_line + width - 1]);
}

TEST_F(graphic_layer, drawings_are_placed_in_the_screens_geometry)
{
    record.graphic_width = 100;
    record.graphic_x_offset = 3;
    record.graphic_y_offset = 2;
    bytes image = {1, 0, 1, 0, 0, 0, 0, 0, 10};
    write_graphic_pixel_xy(5, 4, 1, 1, 0);
    write_graphic_window(5, 4, 1, 1, 1, 0);
    write_graphic_image_xy(5, 4, image.data(), 0, 0);
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 405, 1},
                  {write_memory, 608, 1},
                  {write_memory, 608, 1}
    }),
              fpga_recorded());
}

TEST_F(graphic_layer, an_image_may_lie_at_any_address)
{
    bytes buffer(1);
    const bytes image = small_image();
    buffer.insert(buffer.end(), image.begin(), image.end());
    write_graphic_image_xy(0, 0, buffer.data() + 1, 0, 0);
    EXPECT_EQ(0x44332211u, fpga_register(0xff1400));
    EXPECT_EQ((bytes{0, 1, 10}), fpga_bytes(7 * 720 + 40, 3));
}

TEST_F(graphic_layer, an_empty_image_draws_nothing)
{
    bytes image = {0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(0, write_graphic_image_xy(0, 0, image.data(), 0, 5));
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(graphic_layer, drawing_keeps_no_memory)
{
    const size_t before = allocated_blocks();
    bytes image = small_image();
    write_graphic_pixel_xy(0, 0, 1, 5, 0);
    write_graphic_pixel_xy(0, 0, 1, 0, 0);
    write_graphic_window(0, 0, 5, 5, 1, 0);
    write_graphic_image_xy(0, 0, image.data(), 0, 0);
    clear_graphic_page(0);
    EXPECT_EQ(before, allocated_blocks());
}

TEST_F(graphic_layer, nothing_is_drawn_without_memory)
{
    failing_malloc failing;
    EXPECT_EQ(-1, write_graphic_pixel_xy(0, 0, 1, 5, 0));
    EXPECT_EQ(-1, write_graphic_window(0, 0, 5, 5, 1, 0));
    clear_graphic_page(0);
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

} // namespace
