/* SPDX-License-Identifier: MIT */
/* The bus of the video decoder and encoder: requests choose a chip and transfer a byte. */
#include "board/devices/requests.h"

#include <linux/i2c-dev.h>
#include <linux/i2c.h>

static int i2c_choose(const struct board* board, int descriptor, void* argument)
{
    uintptr_t slave = (uintptr_t)argument;
    int error = fault_take(board, BOARD_OPERATION_I2C_SLAVE, NULL);
    if (error == 0 && slave > 0x7f) {
        judge_request(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, "no such address");
        error = EINVAL;
    }
    int result = board->pass ? request_pass(descriptor, I2C_SLAVE, argument) : outcome(error);
    if (result >= 0 && slave <= 0x7f)
        descriptor_set_slave(descriptor, (unsigned)slave);
    if (tracing(board))
        request_trace(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, NULL, 0, 0, result < 0 ? errno : 0);
    return result;
}

/* Programs can't write the decoder's status. */
static bool read_only(unsigned chip, unsigned sub_address)
{
    return chip == SAA7113_SLAVE && sub_address == SAA7113_STATUS;
}

/* The decoder says so too when the source of the camera's picture is gone. */
static uint8_t i2c_value(const struct board* board, unsigned chip, unsigned sub_address)
{
    uint8_t value = board->i2c[chip * 256 + sub_address];
    if (!read_only(chip, sub_address))
        return value;
    int saved = errno;
    struct live live = board_live(board);
    if (!live_has_signal(&live))
        value |= SAA7113_STATUS_NO_LOCK;
    errno = saved;
    return value;
}

static int i2c_byte(const struct board* board, unsigned chip, const struct i2c_smbus_ioctl_data* transfer)
{
    bool writing = transfer->read_write == I2C_SMBUS_WRITE;
    int error = fault_take(board, writing ? BOARD_OPERATION_I2C_WRITE : BOARD_OPERATION_I2C_READ, NULL);
    if (error != 0)
        return error;
    judge_byte(board, writing, chip, transfer->command);
    if (chip != SAA7113_SLAVE && chip != SAA7129_SLAVE)
        return ENXIO;
    if (!writing) {
        transfer->data->byte = i2c_value(board, chip, transfer->command);
    } else if (!read_only(chip, transfer->command)) {
        board->i2c[chip * 256 + transfer->command] = transfer->data->byte;
        board_note_change(board->control);
    }
    return 0;
}

static void trace_byte(const struct board* board, unsigned chip, const struct i2c_smbus_ioctl_data* transfer,
                       int error)
{
    bool writing = transfer->read_write == I2C_SMBUS_WRITE;
    struct line line;
    line_start(&line, DEVICE_I2C, writing ? "write" : "read");
    line_hex(&line, transfer->command, 2);
    if (tracing_fully(board))
        line_place(&line, chip, 2);
    if (!writing && error == 0)
        line_text(&line, " =");
    if (writing || error == 0)
        line_hex(&line, transfer->data->byte, 2);
    line_finish(&line, board, error);
}

/* A transfer that is none of a byte. */
static int i2c_other_size(const struct board* board, int descriptor, struct i2c_smbus_ioctl_data* transfer)
{
    request_judge(board, DEVICE_I2C, "transfer", transfer->size, 2, EOPNOTSUPP);
    int result = board->pass ? request_pass(descriptor, I2C_SMBUS, transfer) : outcome(EOPNOTSUPP);
    if (tracing(board))
        request_trace(board, DEVICE_I2C, "transfer", transfer->size, 2, NULL, 0, 0, result < 0 ? errno : 0);
    return result;
}

static int i2c_transfer(const struct board* board, int descriptor, struct i2c_smbus_ioctl_data* transfer)
{
    if (transfer == NULL || (transfer->data == NULL && !board->pass))
        return request_unknown(board, DEVICE_I2C, descriptor, I2C_SMBUS, transfer, EFAULT);
    if (transfer->size != I2C_SMBUS_BYTE_DATA || transfer->data == NULL)
        return i2c_other_size(board, descriptor, transfer);
    unsigned chip = descriptor_slave(descriptor);
    int result = 0;
    if (board->pass) {
        judge_byte(board, transfer->read_write == I2C_SMBUS_WRITE, chip, transfer->command);
        result = request_pass(descriptor, I2C_SMBUS, transfer);
    } else {
        result = outcome(i2c_byte(board, chip, transfer));
    }
    if (tracing(board))
        trace_byte(board, chip, transfer, result < 0 ? errno : 0);
    return result;
}

int i2c_ioctl(const struct board* board, int descriptor, uint32_t request, void* argument)
{
    switch (request) {
    case I2C_SLAVE:
        return i2c_choose(board, descriptor, argument);
    case I2C_SMBUS:
        return i2c_transfer(board, descriptor, argument);
    default:
        return request_unknown(board, DEVICE_I2C, descriptor, request, argument, ENOTTY);
    }
}
