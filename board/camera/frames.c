/* SPDX-License-Identifier: MIT */
#include "board/camera/frames.h"

#include "board/camera/words.h"

#include <fcntl.h>
#include <limits.h>
#include <linux/futex.h>
#include <stdio.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

/* The request that takes 64-bit offsets. */
#ifdef SYS_fcntl64
#define SYS_CONTROL SYS_fcntl64
#else
#define SYS_CONTROL SYS_fcntl
#endif

/* Likewise, with 64-bit times. */
#if defined SYS_futex_time64 && _TIME_BITS == 64
#define SYS_WAIT SYS_futex_time64
#else
#define SYS_WAIT SYS_futex
#endif

#define WAIT_MS 20

static bool is_locked(int descriptor, uint32_t byte)
{
    struct flock lock = {.l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = byte, .l_len = 1};
    return syscall(SYS_CONTROL, descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool frames_alive(const struct board_control* control, const char* directory)
{
    char path[PATH_MAX + 16];
    if (snprintf(path, sizeof path, "%s/" BOARD_CAMERA_LOCK, directory) >= (int)sizeof path)
        return false;
    long descriptor = syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    bool locked = is_locked((int)descriptor, board_load(&control->camera.choice));
    syscall(SYS_close, (int)descriptor);
    return locked;
}

void frames_wait(const uint32_t* word, uint32_t value, int milliseconds)
{
    struct timespec timeout = {milliseconds / 1000, milliseconds % 1000 * 1000000L};
    syscall(SYS_WAIT, word, FUTEX_WAIT, htole32(value), &timeout, NULL, 0);
}

static void wake(uint32_t* word)
{
    syscall(SYS_futex, word, FUTEX_WAKE, INT_MAX, NULL, NULL, 0);
}

void frames_count(uint32_t* word)
{
    uint32_t value = board_load(word);
    while (!board_exchange(word, value, value + 1))
        value = board_load(word);
    wake(word);
}

void frames_set(uint32_t* word, uint32_t value)
{
    board_store(word, value);
    wake(word);
}

/* A frame that was overtaken while it was copied isn't whole: the next but one goes to the same place. */
static void copy_newest(const struct board_camera* camera, const uint8_t* frames, uint32_t* pixels)
{
    uint32_t number;
    do {
        number = board_load(&camera->delivered);
        words_load(pixels, frames + (size_t)(number % BOARD_FRAME_PLACES) * VIDEO_FRAME_BYTES,
                   VIDEO_WIDTH * VIDEO_HEIGHT);
    } while (board_load(&camera->delivered) - number >= BOARD_FRAME_PLACES - 1);
}

bool frames_take(struct board_control* control, const char* directory, const uint8_t* frames,
                 uint32_t* pixels)
{
    struct board_camera* camera = &control->camera;
    frames_count(&camera->wanted);
    for (int waited = 0; frames_alive(control, directory); waited += WAIT_MS) {
        uint32_t state = board_load(&camera->helper);
        if (state == FRAMES_RUNNING) {
            copy_newest(camera, frames, pixels);
            return true;
        }
        if (waited >= FRAMES_PATIENCE_MS)
            break;
        frames_wait(&camera->helper, state, WAIT_MS);
    }
    return false;
}
