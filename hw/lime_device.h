/* SPDX-License-Identifier: MIT */
/* The Lime display controller for the register tables: a mapping for the functions of C linkage, its five
 * register windows, the layer switches. The class Lime has a mapping of its own for the video window.
 *
 * Offsets are bytes from the start of a window and multiples of 4 (hw/lime_registers.h). Values are in the
 * controller's byte order, which is the target's. Without a mapping writes are dropped and reads give 0.
 */
#ifndef HALDEND_HW_LIME_DEVICE_H
#define HALDEND_HW_LIME_DEVICE_H

#include "regdb/reg_types.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opens and maps the framebuffer device; fbfd gets the descriptor. An earlier mapping is not undone. Returns
 * 0, or -2 after a line on standard output if the device can't be opened or mapped.
 *
 * Kept: returns -1, after another line, if the descriptor is 0. No other result of open() counts as a
 * failure, so a device that can't be opened fails as one that can't be mapped. */
int init_lime_framebuffer(const char* path);

/* Undoes the mapping and closes fbfd, which may be the FPGA's by then. */
void destroy_lime_framebuffer(void);

/* Stores or loads one register of the display, capture, host, draw or pio window. */
void lime_write_disp_reg(uint32_t off, uint32_t value);
uint32_t lime_read_disp_reg(uint32_t off);
void lime_write_capt_reg(uint32_t off, uint32_t value);
uint32_t lime_read_capt_reg(uint32_t off);
void lime_write_host_reg(uint32_t off, uint32_t value);
uint32_t lime_read_host_reg(uint32_t off);
void lime_write_draw_reg(uint32_t off, uint32_t value);
uint32_t lime_read_draw_reg(uint32_t off);
void lime_write_pio_reg(uint32_t off, uint32_t value);
uint32_t lime_read_pio_reg(uint32_t off);

/* Switches layer 0..5 on (on isn't 0) or off: its bit of DCM1. Other numbers do nothing. */
void lime_layer_enable(unsigned int layer, int on);

/* Switches the extended zero transparency of layer 0..5: bit 31 of L0ETC..L5ETC. Other numbers do nothing. */
void lime_layer_transparency(unsigned int layer, int on);

/* Register table access by the entry's base letter: 'D' display, 'C' capture, 'H' host, 'P' pio. Other
 * letters reach no register and change no value. Returns 1. The write returns -1 if the entry's valid flag is
 * 0. */
int read_lime_reg(struct reg_bf_group* reg);
int write_lime_reg(struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
