/* Where reads and writes of devices stand.
 *
 * The kernel would keep that too. But a seek would then be a call of its own, nearly as dear as the transfer behind it,
 * and the daemon seeks before every cell that it writes. Each open file has a position, which its descriptors share, and
 * so do forked processes: it lives in memory that they share. None is given back; who opens more files than there are
 * positions gets the kernel's for the rest.
 */
#include "board/preload.h"

#include <errno.h>
#include <sys/mman.h>
#include <unistd.h>

enum { POSITIONS = 256 }; /* the first has no number, and serves as the count of those in use */

NEXT(lseek64, int64_t, int, int64_t, int)
NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)
NEXT(read, ssize_t, int, void*, size_t)
NEXT(write, ssize_t, int, const void*, size_t)

static int64_t* s_positions;

static int64_t* positions(void)
{
    int64_t* table = __atomic_load_n(&s_positions, __ATOMIC_ACQUIRE);
    if (table != NULL)
        return table;
    void* map = next_mmap64()(NULL, POSITIONS * sizeof(int64_t), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED)
        return NULL;
    if (__atomic_compare_exchange_n(&s_positions, &table, (int64_t*)map, false, __ATOMIC_ACQ_REL,
                                    __ATOMIC_ACQUIRE))
        return map;
    munmap(map, POSITIONS * sizeof(int64_t));
    return table;
}

/* The place of an open file's position; null if the kernel keeps it. */
static int64_t* place_of(int descriptor)
{
    unsigned number = descriptor_position(descriptor);
    return number != 0 ? s_positions + number : NULL;
}

void position_begin(int descriptor)
{
    int64_t* table = positions();
    if (table == NULL)
        return;
    int64_t number = __atomic_add_fetch(&table[0], 1, __ATOMIC_RELAXED);
    if (number < POSITIONS)
        descriptor_set_position(descriptor, (unsigned)number);
}

int64_t position_of(int descriptor)
{
    const int64_t* place = place_of(descriptor);
    return place != NULL ? __atomic_load_n(place, __ATOMIC_RELAXED) : next_lseek64()(descriptor, 0, SEEK_CUR);
}

int64_t position_seek(int descriptor, int64_t offset, int whence)
{
    int64_t* place = place_of(descriptor);
    if (place == NULL)
        return next_lseek64()(descriptor, offset, whence);
    int64_t position = offset;
    if (whence == SEEK_CUR && __builtin_add_overflow(position_of(descriptor), offset, &position))
        position = -1;
    if (whence != SEEK_SET && whence != SEEK_CUR)
        position = next_lseek64()(descriptor, offset, whence);
    else if (position < 0)
        errno = EINVAL;
    if (position >= 0)
        __atomic_store_n(place, position, __ATOMIC_RELAXED);
    return position < 0 ? -1 : position;
}

static ssize_t moved(int64_t* place, int64_t position, ssize_t result)
{
    if (result > 0)
        __atomic_store_n(place, position + result, __ATOMIC_RELAXED);
    return result;
}

ssize_t position_read(int descriptor, void* buffer, size_t count)
{
    int64_t* place = place_of(descriptor);
    if (place == NULL)
        return next_read()(descriptor, buffer, count);
    int64_t position = position_of(descriptor);
    return moved(place, position, pread(descriptor, buffer, count, position));
}

ssize_t position_write(int descriptor, const void* buffer, size_t count)
{
    int64_t* place = place_of(descriptor);
    if (place == NULL)
        return next_write()(descriptor, buffer, count);
    int64_t position = position_of(descriptor);
    return moved(place, position, pwrite(descriptor, buffer, count, position));
}
