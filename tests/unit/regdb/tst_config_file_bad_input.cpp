/* SPDX-License-Identifier: MIT */
/* Register files that are wrong, or strange, on the chips' own tables. The results are the configuration
 * library's; none may end the process, or leave a value in a field that is too large for it.
 */
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/config_guard.h"
#include "regdb/config_mirror.h"
#include "regdb/registers.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

/* Whether our own streams can't be made, as without memory. The library's can. */
static bool streams_fail;

extern "C" {
FILE* __real_fdopen(int descriptor, const char* mode);
FILE* __wrap_fdopen(int descriptor, const char* mode);

FILE* __wrap_fdopen(int descriptor, const char* mode)
{
    if (!streams_fail)
        return __real_fdopen(descriptor, mode);
    errno = ENOMEM;
    return nullptr;
}
}

namespace
{

/* The parts of a table that change at run time. */
std::vector<uint32_t> table_of(const chip_regs& chip)
{
    std::vector<uint32_t> numbers;
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg) {
        numbers.insert(numbers.end(), {reg->value, reg->valid});
        for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            numbers.push_back(bf->value);
    }
    return numbers;
}

bool fields_fit(const chip_regs& chip)
{
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
        for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            if ((uint64_t{bf->value} >> bf->len) != 0)
                return false;
    return true;
}

std::ptrdiff_t open_descriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class bad_register_file : public testing::Test
{
protected:
    void SetUp() override
    {
        char name[] = "/tmp/tst_config_file_bad_input_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
        config_init(chip.config);
        for (reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg) {
            set_reg_value_by_name(&chip, reg->name, 0);
            reg->valid = 0;
        }
        set_bitfield_by_name(&chip, "SRIC", "sinr", 0x11);
        set_bitfield_by_name(&chip, "SRIC", "rinr", 0x22);
    }
    void TearDown() override
    {
        config_destroy(chip.config);
        std::filesystem::remove_all(folder);
    }

    std::string path(const char* name = "fpga.cnf") const { return folder + "/" + name; }

    std::string make(const std::string& text, const char* name = "fpga.cnf") const
    {
        std::ofstream(path(name)) << text;
        return path(name);
    }

    /* Reads and applies; stores the printed lines. */
    int read(const std::string& file)
    {
        testing::internal::CaptureStderr();
        const int result = read_config_from_file(&chip, file.c_str(), 1);
        printed = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(fields_fit(chip));
        return result;
    }

    /* The line is 0 for faults outside of the text. */
    void expect_failure(const std::string& file, int line, const std::string& text)
    {
        const std::vector<uint32_t> before = table_of(chip);
        EXPECT_EQ(-1, read(file));
        EXPECT_EQ("Errormessage in configfile: " + file + ", Linenumber:" + std::to_string(line) + "\n" +
                      text + "\n",
                  printed);
        EXPECT_EQ(before, table_of(chip));
    }

    void expect_unreadable(const std::string& file) { expect_failure(file, 0, "file I/O error"); }

    void expect_error(const std::string& contents, int line, const std::string& text = "syntax error")
    {
        expect_failure(make(contents), line, text);
    }

    /* The value of sinr after it was set to the given one. */
    uint32_t taken(const std::string& value)
    {
        EXPECT_EQ(0, read(make("SRIC: { sinr = " + value + "; };\n"))) << value << '\n' << printed;
        return field("SRIC", "sinr");
    }

    uint32_t field(const char* reg, const char* bf)
    {
        uint32_t value = 0xdeadbeef;
        EXPECT_EQ(1, get_bitfield_by_name(&chip, reg, bf, &value));
        return value;
    }

    const chip_regs& chip = crp_fpga;
    std::string folder;
    std::string printed;
};

TEST_F(bad_register_file, below_a_file_can_not_be_read)
{
    expect_unreadable(make("") + "/fpga.cnf");
}

