/* SPDX-License-Identifier: MIT */
/* The display controller's registers. Programs reach them through a mapping, so the board can only lay them
 * out in the program's byte order. */
#include "board/devices/devices.h"

void lime_adopt(struct board_control* control, uint8_t* lime)
{
    if (board_load(&control->lime_order) == board_own_order())
        return;
    uint32_t* words = (uint32_t*)(void*)(lime + LIME_HOST_WINDOW);
    for (size_t i = 0; i < (LIME_WINDOWS_END - LIME_HOST_WINDOW) / sizeof *words; ++i)
        words[i] = __builtin_bswap32(words[i]);
    board_store(&control->lime_order, board_own_order());
}
