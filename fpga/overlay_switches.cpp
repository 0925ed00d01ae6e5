/* What the FPGA mixes into the picture. */
#include "fpga/overlay_switches.h"

#include "fpga/screen.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"

static const uint32_t CTRL_POR = 0x03000000; /* play or record mode, both bits */

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

/* Only the tested bit decides, whatever the others hold. */
static int switch_toggle(uint32_t bits, uint32_t tested)
{
    if (current_screen == nullptr)
        return -1;
    return (current_screen->control_shadow & tested) != 0 ? switch_off(bits) : switch_on(bits);
}

#define OVERLAY_SWITCH(name, bits, tested)          \
    int name##_on(void)                             \
    {                                               \
        return switch_on(bits);                     \
    }                                               \
    int name##_off(void)                            \
    {                                               \
        return switch_off(bits);                    \
    }                                               \
    int name##_toggle(void)                         \
    {                                               \
        return switch_toggle(bits, 1u << (tested)); \
    }

// clang-format off
/*             switch            bits        tested */
OVERLAY_SWITCH(text_overlay,     0x00020002,  1) /* cto, ato */
OVERLAY_SWITCH(graphic_overlay,  0x00010001,  0) /* cgo, ago */
OVERLAY_SWITCH(cursor_overlay,   0x00040004,  2) /* cco, aco */
OVERLAY_SWITCH(graphic_priority, 0x00000008,  3) /* agp */
OVERLAY_SWITCH(video_restore,    0x00100010,  4) /* cvr, avr */
OVERLAY_SWITCH(frame_generator,  0x00800000, 23) /* fgon */
// clang-format on

int fpga_rec_mode(void)
{
    return fpga_device_write_reg(FPGA_CTRL, fpga_device_read_reg(FPGA_CTRL) & ~CTRL_POR);
}

int fpga_play_mode(void)
{
    return fpga_device_write_reg(FPGA_CTRL, fpga_device_read_reg(FPGA_CTRL) | CTRL_POR);
}

int store_video(void)
{
    return fpga_device_write_reg(FPGA_STORE_VIDEO, 1);
}