TEST_F(bad_register_file, that_is_a_link_to_nothing_can_not_be_read)
{
    std::filesystem::create_symlink("absent", path());
    expect_unreadable(path());
}

TEST_F(bad_register_file, that_is_a_link_to_itself_can_not_be_read)
{
    std::filesystem::create_symlink("fpga.cnf", path());
    expect_unreadable(path());
}

TEST_F(bad_register_file, without_a_name_can_not_be_read)
{
    expect_unreadable("");
}

TEST_F(bad_register_file, with_a_name_that_is_too_long_can_not_be_read)
{
    expect_unreadable(path(std::string(300, 'x').c_str()));
}

TEST_F(bad_register_file, that_breaks_off_in_its_medium_can_not_be_read)
{
    /* Opens like any file, and gives an error for its first byte. */
    expect_unreadable("/proc/self/mem");
}

TEST_F(bad_register_file, that_includes_one_that_breaks_off_can_not_be_read)
{
    expect_unreadable(make("SRIC: { sinr = 1; };\n@include \"/proc/self/mem\"\n"));
}

TEST_F(bad_register_file, without_memory_for_its_stream_can_not_be_read)
{
    const std::string file = make("SRIC: { sinr = 1; };\n");
    streams_fail = true;
    expect_unreadable(file);
    streams_fail = false;
}

TEST_F(bad_register_file, is_closed_again)
{
    const std::ptrdiff_t before = open_descriptors();
    expect_unreadable(make("@include \"/\"\n"));
    expect_unreadable("/proc/self/mem");
    expect_error("SRIC: { sinr = ; };\n", 1);
    EXPECT_EQ(0, read(make("SRIC: { sinr = 1; };\n")));
    EXPECT_EQ(before, open_descriptors());
}

TEST_F(bad_register_file, of_blanks_alone_changes_nothing)
{
    const std::vector<uint32_t> before = table_of(chip);
    EXPECT_EQ(0, read(make(" \t\r\n\n")));
    EXPECT_EQ(before, table_of(chip));
}

TEST_F(bad_register_file, truncated_at_any_byte_is_applied_or_changes_nothing)
{
    const std::string whole =
        "# FPGA\nctrl: { por = 2; fgon = 0x1; /* on */ };\nFGCC = { col : 0x123456, fgm = 1 };\n"
        "SRIC: { sinr = \"3\"; rinr = 300L; };\nTESZ: { tesh = 1.5; tesv = [1]; };\n";
    int failures = 0;
    for (size_t length = 0; length <= whole.size(); ++length) {
        const std::vector<uint32_t> before = table_of(chip);
        const int result = read(make(whole.substr(0, length)));
        EXPECT_EQ(result == 0, printed.empty()) << length;
        EXPECT_TRUE(result == 0 || before == table_of(chip)) << length;
        failures += result == 0 ? 0 : 1;
    }
    EXPECT_LT(50, failures);
    EXPECT_EQ(0x123456u, field("FGCC", "col"));
}

TEST_F(bad_register_file, with_values_of_another_type_sets_0)
{
    for (const char* value : {"3.7", "1e3", "true", "\"3\"", "\"3\" \"4\"", "[ 3 ]", "[ ]", "( 3 )", "( )",
                              "{ }", "{ sinr = 3; }"}) {
        EXPECT_EQ(0x55u, taken("0x55"));
        EXPECT_EQ(0u, taken(value)) << value;
    }
}

TEST_F(bad_register_file, takes_integers_in_all_their_forms)
{
    EXPECT_EQ(16u, taken("0x10"));
    EXPECT_EQ(16u, taken("0X10"));
    EXPECT_EQ(10u, taken("010"));
    EXPECT_EQ(8u, taken("08"));
    EXPECT_EQ(5u, taken("+5"));
    EXPECT_EQ(0xfbu, taken("-5"));
    EXPECT_EQ(0u, taken("-2147483648"));
    EXPECT_EQ(0xffu, taken("0xffffffff"));
}

