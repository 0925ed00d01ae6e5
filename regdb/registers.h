/* The register database: named registers and bit fields, composed into register values and split from them,
 * read from the chips and written to them.
 *
 * Every function takes the chip's descriptor first. Names are compared without regard to case; the first match
 * in table order wins. A name that isn't there gives -1, and changes nothing.
 *
 * Composing and splitting go by the order of the fields, the first the most significant. Registers that are
 * neither 8, 16 nor 32 bits wide are skipped.
 */
#ifndef HALDEND_REGDB_REGISTERS_H
#define HALDEND_REGDB_REGISTERS_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The register or field of that name, or null. */
struct reg_bf_group* search_reg_bf_group_by_name(const struct chip_regs* chip, const char* name);
struct reg_bf* search_reg_bf_by_name(struct reg_bf_group* reg, const char* name);

/* The register's group in the chip's configuration, a member of a group; or null. */
config_setting_t* search_config_bf_group_by_name(const struct chip_regs* chip, const char* name);
config_setting_t* search_config_bf_by_name(config_setting_t* group, const char* name);

/* Composes the value from the fields. All 32 bits of the storage are cleared first. A field's value isn't cut to
 * its length: what is too much lands in the fields before it. Returns 1. */
int make_reg_value(struct reg_bf_group* reg);

/* Splits the value into the fields. Bits that no field takes go nowhere, fields beyond the width get 0. */
void make_bitfield_value(struct reg_bf_group* reg);

/* A field's value as the table has it. Returns 1, or -1. */
int get_bitfield_by_name(const struct chip_regs* chip, const char* reg_name, const char* bf_name,
                         uint32_t* out);

/* Sets a field of a register in the table; the register is composed and split again, which cuts every field to its
 * length, and becomes valid. Configuration and chip stay as they are. */
void set_bitfield(struct reg_bf_group* reg, struct reg_bf* bf, uint32_t value);

/* The same by name, and in the configuration, as given. The chip is not written. Returns 1, or -1. */
int set_bitfield_by_name(const struct chip_regs* chip, const char* reg_name, const char* bf_name,
                         uint32_t value);

/* Sets a register's value and splits it. The value of a narrow register is taken from the most significant bits
 * of the argument. Configuration, valid flag and chip stay as they are. Returns 1, or -1. */
int set_reg_value_by_name(const struct chip_regs* chip, const char* reg_name, uint32_t value);

/* Composes the register and writes it to the chip; an invalid one is composed only. Returns 1, or -1 if the chip
 * can't be written. */
int write_reg(const struct chip_regs* chip, struct reg_bf_group* reg);
int write_reg_by_name(const struct chip_regs* chip, const char* reg_name);

/* All registers in table order. Returns 0. */
int write_all_regs(const struct chip_regs* chip);

/* Reads the register from the chip, splits it, and copies its fields into the configuration. Returns 1, or -1 if
 * the chip can't be read; by an unknown name also after a line on standard error. */
int read_reg(const struct chip_regs* chip, struct reg_bf_group* reg);
int read_reg_by_name(const struct chip_regs* chip, const char* reg_name);

/* All registers in table order. Returns 0, or -1 if the chip can't be read. */
int read_all_regs(const struct chip_regs* chip);

/* Whether every register's fields add up to its width: 0, or 1 after a line on standard error for each that
 * doesn't. */
int check_all_regs(const struct chip_regs* chip);

#ifdef __cplusplus
}
#endif

#endif
