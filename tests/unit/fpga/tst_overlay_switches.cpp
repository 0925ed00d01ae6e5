/* SPDX-License-Identifier: MIT */
/* The switches and modes of the CTRL register. */
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "tests/support/hw/fpga_recorder.h"
#include "tests/support/hw/with_screen.h"

#include <gtest/gtest.h>

namespace
{

using overlay_switches = with_screen;
using overlay_switches_without_screen = without_screen;

struct overlay_switch {
    const char* name;
    int (*on)(void);
    int (*off)(void);
    int (*toggle)(void);
    uint32_t bits;
    unsigned int tested;
};

const overlay_switch switches[] = {
    {"text overlay",     text_overlay_on,     text_overlay_off,     text_overlay_toggle,     0x00020002, 1 },
    {"graphic overlay",  graphic_overlay_on,  graphic_overlay_off,  graphic_overlay_toggle,  0x00010001, 0 },
    {"cursor overlay",   cursor_overlay_on,   cursor_overlay_off,   cursor_overlay_toggle,   0x00040004, 2 },
    {"graphic priority", graphic_priority_on, graphic_priority_off, graphic_priority_toggle, 0x00000008, 3 },
    {"video restore",    video_restore_on,    video_restore_off,    video_restore_toggle,    0x00100010, 4 },
    {"frame generator",  frame_generator_on,  frame_generator_off,  frame_generator_toggle,  0x00800000, 23},
};

fpga_accesses written(uint32_t value)
{
    return {
        {write_register, 0xff0000, value}
    };
}

class each_switch : public with_screen, public testing::WithParamInterface<overlay_switch>
{
protected:
    /* Calls with a shadow of that value and returns what was done. */
    fpga_accesses done(int (*call)(void), uint32_t shadow)
    {
        record.control_shadow = shadow;
        fpga_recorded().clear();
        EXPECT_EQ(0, call());
        return fpga_recorded();
    }
};

INSTANTIATE_TEST_SUITE_P(overlay_switches, each_switch, testing::ValuesIn(switches),
                         [](const testing::TestParamInfo<overlay_switch>& each) {
                             std::string name = each.param.name;
                             for (char& c : name)
                                 c = c == ' ' ? '_' : c;
                             return name;
                         });

TEST_P(each_switch, on_sets_its_bits_and_writes_the_whole_shadow)
{
    const overlay_switch& s = GetParam();
    EXPECT_EQ(written(s.bits), done(s.on, 0));
    EXPECT_EQ(s.bits, record.control_shadow);
    EXPECT_EQ(written(0x03400000 | s.bits), done(s.on, 0x03400000));
}

TEST_P(each_switch, off_clears_its_bits_and_writes_the_whole_shadow)
{
    const overlay_switch& s = GetParam();
    EXPECT_EQ(written(~s.bits), done(s.off, 0xffffffff));
    EXPECT_EQ(~s.bits, record.control_shadow);
}

TEST_P(each_switch, toggle_looks_at_its_own_bit_only)
{
    const overlay_switch& s = GetParam();
    const uint32_t tested = 1u << s.tested;
    EXPECT_EQ(written(s.bits), done(s.toggle, 0));
    EXPECT_EQ(written(0), done(s.toggle, s.bits));
    EXPECT_EQ(written(0), done(s.toggle, tested));
    EXPECT_EQ(written(s.bits), done(s.toggle, s.bits & ~tested));
    EXPECT_EQ(written(0xffffffff & ~s.bits), done(s.toggle, 0xffffffff));
    EXPECT_EQ(written(0xffffffff), done(s.toggle, ~tested));
}

TEST_P(each_switch, never_reads_the_register)
{
    const overlay_switch& s = GetParam();
    fpga_set_register(0xff0000, 0xffffffff);
    for (const auto call : {s.on, s.off, s.toggle})
        for (const fpga_access& access : done(call, 0))
            EXPECT_EQ(write_register, access.kind);
}

TEST_F(overlay_switches_without_screen, switches_do_nothing)
{
    for (const overlay_switch& s : switches)
        for (const auto call : {s.on, s.off, s.toggle})
            EXPECT_EQ(-1, call());
    EXPECT_EQ(fpga_accesses{}, fpga_recorded());
}

TEST_F(overlay_switches, text_overlay_toggle_after_on_clears_both_bits)
{
    text_overlay_on();
    text_overlay_toggle();
    EXPECT_EQ(0u, fpga_register(0xff0000));
}

TEST_F(overlay_switches, modes_read_and_write_the_register_and_keep_the_rest)
{
    fpga_set_register(0xff0000, 0x00f0000f);
    EXPECT_EQ(0, fpga_play_mode());
    EXPECT_EQ(0, fpga_rec_mode());
    EXPECT_EQ((fpga_accesses{
                  {read_register,  0xff0000, 0x00f0000f},
                  {write_register, 0xff0000, 0x03f0000f},
                  {read_register,  0xff0000, 0x03f0000f},
                  {write_register, 0xff0000, 0x00f0000f}
    }),
              fpga_recorded());
    EXPECT_EQ(0u, record.control_shadow);
}

TEST_F(overlay_switches, a_switch_after_play_mode_brings_the_start_up_mode_back)
{
    fpga_play_mode();
    graphic_overlay_on();
    EXPECT_EQ(0x00010001u, fpga_register(0xff0000));

    fpga_set_register(0xff0000, 0x01000000);
    init_screen(&record, nullptr);
    fpga_play_mode();
    graphic_overlay_on();
    EXPECT_EQ(0x01010001u, fpga_register(0xff0000));
}

TEST_F(overlay_switches_without_screen, store_video_pulls_the_trigger)
{
    EXPECT_EQ(0, store_video());
    EXPECT_EQ((fpga_accesses{
                  {write_register, 0xff0008, 1}
    }),
              fpga_recorded());
}

} // namespace