TEST_F(bad_register_file, takes_long_integers_if_32_bits_hold_them)
{
    EXPECT_EQ(5u, taken("5L"));
    EXPECT_EQ(0xffu, taken("0xffL"));
    EXPECT_EQ(0xfbu, taken("-5L"));
    EXPECT_EQ(0u, taken("4294967295L"));
    EXPECT_EQ(0u, taken("0xffffffffL"));
    EXPECT_EQ(0u, taken("9223372036854775807L"));
}

TEST_F(bad_register_file, with_numbers_beyond_any_type_sets_what_fits)
{
    EXPECT_GE(0xffu, taken("99999999999999999999"));
    EXPECT_GE(0xffu, taken("-99999999999999999999"));
    EXPECT_GE(0xffu, taken("0x1ffffffffffffffff"));
    EXPECT_GE(0xffu, taken("99999999999999999999L"));
}

TEST_F(bad_register_file, spills_what_is_too_large_into_the_field_before)
{
    EXPECT_EQ(0xffu, taken("0x1ff"));
    EXPECT_EQ(1u, field("SRIC", "res1"));
}

TEST_F(bad_register_file, with_numbers_that_are_none_is_an_error)
{
    for (const char* value : {"", "0b1", "1.2.3", "- 5", "five", "0x", "1 2", "SRIC", "'3'"})
        expect_error(std::string("\nSRIC: { sinr = ") + value + "; };\n", 2);
}

TEST_F(bad_register_file, with_a_field_twice_is_an_error)
{
    expect_error("SRIC: {\nsinr = 1;\nsinr = 2; };\n", 3, "duplicate setting name");
}

TEST_F(bad_register_file, with_a_register_twice_in_other_letters_applies_both)
{
    EXPECT_EQ(0, read(make("SRIC: { sinr = 1; SINR = 2; };\nsric: { rinr = 3; };\n")));
    EXPECT_EQ(2u, field("SRIC", "sinr"));
    EXPECT_EQ(3u, field("SRIC", "rinr"));
}

TEST_F(bad_register_file, with_registers_deeper_than_the_top_skips_them)
{
    EXPECT_EQ(0,
              read(make("all: { SRIC: { sinr = 1; }; };\nlist = ( { sinr = 2; }, ( { SRIC = 3; } ) );\n")));
    EXPECT_EQ(0x11u, field("SRIC", "sinr"));
}

TEST_F(bad_register_file, with_a_register_that_is_no_group_skips_it)
{
    EXPECT_EQ(0, read(make("SRIC = 5;\nCTRL = \"text\";\nFGCC = (1, 2);\nTSXP = [1, 2];\nTEMO = { };\n")));
    EXPECT_EQ(0x11u, field("SRIC", "sinr"));
    EXPECT_EQ(0u, field("FGCC", "col"));
}

/* Fields are mirrored repeatedly as long as the daemon runs. */
TEST_F(bad_register_file, with_a_list_for_a_register_is_not_added_to)
{
    EXPECT_EQ(0, read(make("SRIC = ();\nCTRL = [];\n")));
    for (const char* name : {"SRIC", "CTRL"}) {
        EXPECT_EQ(1, update_config_setting_from_reg(&chip, search_reg_bf_group_by_name(&chip, name)));
        EXPECT_EQ(1, set_bitfield_by_name(&chip, name, "res1", 0));
        EXPECT_EQ(0, config_setting_length(search_config_bf_group_by_name(&chip, name)));
    }
}

TEST_F(bad_register_file, with_a_number_sign_in_a_name_is_an_error)
{
    expect_error("SRIC: {\nres##id = 0;\nsinr = 1; };\n", 3);
}

TEST_F(bad_register_file, with_names_that_are_none_is_an_error)
{
    for (const char* text : {"1SRIC: { };", "SRIC.sinr = 1;", "\"SRIC\": { };", "{ sinr = 1; };",
                             "\xef\xbb\xbfSRIC: { };", "SRIC { };", "};", "\xff"})
        expect_error(text, 1);
}

