/* SPDX-License-Identifier: MIT */
/* The overlay FPGA behind its character device: registers by ioctl, memory by seek and read or write.
 *
 * Registers and memory share one address space, hw/fpga_map.h. Register values are numbers. Memory takes 16-
 * and 32-bit quantities little-endian; the caller converts them.
 *
 * Nothing here throws or logs. A failure of the driver shows only where a function names a result or a line
 * on standard output for it. The driver's result is that of ioctl(): 0, or -1 with errno.
 */
#ifndef HALDEND_HW_FPGA_DEVICE_H
#define HALDEND_HW_FPGA_DEVICE_H

#include "regdb/reg_types.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Descriptor of the FPGA device, -1 while none is open.
 *
 * Kept: init_lime_framebuffer() stores its descriptor here too. The platform opens the display controller
 * first and the FPGA second, so this ends up as the FPGA's; the controller's mapping needs its descriptor no
 * more. */
extern int fbfd;

/* The driver's register transfer record, in the processor's byte order. */
struct fpga_reg_transfer {
    uint32_t addr;
    uint32_t value;
};

/* Opens the device for reading and writing; a descriptor that is open already is not closed. Returns 0, or -1
 * after a line on standard output. */
int init_fpga_framebuffer(const char* path);

/* Closes the device. The descriptor is -1 from then on. */
void destroy_fpga_framebuffer(void);

/* Reads a register of the given width (8, 16 or 32 bits): arg is a fpga_reg_transfer with its address, and
 * receives the value. Returns the driver's result. For any other width calls nothing and returns fd. */
int l_readin(void* arg, int fd, int width);

/* Reads the 32-bit register at addr, on fd or on fbfd. Returns its value, or 0 if the driver refused. */
uint32_t l_read_reg(int fd, uint32_t addr);
uint32_t fpga_device_read_reg(uint32_t addr);

/* Writes a register of the given width (8, 16 or 32 bits) from a transfer record. Returns the driver's
 * result, and prints two lines on standard output if that isn't 0. For any other width calls nothing and
 * returns fd. */
int l_writeout(struct fpga_reg_transfer* record, int fd, int width);

/* Writes the 32-bit register at addr, on fd or on fbfd. Returns the driver's result, like l_writeout(). */
int l_write_reg(int fd, uint32_t addr, uint32_t value);
int fpga_device_write_reg(uint32_t addr, uint32_t value);

/* The driver's request without a record; the daemon doesn't use it. Returns the driver's result.
 *
 * Kept: the first two arguments are unused, for service tools written in C that pass them. */
int set_ioctl(int a, int b, void* arg);

/* Copies len bytes from buf to the device memory at the byte offset, or back. Always returns 1: short and
 * failed transfers are not reported, and leave the rest of buf as it was. */
int write_fpga_block(uint32_t offset, const void* buf, size_t len);
int read_fpga_block(uint32_t offset, void* buf, size_t len);

/* Register table access: loads or stores the entry's 32-bit value at its address. Returns 1. The write
 * returns -1 without touching the device if the entry's valid flag is 0. A failed read stores 0. */
int read_fpga_reg(struct reg_bf_group* reg);
int write_fpga_reg(struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
