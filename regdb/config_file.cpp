/* SPDX-License-Identifier: MIT */
/* Register files. */
#include "regdb/config_file.h"

#include "hw/open_path.h"
#include "regdb/config_guard.h"
#include "regdb/config_mirror.h"
#include "regdb/registers.h"

#include <cstdio>
#include <ctime>

#include <fcntl.h>

static int report_failure(const chip_regs* chip, const char* path, int line, const char* text)
{
    fprintf(stderr, "Errormessage in configfile: %s, Linenumber:%d\n", path, line);
    fprintf(stderr, "%s\n", text);
    config_destroy(chip->config);
    return -1;
}

int read_config_from_file(const chip_regs* chip, const char* path, int apply)
{
    int line = 0;
    const char* fault = config_file_fault(path, &line);
    if (fault != nullptr)
        return report_failure(chip, path, line, fault);
    if (config_read_file(chip->config, path) != CONFIG_TRUE)
        return report_failure(chip, path, config_error_line(chip->config), config_error_text(chip->config));
    if (apply != 0)
        set_all_regs_from_config(chip);
    return 0;
}

void set_all_regs_from_config(const chip_regs* chip)
{
    config_setting_t* root = config_mirror_root(chip);
    if (root == nullptr)
        return;
    const unsigned int count = static_cast<unsigned int>(config_setting_length(root));
    for (unsigned int i = 0; i < count; ++i)
        set_reg_by_name_from_config_setting(chip, config_setting_get_elem(root, i));
}

void set_reg_by_name_from_config_setting(const chip_regs* chip, config_setting_t* group)
{
    if (config_setting_is_group(group) == CONFIG_FALSE || config_setting_name(group) == nullptr)
        return;
    reg_bf_group* reg = search_reg_bf_group_by_name(chip, config_setting_name(group));
    if (reg == nullptr)
        return;
    /* Not set_bitfield_by_name(): the values come from the configuration, which needs no copy. */
    const unsigned int count = static_cast<unsigned int>(config_setting_length(group));
    for (unsigned int i = 0; i < count; ++i) {
        const config_setting_t* member = config_setting_get_elem(group, i);
        reg_bf* bf = search_reg_bf_by_name(reg, config_setting_name(member));
        if (bf != nullptr)
            set_bitfield(reg, bf, static_cast<uint32_t>(config_setting_get_int(member)));
    }
}

/* A value in as many hex digits as its register's width has. */
static void print_hex(FILE* file, const reg_bf_group* reg, uint32_t value)
{
    fprintf(file, "0x%0*x", reg->size / 4, value);
}

static void write_fields(FILE* file, const reg_bf_group* reg)
{
    for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf) {
        const uint32_t value = reg_shown_field(reg, bf);
        fprintf(file, "%10s = %-4d;  // (%02d) (", bf->name, static_cast<int>(value), bf->len);
        print_hex(file, reg, value);
        fprintf(file, ")  %4s\n", bf->help);
    }
}

static void write_register(FILE* file, const reg_bf_group* reg)
{
    if (reg_has_known_width(reg)) {
        fprintf(file, "%s:  // REG-Function:(%s) REG-Addr:(%c:0x%08x) Val:(", reg->name, reg->help, reg->base,
                reg->addr);
        print_hex(file, reg, reg_value(reg));
        fputs(")\n{\n", file);
        write_fields(file, reg);
    }
    fputs("};\n\n", file);
}

static void write_header(FILE* file)
{
    const time_t now = time(nullptr);
    tm local = {};
    localtime_r(&now, &local);
    fputs("\n#\n# All Registername must be written in upper-case an,\n# All Bitfields must be written in "
          "Lowercases\n#\n",
          file);
    fprintf(file, "# Date:%02d.%02d.%04d - %02d:%02d\n\n", local.tm_mday, local.tm_mon + 1,
            local.tm_year + 1900, local.tm_hour, local.tm_min);
}

int write_config_to_file(const chip_regs* chip, const char* path, int read_first)
{
    FILE* file = stream_of_descriptor(open_data_file(path, O_RDWR), "w+");
    if (file == nullptr)
        return -1;
    write_header(file);
    if (read_first != 0)
        read_all_regs(chip);
    for (const reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg)
        write_register(file, reg);
    return fclose(file);
}
