/* SPDX-License-Identifier: MIT */
/* A recorder in the place of the display controller: defines the one load and the one store function
 * through which all of its registers are reached, and so replaces them in the program that links it.
 *
 * Registers hold what was stored last, or what the test put there; everything is recorded in order.
 */
#ifndef HALDEND_TESTS_LIME_RECORDER_H
#define HALDEND_TESTS_LIME_RECORDER_H

#include <cstdint>
#include <ostream>
#include <vector>

struct lime_access {
    enum kind { load, store } op;
    const void* base; /* the mapping it went through, not compared */
    uint32_t window;
    uint32_t off;
    uint32_t value;
};

inline bool operator==(const lime_access& a, const lime_access& b)
{
    return a.op == b.op && a.window == b.window && a.off == b.off && a.value == b.value;
}

std::ostream& operator<<(std::ostream& out, const lime_access& access);

/* What was done since the last lime_recorder_reset(), in order. */
std::vector<lime_access>& lime_recorded();

/* Forgets the record and all register values. */
void lime_recorder_reset();

/* Gives a register a value without a trace of it in the record. */
void lime_recorder_set(uint32_t window, uint32_t off, uint32_t value);

inline lime_access lime_loaded(uint32_t window, uint32_t off, uint32_t value)
{
    return {lime_access::load, nullptr, window, off, value};
}

inline lime_access lime_stored(uint32_t window, uint32_t off, uint32_t value)
{
    return {lime_access::store, nullptr, window, off, value};
}

#endif
