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

/* Null if the file, and every file that it includes, is a regular one that can be read to its end without waiting, or
 * can't be opened at all. Else a text that says why the library must not read it, to be shown like an error text of the
 * library: a constant, not to be freed. The line is that of a line of more than 128 KiB, counted in the file that has
 * it; 0 if something else is wrong: a file that is no regular one or breaks off, or an include whose name isn't
 * plain. */
const char* config_file_fault(const char* path, int* line);

#ifdef __cplusplus
}
#endif

#endif
