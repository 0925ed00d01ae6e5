/* SPDX-License-Identifier: MIT */
/* The display controller's functions of C linkage: windows, layer switches, table access, and the ways to
 * fail. */
#include "hw/fpga_device.h"
#include "hw/lime_device.h"
#include "hw/lime_map.h"
#include "hw/lime_mmio.h"
#include "tests/support/hw/lime_recorder.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

using accesses = std::vector<lime_access>;

class lime_device : public testing::Test
{
protected:
    void SetUp() override
    {
        const int fd = mkstemp(path);
        ASSERT_EQ(0, ftruncate(fd, static_cast<off_t>(lime_map_length())));
        close(fd);
        lime_recorder_reset();
    }
    void TearDown() override { unlink(path); }

    /* Opens the device and returns what was printed. */
    static std::string init_output(const char* device, int* result)
    {
        testing::internal::CaptureStdout();
        *result = init_lime_framebuffer(device);
        return testing::internal::GetCapturedStdout();
    }

    char path[32] = "/tmp/tst_lime_device_XXXXXX";
};

reg_bf_group entry(char base, uint32_t addr, uint32_t value, uint8_t valid)
{
    return {base, addr, "REG", 32, value, nullptr, valid, ""};
}

TEST_F(lime_device, a_missing_device_is_reported_as_a_map_failure)
{
    int result = 0;
    EXPECT_EQ("Error: failed to map framebuffer device to memory\n",
              init_output("/nonexistent/fb0", &result));
    EXPECT_EQ(-2, result);
}

TEST_F(lime_device, a_device_too_short_to_map_is_reported_as_a_map_failure)
{
    ASSERT_EQ(0, truncate(path, static_cast<off_t>(lime_map_length()) - 1));
    int result = 0;
    EXPECT_EQ("Error: failed to map framebuffer device to memory\n", init_output(path, &result));
    EXPECT_EQ(-2, result);
    destroy_lime_framebuffer();
}

TEST_F(lime_device, a_descriptor_of_0_counts_as_an_open_failure)
{
    const int saved = dup(0);
    testing::internal::CaptureStdout();
    close(0);
    EXPECT_EQ(-1, init_lime_framebuffer(path));
    EXPECT_EQ(0, fbfd);
    dup2(saved, 0);
    close(saved);
    EXPECT_EQ("Error: cannot open framebuffer device\n", testing::internal::GetCapturedStdout());
    fbfd = -1;
}

TEST_F(lime_device, opens_and_closes_the_shared_descriptor)
{
    int result = -1;
    EXPECT_EQ("", init_output(path, &result));
    EXPECT_EQ(0, result);
    const int fd = fbfd;
    EXPECT_GT(fd, 0);
    destroy_lime_framebuffer();
    EXPECT_EQ(-1, fbfd);
    EXPECT_EQ(-1, fcntl(fd, F_GETFD));
}

TEST_F(lime_device, accesses_go_through_the_mapping_and_through_none_after_its_end)
{
    int result = -1;
    init_output(path, &result);
    ASSERT_EQ(0, result);
    lime_write_disp_reg(0x184, 1);
    EXPECT_NE(nullptr, lime_recorded().back().base);
    destroy_lime_framebuffer();
    lime_write_disp_reg(0x184, 2);
    EXPECT_EQ(nullptr, lime_recorded().back().base);
}

struct window {
    const char* name;
    uint32_t offset;
    void (*write)(uint32_t off, uint32_t value);
    uint32_t (*read)(uint32_t off);
};

const window windows[] = {
    {"display", 0x1fd0000, lime_write_disp_reg, lime_read_disp_reg},
    {"capture", 0x1fd8000, lime_write_capt_reg, lime_read_capt_reg},
    {"host",    0x1fc0000, lime_write_host_reg, lime_read_host_reg},
    {"draw",    0x1ff0000, lime_write_draw_reg, lime_read_draw_reg},
    {"pio",     0x1ff8000, lime_write_pio_reg,  lime_read_pio_reg },
};

