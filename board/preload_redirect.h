/* The folder of the register files is fixed in the daemon; on a board it is a folder of the board's. */
#ifndef HALDEND_BOARD_PRELOAD_REDIRECT_H
#define HALDEND_BOARD_PRELOAD_REDIRECT_H

#include <limits.h>

/* The path to use in place of the given one: built in room for the folder and what is in it, else the path
 * itself. A path that would get too long stays as it is. */
const char* redirected(const char* path, char room[PATH_MAX]);

#endif
