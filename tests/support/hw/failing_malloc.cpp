/* SPDX-License-Identifier: MIT */
/* Allocations that fail on purpose. */
#include "tests/support/hw/failing_malloc.h"

#include <cstddef>

/* How many more allocations succeed; negative: all. */
static int succeeding_left = -1;

failing_malloc::failing_malloc(int succeeding)
{
    succeeding_left = succeeding;
}

failing_malloc::~failing_malloc()
{
    succeeding_left = -1;
}

static bool fails()
{
    if (succeeding_left > 0)
        --succeeding_left;
    else if (succeeding_left == 0)
        return true;
    return false;
}

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);

void* __wrap_malloc(size_t size)
{
    return fails() ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(size_t count, size_t size)
{
    return fails() ? nullptr : __real_calloc(count, size);
}
}
