/* SPDX-License-Identifier: MIT */
/* The files of a virtual board, and the layout of its control file.
 *
 * Shared by the preloaded library, which is the board as the daemon sees it, and by the class and the tool
 * that watch and steer it from outside. All of them map the control file, so a change by one acts on the
 * others at once. Its fields are 32-bit little-endian words, read and written only through board_load(),
 * board_store() and board_exchange(), because programs of different byte order can share a board.
 *
 * fb0 is the exception. It holds words in the byte order of the program that last attached as the daemon,
 * because that program reaches them by plain loads and stores; lime_order in the control file names the
 * order.
 */
#ifndef HALDEND_BOARD_LAYOUT_BOARD_LAYOUT_H
#define HALDEND_BOARD_LAYOUT_BOARD_LAYOUT_H

#include "hw/fpga_map.h"
#include "hw/lime_registers.h"
#include "hw/saa71xx_registers.h"
#include "hw/video_geometry.h"

#include <endian.h>
#include <errno.h>
#include <stddef.h>
#include <stdint.h>
#include <unistd.h>

/* Environment: the board's directory, and the one with links to real devices. */
#define BOARD_VARIABLE      "HALDEN_BOARD"
#define BOARD_PASS_VARIABLE "HALDEN_BOARD_PASS"

/* Files of the directory. */
#define BOARD_FPGA        "fpgamem"
#define BOARD_LIME        "fb0"
#define BOARD_I2C         "i2c-1"
#define BOARD_CNFS        "cnfs"
#define BOARD_CAMERA      "camera"
#define BOARD_FRAMES      "camera-frames"
#define BOARD_CAMERA_LOCK "camera-lock"
#define BOARD_CAMERA_LOG  "camera-log"
#define BOARD_CONTROL     "control"
#define BOARD_TRACE       "trace"
#define BOARD_JUDGEMENTS  "judgements"
#define BOARD_CODEC_STATE "codec-state"
#define BOARD_CODEC_LOG   "codec-log"
#define BOARD_PLAYBACK    "playback" /* only while a film is played back */

#define BOARD_CNFS_FIXED "/usr/etc/cnfs" /* the daemon's folder that BOARD_CNFS replaces */

/* The frames that halden-camera delivers take turns in so many places. */
#define BOARD_FRAME_PLACES 3u

/* Sizes in bytes: of the camera's picture and frames, of the FPGA's memory, of the chips' registers. */
#define BOARD_CAMERA_BYTES VIDEO_FRAME_BYTES
#define BOARD_FRAMES_BYTES (BOARD_FRAME_PLACES * VIDEO_FRAME_BYTES)
#define BOARD_FPGA_BYTES   FPGA_END
#define BOARD_I2C_BYTES    (128u * 256u)

/* The display controller's mapping: 8192 pages. */
static inline size_t board_lime_bytes(void)
{
    return (size_t)getpagesize() << 13;
}

/* The operations that can be made to fail: identifier, name, and the error number if none is asked for. */
#define BOARD_OPERATIONS(OPERATION)                      \
    OPERATION(FORK, "fork", EAGAIN)                      \
    OPERATION(SOCKETPAIR, "socketpair", EMFILE)          \
    OPERATION(SIGACTION, "sigaction", EINVAL)            \
    OPERATION(FPGA_OPEN, "fpga-open", ENXIO)             \
    OPERATION(FPGA_READ, "fpga-read", EIO)               \
    OPERATION(FPGA_WRITE, "fpga-write", EIO)             \
    OPERATION(FPGA_SEEK, "fpga-seek", EIO)               \
    OPERATION(FPGA_IOCTL_READ, "fpga-ioctl-read", EIO)   \
    OPERATION(FPGA_IOCTL_WRITE, "fpga-ioctl-write", EIO) \
    OPERATION(LIME_OPEN, "lime-open", ENXIO)             \
    OPERATION(LIME_MAP, "lime-map", ENOMEM)              \
    OPERATION(I2C_OPEN, "i2c-open", ENXIO)               \
    OPERATION(I2C_SLAVE, "i2c-slave", EBUSY)             \
    OPERATION(I2C_READ, "i2c-read", EIO)                 \
    OPERATION(I2C_WRITE, "i2c-write", EIO)               \
    OPERATION(DISK_WRITE, "disk-write", ENOSPC)          \
    OPERATION(CNFS_WRITE, "cnfs-write", ENOSPC)

#define BOARD_OPERATION_ENUMERATOR(identifier, name, error) BOARD_OPERATION_##identifier,
enum board_operation {
    BOARD_OPERATION_NONE, /* never fails */
    BOARD_OPERATIONS(BOARD_OPERATION_ENUMERATOR) BOARD_OPERATION_COUNT
};
#undef BOARD_OPERATION_ENUMERATOR

/* How the codec stand-in answers its next calls: identifier, name. */
#define BOARD_CODEC_MODES(MODE)                                 \
    MODE(OK, "ok")         /* normally */                       \
    MODE(REFUSE, "refuse") /* answers with an error */          \
    MODE(HANG, "hang")     /* doesn't answer */                 \
    MODE(STALL, "stall")   /* the recorded file doesn't grow */ \
    MODE(LOSE, "lose")     /* a new recording makes no file */  \
    MODE(DIE, "die")       /* ends in the middle of the next one */

