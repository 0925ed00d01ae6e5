/* The overlay FPGA behind its character device: registers by ioctl, memory by seek and read or write.
 *
 * One address space serves both: a register's address and a memory offset are of the same kind. Register
 * values are numbers; what goes to memory is stored little-endian by the caller.
 *
 * Nothing here throws or logs. Errors of the driver show in the results where a result is named, on
 * standard output where a line is named, and nowhere else.
 */
#ifndef HALDEND_HW_FPGA_DEVICE_H
#define HALDEND_HW_FPGA_DEVICE_H

#include "regdb/reg_types.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Descriptor of the FPGA device, -1 while none is open. init_lime_framebuffer() keeps its descriptor here
 * too: the platform opens the display controller first and the FPGA second, so the FPGA's is what stays. */
extern int fbfd;

/* The driver's register transfer record, in the processor's byte order. */
struct fpga_reg_transfer {
    uint32_t addr;
    uint32_t value;
};

/* Opens the device for reading and writing. Returns 0, or -1 after a line on standard output. */
int init_fpga_framebuffer(const char* path);

/* Closes the device. */
void destroy_fpga_framebuffer(void);

/* Reads a register of the given width (8, 16 or 32 bits) through a transfer record. Returns the driver's
 * result; for any other width nothing is called and fd is returned. */
int l_readin(void* arg, int fd, int width);

/* Reads the 32-bit register at addr. Returns its value, 0 if the driver refused. */
uint32_t l_read_reg(int fd, uint32_t addr);
uint32_t fpga_device_read_reg(uint32_t addr);

/* Writes a register of the given width (8, 16 or 32 bits) from a transfer record. Returns the driver's
 * result, and prints two lines if that isn't 0; for any other width nothing is called and fd is returned. */
int l_writeout(struct fpga_reg_transfer* record, int fd, int width);

/* Writes the 32-bit register at addr. Returns the driver's result. */
int l_write_reg(int fd, uint32_t addr, uint32_t value);
int fpga_device_write_reg(uint32_t addr, uint32_t value);

/* The driver's argument-only request. The first two arguments are unused. Returns the driver's result. */
int set_ioctl(int a, int b, void* arg);

/* Moves len bytes between buf and the device memory at offset. Always returns 1: short and failed
 * transfers are not reported. */
int write_fpga_block(uint32_t offset, const void* buf, size_t len);
int read_fpga_block(uint32_t offset, void* buf, size_t len);

/* Register table access: loads or stores the entry's 32-bit value. Returns 1; the write returns -1 without
 * touching the device if the entry's valid flag is 0. */
int read_fpga_reg(struct reg_bf_group* reg);
int write_fpga_reg(struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
