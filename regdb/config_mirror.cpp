/* SPDX-License-Identifier: MIT */
/* The mirror of the bit fields in a chip's configuration object. */
#include "regdb/config_mirror.h"

#include <cstring>

config_setting_t* config_mirror_root(const chip_regs* chip)
{
    if (chip->config == nullptr)
        return nullptr;
    if (config_root_setting(chip->config) == nullptr)
        config_init(chip->config);
    return config_root_setting(chip->config);
}

config_setting_t* config_mirror_group(const chip_regs* chip, const char* reg_name)
{
    config_setting_t* root = config_mirror_root(chip);
    if (root == nullptr)
        return nullptr;
    config_setting_t* group = config_setting_get_member(root, reg_name);
    if (group == nullptr)
        return config_setting_add(root, reg_name, CONFIG_TYPE_GROUP);
    /* A file may give the name to a list. Members of a list have no names: each copy would add all fields
     * once more. */
    return config_setting_is_group(group) != CONFIG_FALSE ? group : nullptr;
}

static void set_member(config_setting_t* group, const char* bf_name, config_setting_t* member, uint32_t value)
{
    if (member == nullptr)
        member = config_setting_add(group, bf_name, CONFIG_TYPE_INT);
    if (member != nullptr)
        config_setting_set_int(member, static_cast<int>(value));
}

void config_mirror_set(config_setting_t* group, const char* bf_name, uint32_t value)
{
    if (group != nullptr)
        set_member(group, bf_name, config_setting_get_member(group, bf_name), value);
}

/* The member of that name. Tries the table's position first, because files have the table's order and the
 * decoder's status is copied every second. */
static config_setting_t* member_near(config_setting_t* group, unsigned int index, const char* bf_name)
{
    config_setting_t* member = config_setting_get_elem(group, index);
    if (member != nullptr && strcmp(config_setting_name(member), bf_name) == 0)
        return member;
    return config_setting_get_member(group, bf_name);
}

int update_config_setting_from_reg(const chip_regs* chip, const reg_bf_group* reg)
{
    if (chip == nullptr || chip->config == nullptr)
        return 0;
    config_setting_t* group = config_mirror_group(chip, reg->name);
    if (group == nullptr)
        return 1;
    unsigned int index = 0;
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        set_member(group, bf->name, member_near(group, index++, bf->name), bf->value);
    return 1;
}
