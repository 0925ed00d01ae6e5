/* SPDX-License-Identifier: MIT */
/* The register database: registers and bit fields by name, composed into register values, split from them,
 * read from the chips and written to them.
 *
 * Table names are compared without regard to case; the first match in table order wins. An unknown name
 * changes nothing. Composing and splitting take the fields in table order, the first one the most
 * significant. Registers that are not 8, 16 or 32 bits wide are skipped.
 *
 * Nothing returned here is the caller's to free: tables and configuration belong to the process. A chip's own
 * result, such as a failed transfer, is never reported: hw/ says where it shows.
 */
#ifndef HALDEND_REGDB_REGISTERS_H
#define HALDEND_REGDB_REGISTERS_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The register or field of that name, or null if it is unknown. */
struct reg_bf_group* search_reg_bf_group_by_name(const struct chip_regs* chip, const char* name);
struct reg_bf* search_reg_bf_by_name(struct reg_bf_group* reg, const char* name);

/* The register's group in the chip's configuration, or the field's member of a group; null if there is none.
 * These names are compared with regard to case. The pointer is good until the configuration is read or
 * destroyed. */
config_setting_t* search_config_bf_group_by_name(const struct chip_regs* chip, const char* name);
config_setting_t* search_config_bf_by_name(config_setting_t* group, const char* name);

/* Composes the value from the fields; an unknown width gives 0. Returns 1.
 *
 * Kept: a field is not cut to its length, excess bits land in the fields before it. set_bitfield() cuts them
 * off by splitting again. */
int make_reg_value(struct reg_bf_group* reg);

/* Splits the value into the fields. Bits behind the last field are dropped; fields beyond the width get 0. */
void make_bitfield_value(struct reg_bf_group* reg);

/* Stores the field's value, as the table has it, in *out. Returns 1, or -1 if a name is unknown; then *out is
 * unchanged. */
int get_bitfield_by_name(const struct chip_regs* chip, const char* reg_name, const char* bf_name,
                         uint32_t* out);

/* Sets a field of a register in the table, composes and splits the register again, which cuts every field to
 * its length, and makes the register valid. Configuration and chip are not written. */
void set_bitfield(struct reg_bf_group* reg, struct reg_bf* bf, uint32_t value);

/* The same by name, and in the configuration: there the value is stored uncut, under the names as the caller
 * spells them. The chip is not written. Returns 1, or -1 if a name is unknown. */
int set_bitfield_by_name(const struct chip_regs* chip, const char* reg_name, const char* bf_name,
                         uint32_t value);

/* Sets a register's value and splits it. Configuration, valid flag and chip are unchanged. Returns 1, or -1
 * if the name is unknown.
 *
 * Kept: value is left-aligned. A 16-bit register takes bits 31-16 and an 8-bit register bits 31-24, because
 * callers pass narrow values in the top bits. */
int set_reg_value_by_name(const struct chip_regs* chip, const char* reg_name, uint32_t value);

/* Composes the register, and writes it to the chip if it is valid. write_reg() returns 1, or -1 if the chip
 * has no write function. write_reg_by_name() returns 1, or -1 if the name is unknown: it doesn't pass that
 * failure on. */
int write_reg(const struct chip_regs* chip, struct reg_bf_group* reg);
int write_reg_by_name(const struct chip_regs* chip, const char* reg_name);

/* Writes all registers in table order. Returns 0. */
int write_all_regs(const struct chip_regs* chip);

/* Reads the register from the chip, splits it, and copies its fields into the configuration. read_reg()
 * returns 1, or -1 if the chip has no read function. read_reg_by_name() returns 1, or -1 after a line on
 * standard error if the name is unknown: it doesn't pass that failure on. */
int read_reg(const struct chip_regs* chip, struct reg_bf_group* reg);
int read_reg_by_name(const struct chip_regs* chip, const char* reg_name);

/* Reads all registers in table order. Returns 0, or -1 if the chip has no read function. */
int read_all_regs(const struct chip_regs* chip);

/* Checks that the fields of every register add up to its width. Returns 0, or 1 after a line on standard
 * error for each register that fails. */
int check_all_regs(const struct chip_regs* chip);

#ifdef __cplusplus
}
#endif

#endif
