/* SPDX-License-Identifier: MIT */
/* The video decoder's registers, with their values at the start.
 *
 * Every register is one field of eight bits, except the status byte, which is split. CVER is read-only, so it
 * starts as not valid and is written only after somebody sets it by name. The comment of a row says what its
 * value sets.
 *
 * Kept: the names and help texts as they are spelled, because register files use and show them.
 */
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

extern "C" {

constexpr reg_bf status[] = {
    {"intl",        0, 1, ""},
    {"hlvln_hlck",  0, 1, ""},
    {"fidt",        0, 1, ""},
    {"glimt",       0, 1, ""},
    {"glimb",       0, 1, ""},
    {"wipa",        0, 1, ""},
    {"copro_sltca", 0, 1, ""},
    {"rdcap_code",  0, 1, ""},
};
static_assert(fills(status, 8));
auto bf_saa7113_status = with_end(status);

auto bf_saa7113_cver = byte_field("cver", "Chip version");
auto bf_saa7113_indel = byte_field("indel", "Increment Delay");
auto bf_saa7113_ainc1 = byte_field("ainc1", "Analog input control 1");
auto bf_saa7113_ainc2 = byte_field("ainc2", "Analog input control 2");
auto bf_saa7113_ainc3 = byte_field("ainc3", "Analog input control 3");
auto bf_saa7113_ainc4 = byte_field("ainc4", "Analog input control 4");
auto bf_saa7113_hsyst = byte_field("hsyst", "H-sync start");
auto bf_saa7113_hsyso = byte_field("hsyso", "H-sync stop");
auto bf_saa7113_syctrl = byte_field("syctrl", "sync control");
auto bf_saa7113_luctrl = byte_field("luctrl", "luminance control");
auto bf_saa7113_lubr = byte_field("lubr", "luminance brightness");
auto bf_saa7113_lucon = byte_field("lucon", "luminance contrast");
auto bf_saa7113_crsat = byte_field("crsat", "chrominance saturation");
auto bf_saa7113_crhu = byte_field("crhu", "chrominance hue");
auto bf_saa7113_crctrl = byte_field("crctrl", "chrominance control");
auto bf_saa7113_crga = byte_field("crga", "chrominance gainl");
auto bf_saa7113_fdel = byte_field("fdel", "format delay");
auto bf_saa7113_octrl1 = byte_field("octrl1", "output control 1");
auto bf_saa7113_octrl2 = byte_field("octrl2", "output control 2");
auto bf_saa7113_octrl3 = byte_field("octrl3", "output control 3");
auto bf_saa7113_res14 = byte_field("res14", "reserviert 14");
auto bf_saa7113_vgst = byte_field("vgst", "V Gate start");
auto bf_saa7113_vgsp = byte_field("vgsp", "V Gate stop");
auto bf_saa7113_vgmsb = byte_field("vgmsb", "V Gate msb");
auto bf_saa7113_reg40 = byte_field("reg40", "?????");
auto bf_saa7113_reg58 = byte_field("reg58", "?????");
auto bf_saa7113_reg59 = byte_field("reg59", "?????");
auto bf_saa7113_reg5a = byte_field("reg5a", "?????");
auto bf_saa7113_reg5b = byte_field("reg5b", "?????");
auto bf_saa7113_reg5e = byte_field("reg5e", "?????");

// clang-format off
reg_bf_group regs_saa7113[] = {
    {'X', 0x00, "CVER",   8, byte_value(0x00), bf_saa7113_cver.row,   0, "Chip Version"},                 // read-only
    {'X', 0x01, "INDE1",  8, byte_value(0x08), bf_saa7113_indel.row,  1, "Incrementel delay"},            // the recommended delay
    {'X', 0x02, "AIN1",   8, byte_value(0xc0), bf_saa7113_ainc1.row,  1, "Analog input control 1"},       // filter on, composite video from AI11
    {'X', 0x03, "AIN2",   8, byte_value(0x23), bf_saa7113_ainc2.row,  1, "Analog input control 2"},       // automatic gain, long vertical blanking, bit 8 of both gains
    {'X', 0x04, "AIN3",   8, byte_value(0x00), bf_saa7113_ainc3.row,  1, "Analog input control 3"},       // gain of channel 1, bits 7-0
    {'X', 0x05, "AIN4",   8, byte_value(0x00), bf_saa7113_ainc4.row,  1, "Analog input control 4"},       // gain of channel 2, bits 7-0
    {'X', 0x06, "HSYST",  8, byte_value(0xe9), bf_saa7113_hsyst.row,  1, "Horizontal sync start"},        // -23 steps of 8 clocks
    {'X', 0x07, "HSYSO",  8, byte_value(0x0d), bf_saa7113_hsyso.row,  1, "Horizontal sync stop"},         // 13 steps of 8 clocks
    {'X', 0x08, "SYCTRL", 8, byte_value(0x98), bf_saa7113_syctrl.row, 1, "Sync Control"},                 // field rate detected, fast lock, normal noise reduction
    {'X', 0x09, "LUCTRL", 8, byte_value(0x01), bf_saa7113_luctrl.row, 1, "Luminace Control"},             // chrominance trap on, aperture factor 0.25
    {'X', 0x0a, "LUBR",   8, byte_value(0x7d), bf_saa7113_lubr.row,   1, "Luminace brightness Control"},  // 125 of 255
    {'X', 0x0b, "LUCON",  8, byte_value(0x47), bf_saa7113_lucon.row,  1, "Luminace contrast Control"},    // 71/64
    {'X', 0x0c, "CRSAT",  8, byte_value(0x7e), bf_saa7113_crsat.row,  1, "Charominance saturation"},      // 126/64
    {'X', 0x0d, "CRHU",   8, byte_value(0x00), bf_saa7113_crhu.row,   1, "Charominance hue Control"},     // 0 degrees
    {'X', 0x0e, "CRCTRL", 8, byte_value(0x01), bf_saa7113_crctrl.row, 1, "Charominance Control"},         // PAL B, G, H, I; nominal bandwidth
    {'X', 0x0f, "CRGA",   8, byte_value(0xaa), bf_saa7113_crga.row,   1, "Charominance gain Control"},    // programmed gain, the nominal one
    {'X', 0x10, "FDEL",   8, byte_value(0x00), bf_saa7113_fdel.row,   1, "Format/Delay Control"},         // no delay
    {'X', 0x11, "OCTRL1", 8, byte_value(0x1c), bf_saa7113_octrl1.row, 1, "Output Control 1"},
    {'X', 0x12, "OCTRL2", 8, byte_value(0x01), bf_saa7113_octrl2.row, 1, "Output Control 2"},
    {'X', 0x13, "OCTRL3", 8, byte_value(0x00), bf_saa7113_octrl3.row, 1, "Output Control 3"},
    {'X', 0x14, "RES14",  8, byte_value(0x00), bf_saa7113_res14.row,  1, "Reserviert 14"},                // reserved
    {'X', 0x15, "VGST",   8, byte_value(0x00), bf_saa7113_vgst.row,   1, "V Gate start"},
    {'X', 0x16, "VGSP",   8, byte_value(0x00), bf_saa7113_vgsp.row,   1, "V Gate stop"},
    {'X', 0x17, "VGMSB",  8, byte_value(0x00), bf_saa7113_vgmsb.row,  1, "V Gate MSB"},
    {'X', 0x1f, "SBVD",   8, byte_value(0x00), bf_saa7113_status.row, 1, "Status Byte Video Decoder"},
    {'X', 0x40, "REG40",  8, byte_value(0x02), bf_saa7113_reg40.row,  1, "Reg 0x40"},
    {'X', 0x58, "REG58",  8, byte_value(0x00), bf_saa7113_reg58.row,  1, "Reg 0x58"},
    {'X', 0x59, "REG59",  8, byte_value(0x54), bf_saa7113_reg59.row,  1, "Reg 0x59"},
    {'X', 0x5a, "REG5A",  8, byte_value(0x07), bf_saa7113_reg5a.row,  1, "Reg 0x5a"},
    {'X', 0x5b, "REG5B",  8, byte_value(0x83), bf_saa7113_reg5b.row,  1, "Reg 0x5b"},
    {'X', 0x5e, "REG5E",  8, byte_value(0x00), bf_saa7113_reg5e.row,  1, "Reg 0x5e"},
    end_of_table,
};
// clang-format on
static_assert(std::size(regs_saa7113) == 31 + 1, "31 registers and the end of the table");
}
