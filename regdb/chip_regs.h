/* SPDX-License-Identifier: MIT */
/* The four chips: the overlay FPGA, the Lime display controller, the SAA7113 video decoder and the SAA7129
 * video encoder. Each has a register table, a configuration that mirrors its fields, and a descriptor that
 * ties both to the functions that read and write the chip.
 *
 * These are the process's only copies. They change at run time, without locks: use them from one thread.
 *
 * Only valid registers are written. At first all registers of the FPGA and the display controller and the
 * decoder's version register CVER are invalid. Setting a field by name makes its register valid.
 *
 * The initial values of decoder and encoder are those of the registers only. Their fields start at 0, and a
 * register is composed from its fields before it is written. A field that the register file leaves out is
 * therefore sent as 0.
 */
#ifndef HALDEND_REGDB_CHIP_REGS_H
#define HALDEND_REGDB_CHIP_REGS_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Each table ends with an entry that is all zero. */
extern struct reg_bf_group regs_fpga[];    /*  7 registers of 32 bits */
extern struct reg_bf_group regs_lime[];    /* 41 registers of 32 bits */
extern struct reg_bf_group regs_saa7113[]; /* 31 registers of  8 bits */
extern struct reg_bf_group regs_saa7129[]; /* 73 registers of  8 bits */

/* All zero until config_init(). A register file that is read fills them, and so does a field that is set or
 * read. */
extern config_t config_fpga;
extern config_t config_lime;
extern config_t config_saa7113;
extern config_t config_saa7129;

extern struct chip_regs crp_fpga;
extern struct chip_regs crp_lime;
extern struct chip_regs crp_saa7113;
extern struct chip_regs crp_saa7129;

#ifdef __cplusplus
}
#endif

#endif
