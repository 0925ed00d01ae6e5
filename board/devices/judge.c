/* SPDX-License-Identifier: MIT */
/* Judging: notes in the board, a line each, every operation that no program for this board may do to its
 * devices.
 *
 * A correct operation costs one look into a table. The file stops growing at some length, because a program
 * may repeat the same wrong operation for ever.
 */
#include "board/devices/devices.h"
#include "board/judge/map.h"

enum { REGISTER_BYTES = 4, JUDGEMENT_BYTES = 65536 };

/* Writes the line. reason is null if the line ends with it already. */
static void note(const struct board* board, struct line* line, const char* reason)
{
    if (reason != NULL) {
        line_text(line, ": ");
        line_text(line, reason);
    }
    line_text(line, "\n");
    line_append(line, board, BOARD_JUDGEMENTS, JUDGEMENT_BYTES);
}

/* The bits that the register declares; 0 if there is no register. */
static uint32_t declared_bits(uint32_t address)
{
#define INDEX(address)         (((address)-MAP_FPGA_REGISTERS_BEGIN) / REGISTER_BYTES)
#define ELEMENT(address, bits) [INDEX(address)] = (bits),
    static const uint32_t declared[INDEX(MAP_FPGA_REGISTERS_END)] = {MAP_FPGA_REGISTERS(ELEMENT)};
    if (address < MAP_FPGA_REGISTERS_BEGIN || address >= MAP_FPGA_REGISTERS_END)
        return 0;
    uint32_t bits = declared[INDEX(address)];
    bool palette = address >= MAP_FPGA_PALETTES_BEGIN && address < MAP_FPGA_PALETTES_END;
    return bits == 0 && palette ? 0xffffffff : bits;
#undef ELEMENT
#undef INDEX
}

static const char* register_name(bool writing, unsigned bytes)
{
    if (bytes == REGISTER_BYTES)
        return writing ? "write32" : "read32";
    if (bytes == 1)
        return writing ? "write8" : "read8";
    return writing ? "write16" : "read16";
}

void judge_register(const struct board* board, bool writing, unsigned bytes, uint32_t address, uint32_t value)
{
    uint32_t declared = declared_bits(address);
    uint32_t undeclared = writing ? value & ~declared : 0;
    bool right_size = bytes == REGISTER_BYTES && address % REGISTER_BYTES == 0;
    if (right_size && declared != 0 && undeclared == 0)
        return;
    struct line line;
    line_start(&line, DEVICE_FPGA, register_name(writing, bytes));
    line_hex(&line, address, 8);
    if (bytes != REGISTER_BYTES) {
        note(board, &line, "not 32 bits wide");
    } else if (address % REGISTER_BYTES != 0) {
        note(board, &line, "not aligned");
    } else if (declared == 0) {
        note(board, &line, "no such register");
    } else {
        line_hex(&line, value, 8);
        line_text(&line, ": undeclared bits");
        line_hex(&line, undeclared, 8);
        note(board, &line, NULL);
    }
}

static bool is_fpga_memory(int64_t position, size_t count)
{
#define REGION(begin, end) {begin, end},
    static const struct {
        int64_t begin;
        int64_t end;
    } regions[] = {MAP_FPGA_MEMORY(REGION)};
#undef REGION
    for (size_t i = 0; i < sizeof regions / sizeof *regions; ++i)
        if (position >= regions[i].begin && position < regions[i].end)
            return count <= (uint64_t)(regions[i].end - position);
    return false;
}

void judge_block(const struct board* board, const char* operation, int64_t position, size_t count)
{
    if (count == 0 || is_fpga_memory(position, count))
        return;
    struct line line;
    line_start(&line, DEVICE_FPGA, operation);
    line_hex(&line, (uint64_t)position, 8);
    line_number(&line, (int64_t)count);
    note(board, &line, "not all of it is memory");
}

static bool is_i2c_register(unsigned chip, unsigned sub_address)
{
#define RANGE(chip, first, last) {chip, first, last},
    static const struct {
        unsigned chip;
        unsigned first;
        unsigned last;
    } ranges[] = {MAP_I2C_REGISTERS(RANGE)};
#undef RANGE
    for (size_t i = 0; i < sizeof ranges / sizeof *ranges; ++i)
        if (chip == ranges[i].chip && sub_address >= ranges[i].first && sub_address <= ranges[i].last)
            return true;
    return false;
}

void judge_byte(const struct board* board, bool writing, unsigned chip, unsigned sub_address)
{
    if (is_i2c_register(chip, sub_address))
        return;
    struct line line;
    line_start(&line, DEVICE_I2C, writing ? "write" : "read");
    line_hex(&line, chip, 2);
    line_hex(&line, sub_address, 2);
    if (chip == 0)
        note(board, &line, "no chip chosen");
    else if (chip != MAP_I2C_DECODER && chip != MAP_I2C_ENCODER)
        note(board, &line, "no such chip");
    else
        note(board, &line, "no such register");
}

void judge_request(const struct board* board, enum device device, const char* operation, uint32_t number,
                   unsigned digits, const char* reason)
{
    struct line line;
    line_start(&line, device, operation);
    line_hex(&line, number, digits);
    note(board, &line, reason);
}

void judge_operation(const struct board* board, enum device device, const char* operation, const char* reason)
{
    struct line line;
    line_start(&line, device, operation);
    note(board, &line, reason);
}
