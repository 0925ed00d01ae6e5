/* SPDX-License-Identifier: MIT */
/* Attaching a board, and finding the functions that the library hides.
 *
 * A board is built up privately and then published with one exchange of a pointer. Threads that attach at the
 * same time each build one; the first is kept. So nothing has to wait, not even for a signal handler that
 * interrupts the attaching.
 */
#include "board/devices/devices.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>

NEXT(open64, int, const char*, int, ...)
NEXT(close, int, int)
NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)
NEXT(write, ssize_t, int, const void*, size_t)

/* A file of the board, and its mapping. */
struct file {
    const char* name;
    size_t bytes; /* the least size */
    size_t begin; /* of the mapping, and its length */
    size_t length;
    void* map;
    struct file_identity identity;
};

#define FILE_WHOLE(file_name, size)                            \
    {                                                          \
        .name = (file_name), .bytes = (size), .length = (size) \
    }

static struct board s_none; /* marks that a board was looked for and none found */
static struct board* s_board;

any_function next_find(any_function* slot, const char* name)
{
    any_function function = __atomic_load_n(slot, __ATOMIC_RELAXED);
    if (function == NULL) {
        void* symbol = dlsym(RTLD_NEXT, name);
        if (symbol == NULL)
            abort();
        memcpy(&function, &symbol, sizeof function);
        __atomic_store_n(slot, function, __ATOMIC_RELAXED);
    }
    return function;
}

struct file_identity file_identity_of(const struct stat* status)
{
    struct file_identity identity = {status->st_dev, status->st_ino};
    if (S_ISCHR(status->st_mode) || S_ISBLK(status->st_mode)) {
        identity.device = status->st_rdev;
        identity.inode = 0;
    }
    return identity;
}

static int map_descriptor(struct file* file, int descriptor)
{
    struct stat status;
    if (fstat(descriptor, &status) != 0)
        return errno;
    if (!S_ISREG(status.st_mode) || (uint64_t)status.st_size < file->bytes)
        return EINVAL;
    file->identity = file_identity_of(&status);
    file->map = next_mmap64()(NULL, file->length, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor,
                              (int64_t)file->begin);
    return file->map == MAP_FAILED ? errno : 0;
}

