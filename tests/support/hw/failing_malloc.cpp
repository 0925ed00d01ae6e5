/* SPDX-License-Identifier: MIT */
/* Allocations that fail on purpose, and watched ones. */
#include "tests/support/hw/failing_malloc.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

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

static const unsigned char GUARD = 0xa5;
static const size_t GUARD_BYTES = 16; /* behind each block */

/* The sizes of the blocks. Its own memory comes from a library, and so isn't watched. */
/* Never destroyed: what counts lines for ./check coverage allocates until the very end. */
static std::map<void*, size_t>& blocks()
{
    static auto& sizes = *new std::map<void*, size_t>;
    return sizes;
}

size_t allocated_blocks()
{
    return blocks().size();
}

static void* watched(void* block, size_t size)
{
    if (block != nullptr) {
        memset(static_cast<unsigned char*>(block) + size, GUARD, GUARD_BYTES);
        blocks()[block] = size;
    }
    return block;
}

static void expect_guard(const void* block, size_t size)
{
    const auto* bytes = static_cast<const unsigned char*>(block);
    for (size_t i = size; i < size + GUARD_BYTES; ++i)
        if (bytes[i] != GUARD) {
            fprintf(stderr, "a write behind a block of %zu bytes\n", size);
            abort();
        }
}

void expect_blocks_whole()
{
    for (const auto& [block, size] : blocks())
        expect_guard(block, size);
}

extern "C" {
void* __real_malloc(size_t size);
void __real_free(void* block);
void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void __wrap_free(void* block);

void* __wrap_malloc(size_t size)
{
    if (fails() || size == 0 || size > SIZE_MAX - GUARD_BYTES)
        return nullptr;
    void* block = __real_malloc(size + GUARD_BYTES);
    if (block != nullptr)
        memset(block, GUARD, size);
    return watched(block, size);
}

void* __wrap_calloc(size_t count, size_t size)
{
    const size_t all = count * size;
    if (fails() || (size != 0 && all / size != count) || all > SIZE_MAX - GUARD_BYTES)
        return nullptr;
    void* block = __real_malloc(all + GUARD_BYTES);
    if (block != nullptr)
        memset(block, 0, all);
    return watched(block, all);
}

void __wrap_free(void* block)
{
    const auto known = blocks().find(block);
    if (known != blocks().end()) {
        expect_guard(block, known->second);
        blocks().erase(known);
    }
    __real_free(block);
}
}
