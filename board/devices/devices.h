/* SPDX-License-Identifier: MIT */
/* The devices of the attached board, as the preloaded library shows them to the program: the table of
 * descriptors, the operations, faults, trace, judging.
 *
 * Rules for this room, and for board/preload/, which takes the C library's functions over:
 * - Nothing here calls a function that the library takes over. NEXT reaches the definition that comes next in
 *   the order of loading, which may be a sanitizer's.
 * - errno is as after a real call: untouched when the call succeeds.
 * - No locks: a fork in another thread could leave them held for ever, and a signal handler may write. Shared
 *   state is atomic words, and structures that are published complete.
 */
#ifndef HALDEND_BOARD_DEVICES_DEVICES_H
#define HALDEND_BOARD_DEVICES_DEVICES_H

#include "board/camera/live.h"
#include "board/layout/board_layout.h"

#include <limits.h>
#include <stdbool.h>
#include <sys/types.h>

typedef void (*any_function)(void);

/* The definition of the function that this library hides; looked up once and stored in *slot. */
any_function next_find(any_function* slot, const char* name);

/* Defines next_FUNCTION(), which returns that definition: NEXT(close, int, int) gives next_close()(fd). */
#define NEXT(function, result, ...)                                 \
    static result (*next_##function(void))(__VA_ARGS__)             \
    {                                                               \
        static any_function slot;                                   \
        return (result(*)(__VA_ARGS__))next_find(&slot, #function); \
    }

/* --- Descriptors: which device is behind one. The answer is stored until the descriptor is closed. --- */

enum device { DEVICE_UNKNOWN, DEVICE_NONE, DEVICE_FPGA, DEVICE_LIME, DEVICE_I2C, DEVICE_COUNT };

/* The device behind the descriptor, told by the identity of its file. DEVICE_NONE for every other file and
 * for bad descriptors. Costs one load when the descriptor is known. */
enum device descriptor_device(int descriptor);

/* Forgets what is stored. Call it when a descriptor is new. */
void descriptor_forget(int descriptor);

/* Call descriptor_close() before a descriptor is closed. descriptor_closed_device() then returns its device
 * until another file gets its number; DEVICE_UNKNOWN if it was no device, or isn't closed. */
void descriptor_close(int descriptor, enum device device);
enum device descriptor_closed_device(int descriptor);

void descriptor_forget_all(void);

/* Gives the copy of a descriptor the state of the original. */
void descriptor_copy(int original, int copy);

/* The I2C slave address chosen on the descriptor, 0 at first. */
unsigned descriptor_slave(int descriptor);
void descriptor_set_slave(int descriptor, unsigned slave);

/* The number of the position of the descriptor's file, 0 if the kernel keeps it. */
unsigned descriptor_position(int descriptor);
void descriptor_set_position(int descriptor, unsigned number);

/* --- Positions: file offsets of the devices, in bytes. Results as of the system call. --- */

/* Gives a file that was just opened a position, if one is left. */
void position_begin(int descriptor);

int64_t position_of(int descriptor);
int64_t position_seek(int descriptor, int64_t offset, int whence);
ssize_t position_read(int descriptor, void* buffer, size_t count);
ssize_t position_write(int descriptor, const void* buffer, size_t count);

/* --- The attached board --- */

struct file_identity {
    dev_t device;
    ino_t inode;
};

/* What the trace knows of the display controller's registers. */
struct lime_notes {
    const uint8_t* windows; /* the register windows; null until there is a mapping */
    uint32_t count;         /* the trace's word when the values were noted */
    uint32_t values[64];    /* in the order of the judge's map */
};

struct board {
    char directory[PATH_MAX]; /* absolute, links resolved */
    bool pass;                /* real devices do the work; then there are no files but those of notes */
    struct board_control* control;
    uint8_t* fpga;         /* all of fpgamem */
    uint8_t* i2c;          /* all of i2c-1 */
    const uint8_t* camera; /* all of it */
    const uint8_t* frames; /* all of camera-frames */
    struct lime_notes* lime;
    struct file_identity files[DEVICE_COUNT];
};

/* The file behind a device: of a device node the device. */
struct stat;
struct file_identity file_identity_of(const struct stat* status);

/* The attached board, or null. The first call attaches the one that the environment names. */
struct board* board_current(void);

/* The work of haldenboard_attach() and haldenboard_detach(), with their results. */
int board_attach(const char* directory);
void board_detach(void);

/* --- Faults --- */

/* Call it once for each operation. Returns the error number if the operation has to fail, else 0. If a
 * transfer has to be cut to half of its length, sets *shortened and returns 0; shortened is null for
 * operations that can't be cut. */
int fault_take(const struct board* board, enum board_operation operation, bool* shortened);

/* Whether the operation has a fault that isn't used up. */
static inline bool fault_pending(const struct board* board, enum board_operation operation)
{
    return board_load(&board->control->faults[operation].fail) != 0;
}

/* --- Trace: one line an operation, built piece by piece. virtual-board-reference.md has the grammar. --- */

struct line {
    size_t length;
    char text[1024];
};

static inline bool tracing(const struct board* board)
{
    return (board_load(&board->control->trace) & BOARD_TRACE_MODE) != BOARD_TRACE_OFF;
}

static inline bool tracing_fully(const struct board* board)
{
    return (board_load(&board->control->trace) & BOARD_TRACE_MODE) == BOARD_TRACE_FULL;
}

void line_start(struct line* line, enum device device, const char* operation);
void line_text(struct line* line, const char* text);
void line_number(struct line* line, int64_t value);                  /* decimal */
void line_hex(struct line* line, uint64_t value, unsigned digits);   /* 0x and at least so many digits */
void line_place(struct line* line, uint32_t place, unsigned digits); /* only full traces have it */
void line_bytes(struct line* line, const void* bytes, size_t count); /* the first ones */
void line_finish(struct line* line, const struct board* board, int error); /* error: number, or 0 */

/* Finishes the line of an operation that succeeded with all bytes. Those that it has no room for follow in lines of
 * their own; address is the first one's in the FPGA. */
void line_finish_bytes(struct line* line, const struct board* board, uint32_t address, const void* bytes,
                       size_t count);

/* Appends the line to a file of the board, unless the file is longer than most bytes already; 0 is no
 * limit. */
void line_append(const struct line* line, const struct board* board, const char* file, int64_t most);

/* --- Judging: each notes the operation if no program for this board may do it. For operations that reached
 * the device: what a fault makes fail isn't judged. --- */

void judge_register(const struct board* board, bool writing, unsigned bytes, uint32_t address,
                    uint32_t value);
void judge_block(const struct board* board, const char* operation, int64_t position, size_t count);
void judge_byte(const struct board* board, bool writing, unsigned chip, unsigned sub_address);

/* For operations that are known to be wrong; reason goes into the line. */
void judge_request(const struct board* board, enum device device, const char* operation, uint32_t number,
                   unsigned digits, const char* reason);
void judge_operation(const struct board* board, enum device device, const char* operation,
                     const char* reason);

/* --- Operations of the devices. Call them for descriptors of devices only; results as of the system call.
 * --- */

int device_open(enum device device, int descriptor); /* call it after the open, which it judges */
void device_close(enum device device);               /* call it before the close, which it notes */
int64_t device_seek(enum device device, int descriptor, int64_t offset, int whence);
ssize_t device_read(enum device device, int descriptor, void* buffer, size_t count);
ssize_t device_write(enum device device, int descriptor, const void* buffer, size_t count);
int device_ioctl(enum device device, int descriptor, uint32_t request, void* argument);

/* The board's files of the live picture, without the tables of the moving camera. */
struct live board_live(const struct board* board);

/* Stores the live picture in the FPGA's image memory, as the store trigger does. */
void store_live_picture(const struct board* board);

/* Turns the registers of the display controller into this program's byte order. windows: their mapping, from
 * LIME_HOST_WINDOW on. */
void lime_adopt(struct board_control* control, uint8_t* windows);

/* Notes the registers of the display controller that have changed since the last note. Their stores are no calls, so
 * this is done in front of each line of a full trace, and at the end of the program. */
void lime_note(const struct board* board);

/* Pass-through: the program has mapped the real display controller, with this length, from its begin on. */
void lime_watch(const struct board* board, int descriptor, size_t length);

/* device_map() judges a mapping before it is made, and returns an error number or 0. device_mapped() notes
 * its result. */
int device_map(enum device device);
void device_mapped(enum device device, int descriptor, size_t length, int error);

#endif
