/* SPDX-License-Identifier: MIT */
/* A recorder in the place of the display controller. */
#include "tests/support/hw/lime_recorder.h"

#include "hw/lime_mmio.h"

#include <map>
#include <utility>

static std::map<std::pair<uint32_t, uint32_t>, uint32_t>& registers()
{
    static std::map<std::pair<uint32_t, uint32_t>, uint32_t> values;
    return values;
}

std::vector<lime_access>& lime_recorded()
{
    static std::vector<lime_access> record;
    return record;
}

void lime_recorder_reset()
{
    registers().clear();
    lime_recorded().clear();
}

void lime_recorder_set(uint32_t window, uint32_t off, uint32_t value)
{
    registers()[{window, off}] = value;
}

uint32_t lime_load(const void* base, uint32_t window, uint32_t off)
{
    const uint32_t value = registers()[{window, off}];
    lime_recorded().push_back({lime_access::load, base, window, off, value});
    return value;
}

void lime_store(void* base, uint32_t window, uint32_t off, uint32_t value)
{
    registers()[{window, off}] = value;
    lime_recorded().push_back({lime_access::store, base, window, off, value});
}

std::ostream& operator<<(std::ostream& out, const lime_access& access)
{
    return out << (access.op == lime_access::load ? "load " : "store ") << std::hex << access.window << "+"
               << access.off << " " << access.value << std::dec;
}
