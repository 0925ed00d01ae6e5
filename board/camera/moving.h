/* SPDX-License-Identifier: MIT */
/* The moving camera: a drive through a pipe, at 0.2 m a second.
 *
 * Joints pass by each metre, some pipes have a crack or a junction, water flows at the bottom, and the picture says how
 * far the camera has come. Its noise, and its detail, are such that MPEG-2 at 22 000 000 bytes a minute keeps it well.
 *
 * A picture depends on its number alone, and is made of integers: the same bytes on every processor. It needs nothing
 * but the C library: the preloaded library makes the same pictures as the programs around it.
 */
#ifndef HALDEND_BOARD_CAMERA_MOVING_H
#define HALDEND_BOARD_CAMERA_MOVING_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The drive's tables, some 7 MB; they take some ten milliseconds to make, and each picture one or two. */
struct moving;

/* Memory that the tables need, in bytes. */
size_t moving_bytes(void);

/* Makes the tables in that memory, which must be aligned for any type. Nothing has to be freed but the memory. */
struct moving* moving_prepare(void* memory);

/* The picture of a frame, from 0, 25 a second: 720 x 576 pixels 0xffRRGGBB, as numbers, top line first. */
void moving_frame(const struct moving* moving, uint32_t frame, uint32_t* pixels);

#ifdef __cplusplus
}
#endif

#endif