TEST_F(lime_device, each_window_has_its_place)
{
    for (const window& w : windows) {
        SCOPED_TRACE(w.name);
        lime_recorder_reset();
        lime_recorder_set(w.offset, 0x28, 0x600d);
        w.write(0x24, 0xcafe);
        EXPECT_EQ(0x600du, w.read(0x28));
        EXPECT_EQ((accesses{lime_stored(w.offset, 0x24, 0xcafe), lime_loaded(w.offset, 0x28, 0x600d)}),
                  lime_recorded());
    }
}

TEST_F(lime_device, layer_enable_2_off_clears_only_bit_18_of_DCM1)
{
    lime_recorder_set(LIME_DISP_WINDOW, 0x100, 0xffffffff);
    lime_layer_enable(2, false);
    EXPECT_EQ((accesses{lime_loaded(LIME_DISP_WINDOW, 0x100, 0xffffffff),
                        lime_stored(LIME_DISP_WINDOW, 0x100, 0xfffbffff)}),
              lime_recorded());
}

TEST_F(lime_device, layer_enable_sets_the_layers_bit_and_keeps_the_others)
{
    for (unsigned int layer = 0; layer < 6; ++layer) {
        lime_recorder_set(LIME_DISP_WINDOW, 0x100, 0x80000005);
        lime_layer_enable(layer, 1);
        EXPECT_EQ(lime_stored(LIME_DISP_WINDOW, 0x100, 0x80000005 | 1u << (16 + layer)),
                  lime_recorded().back());
    }
}

TEST_F(lime_device, layer_transparency_switches_bit_31_of_the_layers_register)
{
    for (unsigned int layer = 0; layer < 6; ++layer) {
        const uint32_t off = 0x1a0 + 4 * layer;
        lime_recorder_set(LIME_DISP_WINDOW, off, 0x00123456);
        lime_layer_transparency(layer, 1);
        EXPECT_EQ(lime_stored(LIME_DISP_WINDOW, off, 0x80123456), lime_recorded().back());
        lime_layer_transparency(layer, 0);
        EXPECT_EQ(lime_stored(LIME_DISP_WINDOW, off, 0x00123456), lime_recorded().back());
    }
}

TEST_F(lime_device, layers_beyond_5_change_nothing)
{
    for (const unsigned int layer : {6u, 7u, 31u, 0xffffffffu}) {
        lime_layer_enable(layer, true);
        lime_layer_transparency(layer, true);
    }
    EXPECT_EQ(accesses{}, lime_recorded());
}

struct letter {
    char base;
    uint32_t window;
};

TEST_F(lime_device, table_entries_reach_the_window_of_their_letter)
{
    for (const letter& l : {
             letter{'D', 0x1fd0000},
             {'C', 0x1fd8000},
             {'H', 0x1fc0000},
             {'P', 0x1ff8000}
    }) {
        SCOPED_TRACE(l.base);
        lime_recorder_reset();
        lime_recorder_set(l.window, 0x10, 0xabcd);
        reg_bf_group reg = entry(l.base, 0x10, 0, 1);
        EXPECT_EQ(1, read_lime_reg(&reg));
        EXPECT_EQ(0xabcdu, reg.value);
        reg.value = 0x1234;
        EXPECT_EQ(1, write_lime_reg(&reg));
        EXPECT_EQ(lime_stored(l.window, 0x10, 0x1234), lime_recorded().back());
    }
}

TEST_F(lime_device, table_entries_of_other_letters_reach_nothing)
{
    for (const char base : {'X', 'd', 'R', '\0'}) {
        reg_bf_group reg = entry(base, 0x10, 0x77, 1);
        EXPECT_EQ(1, read_lime_reg(&reg));
        EXPECT_EQ(0x77u, reg.value);
        EXPECT_EQ(1, write_lime_reg(&reg));
    }
    EXPECT_EQ(accesses{}, lime_recorded());
}

TEST_F(lime_device, an_invalid_entry_is_not_written)
{
    reg_bf_group reg = entry('D', 0x10, 0x77, 0);
    EXPECT_EQ(-1, write_lime_reg(&reg));
    EXPECT_EQ(accesses{}, lime_recorded());
}

} // namespace
