/* SPDX-License-Identifier: MIT */
/* The display controller's registers. Programs reach them through a mapping, so the board can only lay them
 * out in the program's byte order, and look at them now and then.
 *
 * Full traces note only registers that the judge's map has: a real controller may not like to be read elsewhere.
 */
#include "board/devices/devices.h"
#include "board/judge/map.h"

#include <sys/mman.h>

NEXT(mmap64, void*, void*, size_t, int, int, int, int64_t)

void lime_adopt(struct board_control* control, uint8_t* windows)
{
    if (board_load(&control->lime_order) == board_own_order())
        return;
    uint32_t* words = (uint32_t*)(void*)windows;
    for (size_t i = 0; i < (LIME_WINDOWS_END - LIME_HOST_WINDOW) / sizeof *words; ++i)
        words[i] = __builtin_bswap32(words[i]);
    board_store(&control->lime_order, board_own_order());
}

void lime_watch(const struct board* board, int descriptor, size_t length)
{
    if (length < LIME_WINDOWS_END || __atomic_load_n(&board->lime->windows, __ATOMIC_ACQUIRE) != NULL)
        return;
    int saved = errno;
    void* map = next_mmap64()(NULL, length, PROT_READ, MAP_SHARED, descriptor, 0);
    if (map != MAP_FAILED)
        __atomic_store_n(&board->lime->windows, (const uint8_t*)map + LIME_HOST_WINDOW, __ATOMIC_RELEASE);
    errno = saved;
}

static const char* window_name(uint32_t window)
{
    switch (window) {
    case MAP_LIME_HOST:
        return "host";
    case MAP_LIME_DISPLAY:
        return "display";
    case MAP_LIME_CAPTURE:
        return "capture";
    case MAP_LIME_DRAW:
        return "draw";
    default:
        return "pio";
    }
}

static void note(const struct board* board, uint32_t window, uint32_t offset, uint32_t value)
{
    struct line line;
    line_start(&line, DEVICE_LIME, window_name(window));
    line_hex(&line, offset, 8);
    line_hex(&line, value, 8);
    line_text(&line, "\n");
    line_append(&line, board, BOARD_TRACE, 0);
}

void lime_note(const struct board* board)
{
#define PLACE(window, offset, declared) {window, offset},
    static const struct {
        uint32_t window;
        uint32_t offset;
    } registers[] = {MAP_LIME_REGISTERS(PLACE)};
#undef PLACE
    struct lime_notes* notes = board->lime;
    _Static_assert(sizeof registers / sizeof *registers <= sizeof notes->values / sizeof *notes->values,
                   "a value for each register");
    const uint8_t* windows = __atomic_load_n(&notes->windows, __ATOMIC_ACQUIRE);
    if (windows == NULL || !tracing_fully(board))
        return;
    uint32_t count = board_load(&board->control->trace);
    bool all = __atomic_exchange_n(&notes->count, count, __ATOMIC_ACQ_REL) != count;
    for (size_t i = 0; i < sizeof registers / sizeof *registers; ++i) {
        const volatile uint32_t* word =
            (const void*)(windows + (registers[i].window - LIME_HOST_WINDOW) + registers[i].offset);
        uint32_t value = *word;
        if (__atomic_exchange_n(&notes->values[i], value, __ATOMIC_ACQ_REL) != value || all)
            note(board, registers[i].window, registers[i].offset, value);
    }
}
