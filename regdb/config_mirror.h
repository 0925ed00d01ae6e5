/* The mirror of the bit fields in a chip's configuration object: a group for each register, an integer for each
 * field.
 *
 * The object is destroyed when its file can't be read, and clients may print, save or poll the chip at any time
 * after that. So it is made anew, empty, where it is found destroyed. Names that the configuration library
 * refuses (it has no '#' in names) are left out; the fields after them are not.
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

/* The register's group, added if it is absent; null if it can't be, or if something else has its name. */
config_setting_t* config_mirror_group(const struct chip_regs* chip, const char* reg_name);

/* Sets a member of a group, added if it is absent. A null group, and a member that can't be added, is passed over. */
void config_mirror_set(config_setting_t* group, const char* bf_name, uint32_t value);

/* Copies the values of all fields of the register. Returns 1, or 0 if chip or its configuration is null. */
int update_config_setting_from_reg(const struct chip_regs* chip, const struct reg_bf_group* reg);

#ifdef __cplusplus
}
#endif

#endif