TEST_F(bad_register_file, with_a_byte_0_is_an_error)
{
    expect_error(std::string("SRIC: { sinr = 1\0; };\n", 22), 1);
}

TEST_F(bad_register_file, with_a_comment_that_never_ends_has_what_is_before)
{
    EXPECT_EQ(0, read(make("SRIC: { sinr = 3; };\n/* SRIC: { rinr = 4; };\n")));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
    EXPECT_EQ(0x22u, field("SRIC", "rinr"));
}

TEST_F(bad_register_file, with_a_text_that_never_ends_is_an_error)
{
    expect_error("SRIC: { sinr = \"3; };\n", 2);
}

TEST_F(bad_register_file, of_twenty_thousand_groups_in_each_other_is_an_error)
{
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "a: {";
    expect_error(text, 1, "memory exhausted");
}

TEST_F(bad_register_file, of_a_thousand_groups_in_each_other_is_read)
{
    std::string text = "SRIC: { sinr = 3; };\n";
    for (int i = 0; i < 1000; ++i)
        text += "a: {";
    EXPECT_EQ(0, read(make(text + std::string(1000, '}'))));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
}

TEST_F(bad_register_file, with_a_name_of_hundred_thousand_letters_skips_it)
{
    EXPECT_EQ(0, read(make("SRIC: { " + std::string(100000, 'x') + " = 1; sinr = 3; };\n")));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
}

TEST_F(bad_register_file, with_ten_megabytes_of_comments_is_read)
{
    std::string comments;
    while (comments.size() < 10000000)
        comments += "# " + std::string(77, '#') + "\n// more\n/* and\n more */\n";
    EXPECT_EQ(0, read(make(comments + "SRIC: { sinr = 5; };\n")));
    EXPECT_EQ(5U, field("SRIC", "sinr"));
}

TEST_F(bad_register_file, with_a_line_that_would_take_minutes_is_refused_with_its_number)
{
    const std::string text = "line longer than 128 KiB";
    expect_error("# " + std::string(8000000, 'x') + "\nSRIC: { sinr = 5; };\n", 1, text);
    expect_error(std::string(131073, 'x'), 1, text);
    expect_error("SRIC: { sinr = 5; };\n\n# " + std::string(131071, 'x') + "\n\n", 3, text);
    expect_error(std::string(5000, '\n') + std::string(200000, ' '), 5001, text);
    make("\n#" + std::string(131072, 'x'), "inner.cnf");
    expect_error("# one\n# two\n@include \"" + path("inner.cnf") + "\"\n", 2, text);
    EXPECT_EQ(0, read(make("#" + std::string(131071, 'x') + "\nSRIC: { sinr = 6; };\n")));
    EXPECT_EQ(6U, field("SRIC", "sinr"));
}

/* The file has no blocks on its medium. The search for a line end would take very long. */
TEST_F(bad_register_file, of_one_line_of_a_gigabyte_is_refused_at_its_begin)
{
    const std::string file = make("");
    std::filesystem::resize_file(file, 1 << 30);
    expect_failure(file, 1, "line longer than 128 KiB");
}

/* The number of a closed standard input. */
TEST_F(bad_register_file, is_refused_on_descriptor_0_too)
{
    const std::string file = make(std::string(131073, 'x'));
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    int line = 0;
    errno = 0;
    EXPECT_STREQ("line longer than 128 KiB", config_file_fault(file.c_str(), &line));
    EXPECT_EQ(1, line);
    EXPECT_EQ(-1, close(STDIN_FILENO));
    if (input >= 0) {
        dup2(input, STDIN_FILENO);
        close(input);
    }
}

TEST_F(bad_register_file, that_includes_what_is_not_there_is_an_error)
{
    expect_error("SRIC: { sinr = 1; };\n@include \"" + path("absent") + "\"\n", 2,
                 "cannot open include file");
}

