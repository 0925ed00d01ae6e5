/* SPDX-License-Identifier: MIT */
/* The video decoder and the video encoder on the I2C bus. */
#include "hw/saa71xx_device.h"

#include <cstdio>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <unistd.h>

int saafd = -1;

int open_saa71xx_device(const char* path, int slave)
{
    saafd = open(path, O_RDWR);
    if (saafd == -1) {
        puts("Error: cannot open i2c device");
        return -1;
    }
    if (ioctl(saafd, I2C_SLAVE, slave) < 0) {
        puts("I2C_SLAVE - communication break up");
        close_saa71xx_device();
        return -1;
    }
    return 0;
}

void close_saa71xx_device(void)
{
    close(saafd);
    /* The kernel may give the number to another file, and clients read the chips at any time. */
    saafd = -1;
}

static int transfer_byte(uint8_t direction, uint8_t sub, i2c_smbus_data* data)
{
    i2c_smbus_ioctl_data transfer = {direction, sub, I2C_SMBUS_BYTE_DATA, data};
    return ioctl(saafd, I2C_SMBUS, &transfer);
}

int saa71xx_device_read_reg(uint8_t sub)
{
    i2c_smbus_data data = {};
    return transfer_byte(I2C_SMBUS_READ, sub, &data) < 0 ? -1 : data.byte;
}

int saa71xx_device_write_reg(uint8_t sub, uint8_t value)
{
    i2c_smbus_data data = {};
    data.byte = value;
    transfer_byte(I2C_SMBUS_WRITE, sub, &data);
    return 1;
}

int read_saa71xx_reg(reg_bf_group* reg)
{
    const uint32_t byte =
        static_cast<uint32_t>(saa71xx_device_read_reg(static_cast<uint8_t>(reg->addr))) & 0xff;
    reg->value = (reg->value & 0x00ffffff) | byte << 24;
    return 1;
}

int write_saa71xx_reg(reg_bf_group* reg)
{
    if (reg->valid == 0)
        return -1;
    saa71xx_device_write_reg(static_cast<uint8_t>(reg->addr), static_cast<uint8_t>(reg->value >> 24));
    return 1;
}
