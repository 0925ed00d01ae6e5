/* The board library linked straight into a program, for unit tests.
 *
 * Link the CMake target haldenboard_inprocess: the program's own open, read, ioctl and so on are then the
 * board's, for the libraries that it uses as well. The board named by HALDEN_BOARD is attached at the first
 * device operation; these functions choose another one.
 *
 * Open a CBoard on the directory before attaching: what the program does to the device files afterwards is
 * taken for the daemon's doing, traced and made to fail.
 */
#ifndef HALDEND_BOARD_PRELOAD_HALDENBOARD_H
#define HALDEND_BOARD_PRELOAD_HALDENBOARD_H

#ifdef __cplusplus
extern "C" {
#endif

/* Attaches the board in the directory, in place of the one attached before, whatever the environment says.
 * returns 0; -1 with errno set if there is no usable board: then none is attached.
 * No other thread may be in a device operation meanwhile. */
int haldenboard_attach(const char* directory);

/* Lets go of the board: from now on everything passes through untouched. The same rule for threads. */
void haldenboard_detach(void);

#ifdef __cplusplus
}
#endif

#endif
