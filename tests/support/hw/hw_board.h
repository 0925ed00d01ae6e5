/* SPDX-License-Identifier: MIT */
/* A virtual board for the hardware layer's tests, linked into the program: made in a temporary folder and
 * attached for the life of the object. Free of Qt, because these tests also run where there is none.
 *
 * What the program does that no program for the board may do lets the test fail at the end of the object's
 * life, unless it is announced.
 */
#ifndef HALDEND_TESTS_HW_BOARD_H
#define HALDEND_TESTS_HW_BOARD_H

#include "board/layout/board_layout.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

class hw_board
{
public:
    hw_board();
    ~hw_board();
    hw_board(const hw_board&) = delete;
    hw_board& operator=(const hw_board&) = delete;

    /* Path of a file of the board: "fpgamem", "fb0", "i2c-1". */
    std::string path(const char* name) const;

    /* Lets the operation fail from now on, after pass successes. */
    void fail(board_operation operation, int error, uint32_t pass = 0);

    /* The device operations since the object was made, or since the last call, one a line. */
    std::vector<std::string> trace();

    /* Announces a judgement, a line as virtual-board-reference.md describes it. */
    void announce_judgement(const std::string& line) { m_announced.insert(line); }

    /* The bytes of a file of the board, as a debugger would see and change them. */
    std::vector<unsigned char> bytes(const char* name, uint32_t offset, size_t len) const;
    void set_bytes(const char* name, uint32_t offset, const std::vector<unsigned char>& values);

private:
    void judge() const;
    std::vector<std::string> lines(const char* name) const;

    std::string m_directory;
    board_control* m_control;
    size_t m_trace_read = 0;
    std::set<std::string> m_announced;
};

#endif
