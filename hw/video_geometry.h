/* SPDX-License-Identifier: MIT */
/* The geometry of the video picture (PAL), and of the overlay's text on it.
 *
 * A frame is 720 x 576 pixels of 32 bits. It is transmitted as two fields of 288 lines: first the even frame
 * lines, then the odd ones. Frame lines count from 0 at the top, pixels from 0 at the left.
 */
#ifndef HALDEND_HW_VIDEO_GEOMETRY_H
#define HALDEND_HW_VIDEO_GEOMETRY_H

/* Pixels and frame lines. */
#define VIDEO_WIDTH       720
#define VIDEO_HEIGHT      576
#define VIDEO_FIELD_LINES (VIDEO_HEIGHT / 2)

/* Frames a second. */
#define VIDEO_FRAME_RATE 25

/* Bytes of a stored line and of a stored frame. */
#define VIDEO_LINE_BYTES  (4u * VIDEO_WIDTH)
#define VIDEO_FRAME_BYTES (VIDEO_LINE_BYTES * VIDEO_HEIGHT)

/* Visible character cells of a text page. */
#define VIDEO_TEXT_COLUMNS 53
#define VIDEO_TEXT_ROWS    26

#endif
