/* SPDX-License-Identifier: MIT */
/* Writes the trace, and the other files of lines in the board.
 *
 * The file is opened for every line. A descriptor that stays open could be closed by a program that closes
 * all it has, and would shift the numbers that the program gets for its own files. One write a line, in
 * append mode, keeps the lines of several threads and processes whole.
 */
#include "board/devices/devices.h"

#include <fcntl.h>
#include <string.h>

NEXT(open64, int, const char*, int, ...)
NEXT(close, int, int)
NEXT(lseek64, int64_t, int, int64_t, int)
NEXT(write, ssize_t, int, const void*, size_t)

enum {
    BYTES_SHOWN = 16,
    LEAST_RUN = 4,    /* of equal bytes that are counted */
    LONGEST_RUN = 32, /* characters of a run, and of what follows the last one */
};

static void put(struct line* line, char character)
{
    if (line->length < sizeof line->text)
        line->text[line->length++] = character;
}

static void put_digits(struct line* line, uint64_t value, unsigned base, unsigned least)
{
    char digits[20];
    unsigned count = 0;
    do {
        digits[count++] = "0123456789abcdef"[value % base];
        value /= base;
    } while (value != 0 || count < least);
    while (count > 0)
        put(line, digits[--count]);
}

void line_text(struct line* line, const char* text)
{
    for (; *text != '\0'; ++text)
        put(line, *text);
}

void line_start(struct line* line, enum device device, const char* operation)
{
    static const char* const names[DEVICE_COUNT] = {
        [DEVICE_FPGA] = "fpga ",
        [DEVICE_LIME] = "lime ",
        [DEVICE_I2C] = "i2c ",
    };
    line->length = 0;
    line_text(line, names[device]);
    line_text(line, operation);
}

void line_number(struct line* line, int64_t value)
{
    put(line, ' ');
    if (value < 0)
        put(line, '-');
    put_digits(line, value < 0 ? 0 - (uint64_t)value : (uint64_t)value, 10, 1);
}

void line_hex(struct line* line, uint64_t value, unsigned digits)
{
    line_text(line, " 0x");
    put_digits(line, value, 16, digits);
}

void line_bytes(struct line* line, const void* bytes, size_t count)
{
    const uint8_t* byte = bytes;
    line_text(line, " :");
    for (size_t i = 0; i < count && i < BYTES_SHOWN; ++i) {
        put(line, ' ');
        put_digits(line, byte[i], 16, 2);
    }
    if (count > BYTES_SHOWN)
        line_text(line, " ...");
}

void line_place(struct line* line, uint32_t place, unsigned digits)
{
    line_text(line, " @");
    line_hex(line, place, digits);
}

/* How many bytes from the first one on are equal. */
static size_t run_of(const uint8_t* bytes, size_t count)
{
    size_t run = 1;
    while (run < count && bytes[run] == bytes[0])
        ++run;
    return run;
}

/* As many bytes as the line has room for. Returns their number. */
static size_t put_bytes(struct line* line, const uint8_t* bytes, size_t count)
{
    size_t done = 0;
    line_text(line, " :");
    while (done < count && line->length + LONGEST_RUN < sizeof line->text) {
        size_t run = run_of(bytes + done, count - done);
        if (run < LEAST_RUN)
            run = 1;
        put(line, ' ');
        put_digits(line, bytes[done], 16, 2);
        if (run > 1) {
            put(line, '*');
            put_digits(line, run, 10, 1);
        }
        done += run;
    }
    return done;
}

void line_finish_bytes(struct line* line, const struct board* board, uint32_t address, const void* bytes,
                       size_t count)
{
    size_t done = put_bytes(line, bytes, count);
    if (done < count)
        line_text(line, " ...");
    line_finish(line, board, 0);
    while (done < count) {
        line_start(line, DEVICE_FPGA, "bytes");
        line_place(line, address + (uint32_t)done, 8);
        done += put_bytes(line, (const uint8_t*)bytes + done, count - done);
        line_finish(line, board, 0);
    }
}

static void put_error(struct line* line, int error)
{
    const char* name = strerrorname_np(error);
    line_text(line, " !");
    if (name == NULL) {
        line_number(line, error);
        return;
    }
    put(line, ' ');
    line_text(line, name);
}

void line_append(const struct line* line, const struct board* board, const char* file, int64_t most)
{
    int saved = errno;
    char path[PATH_MAX + 16];
    stpcpy(stpcpy(stpcpy(path, board->directory), "/"), file);
    int descriptor = next_open64()(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor >= 0) {
        if (most == 0 || next_lseek64()(descriptor, 0, SEEK_END) < most) {
            ssize_t written = next_write()(descriptor, line->text, line->length);
            (void)written; /* a note that can't be written must not disturb the program */
        }
        next_close()(descriptor);
    }
    errno = saved;
}

void line_finish(struct line* line, const struct board* board, int error)
{
    if (error != 0)
        put_error(line, error);
    put(line, '\n');
    lime_note(board);
    line_append(line, board, BOARD_TRACE, 0);
}
