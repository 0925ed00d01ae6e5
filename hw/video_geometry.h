/* The geometry of the video picture, and of the overlay's text on it.
 *
 * A frame is 720 x 576 pixels of 32 bits. It is transmitted as two fields of 288 lines: the even frame lines first,
 * then the odd ones.
 */
#ifndef HALDEND_HW_VIDEO_GEOMETRY_H
#define HALDEND_HW_VIDEO_GEOMETRY_H

/* Pixels and frame lines. */
#define VIDEO_WIDTH       720
#define VIDEO_HEIGHT      576
#define VIDEO_FIELD_LINES (VIDEO_HEIGHT / 2)

/* Bytes of a stored line and of a stored frame. */
#define VIDEO_LINE_BYTES  (4u * VIDEO_WIDTH)
#define VIDEO_FRAME_BYTES (VIDEO_LINE_BYTES * VIDEO_HEIGHT)

/* Character cells of a text page that are seen. */
#define VIDEO_TEXT_COLUMNS 53
#define VIDEO_TEXT_ROWS    26

#endif
