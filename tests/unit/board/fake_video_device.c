/* SPDX-License-Identifier: MIT */
/* A video device for halden-camera, preloaded: /dev/video-fake. It captures plain pictures of 320 x 240 pixels, packed
 * 4:2:2, whose luma goes up by one from frame to frame, from 100. After as many frames as FAKE_VIDEO_FRAMES says it is
 * unplugged. FAKE_VIDEO_LOG names a file that gets a line whenever capturing starts and stops.
 *
 * Its buffers are a file in memory, so that mappings are those of the kernel. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

enum {
    WIDTH = 320,
    HEIGHT = 240,
    BUFFERS = 2,
    BYTES = 2 * WIDTH * HEIGHT,
    PITCH = (BYTES + 4095) / 4096 * 4096
};

/* The library's function. Under its own name it would have to have the declaration of the C library's header. */
int fake_ioctl(int descriptor, unsigned long request, ...) __asm__("ioctl");

static int s_device = -1;
static unsigned s_frames;
static unsigned char* s_memory;

static void note(const char* line)
{
    const char* path = getenv("FAKE_VIDEO_LOG");
    FILE* file = path != NULL ? fopen(path, "a") : NULL;
    if (file != NULL) {
        fputs(line, file);
        fclose(file);
    }
}

static int open_device(void)
{
    s_device = memfd_create("video", 0);
    if (s_device < 0 || ftruncate(s_device, BUFFERS * PITCH) != 0)
        return -1;
    s_memory = mmap(NULL, (size_t)BUFFERS * PITCH, PROT_READ | PROT_WRITE, MAP_SHARED, s_device, 0);
    return s_memory != MAP_FAILED ? s_device : -1;
}

/* Defined by its name for the linker, as the C library's header may rename it. */
#define OPEN(name)                                                                             \
    int fake_##name(const char* path, int flags, ...) __asm__(#name);                          \
    int fake_##name(const char* path, int flags, ...)                                          \
    {                                                                                          \
        int (*next)(const char*, int, ...) =                                                   \
            (int (*)(const char*, int, ...))(uintptr_t)dlsym(RTLD_NEXT, #name);                \
        va_list arguments;                                                                     \
        va_start(arguments, flags);                                                            \
        unsigned mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0;              \
        va_end(arguments);                                                                     \
        return strcmp(path, "/dev/video-fake") == 0 ? open_device() : next(path, flags, mode); \
    }

OPEN(open)
OPEN(open64)

static int unplugged(void)
{
    const char* most = getenv("FAKE_VIDEO_FRAMES");
    return most != NULL && s_frames >= strtoul(most, NULL, 10);
}

static int take_frame(struct v4l2_buffer* buffer)
{
    if (unplugged()) {
        errno = ENODEV;
        return -1;
    }
    buffer->index = s_frames % BUFFERS;
    buffer->bytesused = BYTES;
    unsigned char* picture = s_memory + (size_t)buffer->index * PITCH;
    for (int i = 0; i < BYTES; i += 2) {
        picture[i] = (unsigned char)(100 + s_frames);
        picture[i + 1] = i % 4 == 0 ? 128 : 160; /* U, V: reddish */
    }
    ++s_frames;
    return 0;
}

static int serve(unsigned long request, void* argument)
{
    struct v4l2_capability* capability = argument;
    struct v4l2_format* format = argument;
    struct v4l2_buffer* buffer = argument;
    switch (request) {
    case VIDIOC_QUERYCAP:
        memset(capability, 0, sizeof *capability);
        capability->capabilities = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
        return 0;
    case VIDIOC_S_FMT:
        format->fmt.pix.pixelformat = V4L2_PIX_FMT_YUYV;
        format->fmt.pix.width = WIDTH;
        format->fmt.pix.height = HEIGHT;
        format->fmt.pix.bytesperline = 2 * WIDTH;
        return 0;
    case VIDIOC_REQBUFS:
        if (((struct v4l2_requestbuffers*)argument)->count > BUFFERS)
            ((struct v4l2_requestbuffers*)argument)->count = BUFFERS;
        return 0;
    case VIDIOC_QUERYBUF:
        buffer->length = BYTES;
        buffer->m.offset = buffer->index * PITCH;
        return 0;
    case VIDIOC_QBUF:
        return 0;
    case VIDIOC_DQBUF:
        return take_frame(buffer);
    case VIDIOC_STREAMON:
        note("on\n");
        return 0;
    case VIDIOC_STREAMOFF:
        note("off\n");
        return 0;
    default:
        errno = ENOTTY;
        return -1;
    }
}

int fake_ioctl(int descriptor, unsigned long request, ...)
{
    int (*next)(int, unsigned long, ...) =
        (int (*)(int, unsigned long, ...))(uintptr_t)dlsym(RTLD_NEXT, "ioctl");
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return descriptor == s_device && s_device >= 0 ? serve(request, argument)
                                                   : next(descriptor, request, argument);
}