#define BOARD_CODEC_ENUMERATOR(identifier, name) BOARD_CODEC_##identifier,
enum board_codec_mode { BOARD_CODEC_MODES(BOARD_CODEC_ENUMERATOR) BOARD_CODEC_MODE_COUNT };
#undef BOARD_CODEC_ENUMERATOR

/* Where the camera's picture comes from. */
enum board_camera_source {
    BOARD_CAMERA_STILL,  /* the picture in BOARD_CAMERA */
    BOARD_CAMERA_MOVING, /* made by its number: board/camera/moving.h */
    BOARD_CAMERA_FRAMES  /* BOARD_FRAMES, which halden-camera fills: board/camera/frames.h */
};

#define BOARD_MAGIC         0x64426c48u /* "HlBd" in the file */
#define BOARD_VERSION       3u
#define BOARD_ORDER_LITTLE  1u
#define BOARD_ORDER_BIG     2u
#define BOARD_FAULT_SLOTS   32u
#define BOARD_FAULT_FOREVER 0xffffffffu
#define BOARD_FAULT_SHORT   1u

/* The lowest byte of the word "trace". The bits above it count how often the trace was switched to full: with a new
 * count programs note what the display controller has, whether it changed or not. */
enum board_trace_mode {
    BOARD_TRACE_OFF,
    BOARD_TRACE_ON,   /* of a transfer the first bytes */
    BOARD_TRACE_FULL, /* all of it, with places, and the display controller's registers */
};
#define BOARD_TRACE_MODE  0xffu
#define BOARD_TRACE_COUNT 0x100u /* the lowest bit of the count */

/* A fault. To set one, store 0 in fail, then the other fields, then fail: other programs may read it at any
 * time. */
struct board_fault {
    uint32_t fail;  /* calls still to fail; 0 no fault, BOARD_FAULT_FOREVER no end */
    uint32_t pass;  /* calls that still succeed before that */
    uint32_t error; /* error number */
    uint32_t flags; /* BOARD_FAULT_SHORT: does half of a transfer instead of failing */
    uint32_t hits;  /* calls that have failed */
    uint32_t reserved[3];
};

/* The camera. Its frames are counted from the choice of the source, 25 a second. */
struct board_camera {
    uint32_t source;    /* enum board_camera_source */
    uint32_t choice;    /* counts the choices of a source */
    uint32_t start;     /* the choice's time: frames since the start of the machine */
    uint32_t fixed;     /* 0: the clock counts the frames; else 1 + the number of the only frame */
    uint32_t wanted;    /* counts the looks at BOARD_FRAMES */
    uint32_t helper;    /* of halden-camera: enum frames_state */
    uint32_t delivered; /* frames of halden-camera; the last one is in this place, modulo their number */
    uint32_t process;   /* number of the last halden-camera's process */
};

struct board_control {
    uint32_t magic;
    uint32_t version;
    uint32_t lime_order;                          /* order of fb0's words */
    uint32_t trace;                               /* how device operations are noted, see below */
    struct board_fault faults[BOARD_FAULT_SLOTS]; /* by enum board_operation */
    uint32_t codec_mode;                          /* enum board_codec_mode */
    uint32_t codec_delay;                         /* of each call, milliseconds */
    struct board_camera camera;
    uint32_t changes; /* see board_note_change() */
};

/* The head of the file playback. Behind it are two frames in the camera's format: sequence % 2 is the one to show, and the
 * other one may change at any time. */
struct board_playback {
    uint32_t sequence; /* number of the frame; 0: none yet */
    uint32_t reserved[15];
};

#define BOARD_PLAYBACK_BYTES (sizeof(struct board_playback) + 2u * VIDEO_FRAME_BYTES)

static inline uint32_t board_load(const uint32_t* word)
{
    return le32toh(__atomic_load_n(word, __ATOMIC_ACQUIRE));
}

static inline void board_store(uint32_t* word, uint32_t value)
{
    __atomic_store_n(word, htole32(value), __ATOMIC_RELEASE);
}

/* Replaces the value if it is still the expected one. Returns 1 if it was, else 0. */
static inline int board_exchange(uint32_t* word, uint32_t expected, uint32_t value)
{
    uint32_t stored = htole32(expected);
    return __atomic_compare_exchange_n(word, &stored, htole32(value), 0, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE);
}

/* Counts a change of a device, of the camera or of the codec stand-in, for those who follow the board: call it behind
 * the change. Stores to the display controller are no calls, and aren't counted. */
static inline void board_note_change(struct board_control* control)
{
    uint32_t count = board_load(&control->changes);
    while (!board_exchange(&control->changes, count, count + 1))
        count = board_load(&control->changes);
}

/* The byte order of this program. */
static inline uint32_t board_own_order(void)
{
    return htole32(1) == 1 ? BOARD_ORDER_LITTLE : BOARD_ORDER_BIG;
}

#endif
