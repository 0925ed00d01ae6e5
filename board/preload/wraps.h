/* SPDX-License-Identifier: MIT */
/* Helpers of the taken-over functions.
 *
 * The library stands between a program and its C library. The source defines every function that it takes
 * over under another name and gives it its public name by WRAPS: the C library's headers redirect several of
 * these names to others, and would redirect the definitions as well.
 */
#ifndef HALDEND_BOARD_PRELOAD_WRAPS_H
#define HALDEND_BOARD_PRELOAD_WRAPS_H

#include <limits.h>
#include <stdbool.h>
#include <sys/types.h>

#define WRAPS(function) __asm__(#function) __attribute__((visibility("default")))

/* Redirects the daemon's fixed folder of register files to a folder of the board. Returns the path to use:
 * built in room for that folder and its contents, otherwise the given path. A path that would get too long is
 * not redirected. */
const char* redirected(const char* path, char room[PATH_MAX]);

/* The same for a file that is opened. The fault of register files opened for writing redirects *path to
 * /dev/full instead, because stdio's writes can't be intercepted. With another error than the full disk's the
 * opening itself fails: returns true, and errno is set. */
bool open_refused(const char** path, bool writing, char room[PATH_MAX]);

/* A write to a descriptor that is no device; the fault of full disks can hit it. */
ssize_t disk_write(int descriptor, const void* buffer, size_t count);

#endif
