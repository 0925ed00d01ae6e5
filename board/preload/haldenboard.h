/* SPDX-License-Identifier: MIT */
/* The board library linked straight into a program, for unit tests.
 *
 * Link the CMake target haldenboard_inprocess: the program's own open, read, ioctl and so on are then the
 * board's, also for the libraries that it uses. The first device operation attaches the board that
 * HALDEN_BOARD names; these functions choose another one.
 *
 * Open a CBoard on the directory before attaching. After it, the library takes the program's operations on
 * the device files for the daemon's: it traces them and makes them fail.
 */
#ifndef HALDEND_BOARD_PRELOAD_HALDENBOARD_H
#define HALDEND_BOARD_PRELOAD_HALDENBOARD_H

#ifdef __cplusplus
extern "C" {
#endif

/* Attaches the board in the directory, in place of the one attached before, whatever the environment says.
 * Returns 0. If there is no usable board, returns -1 with errno, and none is attached. No other thread may be
 * in a device operation at the same time. */
int haldenboard_attach(const char* directory);

/* Detaches the board: from now on everything passes through untouched. The same rule for threads. */
void haldenboard_detach(void);

#ifdef __cplusplus
}
#endif

#endif
