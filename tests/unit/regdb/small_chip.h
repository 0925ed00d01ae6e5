/* SPDX-License-Identifier: MIT */
/* A small chip for tests of the register database: one register of each width, recorded access. */
#ifndef HALDEND_TESTS_SMALL_CHIP_H
#define HALDEND_TESTS_SMALL_CHIP_H

#include "regdb/registers.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

/* The values of the chip's registers, by address, and the accesses: "read SRIC", "write SRIC". */
inline std::vector<std::string> chip_log;
inline uint32_t chip_memory[16];

inline int read_small_chip(reg_bf_group* reg)
{
    chip_log.push_back(std::string("read ") + reg->name);
    reg->value = chip_memory[reg->addr];
    return 1;
}

inline int write_small_chip(reg_bf_group* reg)
{
    if (reg->valid == 0)
        return -1;
    chip_log.push_back(std::string("write ") + reg->name);
    chip_memory[reg->addr] = reg->value;
    return 1;
}

class small_chip : public testing::Test
{
protected:
    void SetUp() override
    {
        chip_log.clear();
        for (uint32_t& word : chip_memory)
            word = 0;
        config_init(&config);
    }
    void TearDown() override { config_destroy(&config); }

    uint32_t field(const char* reg, const char* bf)
    {
        uint32_t value = 0xdeadbeef;
        EXPECT_EQ(1, get_bitfield_by_name(&chip, reg, bf, &value));
        return value;
    }
    uint32_t value(const char* reg) { return search_reg_bf_group_by_name(&chip, reg)->value; }

    /* The mirrored value of a field, -1 if it isn't mirrored. */
    int mirrored(const char* path)
    {
        int number = -1;
        return config_lookup_int(&config, path, &number) == CONFIG_TRUE ? number : -1;
    }

    reg_bf bf_sric[4] = {
        {"res1",  0, 16, ""        },
        {"sinr",  0, 8,  " Store"  },
        {"rinr",  0, 8,  " Restore"},
        {nullptr, 0, 0,  ""        }
    };
    reg_bf bf_half[3] = {
        {"high",  0, 4,  "High"},
        {"low",   0, 12, "Low" },
        {nullptr, 0, 0,  ""    }
    };
    reg_bf bf_byte[3] = {
        {"top",    0, 1, "Top" },
        {"bottom", 0, 7, "Rest"},
        {nullptr,  0, 0, ""    }
    };
    reg_bf bf_odd[2] = {
        {"odd",   0, 24, "Odd"},
        {nullptr, 0, 0,  ""   }
    };
    reg_bf_group regs[5] = {
        {'X', 0, "SRIC",  32, 0, bf_sric, 0, "Store Image control"},
        {'C', 1, "HALF",  16, 0, bf_half, 0, "Half"               },
        {'D', 2, "BYTE",  8,  0, bf_byte, 1, "Byte"               },
        {'D', 3, "ODD",   24, 7, bf_odd,  1, "Odd"                },
        {0,   0, nullptr, 0,  0, nullptr, 0, nullptr              }
    };
    config_t config = {};
    chip_regs chip = {&config, regs, read_small_chip, write_small_chip};
};

#endif
