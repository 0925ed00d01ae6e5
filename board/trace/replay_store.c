/* SPDX-License-Identifier: MIT */
#include "board/trace/replay_store.h"

#include "board/devices/devices.h"

void replay_store_trigger(uint8_t* fpga, uint8_t* i2c, const uint8_t* camera)
{
    const struct board board = {.fpga = fpga, .i2c = i2c, .camera = camera};
    store_live_picture(&board);
}
