/* SPDX-License-Identifier: MIT */
/* The hardware cursor and the text cursor. */
#include "fpga/cursor.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <gtest/gtest.h>

namespace
{

/* A text cursor on a text layer of 53 × 26 cells of 12 × 20 pixels that begins at (82, 28). */
const text_cursor_parameters parameters = {82, 28, 12, 20, 5, 6, 52, 25, 2, cursor_shapes};

class text_cursor_test : public without_screen
{
protected:
    void SetUp() override
    {
        without_screen::SetUp();
        init_text_cursor(&cursor, &parameters);
        fpga_recorded().clear();
    }

    void expect_at(unsigned int column, unsigned int row) const
    {
        EXPECT_EQ(column, cursor.column);
        EXPECT_EQ(row, cursor.row);
        EXPECT_EQ(82 + 12 * column, fpga_register(0xff0a00));
        EXPECT_EQ(27 + 20 * row, fpga_register(0xff0a04));
    }

    text_cursor cursor = {};
};

using cursor_test = without_screen;

TEST_F(cursor_test, init_cursor_empties_the_image)
{
    EXPECT_EQ(1, init_cursor());
    EXPECT_EQ((fpga_accesses{
                  {write_memory, 0xff0800, 512}
    }),
              fpga_recorded());
}

TEST_F(cursor_test, set_cursor_image_writes_rows_size_and_colour)
{
    for (const cursor_shape& shape : cursor_shapes) {
        fpga_recorder_reset();
        EXPECT_EQ(0, set_cursor_image(&shape));
        EXPECT_EQ((fpga_accesses{
                      {write_memory,   0xff0800, shape.height * 4u                     },
                      {write_register, 0xff0a08, shape.width * 256u + shape.height + 1u},
                      {write_register, 0xff0a0c, shape.color                           }
        }),
                  fpga_recorded());
        for (uint32_t row = 0; row < shape.height; ++row)
            EXPECT_EQ(shape.image[row], fpga_register(0xff0800 + 4 * row));
    }
}

TEST_F(cursor_test, set_cursor_image_reads_no_row_behind_the_image)
{
    const cursor_shape tall = {32, 40, 0xffffffff, cursor_cross_image.rows};
    set_cursor_image(&tall);
    EXPECT_EQ((fpga_access{write_memory, 0xff0800, 128}), fpga_recorded()[0]);
    EXPECT_EQ((fpga_access{write_register, 0xff0a08, 32 * 256 + 41}), fpga_recorded()[1]);
}

TEST(cursor_shapes, are_as_drawn)
{
    EXPECT_EQ(0x000ff000u, cursor_cross_image.rows[11]);
    EXPECT_EQ(0xffffffffu, cursor_cross_image.rows[12]);
    EXPECT_EQ(0xffffffffu, cursor_cross_image.rows[19]);
    EXPECT_EQ(0xf0000000u, cursor_arrow_image.rows[0]);
    EXPECT_EQ(0x00000040u, cursor_arrow_image.rows[31]);
    EXPECT_EQ(0xfff00000u, cursor_block_image.rows[19]);
    EXPECT_EQ(0u, cursor_block_image.rows[20]);
    EXPECT_EQ(0u, cursor_line_image.rows[12]);
    EXPECT_EQ(0xfff00000u, cursor_line_image.rows[13]);
    EXPECT_EQ(0xffff0000u, cursor_line_image.rows[19]);
    EXPECT_EQ(0xfff00000u, cursor_line_image.rows[20]);
    EXPECT_EQ(0u, cursor_line_image.rows[21]);
    EXPECT_EQ(0u, cursor_carret_image.rows[0]);
    EXPECT_EQ(0x1fc00000u, cursor_carret_image.rows[2]);
    EXPECT_EQ(0x07000000u, cursor_carret_image.rows[17]);
    EXPECT_EQ(0x1fc00000u, cursor_carret_image.rows[18]);
    EXPECT_EQ(0u, cursor_carret_image.rows[20]);
}

TEST(cursor_shapes, have_their_sizes_and_colours)
{
    const cursor_shape expected[CURSOR_SHAPES] = {
        {32, 32, 0xffffffff, cursor_cross_image.rows },
        {32, 32, 0xff00ffff, cursor_arrow_image.rows },
        {12, 20, 0xffff00ff, cursor_block_image.rows },
        {12, 20, 0xffffff00, cursor_line_image.rows  },
        {12, 20, 0xff000000, cursor_carret_image.rows},
    };
    for (int i = 0; i < CURSOR_SHAPES; ++i) {
        EXPECT_EQ(expected[i].width, cursor_shapes[i].width) << i;
        EXPECT_EQ(expected[i].height, cursor_shapes[i].height) << i;
        EXPECT_EQ(expected[i].color, cursor_shapes[i].color) << i;
        EXPECT_EQ(expected[i].image, cursor_shapes[i].image) << i;
    }
}

TEST_F(cursor_test, init_text_cursor_goes_to_the_origin_and_loads_the_shape)
{
    text_cursor cursor = {};
    init_text_cursor(&cursor, &parameters);
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff0a00, 82           },
                  {write_register, 0xff0a04, 27           },
                  {write_memory,   0xff0800, 80           },
                  {write_register, 0xff0a08, 12 * 256 + 21},
                  {write_register, 0xff0a0c, 0xffff00ff   }
    }),
              fpga_recorded());
    EXPECT_EQ(27, cursor.y_origin);
    EXPECT_EQ(5, cursor.column);
    EXPECT_EQ(6, cursor.row);
}

