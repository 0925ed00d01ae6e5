/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_KERNELSERROR_H
#define HALDEND_TESTS_KERNELSERROR_H

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

/// The error that the kernel itself has for a request, 0 if there is none: the call goes past the preloaded library. An
/// emulator, which doesn't know the FPGA's requests, has another one than a machine.
inline int kernelsError(int iDescriptor, unsigned long ulRequest, void* pvRecord)
{
    return ::syscall(SYS_ioctl, iDescriptor, ulRequest, pvRecord) == -1 ? errno : 0;
}

#endif
