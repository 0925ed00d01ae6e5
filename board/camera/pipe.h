/* SPDX-License-Identifier: MIT */
/* The pipe that the moving camera drives through: the tables of its geometry and of its surfaces.
 *
 * Lengths along the pipe are in texels, 1024 a metre. Angles are in 1024ths of the circle, from the top, clockwise as
 * the camera sees it. All of it is made of integers, without a table of the host: the same bytes everywhere.
 */
#ifndef HALDEND_BOARD_CAMERA_PIPE_H
#define HALDEND_BOARD_CAMERA_PIPE_H

#include "hw/video_geometry.h"

#include <stdint.h>

/* How far the camera sways, pixels to either side; the table of the view is larger by that. */
#define PIPE_SWAY_X 24
#define PIPE_SWAY_Y 16

#define PIPE_VIEW_WIDTH  (VIDEO_WIDTH + 2 * PIPE_SWAY_X)
#define PIPE_VIEW_HEIGHT (VIDEO_HEIGHT + 2 * PIPE_SWAY_Y)

/* A pixel of the view: the angle on the wall, or the place across the water, in the lowest 10 bits; above them the
 * distance from the camera, cut at PIPE_FAR - 1; above that 1 for water. */
#define PIPE_ACROSS      1024
#define PIPE_ACROSS_BITS 10
#define PIPE_FAR         4096
#define PIPE_FAR_BITS    12

#define PIPE_METRE 1024 /* texels from one joint to the next */

/* Kinds of pipe lengths. */
enum { PIPE_SOUND, PIPE_CRACKED, PIPE_JUNCTION, PIPE_KINDS };

/* Surfaces in three sizes, because what is far away is smaller than its pixels: a row is 1, 8 or 32 texels. */
#define PIPE_NEAR_ROWS   1024
#define PIPE_MIDDLE_ROWS 128
#define PIPE_FAR_ROWS    32

struct pipe_surface {
    uint8_t near[PIPE_NEAR_ROWS][PIPE_ACROSS];
    uint8_t middle[PIPE_MIDDLE_ROWS][PIPE_ACROSS];
    uint8_t far[PIPE_FAR_ROWS][PIPE_ACROSS];
};

/* A number that looks random, the same for the same numbers. */
static inline uint32_t pipe_random(uint32_t a, uint32_t b)
{
    uint32_t mixed = a * 0x9e3779b1u ^ (b + 0x7f4a7c15u) * 0x85ebca6bu;
    mixed = (mixed ^ mixed >> 15) * 0x2c1b3c6du;
    mixed = (mixed ^ mixed >> 12) * 0x297a2d39u;
    return mixed ^ mixed >> 15;
}

void pipe_make_view(uint32_t (*view)[PIPE_VIEW_WIDTH]);
void pipe_make_walls(struct pipe_surface* walls); /* one for each kind */
void pipe_make_water(struct pipe_surface* surface);

#endif
