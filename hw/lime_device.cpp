/* SPDX-License-Identifier: MIT */
/* The Lime display controller for the register tables. */
#include "hw/lime_device.h"

#include "hw/fpga_device.h"
#include "hw/lime_map.h"
#include "hw/lime_mmio.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

static void* lime_base = nullptr;

int init_lime_framebuffer(const char* path)
{
    fbfd = open(path, O_RDWR);
    if (fbfd == 0) {
        puts("Error: cannot open framebuffer device");
        return -1;
    }
    lime_base = lime_map(fbfd);
    if (lime_base == nullptr) {
        puts("Error: failed to map framebuffer device to memory");
        return -2;
    }
    return 0;
}

void destroy_lime_framebuffer(void)
{
    lime_unmap(lime_base);
    lime_base = nullptr;
    close(fbfd);
    /* The kernel may give the number to another file. */
    fbfd = -1;
}

#define LIME_WINDOW_ACCESS(name, window)                 \
    void lime_write_##name(uint32_t off, uint32_t value) \
    {                                                    \
        lime_store(lime_base, window, off, value);       \
    }                                                    \
    uint32_t lime_read_##name(uint32_t off)              \
    {                                                    \
        return lime_load(lime_base, window, off);        \
    }

LIME_WINDOW_ACCESS(disp_reg, LIME_DISP_WINDOW)
LIME_WINDOW_ACCESS(capt_reg, LIME_CAPT_WINDOW)
LIME_WINDOW_ACCESS(host_reg, LIME_HOST_WINDOW)
LIME_WINDOW_ACCESS(draw_reg, LIME_DRAW_WINDOW)
LIME_WINDOW_ACCESS(pio_reg, LIME_PIO_WINDOW)

static void change_disp_bit(uint32_t off, uint32_t mask, bool set)
{
    const uint32_t value = lime_read_disp_reg(off);
    lime_write_disp_reg(off, set ? value | mask : value & ~mask);
}

void lime_layer_enable(unsigned int layer, int on)
{
    if (layer < LIME_LAYERS)
        change_disp_bit(LIME_DCM1, LIME_DCM1_LAYER(layer), on != 0);
}

void lime_layer_transparency(unsigned int layer, int on)
{
    if (layer < LIME_LAYERS)
        change_disp_bit(LIME_LETC(layer), LIME_LETC_ZERO, on != 0);
}

struct lime_window_access {
    char base;
    uint32_t (*read)(uint32_t off);
    void (*write)(uint32_t off, uint32_t value);
};

/* The draw window has no letter: no table has registers of it. */
static const lime_window_access window_accesses[] = {
    {'D', lime_read_disp_reg, lime_write_disp_reg},
    {'C', lime_read_capt_reg, lime_write_capt_reg},
    {'H', lime_read_host_reg, lime_write_host_reg},
    {'P', lime_read_pio_reg,  lime_write_pio_reg },
};

static const lime_window_access* find_window(char base)
{
    for (const lime_window_access& access : window_accesses)
        if (access.base == base)
            return &access;
    return nullptr;
}

int read_lime_reg(reg_bf_group* reg)
{
    if (const lime_window_access* access = find_window(reg->base))
        reg->value = access->read(reg->addr);
    return 1;
}

int write_lime_reg(reg_bf_group* reg)
{
    if (reg->valid == 0)
        return -1;
    if (const lime_window_access* access = find_window(reg->base))
        access->write(reg->addr, reg->value);
    return 1;
}
