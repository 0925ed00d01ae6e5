/* SPDX-License-Identifier: MIT */
/* An input taken apart into numbers and strings. Behind its end all numbers are 0. */
#ifndef HALDEND_TESTS_FUZZ_INPUT_READER_H
#define HALDEND_TESTS_FUZZ_INPUT_READER_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

class input_reader
{
public:
    input_reader(const uint8_t* data, size_t size) : at(data), left(size) {}

    bool at_end() const { return left == 0; }

    /* A number of that many bytes, little-endian. */
    uint32_t number(int bytes)
    {
        uint32_t value = 0;
        for (int i = 0; i < bytes && left > 0; ++i, ++at, --left)
            value |= static_cast<uint32_t>(*at) << 8 * i;
        return value;
    }

    /* 0 to limit - 1; limit is at most 65536. */
    uint32_t below(uint32_t limit) { return number(limit > 256 ? 2 : 1) % limit; }

    /* The next bytes, at most count. */
    std::string bytes(size_t count)
    {
        const size_t taken = std::min(count, left);
        std::string text(reinterpret_cast<const char*>(at), taken);
        at += taken;
        left -= taken;
        return text;
    }
    std::string rest() { return bytes(left); }

private:
    const uint8_t* at;
    size_t left;
};

#endif
