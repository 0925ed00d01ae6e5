/* SPDX-License-Identifier: MIT */
/* Opening a path that a client or a file names.
 *
 * The path can lead to any kind of file, and to another one after it was checked. The daemon serves all
 * clients from one thread, so one open(), read() or write() that waits would stop it for good. So files are
 * opened in a way that never waits, and checked once they are open.
 */
#ifndef HALDEND_HW_OPEN_PATH_H
#define HALDEND_HW_OPEN_PATH_H

#include <stdio.h>
#include <sys/stat.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opens the path, whatever kind of file it leads to, and describes that file in *status. access is O_RDONLY,
 * O_WRONLY or O_RDWR. With the last two a missing file is created, with mode 0644 whatever the umask; nothing
 * is truncated. Reads and writes that would wait fail with EAGAIN.
 *
 * Returns the descriptor, which the caller closes. Returns -1 with errno if the path can't be opened,
 * EWOULDBLOCK if that would wait. */
int open_path(const char* path, int access, struct stat* status);

/* The same for a file that holds data: a regular file, a block device, or a character device that is no
 * terminal. Returns -1 for anything else too. A regular file opened for writing is emptied. */
int open_data_file(const char* path, int access);

/* fdopen() that owns the descriptor: it is closed if fdopen() fails, and with the stream, which the caller
 * closes. Returns null on failure, and for a negative descriptor. */
FILE* stream_of_descriptor(int descriptor, const char* mode);

#ifdef __cplusplus
}
#endif

#endif
