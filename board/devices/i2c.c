/* SPDX-License-Identifier: MIT */
/* The bus of the video decoder and encoder: requests choose a chip and transfer a byte. */
#include "board/devices/requests.h"

#include <linux/i2c-dev.h>
#include <linux/i2c.h>

static int i2c_choose(const struct board* board, int descriptor, uintptr_t slave)
{
    int error = fault_take(board, BOARD_OPERATION_I2C_SLAVE, NULL);
    if (error == 0 && slave > 0x7f) {
        judge_request(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, "no such address");
        error = EINVAL;
    }
    if (error == 0)
        descriptor_set_slave(descriptor, (unsigned)slave);
    if (tracing(board))
        request_trace(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, NULL, 0, 0, error);
    return outcome(error);
}

/* Programs can't write the decoder's status. */
static bool read_only(unsigned chip, unsigned sub_address)
{
    return chip == SAA7113_SLAVE && sub_address == SAA7113_STATUS;
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
    uint8_t* cell = board->i2c + chip * 256 + transfer->command;
    if (!writing)
        transfer->data->byte = *cell;
    else if (!read_only(chip, transfer->command))
        *cell = transfer->data->byte;
    return 0;
}

static int i2c_transfer(const struct board* board, int descriptor,
                        const struct i2c_smbus_ioctl_data* transfer)
{
    if (transfer == NULL || transfer->data == NULL)
        return request_refuse(board, DEVICE_I2C, "ioctl", I2C_SMBUS, 8, EFAULT);
    if (transfer->size != I2C_SMBUS_BYTE_DATA)
        return request_refuse(board, DEVICE_I2C, "transfer", transfer->size, 2, EOPNOTSUPP);
    bool writing = transfer->read_write == I2C_SMBUS_WRITE;
    int error = i2c_byte(board, descriptor_slave(descriptor), transfer);
    if (tracing(board))
        request_trace(board, DEVICE_I2C, writing ? "write" : "read", transfer->command, 2,
                      writing      ? ""
                      : error == 0 ? " ="
                                   : NULL,
                      transfer->data->byte, 2, error);
    return outcome(error);
}

int i2c_ioctl(const struct board* board, int descriptor, uint32_t request, void* argument)
{
    switch (request) {
    case I2C_SLAVE:
        return i2c_choose(board, descriptor, (uintptr_t)argument);
    case I2C_SMBUS:
        return i2c_transfer(board, descriptor, argument);
    default:
        return request_refuse(board, DEVICE_I2C, "ioctl", request, 8, ENOTTY);
    }
}
