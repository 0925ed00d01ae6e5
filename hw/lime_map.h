/* SPDX-License-Identifier: MIT */
/* The mapping of the Lime display controller's framebuffer device. The functions of hw/lime_device.h and the
 * class Lime each make one.
 */
#ifndef HALDEND_HW_LIME_MAP_H
#define HALDEND_HW_LIME_MAP_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Length of the mapping in bytes: 8192 pages. That is 32 MiB, the controller's address space, where a page
 * has 4 KiB. */
size_t lime_map_length(void);

/* Maps the whole device for reading and writing. Returns the base, which lime_unmap() takes back, or null if
 * it can't be mapped. The descriptor may be closed afterwards.
 *
 * A regular file shorter than the mapping is refused: the kernel would map it and end the process at the
 * first access behind its end. */
void* lime_map(int fd);

/* Undoes lime_map(); null is allowed. */
void lime_unmap(void* base);

#ifdef __cplusplus
}
#endif

#endif
