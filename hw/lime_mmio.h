/* The one door to the Lime display controller: every load and store of its registers, those of the C level
 * and those of the Lime class, goes through these two functions. Unit tests put recorders in their place
 * by defining both; they have a source of their own for that.
 *
 * The accesses are single 32-bit volatile ones in the controller's byte order, with nothing around them.
 * A base of null (no device, or one that couldn't be mapped) and offsets beyond the mapping are kept away
 * from memory: the store is dropped, the load gives 0.
 */
#ifndef HALDEND_HW_LIME_MMIO_H
#define HALDEND_HW_LIME_MMIO_H

#include "hw/lime_registers.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One register: base is the mapping or null, off a multiple of 4 inside the window. */
uint32_t lime_load(const void* base, uint32_t window, uint32_t off);
void lime_store(void* base, uint32_t window, uint32_t off, uint32_t value);

#ifdef __cplusplus
}
#endif

#endif
