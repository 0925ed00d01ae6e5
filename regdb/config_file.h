/* SPDX-License-Identifier: MIT */
/* Register files: one libconfig file for each chip, with a group for each register and an integer for each
 * bit field. docs/register-files.md describes the format and lists all names.
 */
#ifndef HALDEND_REGDB_CONFIG_FILE_H
#define HALDEND_REGDB_CONFIG_FILE_H

#include "regdb/reg_types.h"

#include <libconfig.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the file into the chip's configuration. If apply isn't 0, also sets the fields in the register table;
 * the registers that the file names become valid. The chip is not written. Returns 0. If the file can't be
 * read, returns -1 after two lines on standard error: the configuration is destroyed, the table unchanged. */
int read_config_from_file(const struct chip_regs* chip, const char* path, int apply);

/* Sets the fields that the configuration names, or those of one of its groups. Names are compared without
 * regard to case; unknown names are skipped, and so are settings outside of a group. A setting that is no
 * integer sets its field to 0. The chip is not written. */
void set_all_regs_from_config(const struct chip_regs* chip);
void set_reg_by_name_from_config_setting(const struct chip_regs* chip, config_setting_t* group);

/* Writes the register table to the file, which is emptied first; a new file has mode 0644. All addresses,
 * values and help texts are there as comments. If read_first isn't 0, reads every register from the chip
 * first. Returns the result of fclose(): 0, or EOF if the file couldn't be written. Returns -1 if
 * open_data_file() can't open it.
 *
 * Kept: the fields of 8- and 16-bit registers are written as 0, their value stands in the register's comment.
 * The saved files of all boards are like that. */
int write_config_to_file(const struct chip_regs* chip, const char* path, int read_first);

#ifdef __cplusplus
}
#endif

#endif
