/* What the taken-over functions share.
 *
 * The library stands between a program and its C library. Every function that it takes over is defined
 * under another name in the source and given its public name by WRAPS: the C library's headers redirect
 * several of these names to others, which would otherwise redirect the definitions as well.
 */
#ifndef HALDEND_BOARD_PRELOAD_WRAPS_H
#define HALDEND_BOARD_PRELOAD_WRAPS_H

#include <limits.h>
#include <stdbool.h>
#include <sys/types.h>

#define WRAPS(function) __asm__(#function) __attribute__((visibility("default")))

/* The folder of the register files is fixed in the daemon; on a board it is a folder of the board's. Returns the
 * path to use in place of the given one: built in room for the folder and what is in it, else the path
 * itself. A path that would get too long stays as it is. */
const char* redirected(const char* path, char room[PATH_MAX]);

/* The same for a file that is opened. The fault of register files opened for writing gives them another path
 * still, /dev/full: what stdio writes can't be caught otherwise. With an error that isn't the full disk's it
 * makes the opening itself fail: true, and errno is set. */
bool open_refused(const char** path, bool writing, char room[PATH_MAX]);

/* A write to a descriptor of no device, which the fault of full disks can meet. */
ssize_t disk_write(int descriptor, const void* buffer, size_t count);

#endif