static int map_file(struct file* file, const char* directory)
{
    char path[PATH_MAX + 16];
    stpcpy(stpcpy(stpcpy(path, directory), "/"), file->name);
    int descriptor = next_open64()(path, O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    int error = map_descriptor(file, descriptor);
    next_close()(descriptor);
    if (error != 0)
        file->map = NULL;
    return error;
}

static void unmap_file(struct file* file)
{
    if (file->map != NULL)
        munmap(file->map, file->length);
}

static bool ours(const struct board_control* control)
{
    return board_load(&control->magic) == BOARD_MAGIC && board_load(&control->version) == BOARD_VERSION;
}

/* Fills the board. Returns 0, or an error number and in *culprit the name of the file that is missing or
 * unusable. */
static int attach(struct board* board, const char* directory, const char** culprit)
{
    struct file control = FILE_WHOLE(BOARD_CONTROL, sizeof(struct board_control));
    struct file camera = FILE_WHOLE(BOARD_CAMERA, BOARD_CAMERA_BYTES);
    struct file frames = FILE_WHOLE(BOARD_FRAMES, BOARD_FRAMES_BYTES);
    struct file files[DEVICE_COUNT] = {
        [DEVICE_FPGA] = FILE_WHOLE(BOARD_FPGA, BOARD_FPGA_BYTES),
        [DEVICE_LIME] = {.name = BOARD_LIME,
                         .bytes = board_lime_bytes(),
                         .begin = LIME_HOST_WINDOW,
                         .length = LIME_WINDOWS_END - LIME_HOST_WINDOW},
        [DEVICE_I2C] = FILE_WHOLE(BOARD_I2C, BOARD_I2C_BYTES),
    };
    *culprit = "the directory";
    if (realpath(directory, board->directory) == NULL)
        return errno;
    *culprit = control.name;
    int error = map_file(&control, board->directory);
    if (error == 0 && !ours(control.map))
        error = EINVAL;
    if (error == 0) {
        *culprit = camera.name;
        error = map_file(&camera, board->directory);
    }
    if (error == 0) {
        *culprit = frames.name;
        error = map_file(&frames, board->directory);
    }
    for (int device = DEVICE_FPGA; error == 0 && device < DEVICE_COUNT; ++device) {
        *culprit = files[device].name;
        error = map_file(&files[device], board->directory);
        board->files[device] = files[device].identity;
    }
    if (error == 0) {
        board->control = control.map;
        board->fpga = files[DEVICE_FPGA].map;
        board->i2c = files[DEVICE_I2C].map;
        board->camera = camera.map;
        board->frames = frames.map;
        board->lime->windows = files[DEVICE_LIME].map;
        lime_adopt(board->control, files[DEVICE_LIME].map);
    } else {
        unmap_file(&control);
        unmap_file(&camera);
        unmap_file(&frames);
        for (int device = DEVICE_FPGA; device < DEVICE_COUNT; ++device)
            unmap_file(&files[device]);
    }
    return error;
}

/* --- Pass-through: a directory with links to real devices, under the names of a board's files --- */

/* The file is only looked at, not opened: a device may do something when it is opened. */
static int identify(const char* directory, const char* name, struct file_identity* identity)
{
    char path[PATH_MAX + 16];
    stpcpy(stpcpy(stpcpy(path, directory), "/"), name);
    int descriptor = next_open64()(path, O_PATH | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    struct stat status;
    int error = fstat(descriptor, &status) == 0 ? 0 : errno;
    if (error == 0)
        *identity = file_identity_of(&status);
    next_close()(descriptor);
    return error;
}

/* The same for real devices. A name may be missing: then that device isn't noted. */
static int attach_pass(struct board* board, const char* directory, const char** culprit)
{
    static const char* const names[DEVICE_COUNT] = {
        [DEVICE_FPGA] = BOARD_FPGA,
        [DEVICE_LIME] = BOARD_LIME,
        [DEVICE_I2C] = BOARD_I2C,
    };
    *culprit = "the directory";
    if (realpath(directory, board->directory) == NULL)
        return errno;
    *culprit = "none of " BOARD_FPGA ", " BOARD_LIME ", " BOARD_I2C;
    int found = 0;
    for (int device = DEVICE_FPGA; device < DEVICE_COUNT; ++device) {
        board->files[device].device = (dev_t)-1;
        if (identify(board->directory, names[device], &board->files[device]) == 0)
            ++found;
    }
    if (found == 0)
        return ENOENT;
    *culprit = "memory";
    board->control = next_mmap64()(NULL, sizeof(struct board_control), PROT_READ | PROT_WRITE,
                                   MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (board->control == MAP_FAILED)
        return errno;
    board->pass = true;
    board_store(&board->control->trace, BOARD_TRACE_FULL | BOARD_TRACE_COUNT);
    return 0;
}

/* --- The attached board --- */

static const size_t ROOM = sizeof(struct board) + sizeof(struct lime_notes);

static void release(struct board* board)
{
    if (board == NULL || board == &s_none)
        return;
    munmap(board->control, sizeof(struct board_control));
    if (!board->pass) {
        munmap(board->fpga, BOARD_FPGA_BYTES);
        munmap(board->i2c, BOARD_I2C_BYTES);
        munmap((void*)board->camera, BOARD_CAMERA_BYTES);
        munmap((void*)board->frames, BOARD_FRAMES_BYTES);
        munmap((void*)board->lime->windows, LIME_WINDOWS_END - LIME_HOST_WINDOW);
    }
    munmap(board, ROOM);
}

/* Returns a board, or s_none. Its memory comes from the kernel, because the program may be inside its
 * allocator. */
static struct board* make_board(const char* directory, bool pass, const char** culprit)
{
    struct board* board =
        next_mmap64()(NULL, ROOM, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (board == MAP_FAILED)
        return &s_none;
    board->lime = (struct lime_notes*)(void*)(board + 1);
    int error = pass ? attach_pass(board, directory, culprit) : attach(board, directory, culprit);
    if (error == 0)
        return board;
    munmap(board, ROOM);
    errno = error;
    return &s_none;
}

static void complain(const char* variable, const char* directory, const char* culprit)
{
    struct line line = {0, ""};
    line_text(&line, "haldenboard: no usable board, ");
    line_text(&line, culprit);
    line_text(&line, ": ");
    line_text(&line, strerrordesc_np(errno));
    line_text(&line, " (");
    line_text(&line, variable);
    line_text(&line, "=");
    line_text(&line, directory);
    line_text(&line, ")\n");
    ssize_t written = next_write()(STDERR_FILENO, line.text, line.length);
    (void)written; /* there is no other way to report it */
}

static struct board* attach_from_environment(void)
{
    int saved = errno;
    const char* culprit = "";
    bool pass = getenv(BOARD_PASS_VARIABLE) != NULL;
    const char* variable = pass ? BOARD_PASS_VARIABLE : BOARD_VARIABLE;
    const char* directory = getenv(variable);
    struct board* mine = directory != NULL ? make_board(directory, pass, &culprit) : &s_none;
    struct board* first = NULL;
    if (!__atomic_compare_exchange_n(&s_board, &first, mine, false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE)) {
        release(mine);
        mine = first;
    } else if (directory != NULL && mine == &s_none) {
        complain(variable, directory, culprit);
    }
    errno = saved;
    return mine;
}

/* The stores to the display controller behind the last operation. */
__attribute__((destructor)) static void note_last_stores(void)
{
    struct board* board = __atomic_load_n(&s_board, __ATOMIC_ACQUIRE);
    if (board != NULL && board != &s_none)
        lime_note(board);
}

struct board* board_current(void)
{
    struct board* board = __atomic_load_n(&s_board, __ATOMIC_ACQUIRE);
    if (board == NULL)
        board = attach_from_environment();
    return board == &s_none ? NULL : board;
}

int board_attach(const char* directory)
{
    const char* culprit;
    board_detach();
    struct board* board = make_board(directory, false, &culprit);
    __atomic_store_n(&s_board, board, __ATOMIC_RELEASE);
    descriptor_forget_all();
    return board == &s_none ? -1 : 0;
}

void board_detach(void)
{
    release(__atomic_exchange_n(&s_board, &s_none, __ATOMIC_ACQ_REL));
    descriptor_forget_all();
}
