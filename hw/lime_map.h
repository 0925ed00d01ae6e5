/* The mapping of the Lime display controller's framebuffer device, as the C level and the Lime class both
 * make it, each for itself.
 */
#ifndef HALDEND_HW_LIME_MAP_H
#define HALDEND_HW_LIME_MAP_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Length of the mapping in bytes: 8192 pages, 32 MiB where a page has 4 KiB. */
size_t lime_map_length(void);

/* Maps the whole device for reading and writing. Returns the base, or null if it can't be mapped. A regular
 * file shorter than the mapping counts as one that can't: the kernel would map it, and end the process at
 * the first access behind its end. */
void* lime_map(int fd);

/* Undoes lime_map(); null is allowed. */
void lime_unmap(void* base);

#ifdef __cplusplus
}
#endif

#endif
