/* The mirror of the bit fields in a chip's configuration object. */
#include "regdb/config_mirror.h"

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
    /* A file may have given the name to a list, where every field would be added again and again. */
    return config_setting_is_group(group) != CONFIG_FALSE ? group : nullptr;
}

void config_mirror_set(config_setting_t* group, const char* bf_name, uint32_t value)
{
    if (group == nullptr)
        return;
    config_setting_t* member = config_setting_get_member(group, bf_name);
    if (member == nullptr)
        member = config_setting_add(group, bf_name, CONFIG_TYPE_INT);
    if (member != nullptr)
        config_setting_set_int(member, static_cast<int>(value));
}

int update_config_setting_from_reg(const chip_regs* chip, const reg_bf_group* reg)
{
    if (chip == nullptr || chip->config == nullptr)
        return 0;
    config_setting_t* group = config_mirror_group(chip, reg->name);
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
        config_mirror_set(group, bf->name, bf->value);
    return 1;
}
