/* SPDX-License-Identifier: MIT */
/* Functions on descriptors that are taken over: operations on a device go to devices/devices.c, all others to
 * the hidden function. */
#include "board/devices/devices.h"
#include "board/preload/wraps.h"

#include <fcntl.h>
#include <stdarg.h>
#include <sys/mman.h>

/* --- Opening: the file is opened first, and then looked at --- */

static int opened(int descriptor)
{
    if (descriptor < 0)
        return descriptor;
    descriptor_forget(descriptor);
    enum device device = descriptor_device(descriptor);
    return device == DEVICE_NONE ? descriptor : device_open(device, descriptor);
}

static bool writes(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY;
}

static mode_t mode_argument(int flags, va_list arguments)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE ? va_arg(arguments, mode_t) : 0;
}

#define OPEN(function)                                                                                       \
    NEXT(function, int, const char*, int, ...)                                                               \
    int board_##function(const char* path, int flags, ...) WRAPS(function);                                  \
    int board_##function(const char* path, int flags, ...)                                                   \
    {                                                                                                        \
        char room[PATH_MAX];                                                                                 \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        mode_t mode = mode_argument(flags, arguments);                                                       \
        va_end(arguments);                                                                                   \
        return open_refused(&path, writes(flags), room) ? -1 : opened(next_##function()(path, flags, mode)); \
    }

#define OPENAT(function)                                                                \
    NEXT(function, int, int, const char*, int, ...)                                     \
    int board_##function(int folder, const char* path, int flags, ...) WRAPS(function); \
    int board_##function(int folder, const char* path, int flags, ...)                  \
    {                                                                                   \
        char room[PATH_MAX];                                                            \
        va_list arguments;                                                              \
        va_start(arguments, flags);                                                     \
        mode_t mode = mode_argument(flags, arguments);                                  \
        va_end(arguments);                                                              \
        return open_refused(&path, writes(flags), room)                                 \
                   ? -1                                                                 \
                   : opened(next_##function()(folder, path, flags, mode));              \
    }

/* The fortified ones, which take no mode. */
#define OPEN_2(function)                                                                               \
    NEXT(function, int, const char*, int)                                                              \
    int board_##function(const char* path, int flags) WRAPS(function);                                 \
    int board_##function(const char* path, int flags)                                                  \
    {                                                                                                  \
        char room[PATH_MAX];                                                                           \
        return open_refused(&path, writes(flags), room) ? -1 : opened(next_##function()(path, flags)); \
    }

#define OPENAT_2(function)                                                                                \
    NEXT(function, int, int, const char*, int)                                                            \
    int board_##function(int folder, const char* path, int flags) WRAPS(function);                        \
    int board_##function(int folder, const char* path, int flags)                                         \
    {                                                                                                     \
        char room[PATH_MAX];                                                                              \
        return open_refused(&path, writes(flags), room) ? -1                                              \
                                                        : opened(next_##function()(folder, path, flags)); \
    }

OPEN(open)
OPEN(open64)
OPENAT(openat)
OPENAT(openat64)
OPEN_2(__open_2)
OPEN_2(__open64_2)
OPENAT_2(__openat_2)
OPENAT_2(__openat64_2)

/* --- Closing and copying --- */

/* The device of an operation. An operation on a closed descriptor of a device is judged: the program should
 * have let go. */
static enum device device_for(int descriptor, const char* operation)
{
    enum device device = descriptor_device(descriptor);
    enum device closed = device == DEVICE_NONE ? descriptor_closed_device(descriptor) : DEVICE_UNKNOWN;
    if (closed != DEVICE_UNKNOWN)
        judge_operation(board_current(), closed, operation, "closed before");
    return device;
}

NEXT(close, int, int)
int board_close(int descriptor) WRAPS(close);
int board_close(int descriptor)
{
    enum device device = device_for(descriptor, "close");
    if (device != DEVICE_NONE)
        device_close(device);
    descriptor_close(descriptor, device);
    return next_close()(descriptor);
}

static int copied(int original, int copy)
{
    if (copy >= 0 && copy != original)
        descriptor_copy(original, copy);
    return copy;
}

NEXT(dup, int, int)
int board_dup(int descriptor) WRAPS(dup);
int board_dup(int descriptor)
{
    return copied(descriptor, next_dup()(descriptor));
}

NEXT(dup2, int, int, int)
int board_dup2(int descriptor, int copy) WRAPS(dup2);
int board_dup2(int descriptor, int copy)
{
    return copied(descriptor, next_dup2()(descriptor, copy));
}

NEXT(dup3, int, int, int, int)
int board_dup3(int descriptor, int copy, int flags) WRAPS(dup3);
int board_dup3(int descriptor, int copy, int flags)
{
    return copied(descriptor, next_dup3()(descriptor, copy, flags));
}

/* The third argument is passed on unchanged; a pointer is the widest that it can be. */
#define FCNTL(function)                                                                                \
    NEXT(function, int, int, int, ...)                                                                 \
    int board_##function(int descriptor, int command, ...) WRAPS(function);                            \
    int board_##function(int descriptor, int command, ...)                                             \
    {                                                                                                  \
        va_list arguments;                                                                             \
        va_start(arguments, command);                                                                  \
        void* argument = va_arg(arguments, void*);                                                     \
        va_end(arguments);                                                                             \
        int result = next_##function()(descriptor, command, argument);                                 \
        return command == F_DUPFD || command == F_DUPFD_CLOEXEC ? copied(descriptor, result) : result; \
    }

FCNTL(fcntl)
FCNTL(fcntl64)
FCNTL(__fcntl_time64)

/* --- Transfers --- */

NEXT(lseek64, int64_t, int, int64_t, int)
int64_t board_lseek64(int descriptor, int64_t offset, int whence) WRAPS(lseek64);
int64_t board_lseek64(int descriptor, int64_t offset, int whence)
{
    enum device device = device_for(descriptor, "seek");
    return device == DEVICE_NONE ? next_lseek64()(descriptor, offset, whence)
                                 : device_seek(device, descriptor, offset, whence);
}

/* Positions of the devices fit a long on every host. */
NEXT(lseek, long, int, long, int)
long board_lseek(int descriptor, long offset, int whence) WRAPS(lseek);
long board_lseek(int descriptor, long offset, int whence)
{
    enum device device = device_for(descriptor, "seek");
    return device == DEVICE_NONE ? next_lseek()(descriptor, offset, whence)
                                 : (long)device_seek(device, descriptor, offset, whence);
}

NEXT(read, ssize_t, int, void*, size_t)
ssize_t board_read(int descriptor, void* buffer, size_t count) WRAPS(read);
ssize_t board_read(int descriptor, void* buffer, size_t count)
{
    enum device device = device_for(descriptor, "read");
    return device == DEVICE_NONE ? next_read()(descriptor, buffer, count)
                                 : device_read(device, descriptor, buffer, count);
}

/* The fortified one: the C library reports a buffer that is too small. */
NEXT(__read_chk, ssize_t, int, void*, size_t, size_t)
ssize_t board_read_chk(int descriptor, void* buffer, size_t count, size_t room) WRAPS(__read_chk);
ssize_t board_read_chk(int descriptor, void* buffer, size_t count, size_t room)
{
    enum device device = device_for(descriptor, "read");
    return device == DEVICE_NONE || count > room ? next___read_chk()(descriptor, buffer, count, room)
                                                 : device_read(device, descriptor, buffer, count);
}

ssize_t board_write(int descriptor, const void* buffer, size_t count) WRAPS(write);
ssize_t board_write(int descriptor, const void* buffer, size_t count)
{
    enum device device = device_for(descriptor, "write");
    return device == DEVICE_NONE ? disk_write(descriptor, buffer, count)
                                 : device_write(device, descriptor, buffer, count);
}

/* --- Mappings --- */

#define MMAP(function, offset_type)                                                                      \
    NEXT(function, void*, void*, size_t, int, int, int, offset_type)                                     \
    void* board_##function(void* address, size_t length, int protection, int flags, int descriptor,      \
                           offset_type offset) WRAPS(function);                                          \
    void* board_##function(void* address, size_t length, int protection, int flags, int descriptor,      \
                           offset_type offset)                                                           \
    {                                                                                                    \
        enum device device = (flags & MAP_ANONYMOUS) != 0 ? DEVICE_NONE : device_for(descriptor, "map"); \
        int error = device == DEVICE_NONE ? 0 : device_map(device);                                      \
        void* map = MAP_FAILED;                                                                          \
        if (error == 0)                                                                                  \
            map = next_##function()(address, length, protection, flags, descriptor, offset);             \
        else                                                                                             \
            errno = error;                                                                               \
        if (device != DEVICE_NONE)                                                                       \
            device_mapped(device, descriptor, length, map == MAP_FAILED ? errno : 0);                    \
        return map;                                                                                      \
    }

MMAP(mmap, long)
MMAP(mmap64, int64_t)

/* --- Requests. The C library's header takes an unsigned long. Callers also pass an int, whose sign fills the
 * upper half, so only the low 32 bits count. --- */

#define IOCTL(function)                                                                               \
    NEXT(function, int, int, unsigned long, ...)                                                      \
    int board_##function(int descriptor, unsigned long request, ...) WRAPS(function);                 \
    int board_##function(int descriptor, unsigned long request, ...)                                  \
    {                                                                                                 \
        va_list arguments;                                                                            \
        va_start(arguments, request);                                                                 \
        void* argument = va_arg(arguments, void*);                                                    \
        va_end(arguments);                                                                            \
        enum device device = device_for(descriptor, "ioctl");                                         \
        return device == DEVICE_NONE ? next_##function()(descriptor, request, argument)               \
                                     : device_ioctl(device, descriptor, (uint32_t)request, argument); \
    }

IOCTL(ioctl)
IOCTL(__ioctl_time64)
