/* SPDX-License-Identifier: MIT */
/* Works on the three devices that its arguments name, FPGA, display controller and I2C bus, as the daemon does. Its
 * status is 0 if each call has the result that a real device gives. */
#include "hw/fpga_map.h"
#include "hw/lime_registers.h"
#include "hw/saa71xx_registers.h"

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

#define CHECK(condition)                                 \
    do {                                                 \
        if (!(condition)) {                              \
            fprintf(stderr, "not so: " #condition "\n"); \
            return 1;                                    \
        }                                                \
    } while (0)

static const unsigned long FPGA_READ_32 = 0xc0086b02;
static const unsigned long FPGA_WRITE_32 = 0xc0086b05;

static int work_on_fpga(const char* path)
{
    static unsigned char letters[3000];
    static unsigned char back[sizeof letters];
    for (size_t i = 0; i < sizeof letters; ++i)
        letters[i] = (unsigned char)(i * 7);
    int descriptor = open(path, O_RDWR);
    CHECK(descriptor >= 0);
    uint32_t record[2] = {FPGA_CTRL, FPGA_CTRL_FGON | FPGA_CTRL_CTO};
    CHECK(ioctl(descriptor, FPGA_WRITE_32, record) == 0);
    record[1] = 0;
    CHECK(ioctl(descriptor, FPGA_READ_32, record) == 0 && record[1] == (FPGA_CTRL_FGON | FPGA_CTRL_CTO));
    CHECK(lseek(descriptor, FPGA_TEXT_PAGES, SEEK_SET) == FPGA_TEXT_PAGES);
    CHECK(write(descriptor, letters, sizeof letters) == (ssize_t)sizeof letters);
    CHECK(lseek(descriptor, FPGA_TEXT_PAGES, SEEK_SET) == FPGA_TEXT_PAGES);
    CHECK(read(descriptor, back, sizeof back) == (ssize_t)sizeof back &&
          memcmp(letters, back, sizeof back) == 0);
    return close(descriptor);
}

static int work_on_lime(const char* path, size_t length)
{
    int descriptor = open(path, O_RDWR);
    CHECK(descriptor >= 0);
    volatile uint32_t* words = mmap(NULL, length, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    CHECK(words != MAP_FAILED);
    words[(LIME_DISP_WINDOW + LIME_L1WXY) / 4] = 0x00c8012c;
    CHECK(munmap((void*)words, length) == 0);
    return close(descriptor);
}

static int work_on_i2c(const char* path)
{
    int descriptor = open(path, O_RDWR);
    CHECK(descriptor >= 0);
    CHECK(ioctl(descriptor, I2C_SLAVE, SAA7113_SLAVE) == 0);
    union i2c_smbus_data data = {.byte = 0x7d};
    struct i2c_smbus_ioctl_data transfer = {I2C_SMBUS_WRITE, 0x0a, I2C_SMBUS_BYTE_DATA, &data};
    CHECK(ioctl(descriptor, I2C_SMBUS, &transfer) == 0);
    transfer.read_write = I2C_SMBUS_READ;
    transfer.command = SAA7113_STATUS;
    CHECK(ioctl(descriptor, I2C_SMBUS, &transfer) == 0 && data.byte == SAA7113_STATUS_NO_LOCK);
    return close(descriptor);
}

int main(int argc, char* argv[])
{
    size_t length = (size_t)getpagesize() << 13;
    return argc == 4 && work_on_lime(argv[2], length) == 0 && work_on_fpga(argv[1]) == 0 &&
                   work_on_i2c(argv[3]) == 0
               ? 0
               : 1;
}