TEST_F(bad_register_file, that_includes_one_with_an_error_is_reported_with_the_line_of_that)
{
    make("\n\nSRIC: { sinr = ; };\n", "inner.cnf");
    expect_error("@include \"" + path("inner.cnf") + "\"\n", 3);
}

/* A name that the library reads in another way than the check. */
TEST_F(bad_register_file, that_includes_a_name_with_a_byte_0_can_not_be_read)
{
    using namespace std::string_literals;
    expect_unreadable(make("@include \"\0\\"s + folder + "\"\n"));
    expect_unreadable(make("@include \"\0\n\\"s + folder + "\"\n"));
}

TEST_F(bad_register_file, that_includes_a_name_over_two_lines_can_not_be_read)
{
    std::filesystem::create_directory(path("a\nb"));
    expect_unreadable(make("@include \"" + path("a\nb") + "\"\n"));
}

TEST_F(bad_register_file, that_includes_in_a_circle_is_an_error)
{
    make("@include \"" + path() + "\"\n", "inner.cnf");
    expect_error("@include \"" + path("inner.cnf") + "\"\n", 1, "include file nesting too deep");
}

class chain_of_includes : public bad_register_file
{
protected:
    /* The last one of so many includes has the field. */
    std::string chain(int includes) const
    {
        std::string text = "SRIC: { sinr = 3; };\n";
        for (int i = 0; i < includes; ++i)
            text = "@include \"" + make(text, ("inner" + std::to_string(i) + ".cnf").c_str()) + "\"\n";
        return make(text);
    }
};

TEST_F(chain_of_includes, of_ten_is_read)
{
    EXPECT_EQ(0, read(chain(10)));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
}

TEST_F(chain_of_includes, of_eleven_is_an_error)
{
    expect_failure(chain(11), 1, "include file nesting too deep");
}

TEST_F(bad_register_file, can_be_followed_by_a_good_one)
{
    expect_error("SRIC: {", 1);
    EXPECT_EQ(1, set_bitfield_by_name(&chip, "CTRL", "por", 1));
    EXPECT_EQ(0, read(make("SRIC: { sinr = 3; };\n")));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
}

/* Each reload initialises the configurations again and doesn't destroy the former ones: this does it at the
 * end. */
TEST(register_files, of_all_chips_are_reloaded_two_hundred_times)
{
    char name[] = "/tmp/tst_reload_XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(name));
    struct {
        const chip_regs& chip;
        const char* text;
        const char* reg;
        uint32_t value;
        std::string path;
    } files[] = {
        {crp_fpga,    "SRIC: { sinr = 3; rinr = 5; };", "SRIC",    0x00000305, {}},
        {crp_lime,    "DLS: { dls1 = 1; dls0 = 2; };",  "DLS",     0x00000012, {}},
        {crp_saa7113, "AIN1: { ainc1 = 0xc2; };",       "AIN1",    0xc2000000, {}},
        {crp_saa7129, "RN_0x26: { bf_0x26 = 13; };",    "RN_0x26", 0x0d000000, {}},
    };
    for (auto& file : files) {
        file.path = std::string(name) + "/" + file.reg;
        std::ofstream(file.path) << file.text;
    }
    std::vector<config_t> lost;
    for (int reload = 0; reload < 200; ++reload) {
        for (const auto& file : files) {
            lost.push_back(*file.chip.config);
            config_init(file.chip.config);
        }
        for (const auto& file : files) {
            ASSERT_EQ(0, read_config_from_file(&file.chip, file.path.c_str(), 1)) << reload;
            ASSERT_EQ(file.value, search_reg_bf_group_by_name(&file.chip, file.reg)->value) << reload;
        }
    }
    for (config_t& config : lost)
        config_destroy(&config);
    for (const auto& file : files)
        config_destroy(file.chip.config);
    std::filesystem::remove_all(name);
}

} // namespace
