/* SPDX-License-Identifier: MIT */
/* Preloaded behind the board library: real devices for it, made of plain files. It answers the requests of the FPGA's
 * driver and of the I2C bus; all other calls reach the files themselves. */
#include <endian.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <stdarg.h>
#include <stdint.h>
#include <unistd.h>

enum { REQUESTS = 6, WIDTHS = 3, CHIP_REGISTERS = 256 };

static unsigned s_slave;

static int fpga_request(int descriptor, unsigned number, uint32_t* record)
{
    size_t bytes = (size_t)1 << number % WIDTHS;
    uint32_t word = number < WIDTHS ? 0 : htole32(record[1]);
    ssize_t done = number < WIDTHS ? pread(descriptor, &word, bytes, record[0])
                                   : pwrite(descriptor, &word, bytes, record[0]);
    record[1] = le32toh(word);
    return done == (ssize_t)bytes ? 0 : -1;
}

static int i2c_transfer(int descriptor, const struct i2c_smbus_ioctl_data* transfer)
{
    off_t place = (off_t)s_slave * CHIP_REGISTERS + transfer->command;
    ssize_t done = transfer->read_write == I2C_SMBUS_READ
                       ? pread(descriptor, &transfer->data->byte, 1, place)
                       : pwrite(descriptor, &transfer->data->byte, 1, place);
    return done == 1 ? 0 : -1;
}

/* The C library's header has another declaration of the public name. */
int fake_ioctl(int descriptor, unsigned long request, ...) __asm__("ioctl");
int fake_ioctl(int descriptor, unsigned long request, ...)
{
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    uint32_t number = (uint32_t)request - 0xc0086b00u;
    if (number < REQUESTS)
        return fpga_request(descriptor, number, argument);
    if (request == I2C_SLAVE)
        s_slave = (unsigned)(uintptr_t)argument;
    return request == I2C_SMBUS ? i2c_transfer(descriptor, argument) : 0;
}
