/* SPDX-License-Identifier: MIT */
/* Registers and fields as the table has them. */
#include "regdb/debug_print.h"

#include "regdb/registers.h"

#include <cstdio>

/* The register, or null after a line that says it is unknown. */
static reg_bf_group* find_register(const chip_regs* chip, const char* name)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, name);
    if (reg == nullptr)
        fputs("DEBUG_print_reg_by_name -> Register-Name not found\n", stderr);
    return reg;
}

void DEBUG_print_reg_by_name(const chip_regs* chip, const char* name)
{
    const reg_bf_group* reg = find_register(chip, name);
    if (reg != nullptr && reg_has_known_width(reg))
        fprintf(stderr, "DEBUG_print_reg_by_name-> Reg--B(%c):A(%08x):V(%0*x) N[%s]\n", reg->base, reg->addr,
                reg->size / 4, reg_value(reg), reg->help);
}

void DEBUG_print_bitfields_by_name(const chip_regs* chip, const char* name)
{
    const reg_bf_group* reg = find_register(chip, name);
    if (reg == nullptr || !reg_has_known_width(reg))
        return;
    fprintf(stderr, "%s:%s| Reg-Base-(%c):A-off-(%08x):V-v%02d-(%0*x) N-help-[%s]\n",
            "DEBUG_print_bitfields_by_name", reg->name, reg->base, reg->addr, reg->size, reg->size / 4,
            reg_value(reg), reg->help);
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        fprintf(stderr, "%15s=L:(%2d):V(%0*x)\n", bf->name, bf->len, reg->size / 4, reg_shown_field(reg, bf));
}

void DEBUG_print_all_regs(const chip_regs* chip, int with_bitfields)
{
    for (const reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg) {
        if (with_bitfields != 0)
            DEBUG_print_bitfields_by_name(chip, reg->name);
        else
            DEBUG_print_reg_by_name(chip, reg->name);
    }
}
