/* Which files can be given to the configuration library.
 *
 * It ends the process when it is made to include a folder, and waits for ever when it is given a FIFO nobody
 * writes to. A reload over the bus has to survive both, so what would be read is looked at before.
 */
#ifndef HALDEND_REGDB_CONFIG_GUARD_H
#define HALDEND_REGDB_CONFIG_GUARD_H

#ifdef __cplusplus
extern "C" {
#endif

/* 1 if the file, and every file that it includes, is a regular one or doesn't exist; else 0. */
int config_file_is_safe(const char* path);

#ifdef __cplusplus
}
#endif

#endif
