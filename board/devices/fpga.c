/* SPDX-License-Identifier: MIT */
/* The FPGA's requests: registers, at three widths. Memory is reached by block transfers. */
#include "board/devices/requests.h"
#include "hw/fpga_map.h"

#include <string.h>

/* Requests of the FPGA's driver, as the target's processor encodes them: the kernel's macros give other
 * numbers elsewhere. Six in a row transfer a register, in both directions, at three widths. */
enum { FPGA_TRANSFERS = 6, FPGA_WIDTHS = 3 };
static const uint32_t FPGA_READ_8 = 0xc0086b00;
static const uint32_t FPGA_PLAIN = 0x20006b07;

/* The argument of the register requests. */
struct fpga_record {
    uint32_t address;
    uint32_t value;
};
_Static_assert(sizeof(struct fpga_record) == 8, "the requests say 8 bytes");

static uint32_t load_little(const uint8_t* memory, unsigned bytes)
{
    uint32_t word = 0;
    uint16_t half = 0;
    switch (bytes) {
    case 4:
        memcpy(&word, memory, sizeof word);
        return le32toh(word);
    case 2:
        memcpy(&half, memory, sizeof half);
        return le16toh(half);
    default:
        return *memory;
    }
}

static void store_little(uint8_t* memory, unsigned bytes, uint32_t value)
{
    uint32_t word = htole32(value);
    uint16_t half = htole16((uint16_t)value);
    switch (bytes) {
    case 4:
        memcpy(memory, &word, sizeof word);
        break;
    case 2:
        memcpy(memory, &half, sizeof half);
        break;
    default:
        *memory = (uint8_t)value;
        break;
    }
}

static void fpga_store(const struct board* board, unsigned bytes, const struct fpga_record* record)
{
    store_little(board->fpga + record->address, bytes, record->value);
    if (record->address == FPGA_STORE_VIDEO && (record->value & 1) != 0)
        store_live_picture(board);
    board_note_change(board->control);
}

static int fpga_transfer(const struct board* board, bool writing, unsigned bytes, struct fpga_record* record)
{
    int error =
        fault_take(board, writing ? BOARD_OPERATION_FPGA_IOCTL_WRITE : BOARD_OPERATION_FPGA_IOCTL_READ, NULL);
    if (error != 0)
        return error;
    judge_register(board, writing, bytes, record->address, record->value);
    if (record->address > BOARD_FPGA_BYTES - bytes)
        return EINVAL;
    if (writing)
        fpga_store(board, bytes, record);
    else
        record->value = load_little(board->fpga + record->address, bytes);
    return 0;
}

static int fpga_plain(const struct board* board, int descriptor, void* argument)
{
    int result = board->pass ? request_pass(descriptor, FPGA_PLAIN, argument) : 0;
    if (tracing(board))
        request_trace(board, DEVICE_FPGA, "ioctl", FPGA_PLAIN, 8, NULL, 0, 0, result < 0 ? errno : 0);
    return result;
}

int fpga_ioctl(const struct board* board, int descriptor, uint32_t request, void* argument)
{
    static const char* const names[FPGA_TRANSFERS] = {"read8",  "read16",  "read32",
                                                      "write8", "write16", "write32"};
    struct fpga_record* record = argument;
    uint32_t number = request - FPGA_READ_8;
    if (request == FPGA_PLAIN)
        return fpga_plain(board, descriptor, argument);
    if (number >= FPGA_TRANSFERS || record == NULL)
        return request_unknown(board, DEVICE_FPGA, descriptor, request, argument,
                               number >= FPGA_TRANSFERS ? ENOTTY : EFAULT);
    bool writing = number >= FPGA_WIDTHS;
    unsigned bytes = 1u << number % FPGA_WIDTHS;
    int result = 0;
    if (board->pass) {
        judge_register(board, writing, bytes, record->address, record->value);
        result = request_pass(descriptor, request, argument);
    } else {
        result = outcome(fpga_transfer(board, writing, bytes, record));
    }
    if (tracing(board))
        request_trace(board, DEVICE_FPGA, names[number], record->address, 8,
                      writing       ? ""
                      : result >= 0 ? " ="
                                    : NULL,
                      record->value, 2 * bytes, result < 0 ? errno : 0);
    return result;
}
