/* SPDX-License-Identifier: MIT */
/* Sets the registers of all four chips by name and from a register file, writes their register files and
 * mirrors, and prints them, all into a folder. ./check compares the results of this machine's processor and
 * the target's. */
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/debug_print.h"
#include "regdb/registers.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

struct chip {
    const char* name;
    const chip_regs* regs;
};

static const chip CHIPS[] = {
    {"fpga",    &crp_fpga   },
    {"lime",    &crp_lime   },
    {"saa7113", &crp_saa7113},
    {"saa7129", &crp_saa7129},
};

/* Every way to write a number. Decimals beyond 31 bits are left out: the configuration library reads them by
 * the size of a long. No field is that wide. */
static const char REGISTER_FILE[] = "L1WXY: { l1wx = 123; };\n"
                                    "DCM1: { den = 1; sc = 0x1f; sync = 3; };\n"
                                    "CBOA: { cboa = 0x7fffff; };\n"
                                    "CBLA: { cbla = -1; };\n"
                                    "csc: { VSCI = 0xffffffff; vscf = 2147483647; hsci = -2147483648; };\n"
                                    "L1ETC: { l1etc = 0x80000000L; };\n";

static void must(bool done, const char* what)
{
    if (done)
        return;
    fprintf(stderr, "%s failed\n", what);
    exit(1);
}

/* Numbers without a pattern, the same on every processor. */
static uint32_t next_number()
{
    static uint32_t state = 1;
    state = state * 1664525 + 1013904223;
    return state;
}

/* Registers in turn by their fields, with values that fit and some that spill, and by their values. */
static void set_by_name(const chip_regs* chip)
{
    for (int i = 0; chip->regs[i].name != nullptr; ++i) {
        const reg_bf_group& reg = chip->regs[i];
        if (i % 3 == 2) {
            must(set_reg_value_by_name(chip, reg.name, next_number()) == 1, reg.name);
            continue;
        }
        for (const reg_bf* bf = reg.bf; bf->name != nullptr; ++bf) {
            const uint32_t number = next_number() >> (i % 3 == 0 ? 32 - bf->len : 16);
            must(set_bitfield_by_name(chip, reg.name, bf->name, number) == 1, bf->name);
        }
    }
}

static void read_register_file(const chip_regs* chip)
{
    std::ofstream("read.cnf") << REGISTER_FILE;
    must(read_config_from_file(chip, "read.cnf", 1) == 0, "read.cnf");
}

static void write_and_print(const chip& one)
{
    const std::string file = std::string(one.name) + ".cnf";
    const std::string mirror = std::string(one.name) + ".mirror";
    must(write_config_to_file(one.regs, file.c_str(), 0) == 0, one.name);
    must(config_write_file(one.regs->config, mirror.c_str()) == CONFIG_TRUE, one.name);
    DEBUG_print_all_regs(one.regs, 0);
    DEBUG_print_all_regs(one.regs, 1);
    // The written files are read again, or refused, in the same way too.
    read_config_from_file(one.regs, file.c_str(), 1);
    DEBUG_print_all_regs(one.regs, 1);
}

int main(int argc, char* argv[])
{
    if (argc != 2) {
        fputs("Usage: register_files FOLDER\n", stderr);
        return 2;
    }
    // Messages name files: these have the same names wherever the folder is.
    std::filesystem::create_directories(argv[1]);
    std::filesystem::current_path(argv[1]);
    for (const chip& one : CHIPS)
        set_by_name(one.regs);
    read_register_file(&crp_lime);
    must(freopen("printed", "w", stderr) != nullptr, "printed");
    for (const chip& one : CHIPS)
        write_and_print(one);
    return fclose(stderr) == 0 ? 0 : 1;
}
