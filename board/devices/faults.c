/* SPDX-License-Identifier: MIT */
/* Counts down the faults in the control file. */
#include "board/devices/devices.h"

static bool count_down(uint32_t* word)
{
    for (;;) {
        uint32_t value = board_load(word);
        if (value == 0)
            return false;
        if (value == BOARD_FAULT_FOREVER || board_exchange(word, value, value - 1))
            return true;
    }
}

int fault_take(const struct board* board, enum board_operation operation, bool* shortened)
{
    struct board_fault* fault = &board->control->faults[operation];
    if (operation == BOARD_OPERATION_NONE || !fault_pending(board, operation))
        return 0;
    if (count_down(&fault->pass) || !count_down(&fault->fail))
        return 0;
    uint32_t hits;
    do {
        hits = board_load(&fault->hits);
    } while (!board_exchange(&fault->hits, hits, hits + 1));
    if (shortened != NULL && (board_load(&fault->flags) & BOARD_FAULT_SHORT) != 0) {
        *shortened = true;
        return 0;
    }
    return (int)board_load(&fault->error);
}
