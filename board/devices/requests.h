/* SPDX-License-Identifier: MIT */
/* Requests, which are ioctl calls: the helpers that the devices share, and the requests of each device. */
#ifndef HALDEND_BOARD_DEVICES_REQUESTS_H
#define HALDEND_BOARD_DEVICES_REQUESTS_H

#include "board/devices/devices.h"

/* The result of a system call that ended with the error number, or with 0; sets errno. */
static inline int outcome(int error)
{
    if (error == 0)
        return 0;
    errno = error;
    return -1;
}

/* Notes a request in the trace: its address, and unless separator is null, separator and value. error:
 * number, or 0. */
void request_trace(const struct board* board, enum device device, const char* operation, uint32_t address,
                   unsigned address_digits, const char* separator, uint32_t value, unsigned value_digits,
                   int error);

/* Judges a request that no program may make; error is what the board answers. */
void request_judge(const struct board* board, enum device device, const char* operation, uint32_t number,
                   unsigned digits, int error);

/* Judges and notes a request that the board doesn't know, or whose argument is of no use. Refuses it with the error;
 * a real device answers itself. Returns the result of the call. */
int request_unknown(const struct board* board, enum device device, int descriptor, uint32_t request,
                    void* argument, int error);

/* The answer of the real device. */
int request_pass(int descriptor, uint32_t request, void* argument);

int fpga_ioctl(const struct board* board, int descriptor, uint32_t request, void* argument);
int i2c_ioctl(const struct board* board, int descriptor, uint32_t request, void* argument);

#endif
