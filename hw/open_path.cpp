/* SPDX-License-Identifier: MIT */
/* Opening a path that a client or a file names. */
#include "hw/open_path.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

static const mode_t MODE_OF_NEW_FILES = 0644;

static int closed(int descriptor)
{
    const int error = errno;
    close(descriptor);
    errno = error;
    return -1;
}

/* The umask is set for the moment of the open(): chmod() afterwards would have to know whether the file is
 * new. No other thread of the daemon creates files, so none is affected. */
static int open_or_create(const char* path, int flags)
{
    const mode_t masked = umask(~MODE_OF_NEW_FILES & 0777);
    const int descriptor = open(path, flags | O_CREAT, MODE_OF_NEW_FILES);
    umask(masked);
    return descriptor;
}

int open_path(const char* path, int access, struct stat* status)
{
    const int flags = access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int descriptor = access == O_RDONLY ? open(path, flags) : open_or_create(path, flags);
    if (descriptor < 0)
        return -1;
    return fstat(descriptor, status) == 0 ? descriptor : closed(descriptor);
}

static bool holds_data(int descriptor, const struct stat& status)
{
    return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode) ||
           (S_ISCHR(status.st_mode) && isatty(descriptor) == 0);
}

int open_data_file(const char* path, int access)
{
    struct stat status = {};
    const int descriptor = open_path(path, access, &status);
    if (descriptor < 0)
        return -1;
    const bool emptied = access != O_RDONLY && S_ISREG(status.st_mode);
    if (!holds_data(descriptor, status) || (emptied && ftruncate(descriptor, 0) != 0))
        return closed(descriptor);
    return descriptor;
}

FILE* stream_of_descriptor(int descriptor, const char* mode)
{
    FILE* file = descriptor < 0 ? nullptr : fdopen(descriptor, mode);
    if (file == nullptr && descriptor >= 0)
        closed(descriptor);
    return file;
}
