/* SPDX-License-Identifier: MIT */
/* Pixels in the board's files: little-endian words of 32 bits. */
#ifndef HALDEND_BOARD_CAMERA_WORDS_H
#define HALDEND_BOARD_CAMERA_WORDS_H

#include <endian.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

static inline void words_load(uint32_t* words, const uint8_t* stored, size_t count)
{
    memcpy(words, stored, count * sizeof *words);
    for (size_t i = 0; htole32(1) != 1 && i < count; ++i)
        words[i] = le32toh(words[i]);
}

static inline void words_store(uint8_t* stored, const uint32_t* words, size_t count)
{
    if (htole32(1) == 1) {
        memcpy(stored, words, count * sizeof *words);
        return;
    }
    for (size_t i = 0; i < count; ++i) {
        uint32_t word = htole32(words[i]);
        memcpy(stored + i * sizeof word, &word, sizeof word);
    }
}

#endif
