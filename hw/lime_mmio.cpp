/* SPDX-License-Identifier: MIT */
/* The access to the Lime display controller's registers. */
#include "hw/lime_mmio.h"

#include "hw/lime_map.h"

/* The register's address, or null without a mapping or behind its end. */
static const volatile uint32_t* locate(const void* base, uint32_t window, uint32_t off)
{
    const uint64_t offset = static_cast<uint64_t>(window) + off;
    if (base == nullptr || offset + sizeof(uint32_t) > lime_map_length())
        return nullptr;
    return reinterpret_cast<const volatile uint32_t*>(static_cast<const unsigned char*>(base) + offset);
}

uint32_t lime_load(const void* base, uint32_t window, uint32_t off)
{
    const volatile uint32_t* reg = locate(base, window, off);
    return reg ? *reg : 0;
}

void lime_store(void* base, uint32_t window, uint32_t off, uint32_t value)
{
    const volatile uint32_t* reg = locate(base, window, off);
    if (reg)
        *const_cast<volatile uint32_t*>(reg) = value;
}
