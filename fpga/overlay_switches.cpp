/* SPDX-License-Identifier: MIT */
/* Switches and modes of the FPGA's CTRL register. */
#include "fpga/overlay_switches.h"

#include "fpga/screen.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"

static int write_shadow(uint32_t shadow)
{
    current_screen->control_shadow = shadow;
    return fpga_device_write_reg(FPGA_CTRL, shadow);
}

static int switch_on(uint32_t bits)
{
    return current_screen != nullptr ? write_shadow(current_screen->control_shadow | bits) : -1;
}

static int switch_off(uint32_t bits)
{
    return current_screen != nullptr ? write_shadow(current_screen->control_shadow & ~bits) : -1;
}

/* Only the tested bit decides: control set C may differ from A. */
static int switch_toggle(uint32_t bits, uint32_t tested)
{
    if (current_screen == nullptr)
        return -1;
    return (current_screen->control_shadow & tested) != 0 ? switch_off(bits) : switch_on(bits);
}

#define OVERLAY_SWITCH(name, bits, tested)  \
    int name##_on(void)                     \
    {                                       \
        return switch_on(bits);             \
    }                                       \
    int name##_off(void)                    \
    {                                       \
        return switch_off(bits);            \
    }                                       \
    int name##_toggle(void)                 \
    {                                       \
        return switch_toggle(bits, tested); \
    }

// clang-format off
/*             switch            bits                            tested */
OVERLAY_SWITCH(text_overlay,     FPGA_CTRL_CTO | FPGA_CTRL_ATO,  FPGA_CTRL_ATO)
OVERLAY_SWITCH(graphic_overlay,  FPGA_CTRL_CGO | FPGA_CTRL_AGO,  FPGA_CTRL_AGO)
OVERLAY_SWITCH(cursor_overlay,   FPGA_CTRL_CCO | FPGA_CTRL_ACO,  FPGA_CTRL_ACO)
OVERLAY_SWITCH(graphic_priority, FPGA_CTRL_AGP,                  FPGA_CTRL_AGP)
OVERLAY_SWITCH(video_restore,    FPGA_CTRL_CVR | FPGA_CTRL_AVR,  FPGA_CTRL_AVR)
OVERLAY_SWITCH(frame_generator,  FPGA_CTRL_FGON,                 FPGA_CTRL_FGON)
// clang-format on

int fpga_rec_mode(void)
{
    return fpga_device_write_reg(FPGA_CTRL, fpga_device_read_reg(FPGA_CTRL) & ~FPGA_CTRL_POR);
}

int fpga_play_mode(void)
{
    return fpga_device_write_reg(FPGA_CTRL, fpga_device_read_reg(FPGA_CTRL) | FPGA_CTRL_POR);
}

int store_video(void)
{
    return fpga_device_write_reg(FPGA_STORE_VIDEO, 1);
}
