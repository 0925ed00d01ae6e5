/* SPDX-License-Identifier: MIT */
/* File offsets of the devices.
 *
 * The kernel would keep them too. But then a seek would be a system call, nearly as costly as the transfer
 * behind it, and the daemon seeks before every cell that it writes. Each open file has a slot, shared by its
 * descriptors and by forked processes: the slots are in memory that they share. Slots are never freed. After
 * 255 opens, further files use the kernel's offset. An offset has 32 bits, which the target stores
 * atomically; devices are smaller by far.
 */
#include "board/devices/devices.h"

#include <errno.h>
#include <sys/mman.h>
#include <unistd.h>

enum { POSITIONS = 256 }; /* the first has no number, and serves as the count of those in use */

NEXT(lseek64, int64_t, int, int64_t, int)
NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)
NEXT(read, ssize_t, int, void*, size_t)
NEXT(write, ssize_t, int, const void*, size_t)

static uint32_t* s_positions;

static uint32_t* positions(void)
{
    uint32_t* table = __atomic_load_n(&s_positions, __ATOMIC_ACQUIRE);
    if (table != NULL)
        return table;
    void* map = next_mmap64()(NULL, POSITIONS * sizeof(uint32_t), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED)
        return NULL;
    if (__atomic_compare_exchange_n(&s_positions, &table, (uint32_t*)map, false, __ATOMIC_ACQ_REL,
                                    __ATOMIC_ACQUIRE))
        return map;
    munmap(map, POSITIONS * sizeof(uint32_t));
    return table;
}

/* The slot of an open file; null if the kernel keeps its offset. */
static uint32_t* place_of(int descriptor)
{
    unsigned number = descriptor_position(descriptor);
    return number != 0 ? s_positions + number : NULL;
}

void position_begin(int descriptor)
{
    uint32_t* table = positions();
    if (table == NULL)
        return;
    uint32_t number = __atomic_add_fetch(&table[0], 1, __ATOMIC_RELAXED);
    if (number < POSITIONS)
        descriptor_set_position(descriptor, number);
}

int64_t position_of(int descriptor)
{
    const uint32_t* place = place_of(descriptor);
    return place != NULL ? __atomic_load_n(place, __ATOMIC_RELAXED) : next_lseek64()(descriptor, 0, SEEK_CUR);
}

static int64_t refused(void)
{
    errno = EINVAL;
    return -1;
}

int64_t position_seek(int descriptor, int64_t offset, int whence)
{
    uint32_t* place = place_of(descriptor);
    if (place == NULL)
        return next_lseek64()(descriptor, offset, whence);
    int64_t position = offset;
    if (whence == SEEK_CUR && __builtin_add_overflow(position_of(descriptor), offset, &position))
        position = -1;
    if (whence != SEEK_SET && whence != SEEK_CUR)
        position = next_lseek64()(descriptor, offset, whence);
    else if (position < 0 || position > UINT32_MAX)
        position = refused();
    if (position >= 0)
        __atomic_store_n(place, (uint32_t)position, __ATOMIC_RELAXED);
    return position;
}

static ssize_t moved(uint32_t* place, int64_t position, ssize_t result)
{
    if (result > 0)
        __atomic_store_n(place, (uint32_t)(position + result), __ATOMIC_RELAXED);
    return result;
}

ssize_t position_read(int descriptor, void* buffer, size_t count)
{
    uint32_t* place = place_of(descriptor);
    if (place == NULL)
        return next_read()(descriptor, buffer, count);
    int64_t position = position_of(descriptor);
    return moved(place, position, pread(descriptor, buffer, count, position));
}

ssize_t position_write(int descriptor, const void* buffer, size_t count)
{
    uint32_t* place = place_of(descriptor);
    if (place == NULL)
        return next_write()(descriptor, buffer, count);
    int64_t position = position_of(descriptor);
    return moved(place, position, pwrite(descriptor, buffer, count, position));
}
