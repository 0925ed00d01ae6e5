/* Which files can be given to the configuration library.
 *
 * It ends the process when a file can't be read after it was opened, as a folder or one on a broken medium, and
 * waits for ever when it is given a FIFO nobody writes to, and works for minutes on a line of megabytes. A reload over
 * the bus has to survive all of it, so what would be read is looked at before.
 */
#ifndef HALDEND_REGDB_CONFIG_GUARD_H
#define HALDEND_REGDB_CONFIG_GUARD_H

#ifdef __cplusplus
extern "C" {
#endif

/* 1 if the file, and every file that it includes, is a regular one that can be read to its end without waiting, or
 * can't be opened at all; else 0. Also 0 if it isn't plain what it includes, and if a line is longer than 128 KiB. */
int config_file_is_safe(const char* path);

#ifdef __cplusplus
}
#endif

#endif
