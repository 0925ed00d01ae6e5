/* Registers and fields as the table has them, on standard error, for service staff. */
#ifndef HALDEND_REGDB_DEBUG_PRINT_H
#define HALDEND_REGDB_DEBUG_PRINT_H

#include "regdb/reg_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One line for the register; another one if there is none of that name. */
void DEBUG_print_reg_by_name(const struct chip_regs* chip, const char* name);

/* One line for the register and one for each of its fields. */
void DEBUG_print_bitfields_by_name(const struct chip_regs* chip, const char* name);

/* All registers in table order, with their fields if with_bitfields isn't 0. */
void DEBUG_print_all_regs(const struct chip_regs* chip, int with_bitfields);

#ifdef __cplusplus
}
#endif

#endif
