/* SPDX-License-Identifier: MIT */
/* The register model: names, composing, splitting, reading and writing. */
#include "regdb/config_mirror.h"
#include "tests/unit/regdb/small_chip.h"

#include <string>
#include <vector>

namespace
{

using lines = std::vector<std::string>;
using registers = small_chip;

TEST_F(registers, are_found_whatever_the_case)
{
    EXPECT_EQ(&regs[0], search_reg_bf_group_by_name(&chip, "sric"));
    EXPECT_EQ(&bf_sric[1], search_reg_bf_by_name(&regs[0], "SINR"));
    EXPECT_EQ(nullptr, search_reg_bf_group_by_name(&chip, "SRI"));
    EXPECT_EQ(nullptr, search_reg_bf_by_name(&regs[0], ""));
}

TEST_F(registers, unknown_names_change_nothing)
{
    uint32_t out = 42;
    EXPECT_EQ(-1, get_bitfield_by_name(&chip, "NONE", "sinr", &out));
    EXPECT_EQ(-1, get_bitfield_by_name(&chip, "SRIC", "none", &out));
    EXPECT_EQ(42u, out);
    EXPECT_EQ(-1, set_bitfield_by_name(&chip, "NONE", "sinr", 1));
    EXPECT_EQ(-1, set_bitfield_by_name(&chip, "SRIC", "none", 1));
    EXPECT_EQ(-1, set_reg_value_by_name(&chip, "NONE", 1));
    EXPECT_EQ(-1, write_reg_by_name(&chip, "NONE"));
    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, read_reg_by_name(&chip, "NONE"));
    EXPECT_EQ("read_reg_by_name-> Register-Name not found\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(0, config_setting_length(config_root_setting(&config)));
    EXPECT_EQ(lines{}, chip_log);
}

/* A file may have the fields in any order, and others between them. */
TEST_F(registers, are_mirrored_by_the_names_of_their_fields)
{
    ASSERT_EQ(CONFIG_TRUE,
              config_read_string(&config, "SRIC: { rinr = 1; other = 2; sinr = 3; res1 = 4; };"));
    chip_memory[0] = 0x00050607;
    read_reg_by_name(&chip, "SRIC");
    EXPECT_EQ(5, mirrored("SRIC.res1"));
    EXPECT_EQ(6, mirrored("SRIC.sinr"));
    EXPECT_EQ(7, mirrored("SRIC.rinr"));
    EXPECT_EQ(2, mirrored("SRIC.other"));
    EXPECT_EQ(4, config_setting_length(config_lookup(&config, "SRIC")));
}

TEST_F(registers, are_not_mirrored_without_a_chip_or_a_configuration)
{
    const chip_regs without = {nullptr, regs, read_small_chip, write_small_chip};
    EXPECT_EQ(0, update_config_setting_from_reg(nullptr, &regs[0]));
    EXPECT_EQ(0, update_config_setting_from_reg(&without, &regs[0]));
    EXPECT_EQ(1, update_config_setting_from_reg(&chip, &regs[0]));
}

TEST_F(registers, of_one_field_of_32_bits_are_that_field)
{
    reg_bf whole[2] = {
        {"all",   0x80000002, 32, ""},
        {nullptr, 0,          0,  ""}
    };
    reg_bf_group reg = {'X', 0, "ALL", 32, 0, whole, 0, ""};
    make_reg_value(&reg);
    EXPECT_EQ(0x80000002u, reg.value);
}

TEST_F(registers, of_other_widths_keep_their_fields)
{
    bf_odd[0].value = 42;
    regs[3].value = 0x12345678;
    make_bitfield_value(&regs[3]);
    EXPECT_EQ(42u, bf_odd[0].value);
}

TEST_F(registers, of_32_bits_are_composed_first_field_first)
{
    bf_sric[1].value = 3;
    bf_sric[2].value = 5;
    EXPECT_EQ(1, make_reg_value(&regs[0]));
    EXPECT_EQ(0x00000305u, regs[0].value);
}

TEST_F(registers, narrow_ones_live_in_the_most_significant_bits)
{
    bf_half[0].value = 0xa;
    bf_half[1].value = 0xbcd;
    regs[1].value = 0xffffffff;
    make_reg_value(&regs[1]);
    EXPECT_EQ(0xabcd0000u, regs[1].value);
    EXPECT_EQ(0xabcdu, reg_value(&regs[1]));
    bf_byte[0].value = 1;
    bf_byte[1].value = 2;
    make_reg_value(&regs[2]);
    EXPECT_EQ(0x82000000u, regs[2].value);
    EXPECT_EQ(0x82u, reg_value(&regs[2]));
}

TEST_F(registers, a_value_too_large_spills_into_the_fields_before)
{
    EXPECT_EQ(1, set_bitfield_by_name(&chip, "SRIC", "sinr", 0x1ff));
    EXPECT_EQ(1u, field("SRIC", "res1"));
    EXPECT_EQ(0xffu, field("SRIC", "sinr"));
    EXPECT_EQ(0x0001ff00u, value("SRIC"));
    // The mirror has the given value.
    EXPECT_EQ(0x1ff, mirrored("SRIC.sinr"));
}

TEST_F(registers, values_are_kept_to_their_width)
{
    set_bitfield_by_name(&chip, "BYTE", "top", 0xff);
    EXPECT_EQ(0x80000000u, value("BYTE"));
    EXPECT_EQ(1u, field("BYTE", "top"));
    set_bitfield_by_name(&chip, "SRIC", "res1", 0xffffffff);
    EXPECT_EQ(0xffff0000u, value("SRIC"));
}

TEST_F(registers, are_split_first_field_first)
{
    regs[0].value = 0x12345678;
    make_bitfield_value(&regs[0]);
    EXPECT_EQ(0x1234u, bf_sric[0].value);
    EXPECT_EQ(0x56u, bf_sric[1].value);
    EXPECT_EQ(0x78u, bf_sric[2].value);
    regs[1].value = 0xabcdffff;
    make_bitfield_value(&regs[1]);
    EXPECT_EQ(0xau, bf_half[0].value);
    EXPECT_EQ(0xbcdu, bf_half[1].value);
    regs[2].value = 0x83ffffff;
    make_bitfield_value(&regs[2]);
    EXPECT_EQ(1u, bf_byte[0].value);
    EXPECT_EQ(3u, bf_byte[1].value);
}

TEST_F(registers, surplus_fields_get_zeros_and_missing_ones_lose_bits)
{
    bf_byte[1].len = 9;
    regs[2].value = 0xffffffff;
    make_bitfield_value(&regs[2]);
    EXPECT_EQ(0x7fu << 2, bf_byte[1].value);
    bf_byte[1].len = 3;
    regs[2].value = 0xff000000;
    make_bitfield_value(&regs[2]);
    EXPECT_EQ(7u, bf_byte[1].value);
}

TEST_F(registers, fields_of_32_bits_and_more_compose_without_harm)
{
    bf_sric[2].len = 32;
    bf_sric[1].value = 0xff;
    bf_sric[2].value = 0x89abcdef;
    make_reg_value(&regs[0]);
    EXPECT_EQ(0x89abcdefu, regs[0].value);
    bf_sric[2].len = 255;
    make_bitfield_value(&regs[0]);
    EXPECT_EQ(0u, bf_sric[2].value);
}

TEST_F(registers, of_other_widths_are_skipped)
{
    make_bitfield_value(&regs[3]);
    EXPECT_EQ(7u, regs[3].value);
    EXPECT_EQ(0u, reg_value(&regs[3]));
    EXPECT_EQ(0u, bf_odd[0].value);
    bf_odd[0].value = 3;
    EXPECT_EQ(1, make_reg_value(&regs[3]));
    EXPECT_EQ(0u, regs[3].value);
    regs[3].value = 7;
    EXPECT_EQ(1, set_reg_value_by_name(&chip, "ODD", 0x12345678));
    EXPECT_EQ(7u, regs[3].value);
}

TEST_F(registers, set_by_value_take_narrow_values_from_the_top)
{
    EXPECT_EQ(1, set_reg_value_by_name(&chip, "BYTE", 0x12000000));
    EXPECT_EQ(0x12u, reg_value(&regs[2]));
    EXPECT_EQ(0x12u, field("BYTE", "bottom"));
    set_reg_value_by_name(&chip, "BYTE", 0x12);
    EXPECT_EQ(0u, reg_value(&regs[2]));
    set_reg_value_by_name(&chip, "HALF", 0xabcd1234);
    EXPECT_EQ(0xabcdu, reg_value(&regs[1]));
    set_reg_value_by_name(&chip, "SRIC", 0x12345678);
    EXPECT_EQ(0x12345678u, value("SRIC"));
    EXPECT_EQ(0, regs[0].valid);
    EXPECT_EQ(-1, mirrored("SRIC.sinr"));
    EXPECT_EQ(lines{}, chip_log);
}

TEST_F(registers, a_set_field_makes_its_register_valid_and_writes_nothing)
{
    set_bitfield_by_name(&chip, "sric", "RINR", 5);
    EXPECT_EQ(1, regs[0].valid);
    EXPECT_EQ(lines{}, chip_log);
    // In the mirror under the names that were given.
    EXPECT_EQ(5, mirrored("sric.RINR"));
}

TEST_F(registers, a_write_sends_the_composition_of_the_fields)
{
    regs[2].value = 0x55000000;
    EXPECT_EQ(1, write_reg(&chip, &regs[2]));
    EXPECT_EQ(0u, chip_memory[2]);
    bf_byte[1].value = 9;
    EXPECT_EQ(1, write_reg_by_name(&chip, "byte"));
    EXPECT_EQ(0x09000000u, chip_memory[2]);
}

TEST_F(registers, invalid_ones_are_not_written_without_a_word)
{
    EXPECT_EQ(1, write_reg(&chip, &regs[0]));
    EXPECT_EQ(lines{}, chip_log);
}

TEST_F(registers, are_all_written_and_read_in_table_order)
{
    regs[0].valid = 1;
    EXPECT_EQ(0, write_all_regs(&chip));
    EXPECT_EQ((lines{"write SRIC", "write BYTE", "write ODD"}), chip_log);
    chip_log.clear();
    EXPECT_EQ(0, read_all_regs(&chip));
    EXPECT_EQ((lines{"read SRIC", "read HALF", "read BYTE", "read ODD"}), chip_log);
}

TEST_F(registers, a_read_is_split_and_mirrored)
{
    chip_memory[0] = 0x00000305;
    EXPECT_EQ(1, read_reg_by_name(&chip, "sric"));
    EXPECT_EQ(3u, field("SRIC", "sinr"));
    EXPECT_EQ(3, mirrored("SRIC.sinr"));
    EXPECT_EQ(5, mirrored("SRIC.rinr"));
    EXPECT_EQ(0, mirrored("SRIC.res1"));
}

TEST_F(registers, of_a_chip_without_access_functions_are_left)
{
    chip.read = nullptr;
    chip.write = nullptr;
    EXPECT_EQ(-1, read_reg(&chip, &regs[0]));
    EXPECT_EQ(-1, read_all_regs(&chip));
    EXPECT_EQ(-1, write_reg(&chip, &regs[0]));
    EXPECT_EQ(0, write_all_regs(&chip));
}

TEST_F(registers, a_destroyed_configuration_is_made_anew)
{
    config_destroy(&config);
    EXPECT_EQ(nullptr, search_config_bf_group_by_name(&chip, "SRIC"));
    EXPECT_EQ(nullptr, search_config_bf_by_name(nullptr, "sinr"));
    config_destroy(&config);
    EXPECT_EQ(1, set_bitfield_by_name(&chip, "SRIC", "sinr", 3));
    EXPECT_EQ(3, mirrored("SRIC.sinr"));
    config_destroy(&config);
    EXPECT_EQ(0, read_all_regs(&chip));
    EXPECT_EQ(0, mirrored("BYTE.top"));
}

TEST_F(registers, without_a_configuration_are_set_all_the_same)
{
    chip.config = nullptr;
    EXPECT_EQ(1, set_bitfield_by_name(&chip, "SRIC", "sinr", 3));
    EXPECT_EQ(1, read_reg(&chip, &regs[2]));
    EXPECT_EQ(0x00000300u, value("SRIC"));
}

TEST_F(registers, a_name_that_the_configuration_refuses_loses_no_other)
{
    bf_sric[0].name = "res##id";
    chip_memory[0] = 0x00010203;
    EXPECT_EQ(1, read_reg(&chip, &regs[0]));
    EXPECT_EQ(2, mirrored("SRIC.sinr"));
    EXPECT_EQ(3, mirrored("SRIC.rinr"));
    EXPECT_EQ(1, set_bitfield_by_name(&chip, "SRIC", "res##id", 4));
    EXPECT_EQ(0x00040203u, value("SRIC"));
}

TEST_F(registers, with_fields_that_do_not_add_up_are_named)
{
    bf_byte[1].len = 6;
    testing::internal::CaptureStderr();
    EXPECT_EQ(1, check_all_regs(&chip));
    EXPECT_EQ("bit_field_cnt and size of reg:(BYTE) are not matched\n",
              testing::internal::GetCapturedStderr());
    bf_byte[1].len = 7;
    testing::internal::CaptureStderr();
    EXPECT_EQ(0, check_all_regs(&chip));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

} // namespace
