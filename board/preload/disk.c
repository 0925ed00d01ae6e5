/* SPDX-License-Identifier: MIT */
/* The full disk: writes to plain files, and register files opened for writing. */
#include "board/devices/devices.h"
#include "board/preload/wraps.h"

#include <sys/stat.h>
#include <unistd.h>

NEXT(write, ssize_t, int, const void*, size_t)

/* Not the standard streams: a log that goes to a file is not under test. */
static bool is_plain_file(int descriptor)
{
    int saved = errno;
    struct stat status;
    bool plain = descriptor > STDERR_FILENO && fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    errno = saved;
    return plain;
}

ssize_t disk_write(int descriptor, const void* buffer, size_t count)
{
    const struct board* board = board_current();
    bool shortened = false;
    int error = 0;
    if (board != NULL && fault_pending(board, BOARD_OPERATION_DISK_WRITE) && is_plain_file(descriptor))
        error = fault_take(board, BOARD_OPERATION_DISK_WRITE, &shortened);
    if (error != 0) {
        errno = error;
        return -1;
    }
    return next_write()(descriptor, buffer, shortened ? count / 2 : count);
}

bool open_refused(const char** path, bool writing, char room[PATH_MAX])
{
    const char* given = *path;
    *path = redirected(given, room);
    if (!writing || *path == given)
        return false;
    int error = fault_take(board_current(), BOARD_OPERATION_CNFS_WRITE, NULL);
    if (error == ENOSPC)
        *path = "/dev/full";
    else if (error != 0)
        errno = error;
    return error != 0 && error != ENOSPC;
}
