/* SPDX-License-Identifier: MIT */
/* The overlay FPGA behind its character device. */
#include "hw/fpga_device.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

int fbfd = -1;

static_assert(sizeof(fpga_reg_transfer) == 8, "the driver copies eight bytes");

/* The driver's request numbers as the target encodes them. They are literals because the kernel's macros put
 * the direction bits elsewhere on other processors. */
static const unsigned long FPGA_READ_8 = 0xc0086b00;
static const unsigned long FPGA_READ_16 = 0xc0086b01;
static const unsigned long FPGA_READ_32 = 0xc0086b02;
static const unsigned long FPGA_WRITE_8 = 0xc0086b03;
static const unsigned long FPGA_WRITE_16 = 0xc0086b04;
static const unsigned long FPGA_WRITE_32 = 0xc0086b05;
static const unsigned long FPGA_SET = 0x20006b07;

int init_fpga_framebuffer(const char* path)
{
    fbfd = open(path, O_RDWR);
    if (fbfd == -1) {
        puts("Error: cannot open fpga framebuffer device");
        return -1;
    }
    return 0;
}

void destroy_fpga_framebuffer(void)
{
    close(fbfd);
    /* The kernel may give the number to another file. */
    fbfd = -1;
}

int l_readin(void* arg, int fd, int width)
{
    switch (width) {
    case 32:
        return ioctl(fd, FPGA_READ_32, arg);
    case 16:
        return ioctl(fd, FPGA_READ_16, arg);
    case 8:
        return ioctl(fd, FPGA_READ_8, arg);
    default:
        return fd;
    }
}

uint32_t l_read_reg(int fd, uint32_t addr)
{
    fpga_reg_transfer record = {addr, 0};
    l_readin(&record, fd, 32);
    return record.value;
}

uint32_t fpga_device_read_reg(uint32_t addr)
{
    return l_read_reg(fbfd, addr);
}

int l_writeout(fpga_reg_transfer* record, int fd, int width)
{
    unsigned long request = 0;
    switch (width) {
    case 32:
        request = FPGA_WRITE_32;
        break;
    case 16:
        request = FPGA_WRITE_16;
        break;
    case 8:
        request = FPGA_WRITE_8;
        break;
    default:
        return fd;
    }
    const int result = ioctl(fd, request, record);
    if (result != 0) {
        printf("ioctl error#%d  in l_writeout\n", result);
        printf("l_write_reg call A:%08x V:%08x\n R:%d", record->addr, record->value, result);
    }
    return result;
}

int l_write_reg(int fd, uint32_t addr, uint32_t value)
{
    fpga_reg_transfer record = {addr, value};
    return l_writeout(&record, fd, 32);
}

int fpga_device_write_reg(uint32_t addr, uint32_t value)
{
    return l_write_reg(fbfd, addr, value);
}

int set_ioctl(int /*a*/, int /*b*/, void* arg)
{
    return ioctl(fbfd, FPGA_SET, arg);
}

int write_fpga_block(uint32_t offset, const void* buf, size_t len)
{
    lseek(fbfd, offset, SEEK_SET);
    /* A lost overlay write can't be reported to anyone, and the next drawing repairs it. */
    [[maybe_unused]] const ssize_t written = write(fbfd, buf, len);
    return 1;
}

int read_fpga_block(uint32_t offset, void* buf, size_t len)
{
    lseek(fbfd, offset, SEEK_SET);
    [[maybe_unused]] const ssize_t got = read(fbfd, buf, len);
    return 1;
}

int read_fpga_reg(reg_bf_group* reg)
{
    reg->value = fpga_device_read_reg(reg->addr);
    return 1;
}

int write_fpga_reg(reg_bf_group* reg)
{
    if (reg->valid == 0)
        return -1;
    fpga_device_write_reg(reg->addr, reg->value);
    return 1;
}
