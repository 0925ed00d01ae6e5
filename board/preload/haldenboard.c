/* SPDX-License-Identifier: MIT */
/* The choice of the board from within the program. */
#include "board/preload/haldenboard.h"

#include "board/devices/devices.h"

__attribute__((visibility("default"))) int haldenboard_attach(const char* directory)
{
    return board_attach(directory);
}

__attribute__((visibility("default"))) void haldenboard_detach(void)
{
    board_detach();
}
