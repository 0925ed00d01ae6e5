/* SPDX-License-Identifier: MIT */
/* Every load and store of the Lime display controller's registers, those of the functions of C linkage and
 * those of the class Lime, goes through these two functions. Unit tests define both themselves, as recorders;
 * so the two have a source file of their own.
 *
 * Each access is a single volatile 32-bit one in the controller's byte order, without barrier or read-back.
 */
#ifndef HALDEND_HW_LIME_MMIO_H
#define HALDEND_HW_LIME_MMIO_H

#include "hw/lime_registers.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One register: base is the mapping or null, window its offset in the mapping, off a multiple of 4 in the
 * window. If base is null (no device, or one that couldn't be mapped), or the register lies behind the
 * mapping's end, the store is dropped and the load gives 0. */
uint32_t lime_load(const void* base, uint32_t window, uint32_t off);
void lime_store(void* base, uint32_t window, uint32_t off, uint32_t value);

#ifdef __cplusplus
}
#endif

#endif
