/* The Lime display controller for the register tables: the C level's own mapping, its five register
 * windows, the layer switches. The Lime class has a mapping of its own for the video window.
 *
 * Offsets are bytes from the start of a window, multiples of 4. Without a mapping writes are dropped and
 * reads give 0.
 */
#ifndef HALDEND_HW_LIME_DEVICE_H
#define HALDEND_HW_LIME_DEVICE_H

#include "regdb/reg_types.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opens and maps the framebuffer device. Returns 0; -1 after a line on standard output if the descriptor
 * is 0; -2 after another line if the device can't be mapped, which is also what a device that can't be
 * opened ends with. The descriptor goes into fbfd. An earlier mapping is left as it is. */
int init_lime_framebuffer(const char* path);

/* Unmaps, and closes fbfd. */
void destroy_lime_framebuffer(void);

/* One register of the display, capture, host, draw or pio window. */
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

/* Switches layer 0..5 on or off (its bit of DCM1). Other numbers do nothing. */
void lime_layer_enable(unsigned int layer, int on);

/* Switches the extended transparency of layer 0..5 (the uppermost bit of L0ETC..L5ETC, which lie side by
 * side). Other numbers do nothing. */
void lime_layer_transparency(unsigned int layer, int on);

/* Register table access by the entry's base letter: 'D' display, 'C' capture, 'H' host, 'P' pio; other
 * letters reach nothing. Returns 1; the write returns -1 if the entry's valid flag is 0. */
int read_lime_reg(struct reg_bf_group* reg);
int write_lime_reg(struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
