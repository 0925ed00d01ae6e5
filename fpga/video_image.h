/* SPDX-License-Identifier: MIT */
/* The stored video frame, copied between the FPGA's image memory and a buffer.
 *
 * The FPGA holds a frame of 576 lines of 720 32-bit words as two fields of 288 lines. A buffer holds it as a
 * frame, bottom line first, with the words in the FPGA's byte order. size is the buffer's length in bytes,
 * 1,658,880 for a whole frame; a smaller buffer gets only the lines that lie within it.
 *
 * Kept: each direction leaves one line out, as in every picture that clients have saved. A read leaves out
 * the top line of the picture, the first field's first: the last buffer line holds the bottom line, as the
 * first one does. A write leaves out the first buffer line: the bottom line of the picture, the second
 * field's last, becomes zero.
 */
#ifndef HALDEND_FPGA_VIDEO_IMAGE_H
#define HALDEND_FPGA_VIDEO_IMAGE_H

#include "hw/video_geometry.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of a whole frame. */
#define VIDEO_IMAGE_SIZE VIDEO_FRAME_BYTES

/* Reads the frame into the buffer. Returns 0, or -1 if there is no memory; then nothing was read. A failed
 * transfer is not reported. The second argument is unused. */
int get_video_image_from_fpga(unsigned char* buffer, int unused, size_t size);

/* Writes the frame from the buffer, and leaves the buffer in the FPGA's field order. Does nothing if there is
 * no memory; a failed transfer is not reported. The second argument is unused. */
void write_video_image_to_fpga(unsigned char* buffer, int unused, size_t size);

#ifdef __cplusplus
}
#endif

#endif
