/* Opening a path that a client or a file names.
 *
 * Such a path can lead to anything, and what it leads to can change between two looks. The daemon serves all clients
 * from one thread, so a file that waits in an open(), a read() or a write() would stop it for good. Files are opened so
 * that they never wait, and looked at after that.
 */
#ifndef HALDEND_HW_OPEN_PATH_H
#define HALDEND_HW_OPEN_PATH_H

#include <stdio.h>
#include <sys/stat.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opens the path, whatever is there, and describes it in *status. access is O_RDONLY, O_WRONLY or O_RDWR; for the last
 * two a file that is missing is made, with mode 0644 whatever the umask, and nothing is truncated. Reads and writes that
 * would wait fail with EAGAIN. Returns the descriptor, which the caller closes; -1 and errno if the path can't be opened,
 * with EWOULDBLOCK if that would wait. */
int open_path(const char* path, int access, struct stat* status);

/* The same for a file that holds data: -1 also for a folder, a FIFO, a socket and a terminal. A regular file that is
 * opened to be written is empty afterwards. */
int open_data_file(const char* path, int access);

/* fdopen(), which closes the descriptor if it fails. Null for a negative descriptor. */
FILE* stream_of_descriptor(int descriptor, const char* mode);

#ifdef __cplusplus
}
#endif

#endif
