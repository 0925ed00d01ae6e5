/* SPDX-License-Identifier: MIT */
/* Writes of 32-bit words to FPGA memory, which takes them little-endian.
 */
#ifndef HALDEND_FPGA_FPGA_BLOCK_H
#define HALDEND_FPGA_FPGA_BLOCK_H

#include "hw/fpga_device.h"

#include <cstddef>
#include <cstdint>

#include <endian.h>

/* Writes the first count words, at most COUNT_MAX, in one block to the byte offset. Returns the device
 * primitive's result. */
template <size_t COUNT_MAX>
inline int write_fpga_words(uint32_t offset, const uint32_t* words, size_t count)
{
    uint32_t block[COUNT_MAX];
    if (count > COUNT_MAX)
        count = COUNT_MAX;
    for (size_t i = 0; i < count; ++i)
        block[i] = htole32(words[i]);
    return write_fpga_block(offset, block, count * sizeof(uint32_t));
}

#endif
