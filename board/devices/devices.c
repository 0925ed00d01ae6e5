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
        if (device == DEVICE_FPGA && !board->pass)
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

void device_mapped(enum device device, int descriptor, size_t length, int error)
{
    const struct board* board = board_current();
    if (device == DEVICE_LIME && board->pass && error == 0)
        lime_watch(board, descriptor, length);
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, "map");
    line_number(&line, (int64_t)length);
    line_finish(&line, board, error);
}

/* --- Block transfers --- */

/* A transfer that the program asked for. position: in the FPGA; negative if unknown. */
struct transfer {
    enum device device;
    const char* operation;
    int64_t position;
    size_t count;
};

static void trace_transfer(const struct board* board, const struct transfer* transfer, const void* buffer,
                           ssize_t result)
{
    if (!tracing(board))
        return;
    bool full = tracing_fully(board) && transfer->position >= 0;
    struct line line;
    line_start(&line, transfer->device, transfer->operation);
    line_number(&line, (int64_t)transfer->count);
    if (full)
        line_place(&line, (uint32_t)transfer->position, 8);
    if (result >= 0) {
        line_text(&line, " =");
        line_number(&line, result);
    }
    if (full && result > 0) {
        line_finish_bytes(&line, board, (uint32_t)transfer->position, buffer, (size_t)result);
        return;
    }
    if (result > 0)
        line_bytes(&line, buffer, (size_t)result);
    line_finish(&line, board, result < 0 ? errno : 0);
}

int64_t device_seek(enum device device, int descriptor, int64_t offset, int whence)
{
    const struct board* board = board_current();
    int error = device == DEVICE_I2C && !board->pass ? ESPIPE : fault_take(board, traits(device)->seek, NULL);
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

static struct transfer begin_transfer(enum device device, int descriptor, bool writing, size_t count)
{
    struct transfer transfer = {device, transfer_name(device, writing), -1, count};
    int saved = errno;
    if (device == DEVICE_FPGA)
        transfer.position = position_of(descriptor);
    errno = saved;
    return transfer;
}

/* Judges the transfer, but for what a fault makes fail. Returns the error number if the board refuses it. */
static int transfer_error(const struct board* board, const struct transfer* transfer,
                          enum board_operation operation, bool* shortened)
{
    if (transfer->device != DEVICE_I2C) {
        int error = fault_take(board, operation, shortened);
        size_t count = *shortened ? transfer->count / 2 : transfer->count;
        if (error == 0 && transfer->position >= 0)
            judge_block(board, transfer->operation, transfer->position, count);
        return error;
    }
    judge_operation(board, transfer->device, transfer->operation, "no such operation");
    return board->pass ? 0 : EOPNOTSUPP;
}

ssize_t device_read(enum device device, int descriptor, void* buffer, size_t count)
{
    const struct board* board = board_current();
    struct transfer transfer = begin_transfer(device, descriptor, false, count);
    bool shortened = false;
    int error = transfer_error(board, &transfer, traits(device)->read, &shortened);
    ssize_t result =
        error == 0 ? position_read(descriptor, buffer, shortened ? count / 2 : count) : outcome(error);
    trace_transfer(board, &transfer, buffer, result);
    return result;
}

/* A device has an end, while a write behind the end of its file would make the file grow. */
static ssize_t write_inside(const struct board* board, const struct transfer* transfer, int descriptor,
                            const void* buffer, size_t count)
{
    if (board->pass)
        return position_write(descriptor, buffer, count);
    int64_t room = device_bytes(transfer->device) - position_of(descriptor);
    if (count > 0 && room <= 0)
        return outcome(ENOSPC);
    ssize_t written = position_write(descriptor, buffer, (uint64_t)room < count ? (size_t)room : count);
    board_note_change(board->control);
    return written;
}

ssize_t device_write(enum device device, int descriptor, const void* buffer, size_t count)
{
    const struct board* board = board_current();
    struct transfer transfer = begin_transfer(device, descriptor, true, count);
    bool shortened = false;
    int error = transfer_error(board, &transfer, traits(device)->write, &shortened);
    ssize_t result = error == 0
                         ? write_inside(board, &transfer, descriptor, buffer, shortened ? count / 2 : count)
                         : outcome(error);
    trace_transfer(board, &transfer, buffer, result);
    return result;
}

/* --- Requests --- */

int device_ioctl(enum device device, int descriptor, uint32_t request, void* argument)
{
    const struct board* board = board_current();
    switch (device) {
    case DEVICE_FPGA:
        return fpga_ioctl(board, descriptor, request, argument);
    case DEVICE_I2C:
        return i2c_ioctl(board, descriptor, request, argument);
    default:
        return request_unknown(board, device, descriptor, request, argument, ENOTTY);
    }
}
