/* SPDX-License-Identifier: MIT */
/* A program without any knowledge of the board: works on the given devices, and prints the results. Usage:
 * preload_probe FPGA LIME I2C */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

static void say(const char* what, long result)
{
    if (result < 0)
        printf("%s: %s\n", what, strerrorname_np(errno));
    else
        printf("%s: %ld\n", what, result);
}

static void probe_fpga(const char* path, size_t room)
{
    uint32_t record[2] = {0x00ff0000, 0x00820002};
    char* bytes = calloc(1, room);
    int fpga = open(path, O_RDWR);
    say("write32", ioctl(fpga, 0xc0086b05, record));
    record[1] = 0;
    say("read32", ioctl(fpga, 0xc0086b02, record));
    say("value", (long)record[1]);
    say("seek", lseek(fpga, 0x300000, SEEK_SET));
    say("write", write(fpga, "\x41\x18", 2));
    say("seek", lseek(fpga, 0x300000, SEEK_SET));
    say("read", read(fpga, bytes, room));
    say("byte", bytes[0]);
    say("close", close(fpga));
    free(bytes);
}

static void probe_lime(const char* path)
{
    size_t length = (size_t)getpagesize() << 13;
    int lime = open(path, O_RDWR);
    char* base = mmap(NULL, length, PROT_READ | PROT_WRITE, MAP_SHARED, lime, 0);
    if (base == MAP_FAILED) {
        say("map", -1);
        return;
    }
    *(volatile uint32_t*)(void*)(base + 0x1fd0184) = 0x123456;
    say("unmap", munmap(base, length));
    say("close", close(lime));
}

static void probe_i2c(const char* path)
{
    union i2c_smbus_data data = {.byte = 0x08};
    struct i2c_smbus_ioctl_data transfer = {I2C_SMBUS_WRITE, 0x01, I2C_SMBUS_BYTE_DATA, &data};
    int i2c = open(path, O_RDWR);
    say("slave", ioctl(i2c, I2C_SLAVE, 0x25));
    say("i2c", ioctl(i2c, I2C_SMBUS, &transfer));
    say("close", close(i2c));
}

static void probe_folder(void)
{
    FILE* file = fopen("/usr/etc/cnfs/probe.cnf", "w");
    say("folder", file != NULL ? 0 : -1);
    if (file != NULL)
        fclose(file);
}

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    probe_fpga(argv[1], (size_t)argc);
    probe_lime(argv[2]);
    probe_i2c(argv[3]);
    probe_folder();
    return 0;
}
