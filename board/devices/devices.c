/* SPDX-License-Identifier: MIT */
/* The operations common to the three devices: open, close, map and block transfers, with their faults and
 * their lines in the trace.
 *
 * Registers are reached through mappings of the files. Block transfers are calls on the file itself. Both see
 * the same memory.
 */
#include "board/devices/devices.h"

#include "board/devices/requests.h"

NEXT(close, int, int)

struct device_traits {
    enum board_operation open;
    enum board_operation seek;
    enum board_operation read;
    enum board_operation write;
    enum board_operation map;
};

static const struct device_traits* traits(enum device device)
{
    static const struct device_traits all[DEVICE_COUNT] = {
        [DEVICE_FPGA] = {BOARD_OPERATION_FPGA_OPEN,  BOARD_OPERATION_FPGA_SEEK, BOARD_OPERATION_FPGA_READ,
                         BOARD_OPERATION_FPGA_WRITE, BOARD_OPERATION_NONE},
        [DEVICE_LIME] = {.open = BOARD_OPERATION_LIME_OPEN, .map = BOARD_OPERATION_LIME_MAP},
        [DEVICE_I2C] = {.open = BOARD_OPERATION_I2C_OPEN     },
    };
    return &all[device];
}

static int64_t device_bytes(enum device device)
{
    return device == DEVICE_FPGA ? (int64_t)BOARD_FPGA_BYTES : (int64_t)board_lime_bytes();
}

/* --- Open, close, map --- */

int device_open(enum device device, int descriptor)
{
    const struct board* board = board_current();
    int error = fault_take(board, traits(device)->open, NULL);
    if (tracing(board)) {
        struct line line;
        line_start(&line, device, "open");
        if (error == 0) {
            line_text(&line, " =");
            line_number(&line, descriptor);
        }
        line_finish(&line, board, error);
    }
    if (error == 0) {
        if (device == DEVICE_FPGA)
            position_begin(descriptor);
        return descriptor;
    }
    descriptor_forget(descriptor);
    next_close()(descriptor);
    return outcome(error);
}

void device_close(enum device device)
{
    const struct board* board = board_current();
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, "close");
    line_finish(&line, board, 0);
}

int device_map(enum device device)
{
    return fault_take(board_current(), traits(device)->map, NULL);
}

void device_mapped(enum device device, size_t length, int error)
{
    const struct board* board = board_current();
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, "map");
    line_number(&line, (int64_t)length);
    line_finish(&line, board, error);
}

/* --- Block transfers --- */

static void trace_transfer(const struct board* board, enum device device, const char* operation, size_t count,
                           const void* buffer, ssize_t result)
{
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, operation);
    line_number(&line, (int64_t)count);
    if (result >= 0) {
        line_text(&line, " =");
        line_number(&line, result);
    }
    if (result > 0)
        line_bytes(&line, buffer, (size_t)result);
    line_finish(&line, board, result < 0 ? errno : 0);
}

int64_t device_seek(enum device device, int descriptor, int64_t offset, int whence)
{
    const struct board* board = board_current();
    int error = device == DEVICE_I2C ? ESPIPE : fault_take(board, traits(device)->seek, NULL);
    int64_t position = error == 0 ? position_seek(descriptor, offset, whence) : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, "seek", "no such operation");
    if (tracing(board)) {
        struct line line;
        line_start(&line, device, "seek");
        if (position < 0 && offset < 0)
            line_number(&line, offset);
        else
            line_hex(&line, (uint64_t)(position < 0 ? offset : position), 8);
        line_finish(&line, board, position < 0 ? errno : 0);
    }
    return position;
}

static const char* transfer_name(enum device device, bool writing)
{
    if (device == DEVICE_I2C)
        return writing ? "send" : "receive";
    return writing ? "write" : "read";
}

/* Judges a transfer before it moves the position. Returns the position. */
static int64_t judge_transfer(const struct board* board, enum device device, int descriptor, bool writing,
                              size_t count)
{
    int64_t position = position_of(descriptor);
    if (device == DEVICE_FPGA)
        judge_block(board, transfer_name(device, writing), position, count);
    return position;
}

static ssize_t read_inside(const struct board* board, enum device device, int descriptor, void* buffer,
                           size_t count)
{
    judge_transfer(board, device, descriptor, false, count);
    return position_read(descriptor, buffer, count);
}

ssize_t device_read(enum device device, int descriptor, void* buffer, size_t count)
{
    const struct board* board = board_current();
    bool shortened = false;
    int error = device == DEVICE_I2C ? EOPNOTSUPP : fault_take(board, traits(device)->read, &shortened);
    ssize_t result = error == 0
                         ? read_inside(board, device, descriptor, buffer, shortened ? count / 2 : count)
                         : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, transfer_name(device, false), "no such operation");
    trace_transfer(board, device, transfer_name(device, false), count, buffer, result);
    return result;
}

/* A device has an end, while a write behind the end of its file would make the file grow. */
static ssize_t write_inside(const struct board* board, enum device device, int descriptor, const void* buffer,
                            size_t count)
{
    int64_t room = device_bytes(device) - judge_transfer(board, device, descriptor, true, count);
    if (count > 0 && room <= 0)
        return outcome(ENOSPC);
    return position_write(descriptor, buffer, (uint64_t)room < count ? (size_t)room : count);
}

ssize_t device_write(enum device device, int descriptor, const void* buffer, size_t count)
{
    const struct board* board = board_current();
    bool shortened = false;
    int error = device == DEVICE_I2C ? EOPNOTSUPP : fault_take(board, traits(device)->write, &shortened);
    ssize_t result = error == 0
                         ? write_inside(board, device, descriptor, buffer, shortened ? count / 2 : count)
                         : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, transfer_name(device, true), "no such operation");
    trace_transfer(board, device, transfer_name(device, true), count, buffer, result);
    return result;
}

/* --- Requests --- */

int device_ioctl(enum device device, int descriptor, uint32_t request, void* argument)
{
    const struct board* board = board_current();
    switch (device) {
    case DEVICE_FPGA:
        return fpga_ioctl(board, request, argument);
    case DEVICE_I2C:
        return i2c_ioctl(board, descriptor, request, argument);
    default:
        return request_refuse(board, device, "ioctl", request, 8, ENOTTY);
    }
}
