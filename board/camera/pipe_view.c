/* SPDX-License-Identifier: MIT */
/* What each pixel of the view looks at, in a round pipe with water in it.
 *
 * A ray through a pixel that is r pixels from the centre meets the wall at the distance focal length * radius / r, and
 * the surface of the water at focal length * depth / dy, whichever comes first. Coordinates are doubled, because the
 * centre lies between pixels.
 */
#include "board/camera/pipe.h"

/* Focal length of 450 pixels times the radius of 150 mm, in texels. */
#define REACH 69120
/* The water's surface is below the axis by this share of the radius, in 1000ths. */
#define WATER_DEPTH 735
/* Units across the water a texel. */
#define WATER_UNITS 4

static uint32_t root(uint32_t square)
{
    uint32_t result = 0;
    for (uint32_t bit = 1u << 30; bit != 0; bit >>= 2) {
        if (square >= result + bit) {
            square -= result + bit;
            result = (result >> 1) + bit;
        } else {
            result >>= 1;
        }
    }
    return result;
}

/* The angle of a point to the right and above, from the vertical: 0 to 256. Off by a quarter of a degree at most. */
static uint32_t quarter_angle(uint32_t right, uint32_t up)
{
    int flat = right > up;
    uint64_t slope = 4096ull * (flat ? up : right) / (flat ? right : up);
    uint32_t angle = (uint32_t)((slope * 128 * 4096 + 44 * slope * (4096 - slope) + (1u << 23)) >> 24);
    return flat ? 256 - angle : angle;
}

static uint32_t pixel(uint32_t across, uint32_t distance, uint32_t water)
{
    if (distance >= PIPE_FAR)
        distance = PIPE_FAR - 1;
    return (across & (PIPE_ACROSS - 1)) | distance << PIPE_ACROSS_BITS |
           water << (PIPE_ACROSS_BITS + PIPE_FAR_BITS);
}

/* right and below: from the centre, in half pixels, never 0. */
static uint32_t look(int32_t right, int32_t below)
{
    uint32_t side = (uint32_t)(right < 0 ? -right : right);
    uint32_t height = (uint32_t)(below < 0 ? -below : below);
    uint32_t radius = root((side * side + height * height) * 64); /* 16ths of a pixel */
    if (below > 0 && height * 8 * 1000 > radius * WATER_DEPTH) {
        uint32_t distance = (uint32_t)(2ull * REACH * WATER_DEPTH / (1000ull * height));
        int32_t place = (int32_t)(distance * side * WATER_UNITS / (2 * 450));
        return pixel((uint32_t)(PIPE_ACROSS / 2 + (right < 0 ? -place : place)), distance, 1);
    }
    uint32_t angle = quarter_angle(side, height);
    if (below > 0)
        angle = 512 - angle;
    if (right < 0)
        angle = 1024 - angle;
    return pixel(angle, 16u * REACH / radius, 0);
}

void pipe_make_view(uint32_t (*view)[PIPE_VIEW_WIDTH])
{
    for (int32_t y = 0; y < PIPE_VIEW_HEIGHT; ++y)
        for (int32_t x = 0; x < PIPE_VIEW_WIDTH; ++x)
            view[y][x] = look(2 * x + 1 - PIPE_VIEW_WIDTH, 2 * y + 1 - PIPE_VIEW_HEIGHT);
}
