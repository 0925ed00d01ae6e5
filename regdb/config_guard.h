/* SPDX-License-Identifier: MIT */
/* Whether a file may be given to the configuration library.
 *
 * The library ends the process if an opened file can't be read: a folder, a broken medium. It waits for ever
 * on a FIFO without a writer, and works for minutes on a line of megabytes. A reload over the bus must
 * survive all of these, so each file is checked before the library reads it.
 */
#ifndef HALDEND_REGDB_CONFIG_GUARD_H
#define HALDEND_REGDB_CONFIG_GUARD_H

#ifdef __cplusplus
extern "C" {
#endif

/* Null if the library may read the file; that is so if the file and all files that it includes are regular
 * files without a line of more than 128 KiB, or can't be opened at all (the library reports those). Otherwise
 * a text that says why not, worded like an error text of the library: a constant, not to be freed.
 *
 * *line is the number of the line that is too long, in the file that has it. It is 0 for every other fault:
 * not a regular file, a read error, or an include whose name isn't closed on its line. */
const char* config_file_fault(const char* path, int* line);

#ifdef __cplusplus
}
#endif

#endif
