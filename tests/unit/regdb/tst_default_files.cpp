/* SPDX-License-Identifier: MIT */
/* The register files that the daemon ships with: their names, their values, and the layout, which is the
 * daemon's. */
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/registers.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

using lines = std::vector<std::string>;

struct chip_file {
    const char* name;
    const chip_regs* chip;
    config_t* config;
};

const chip_file FILES[] = {
    {"fpga",    &crp_fpga,    &config_fpga   },
    {"lime",    &crp_lime,    &config_lime   },
    {"saa7113", &crp_saa7113, &config_saa7113},
    {"saa7129", &crp_saa7129, &config_saa7129},
};

std::string default_file(const char* chip)
{
    return std::string(REGISTER_FILES "/") + chip + ".cnf";
}

lines lines_of(const std::string& path)
{
    std::ifstream file(path);
    lines all;
    for (std::string line; std::getline(file, line);)
        all.push_back(line);
    return all;
}

bool begins_with(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

class default_files : public testing::TestWithParam<chip_file>
{
protected:
    void SetUp() override
    {
        config_init(GetParam().config);
        ASSERT_EQ(0, read_config_from_file(GetParam().chip, default_file(GetParam().name).c_str(), 1));
        for (reg_bf_group* reg = GetParam().chip->regs; reg->name != nullptr; ++reg)
            make_reg_value(reg);
    }
    void TearDown() override { config_destroy(GetParam().config); }
};

INSTANTIATE_TEST_SUITE_P(chips, default_files, testing::ValuesIn(FILES),
                         [](const auto& of) { return std::string(of.param.name); });

uint32_t value_of(const chip_regs& chip, const char* reg)
{
    return reg_value(search_reg_bf_group_by_name(&chip, reg));
}

uint32_t field_of(const chip_regs& chip, const char* reg, const char* bf)
{
    uint32_t value = 0xdeadbeef;
    get_bitfield_by_name(&chip, reg, bf, &value);
    return value;
}

TEST_P(default_files, name_every_register_but_the_decoders_version)
{
    for (const reg_bf_group* reg = GetParam().chip->regs; reg->name != nullptr; ++reg) {
        const bool named = config_lookup(GetParam().config, reg->name) != nullptr;
        EXPECT_EQ(std::string(reg->name) != "CVER", named) << reg->name;
    }
}

TEST_P(default_files, name_every_field_that_can_be_read)
{
    for (const reg_bf_group* reg = GetParam().chip->regs; reg->name != nullptr; ++reg) {
        config_setting_t* group = config_lookup(GetParam().config, reg->name);
        for (const reg_bf* bf = reg->bf; group != nullptr && bf->name != nullptr; ++bf) {
            const bool named = config_setting_get_member(group, bf->name) != nullptr;
            EXPECT_EQ(std::string(bf->name) != "res##id", named) << reg->name << ' ' << bf->name;
        }
    }
}

TEST_P(default_files, name_nothing_that_does_not_exist)
{
    const config_setting_t* root = config_root_setting(GetParam().config);
    for (int i = 0; i < config_setting_length(root); ++i) {
        config_setting_t* group = config_setting_get_elem(root, static_cast<unsigned int>(i));
        reg_bf_group* reg = search_reg_bf_group_by_name(GetParam().chip, config_setting_name(group));
        ASSERT_NE(nullptr, reg) << config_setting_name(group);
        for (int k = 0; k < config_setting_length(group); ++k) {
            const char* name =
                config_setting_name(config_setting_get_elem(group, static_cast<unsigned int>(k)));
            EXPECT_NE(nullptr, search_reg_bf_by_name(reg, name)) << reg->name << ' ' << name;
        }
    }
}

/* The field line of a narrow register, with the value that the daemon leaves out. */
std::string with_its_value(const std::string& line, uint32_t value, int digits)
{
    const size_t equals = line.find(" = ");
    const size_t bits = line.find(") (0x", equals) + 5;
    char number[16];
    std::snprintf(number, sizeof number, "%-4u;", static_cast<unsigned int>(value));
    char hex[16];
    std::snprintf(hex, sizeof hex, "%0*x", digits, static_cast<unsigned int>(value));
    return line.substr(0, equals + 3) + number + line.substr(equals + 8, bits - equals - 8) + hex +
           line.substr(bits + static_cast<size_t>(digits));
}

/* The file that the daemon would write of the chip now, without the registers and fields that a default file
 * leaves out. */
lines as_written(const chip_file& chip)
{
    std::string path = testing::TempDir() + "default_files_" + std::to_string(getpid());
    EXPECT_EQ(0, write_config_to_file(chip.chip, path.c_str(), 0));
    lines written = lines_of(path);
    std::remove(path.c_str());
    lines wanted;
    const reg_bf_group* reg = nullptr;
    const reg_bf* bf = nullptr;
    for (const std::string& line : written) {
        const size_t colon = line.find(":  // REG-Function");
        if (colon != std::string::npos) {
            reg = search_reg_bf_group_by_name(chip.chip, line.substr(0, colon).c_str());
            bf = reg->bf;
        }
        const bool is_field = line.find(" = ") != std::string::npos;
        const bool left_out = reg != nullptr && (std::string(reg->name) == "CVER" ||
                                                 (is_field && std::string(bf->name) == "res##id"));
        if (!left_out)
            wanted.push_back(is_field && reg->size == 8 ? with_its_value(line, bf->value, 2) : line);
        if (is_field)
            ++bf;
    }
    return wanted;
}

TEST_P(default_files, look_as_the_daemon_writes_them)
{
    const auto is_content = [](const std::string& line) { return !line.empty() && line[0] != '#'; };
    lines expected;
    for (const std::string& line : as_written(GetParam()))
        if (is_content(line))
            expected.push_back(line);
    lines actual;
    const lines file = lines_of(default_file(GetParam().name));
    for (const std::string& line : file)
        if (is_content(line))
            actual.push_back(line);
    EXPECT_EQ(expected, actual);

    ASSERT_GT(file.size(), 6U);
    EXPECT_EQ(lines({"", "#", "# All Registername must be written in upper-case an,",
                     "# All Bitfields must be written in Lowercases", "#"}),
              lines(file.begin(), file.begin() + 5));
    EXPECT_TRUE(begins_with(file[5], "# Date:"));
}

TEST(default_fpga_file, puts_the_text_layer_into_the_middle)
{
    config_init(&config_fpga);
    ASSERT_EQ(0, read_config_from_file(&crp_fpga, default_file("fpga").c_str(), 1));
    const uint32_t columns = 53;
    const uint32_t rows = 26;
    EXPECT_EQ(12U, field_of(crp_fpga, "TESZ", "tesh"));
    EXPECT_EQ(10U, field_of(crp_fpga, "TESZ", "tesv"));
    /* 40 and 7 are the graphic offsets; 640 pixels by 274 lines of a field remain. */
    EXPECT_EQ(40 + (640 - columns * 12) / 2, value_of(crp_fpga, "TSXP"));
    EXPECT_EQ(7 + (274 - rows * 10) / 2, value_of(crp_fpga, "TSYP"));
    EXPECT_EQ(0x300000U, value_of(crp_fpga, "TEMO"));
    EXPECT_EQ(0U, value_of(crp_fpga, "CTRL"));
    config_destroy(&config_fpga);
}

TEST(default_lime_file, shows_the_live_video_over_the_background_layer)
{
    config_init(&config_lime);
    ASSERT_EQ(0, read_config_from_file(&crp_lime, default_file("lime").c_str(), 1));
    EXPECT_EQ(1U, field_of(crp_lime, "DCM1", "den"));
    EXPECT_EQ(1U, field_of(crp_lime, "DCM1", "l1e"));
    EXPECT_EQ(1U, field_of(crp_lime, "DCM1", "l0e"));
    EXPECT_EQ(1U, field_of(crp_lime, "DLS", "dls0"));
    EXPECT_EQ(0U, field_of(crp_lime, "DLS", "dls1"));
    EXPECT_EQ(1U, field_of(crp_lime, "VCM", "vie"));
    EXPECT_EQ(1U, field_of(crp_lime, "VCM", "vs"));
    EXPECT_EQ(0x08000800U, value_of(crp_lime, "CSC"));
    EXPECT_EQ(573U << 16 | 688U, value_of(crp_lime, "L1WWH"));
    /* The ring buffer holds whole frames and ends within the memory. */
    const uint32_t line = 64 * field_of(crp_lime, "CBM", "cbw");
    EXPECT_GE(line, 720U * 2);
    EXPECT_GE(value_of(crp_lime, "CBLA") - value_of(crp_lime, "CBOA"), 2 * 576 * line);
    EXPECT_GE(value_of(crp_lime, "CBOA"), 576 * 64 * field_of(crp_lime, "L0M", "l0w"));
    config_destroy(&config_lime);
}

} // namespace