TEST_F(cursor_test, init_text_cursor_loads_no_shape_behind_the_table)
{
    text_cursor_parameters beyond = parameters;
    beyond.shape = CURSOR_SHAPES;
    text_cursor cursor = {};
    init_text_cursor(&cursor, &beyond);
    EXPECT_EQ(2u, fpga_recorded().size());
}

TEST_F(text_cursor_test, set_cursor_xy_places_it_by_its_steps)
{
    set_cursor_xy(3, 4, &cursor);
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff0a00, 82 + 36},
                  {write_register, 0xff0a04, 27 + 80}
    }),
              fpga_recorded());
    expect_at(3, 4);
}

TEST_F(text_cursor_test, set_cursor_xy_beyond_the_end_takes_the_last_cell)
{
    set_cursor_xy(1000, 1000, &cursor);
    expect_at(52, 25);
    set_cursor_xy(0xffffffff, 0x10000, &cursor);
    expect_at(52, 25);
}

struct move {
    int key;
    unsigned int from_column, from_row;
    unsigned int to_column, to_row;
};

TEST_F(text_cursor_test, keys_move_it_and_wrap_at_the_edges)
{
    const move moves[] = {
        {258, 10, 10, 10, 11},
        {258, 10, 25, 10, 0 },
        {259, 10, 10, 10, 9 },
        {259, 10, 0,  10, 25},
        {260, 10, 10, 9,  10},
        {260, 0,  10, 52, 9 },
        {260, 0,  0,  52, 25},
        {261, 10, 10, 11, 10},
        {261, 52, 10, 0,  11},
        {261, 52, 25, 0,  0 },
        {264, 10, 10, 10, 0 },
        {273, 10, 10, 0,  10},
        {348, 10, 10, 52, 10},
        {349, 10, 10, 10, 25},
        {0,   10, 10, 10, 10},
        {13,  52, 25, 52, 25},
        {-1,  0,  0,  0,  0 },
    };
    for (const move& m : moves) {
        SCOPED_TRACE(m.key);
        set_cursor_xy(m.from_column, m.from_row, &cursor);
        fpga_recorded().clear();
        move_text_cursor(&cursor, m.key);
        expect_at(m.to_column, m.to_row);
        EXPECT_EQ(2u, fpga_recorded().size());
    }
}

TEST_F(text_cursor_test, a_place_beyond_the_last_cell_comes_back_with_the_first_move)
{
    cursor.column = 60;
    cursor.row = 30;
    move_text_cursor(&cursor, 0);
    expect_at(52, 25);
    cursor.column = 53;
    move_text_cursor(&cursor, 260);
    expect_at(52, 25);
}

} // namespace
