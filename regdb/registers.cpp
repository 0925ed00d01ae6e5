/* SPDX-License-Identifier: MIT */
/* The register database. */
#include "regdb/registers.h"

#include "regdb/config_mirror.h"

#include <cstdio>

#include <strings.h>

/* The bits of the value storage that a register of that width uses: the most significant ones. */
static uint32_t view_mask(const reg_bf_group* reg)
{
    return UINT32_MAX << (32 - reg->size);
}

reg_bf_group* search_reg_bf_group_by_name(const chip_regs* chip, const char* name)
{
    for (reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg)
        if (strcasecmp(reg->name, name) == 0)
            return reg;
    return nullptr;
}

reg_bf* search_reg_bf_by_name(reg_bf_group* reg, const char* name)
{
    for (reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        if (strcasecmp(bf->name, name) == 0)
            return bf;
    return nullptr;
}

config_setting_t* search_config_bf_group_by_name(const chip_regs* chip, const char* name)
{
    return config_mirror_root(chip) != nullptr ? config_lookup(chip->config, name) : nullptr;
}

config_setting_t* search_config_bf_by_name(config_setting_t* group, const char* name)
{
    return group != nullptr ? config_setting_get_member(group, name) : nullptr;
}

int make_reg_value(reg_bf_group* reg)
{
    reg->value = 0;
    if (!reg_has_known_width(reg))
        return 1;
    uint32_t value = 0;
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        value = (bf->len < 32 ? value << bf->len : 0) | bf->value;
    reg->value = value << (32 - reg->size);
    return 1;
}

void make_bitfield_value(reg_bf_group* reg)
{
    if (!reg_has_known_width(reg))
        return;
    uint32_t left = reg->value & view_mask(reg);
    for (reg_bf* bf = reg->bf; bf->name != nullptr; ++bf) {
        bf->value = 0;
        for (unsigned int bit = 0; bit < bf->len; ++bit) {
            bf->value = bf->value << 1 | left >> 31;
            left <<= 1;
        }
    }
}

int get_bitfield_by_name(const chip_regs* chip, const char* reg_name, const char* bf_name, uint32_t* out)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, reg_name);
    const reg_bf* bf = reg != nullptr ? search_reg_bf_by_name(reg, bf_name) : nullptr;
    if (bf == nullptr)
        return -1;
    *out = bf->value;
    return 1;
}

void set_bitfield(reg_bf_group* reg, reg_bf* bf, uint32_t value)
{
    bf->value = value;
    make_reg_value(reg);
    make_bitfield_value(reg);
    reg->valid = 1;
}

int set_bitfield_by_name(const chip_regs* chip, const char* reg_name, const char* bf_name, uint32_t value)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, reg_name);
    reg_bf* bf = reg != nullptr ? search_reg_bf_by_name(reg, bf_name) : nullptr;
    if (bf == nullptr)
        return -1;
    config_mirror_set(config_mirror_group(chip, reg_name), bf_name, value);
    set_bitfield(reg, bf, value);
    return 1;
}

int set_reg_value_by_name(const chip_regs* chip, const char* reg_name, uint32_t value)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, reg_name);
    if (reg == nullptr)
        return -1;
    if (reg_has_known_width(reg))
        reg->value = (reg->value & ~view_mask(reg)) | (value & view_mask(reg));
    make_bitfield_value(reg);
    return 1;
}

int write_reg(const chip_regs* chip, reg_bf_group* reg)
{
    if (chip->write == nullptr)
        return -1;
    make_reg_value(reg);
    chip->write(reg);
    return 1;
}

int write_reg_by_name(const chip_regs* chip, const char* reg_name)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, reg_name);
    if (reg == nullptr)
        return -1;
    write_reg(chip, reg);
    return 1;
}

int write_all_regs(const chip_regs* chip)
{
    for (reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg)
        write_reg(chip, reg);
    return 0;
}

int read_reg(const chip_regs* chip, reg_bf_group* reg)
{
    if (chip->read == nullptr)
        return -1;
    chip->read(reg);
    make_bitfield_value(reg);
    update_config_setting_from_reg(chip, reg);
    return 1;
}

int read_reg_by_name(const chip_regs* chip, const char* reg_name)
{
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, reg_name);
    if (reg == nullptr) {
        fputs("read_reg_by_name-> Register-Name not found\n", stderr);
        return -1;
    }
    read_reg(chip, reg);
    return 1;
}

int read_all_regs(const chip_regs* chip)
{
    if (chip->read == nullptr)
        return -1;
    for (reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg)
        read_reg(chip, reg);
    return 0;
}

static int32_t sum_of_lengths(const reg_bf_group* reg)
{
    int32_t sum = 0;
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        sum += bf->len;
    return sum;
}

int check_all_regs(const chip_regs* chip)
{
    int result = 0;
    for (const reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg) {
        if (sum_of_lengths(reg) == reg->size)
            continue;
        fprintf(stderr, "bit_field_cnt and size of reg:(%s) are not matched\n", reg->name);
        result = 1;
    }
    return result;
}
