/* Register files: one libconfig file a chip, a group for each register, an integer for each bit field.
 */
#ifndef HALDEND_REGDB_CONFIG_FILE_H
#define HALDEND_REGDB_CONFIG_FILE_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the file into the chip's configuration and, if apply isn't 0, its fields into the register table, where
 * the registers that it names become valid. Nothing is written to the chip. Returns 0; -1 after two lines on
 * standard error if the file can't be read: then the configuration is destroyed and the table as before. */
int read_config_from_file(const struct chip_regs* chip, const char* path, int apply);

/* Sets the fields that the configuration names. Unknown names do nothing, nor does what is no group at the top. A
 * field that is given no integer is set to 0. */
void set_all_regs_from_config(const struct chip_regs* chip);
void set_reg_by_name_from_config_setting(const struct chip_regs* chip, config_setting_t* group);

/* Writes the register table to the file, in a layout with all addresses, values and help texts in comments; if
 * read_first isn't 0 every register is read from the chip before. Returns 0, or what fclose() does; -1 if
 * open_data_file() doesn't open the file. A new file has mode 0644. The fields of 8- and 16-bit registers are
 * written as 0: their values stand in the comment of the register. */
int write_config_to_file(const struct chip_regs* chip, const char* path, int read_first);

#ifdef __cplusplus
}
#endif

#endif
