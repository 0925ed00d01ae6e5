/* SPDX-License-Identifier: MIT */
/* The mirror of the bit fields in a chip's configuration object: a group for each register, an integer for
 * each field, right-aligned.
 *
 * The object is destroyed when its file can't be read, but clients may print, save or poll the chip at any
 * time after that. So every function here creates a destroyed object again, empty. Names that the
 * configuration library refuses (it allows no '#' in names) are left out of the mirror; the fields after them
 * are not.
 *
 * Names here are compared with regard to case, unlike those of the tables.
 */
#ifndef HALDEND_REGDB_CONFIG_MIRROR_H
#define HALDEND_REGDB_CONFIG_MIRROR_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The root of the chip's configuration; null only if the chip has none. */
config_setting_t* config_mirror_root(const struct chip_regs* chip);

/* The register's group, added if it is missing. Null if the library refuses the name, or if the name belongs
 * to something other than a group. */
config_setting_t* config_mirror_group(const struct chip_regs* chip, const char* reg_name);

/* Sets an integer of a group, added if it is missing. Does nothing if group is null or the library refuses
 * the name. */
void config_mirror_set(config_setting_t* group, const char* bf_name, uint32_t value);

/* Copies the values of all fields of the register into its group. Returns 1, also if the group can't be made;
 * 0 if chip or its configuration is null. */
int update_config_setting_from_reg(const struct chip_regs* chip, const struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
