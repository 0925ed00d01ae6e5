/* SPDX-License-Identifier: MIT */
/* The FPGA's store trigger outside of the preloaded library. */
#ifndef HALDEND_BOARD_TRACE_REPLAY_STORE_H
#define HALDEND_BOARD_TRACE_REPLAY_STORE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Stores the live picture in the FPGA's image memory. The three are mapped files of a board, whole. */
void replay_store_trigger(uint8_t* fpga, uint8_t* i2c, const uint8_t* camera);

#ifdef __cplusplus
}
#endif

#endif
