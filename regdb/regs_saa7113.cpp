/* The video decoder's registers: one line a register.
 *
 * A register is one field of eight bits; only the status byte is split. CVER is read-only and so starts as
 * not valid: it is never written unless somebody sets it by name.
 */
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

/* Name, sub-address, initial value, valid, field, the register's and the field's help text. */
#define SAA7113_REGISTERS(R, STATUS)                                                    \
    R(CVER, 0x00, 0x00, 0, cver, "Chip Version", "Chip version")                        \
    R(INDE1, 0x01, 0x08, 1, indel, "Incrementel delay", "Increment Delay")              \
    R(AIN1, 0x02, 0xc0, 1, ainc1, "Analog input control 1", "Analog input control 1")   \
    R(AIN2, 0x03, 0x23, 1, ainc2, "Analog input control 2", "Analog input control 2")   \
    R(AIN3, 0x04, 0x00, 1, ainc3, "Analog input control 3", "Analog input control 3")   \
    R(AIN4, 0x05, 0x00, 1, ainc4, "Analog input control 4", "Analog input control 4")   \
    R(HSYST, 0x06, 0xe9, 1, hsyst, "Horizontal sync start", "H-sync start")             \
    R(HSYSO, 0x07, 0x0d, 1, hsyso, "Horizontal sync stop", "H-sync stop")               \
    R(SYCTRL, 0x08, 0x98, 1, syctrl, "Sync Control", "sync control")                    \
    R(LUCTRL, 0x09, 0x01, 1, luctrl, "Luminace Control", "luminance control")           \
    R(LUBR, 0x0a, 0x7d, 1, lubr, "Luminace brightness Control", "luminance brightness") \
    R(LUCON, 0x0b, 0x47, 1, lucon, "Luminace contrast Control", "luminance contrast")   \
    R(CRSAT, 0x0c, 0x7e, 1, crsat, "Charominance saturation", "chrominance saturation") \
    R(CRHU, 0x0d, 0x00, 1, crhu, "Charominance hue Control", "chrominance hue")         \
    R(CRCTRL, 0x0e, 0x01, 1, crctrl, "Charominance Control", "chrominance control")     \
    R(CRGA, 0x0f, 0xaa, 1, crga, "Charominance gain Control", "chrominance gainl")      \
    R(FDEL, 0x10, 0x00, 1, fdel, "Format/Delay Control", "format delay")                \
    R(OCTRL1, 0x11, 0x1c, 1, octrl1, "Output Control 1", "output control 1")            \
    R(OCTRL2, 0x12, 0x01, 1, octrl2, "Output Control 2", "output control 2")            \
    R(OCTRL3, 0x13, 0x00, 1, octrl3, "Output Control 3", "output control 3")            \
    R(RES14, 0x14, 0x00, 1, res14, "Reserviert 14", "reserviert 14")                    \
    R(VGST, 0x15, 0x00, 1, vgst, "V Gate start", "V Gate start")                        \
    R(VGSP, 0x16, 0x00, 1, vgsp, "V Gate stop", "V Gate stop")                          \
    R(VGMSB, 0x17, 0x00, 1, vgmsb, "V Gate MSB", "V Gate msb")                          \
    STATUS(SBVD, 0x1f, 0x00, 1, status, "Status Byte Video Decoder", "")                \
    R(REG40, 0x40, 0x02, 1, reg40, "Reg 0x40", "?????")                                 \
    R(REG58, 0x58, 0x00, 1, reg58, "Reg 0x58", "?????")                                 \
    R(REG59, 0x59, 0x54, 1, reg59, "Reg 0x59", "?????")                                 \
    R(REG5A, 0x5a, 0x07, 1, reg5a, "Reg 0x5a", "?????")                                 \
    R(REG5B, 0x5b, 0x83, 1, reg5b, "Reg 0x5b", "?????")                                 \
    R(REG5E, 0x5e, 0x00, 1, reg5e, "Reg 0x5e", "?????")

#define SAA7113_SUB_ADDRESS(name, sub, initial, valid, field, help, field_help) sub,
#define SAA7113_FIELD(name, sub, initial, valid, field, help, field_help) \
    field_array<1> bf_saa7113_##field = byte_field(#field, field_help);
#define SAA7113_FIELD_ELSEWHERE(name, sub, initial, valid, field, help, field_help)
#define SAA7113_ROW(name, sub, initial, valid, field, help, field_help) \
    {'X', sub, #name, 8, byte_value(initial), bf_saa7113_##field.row, valid, help},

extern "C" {

constexpr uint32_t sub_addresses[] = {SAA7113_REGISTERS(SAA7113_SUB_ADDRESS, SAA7113_SUB_ADDRESS)};
static_assert(std::size(sub_addresses) == 31 && ascending(sub_addresses), "a register each, in order");

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

SAA7113_REGISTERS(SAA7113_FIELD, SAA7113_FIELD_ELSEWHERE)

reg_bf_group regs_saa7113[] = {
    SAA7113_REGISTERS(SAA7113_ROW, SAA7113_ROW) end_of_table,
};
}
