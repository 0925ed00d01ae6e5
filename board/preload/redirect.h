/* The folder of the register files is fixed in the daemon; on a board it is a folder of the board's. */
#ifndef HALDEND_BOARD_PRELOAD_REDIRECT_H
#define HALDEND_BOARD_PRELOAD_REDIRECT_H

#include <limits.h>
#include <stdbool.h>

/* The path to use in place of the given one: built in room for the folder and what is in it, else the path
 * itself. A path that would get too long stays as it is. */
const char* redirected(const char* path, char room[PATH_MAX]);

/* The same for a file that is opened. The fault of register files opened for writing gives them another path
 * still, /dev/full: what stdio writes can't be caught otherwise. With an error that isn't the full disk's it
 * makes the opening itself fail: true, and errno is set. */
bool open_refused(const char** path, bool writing, char room[PATH_MAX]);

#endif
