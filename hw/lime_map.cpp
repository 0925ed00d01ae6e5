/* SPDX-License-Identifier: MIT */
/* The mapping of the Lime display controller's framebuffer device. */
#include "hw/lime_map.h"

#include <cstdint>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

size_t lime_map_length(void)
{
    static const size_t length = static_cast<size_t>(getpagesize()) << 13;
    return length;
}

void* lime_map(int fd)
{
    struct stat status = {};
    if (fstat(fd, &status) != 0)
        return nullptr;
    if (S_ISREG(status.st_mode) && static_cast<uint64_t>(status.st_size) < lime_map_length())
        return nullptr;
    void* base = mmap(nullptr, lime_map_length(), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    return base == MAP_FAILED ? nullptr : base;
}

void lime_unmap(void* base)
{
    if (base != nullptr)
        munmap(base, lime_map_length());
}
