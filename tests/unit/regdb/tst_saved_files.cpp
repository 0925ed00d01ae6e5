/* SPDX-License-Identifier: MIT */
/* Saved register files: their faults, and the commands of docs/register-files.md that repair them, run as
 * written there.
 */
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/registers.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

namespace
{

const char FOLDER_IN_DOCUMENT[] = "/usr/etc/cnfs";

struct saved_chip {
    chip_regs* chip;
    const char* file;
};
const saved_chip CHIPS[] = {
    {&crp_lime,    "lime.cnf"   },
    {&crp_fpga,    "fpga.cnf"   },
    {&crp_saa7113, "saa7113.cnf"},
    {&crp_saa7129, "saa7129.cnf"},
};

std::string contents(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/* The indented lines between the marks, for the files in that folder. */
std::string documented_commands(const std::string& folder)
{
    std::istringstream document(contents(HALDEND_REGISTER_FILES_DOCUMENT));
    std::string commands;
    bool between = false;
    for (std::string line; std::getline(document, line);) {
        if (line.rfind("<!-- ", 0) == 0)
            between = line == "<!-- begin repair -->";
        else if (between && line.rfind("    ", 0) == 0)
            commands += line + "\n";
    }
    const std::string named = FOLDER_IN_DOCUMENT;
    for (size_t at = 0; (at = commands.find(named, at)) != std::string::npos; at += folder.size())
        commands.replace(at, named.size(), folder);
    return commands.empty() ? "exit 1" : commands;
}

int run(const std::string& commands)
{
    std::string shell = "sh";
    std::string options = "-ec";
    std::string text = commands;
    char* const arguments[] = {shell.data(), options.data(), text.data(), nullptr};
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, "sh", nullptr, nullptr, arguments, environ) == 0)
        waitpid(child, &status, 0);
    return status;
}

template <typename function>
void for_every_register(function visit)
{
    for (const saved_chip& saved : CHIPS) {
        for (reg_bf_group* reg = saved.chip->regs; reg->name != nullptr; ++reg)
            visit(saved.chip, reg);
    }
}

/* As after the start of the process: no field set, FPGA, display controller and CVER not valid. */
void forget(const chip_regs*, reg_bf_group* reg)
{
    reg->value = 0;
    make_bitfield_value(reg);
    reg->valid = reg->size == 8 && strcmp(reg->name, "CVER") != 0 ? 1 : 0;
}

class saved_files : public testing::Test
{
protected:
    void SetUp() override
    {
        char name[] = "/tmp/tst_saved_files_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
        for (const saved_chip& saved : CHIPS)
            config_init(saved.chip->config);
        for_every_register([this](const chip_regs* chip, reg_bf_group* reg) { fill(chip, reg); });
        for (const saved_chip& saved : CHIPS)
            ASSERT_EQ(0, write_config_to_file(saved.chip, path(saved.file).c_str(), 0));
        std::filesystem::copy(HALDEND_REGISTER_FILES, backup());
    }
    void TearDown() override
    {
        for (const saved_chip& saved : CHIPS)
            config_destroy(saved.chip->config);
        std::filesystem::remove_all(folder);
        std::filesystem::remove_all(backup());
    }

    /* The folder of the copies in the document. */
    std::string backup() const { return folder + ".backup"; }

    /* A value of its own for every register, 0 in the fields that no file can name. */
    void fill(const chip_regs* chip, reg_bf_group* reg)
    {
        number = number * 1103515245 + 12345;
        set_reg_value_by_name(chip, reg->name, number);
        for (reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            bf->value = strcmp(bf->name, "res##id") == 0 ? 0 : bf->value;
        make_reg_value(reg);
        values[reg] = reg->value;
    }

    std::string path(const char* file) const { return folder + "/" + file; }

    int read(const saved_chip& saved) const
    {
        return read_config_from_file(saved.chip, path(saved.file).c_str(), 1);
    }

    std::string folder;
    uint32_t number = 1;
    std::map<const reg_bf_group*, uint32_t> values;
};

TEST_F(saved_files, of_the_display_controller_stop_the_reader_at_the_reserved_fields)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, read(CHIPS[0]));
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ(0u, printed.find("Errormessage in configfile: " + path("lime.cnf") + ", Linenumber:"));
    EXPECT_NE(std::string::npos, printed.find("\nsyntax error\n"));
}

TEST_F(saved_files, of_decoder_and_encoder_set_all_fields_to_0)
{
    EXPECT_EQ(0, read(CHIPS[2]));
    EXPECT_EQ(0, read(CHIPS[3]));
    for_every_register([](const chip_regs*, const reg_bf_group* reg) {
        if (reg->size == 8) {
            EXPECT_EQ(0u, reg->value) << reg->name;
        }
    });
}

TEST_F(saved_files, come_back_after_the_documented_repair)
{
    ASSERT_EQ(0, run(documented_commands(folder)));
    for_every_register(forget);
    for (const saved_chip& saved : CHIPS)
        EXPECT_EQ(0, read(saved)) << contents(path(saved.file));
    for_every_register([this](const chip_regs*, const reg_bf_group* reg) {
        if (reg->size != 8) {
            EXPECT_EQ(values[reg], reg->value) << reg->name;
            EXPECT_EQ(1, reg->valid) << reg->name;
        }
    });
}

TEST_F(saved_files, of_decoder_and_encoder_are_those_of_before_after_the_documented_repair)
{
    ASSERT_EQ(0, run(documented_commands(folder)));
    for (const char* file : {"saa7113.cnf", "saa7129.cnf"}) {
        EXPECT_NE("", contents(path(file)));
        EXPECT_EQ(contents(backup() + "/" + file), contents(path(file)));
    }
}

TEST_F(saved_files, keep_what_was_changed_by_hand_when_repaired_again)
{
    ASSERT_EQ(0, run(documented_commands(folder)));
    ASSERT_EQ(0, run("sed -i 's/vsci = .*/vsci = 7;/' " + path("lime.cnf")));
    ASSERT_EQ(0, run(documented_commands(folder)));
    EXPECT_EQ(0, read(CHIPS[0]));
    uint32_t scale = 0;
    EXPECT_EQ(1, get_bitfield_by_name(&crp_lime, "CSC", "vsci", &scale));
    EXPECT_EQ(7u, scale);
    const reg_bf_group* window = search_reg_bf_group_by_name(&crp_lime, "L1WWH");
    EXPECT_EQ(values[window], window->value);
}

} // namespace
