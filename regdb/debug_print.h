/* SPDX-License-Identifier: MIT */
/* Registers and fields as the table has them, on standard error, for service staff. The chip is not read.
 * Registers of an unknown width are left out. */
#ifndef HALDEND_REGDB_DEBUG_PRINT_H
#define HALDEND_REGDB_DEBUG_PRINT_H

#include "regdb/reg_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One line for the register: window, address, value and help text. An unknown name gives a line that says
 * so. */
void DEBUG_print_reg_by_name(const struct chip_regs* chip, const char* name);

/* One line for the register and one for each of its fields. An unknown name gives a line that says so.
 *
 * Kept: fields of 8- and 16-bit registers show as 0, as in register files; see reg_shown_field(). */
void DEBUG_print_bitfields_by_name(const struct chip_regs* chip, const char* name);

/* All registers in table order, with their fields if with_bitfields isn't 0. */
void DEBUG_print_all_regs(const struct chip_regs* chip, int with_bitfields);

#ifdef __cplusplus
}
#endif

#endif
