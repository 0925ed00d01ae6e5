/* SPDX-License-Identifier: MIT */
/* The video decoder (SAA7113) and the video encoder (SAA7129) on the I2C bus, through the kernel's I2C device
 * interface (SMBus byte data).
 *
 * One chip at a time: the functions reach the slave that the last open selected.
 */
#ifndef HALDEND_HW_SAA71XX_DEVICE_H
#define HALDEND_HW_SAA71XX_DEVICE_H

#include "hw/saa71xx_registers.h"
#include "regdb/reg_types.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Descriptor of the I2C device, -1 outside of an open and its close. */
extern int saafd;

/* Opens the I2C device and selects a 7-bit slave address. Returns 0, or -1 after a line on standard output;
 * then nothing is open. */
int open_saa71xx_device(const char* path, int slave);
void close_saa71xx_device(void);

/* Reads the register at sub-address sub. Returns the byte, or -1 if the transfer failed. */
int saa71xx_device_read_reg(uint8_t sub);

/* Writes the register at sub-address sub. Always returns 1: a failed transfer is not reported. */
int saa71xx_device_write_reg(uint8_t sub, uint8_t value);

/* Register table access to the 8-bit view of the value; only the low byte of the entry's address is sent.
 * Returns 1. A failed read stores 0xff. The write returns -1 if the entry's valid flag is 0. */
int read_saa71xx_reg(struct reg_bf_group* reg);
int write_saa71xx_reg(struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
