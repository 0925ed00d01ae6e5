/* SPDX-License-Identifier: MIT */
/* The descriptors of the four chips. Decoder and encoder share the I2C access functions, which reach the
 * slave that was selected last.
 */
#include "regdb/chip_regs.h"

#include "hw/fpga_device.h"
#include "hw/lime_device.h"
#include "hw/saa71xx_device.h"

config_t config_fpga;
config_t config_lime;
config_t config_saa7113;
config_t config_saa7129;

chip_regs crp_fpga = {&config_fpga, regs_fpga, read_fpga_reg, write_fpga_reg};
chip_regs crp_lime = {&config_lime, regs_lime, read_lime_reg, write_lime_reg};
chip_regs crp_saa7113 = {&config_saa7113, regs_saa7113, read_saa71xx_reg, write_saa71xx_reg};
chip_regs crp_saa7129 = {&config_saa7129, regs_saa7129, read_saa71xx_reg, write_saa71xx_reg};
