/* SPDX-License-Identifier: MIT */
/* Functions that are taken over only for the path that they are given. */
#include "board/devices/devices.h"
#include "board/preload/wraps.h"

#include <stdio.h>
#include <string.h>

struct statx;

const char* redirected(const char* path, char room[PATH_MAX])
{
    static const char folder[] = BOARD_CNFS_FIXED;
    const size_t length = sizeof folder - 1;
    if (path == NULL || strncmp(path, folder, length) != 0 || (path[length] != '/' && path[length] != '\0'))
        return path;
    const struct board* board = board_current();
    if (board == NULL || board->pass ||
        strlen(board->directory) + sizeof "/" BOARD_CNFS + strlen(path + length) > PATH_MAX)
        return path;
    stpcpy(stpcpy(stpcpy(room, board->directory), "/" BOARD_CNFS), path + length);
    return room;
}

static bool writes(const char* mode)
{
    return strpbrk(mode, "wa+") != NULL;
}

/* A failed freopen closes the stream. */
static FILE* closed(FILE* stream)
{
    int saved = errno;
    fclose(stream);
    errno = saved;
    return NULL;
}

/* One definition for each shape of arguments. The records are opaque, because their layout differs between
 * the names and concerns only the caller and the C library. */

#define PATH_RECORD(function)                                             \
    NEXT(function, int, const char*, void*)                               \
    int board_##function(const char* path, void* record) WRAPS(function); \
    int board_##function(const char* path, void* record)                  \
    {                                                                     \
        char room[PATH_MAX];                                              \
        return next_##function()(redirected(path, room), record);         \
    }

#define VERSION_PATH_RECORD(function)                                                  \
    NEXT(function, int, int, const char*, void*)                                       \
    int board_##function(int version, const char* path, void* record) WRAPS(function); \
    int board_##function(int version, const char* path, void* record)                  \
    {                                                                                  \
        char room[PATH_MAX];                                                           \
        return next_##function()(version, redirected(path, room), record);             \
    }

#define FOLDER_PATH_RECORD(function)                                                             \
    NEXT(function, int, int, const char*, void*, int)                                            \
    int board_##function(int folder, const char* path, void* record, int flags) WRAPS(function); \
    int board_##function(int folder, const char* path, void* record, int flags)                  \
    {                                                                                            \
        char room[PATH_MAX];                                                                     \
        return next_##function()(folder, redirected(path, room), record, flags);                 \
    }

#define PATH_STREAM(function)                                                                  \
    NEXT(function, FILE*, const char*, const char*)                                            \
    FILE* board_##function(const char* path, const char* mode) WRAPS(function);                \
    FILE* board_##function(const char* path, const char* mode)                                 \
    {                                                                                          \
        char room[PATH_MAX];                                                                   \
        return open_refused(&path, writes(mode), room) ? NULL : next_##function()(path, mode); \
    }

#define PATH_REOPEN(function)                                                                 \
    NEXT(function, FILE*, const char*, const char*, FILE*)                                    \
    FILE* board_##function(const char* path, const char* mode, FILE* stream) WRAPS(function); \
    FILE* board_##function(const char* path, const char* mode, FILE* stream)                  \
    {                                                                                         \
        char room[PATH_MAX];                                                                  \
        if (open_refused(&path, writes(mode), room))                                          \
            return closed(stream);                                                            \
        return next_##function()(path, mode, stream);                                         \
    }

PATH_RECORD(stat)
PATH_RECORD(stat64)
PATH_RECORD(__stat64_time64)
PATH_RECORD(lstat)
PATH_RECORD(lstat64)
PATH_RECORD(__lstat64_time64)

VERSION_PATH_RECORD(__xstat)
VERSION_PATH_RECORD(__xstat64)
VERSION_PATH_RECORD(__lxstat)
VERSION_PATH_RECORD(__lxstat64)

FOLDER_PATH_RECORD(fstatat)
FOLDER_PATH_RECORD(fstatat64)
FOLDER_PATH_RECORD(__fstatat64_time64)

PATH_STREAM(fopen)
PATH_STREAM(fopen64)

PATH_REOPEN(freopen)
PATH_REOPEN(freopen64)

NEXT(statx, int, int, const char*, int, unsigned, struct statx*)
int board_statx(int folder, const char* path, int flags, unsigned mask, struct statx* record) WRAPS(statx);
int board_statx(int folder, const char* path, int flags, unsigned mask, struct statx* record)
{
    char room[PATH_MAX];
    return next_statx()(folder, redirected(path, room), flags, mask, record);
}

NEXT(access, int, const char*, int)
int board_access(const char* path, int mode) WRAPS(access);
int board_access(const char* path, int mode)
{
    char room[PATH_MAX];
    return next_access()(redirected(path, room), mode);
}

NEXT(faccessat, int, int, const char*, int, int)
int board_faccessat(int folder, const char* path, int mode, int flags) WRAPS(faccessat);
int board_faccessat(int folder, const char* path, int mode, int flags)
{
    char room[PATH_MAX];
    return next_faccessat()(folder, redirected(path, room), mode, flags);
}
