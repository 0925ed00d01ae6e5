/* SPDX-License-Identifier: MIT */
/* The surfaces in the pipe: brightness of the wall, with its joints and defects, and of the water. */
#include "board/camera/pipe.h"

#include <string.h>

/* A layer of noise: smooth between points that are so many texels apart, powers of two. */
struct noise {
    unsigned across_bits;
    unsigned along_bits;
    int32_t strength; /* at most to either side */
};

static const struct noise WALL[] = {
    {7, 8, 20},
    {5, 9, 16},
    {5, 5, 12},
    {3, 4, 11},
    {2, 2, 9 },
};
static const struct noise WATER[] = {
    {7, 6, 16},
    {6, 4, 16},
    {4, 2, 10},
};

#define WALL_BRIGHTNESS  168
#define WATER_BRIGHTNESS 104

/* Steps gently from 0 to 256 while part goes from 0 to 256. */
static int32_t ease(int32_t part)
{
    return part * part * (768 - 2 * part) >> 16;
}

static int32_t mix(int32_t first, int32_t second, int32_t part)
{
    return first + ((second - first) * part >> 8);
}

static uint8_t brightness(int32_t value)
{
    return (uint8_t)(value < 0 ? 0 : value > 255 ? 255 : value);
}

/* The noise's value at a point of its lattice, which repeats with the surface. */
static int32_t lattice(const struct noise* noise, uint32_t seed, uint32_t row, uint32_t column)
{
    uint32_t rows = PIPE_NEAR_ROWS >> noise->along_bits;
    uint32_t columns = PIPE_ACROSS >> noise->across_bits;
    uint32_t number = pipe_random(seed + row % rows, column % columns);
    return (int32_t)(number % (2 * (uint32_t)noise->strength + 1)) - noise->strength;
}

static void add_noise(int32_t* line, const struct noise* noise, uint32_t seed, uint32_t row)
{
    int32_t parts[PIPE_ACROSS]; /* from one point to the next */
    uint32_t cell = 1u << noise->across_bits;
    for (uint32_t i = 0; i < cell; ++i)
        parts[i] = ease((int32_t)((i << 8) >> noise->across_bits));
    uint32_t lattice_row = row >> noise->along_bits;
    int32_t down = ease((int32_t)(((row & ((1u << noise->along_bits) - 1)) << 8) >> noise->along_bits));
    int32_t left = mix(lattice(noise, seed, lattice_row, 0), lattice(noise, seed, lattice_row + 1, 0), down);
    for (uint32_t start = 0; start < PIPE_ACROSS; start += cell) {
        uint32_t column = (start >> noise->across_bits) + 1;
        int32_t right = mix(lattice(noise, seed, lattice_row, column),
                            lattice(noise, seed, lattice_row + 1, column), down);
        for (uint32_t i = 0; i < cell; ++i)
            line[start + i] += mix(left, right, parts[i]);
        left = right;
    }
}

static void fill_line(int32_t* line, int32_t value, const struct noise* noises, unsigned count, uint32_t seed,
                      uint32_t row)
{
    for (uint32_t i = 0; i < PIPE_ACROSS; ++i)
        line[i] = value;
    for (unsigned i = 0; i < count; ++i)
        add_noise(line, &noises[i], seed + (i << 16), row);
}

static void store_line(uint8_t* stored, const int32_t* line)
{
    for (uint32_t i = 0; i < PIPE_ACROSS; ++i)
        stored[i] = brightness(line[i]);
}

/* --- What is on the wall --- */

/* Dirt where the water has stood, and stains that run down from the joint. */
static void add_dirt(int32_t* line, uint32_t row)
{
    enum { EDGE = 120, HEIGHT = 56 }; /* of the water, from the bottom */
    for (int32_t i = 0; i < HEIGHT; ++i) {
        int32_t strength = 64 * (HEIGHT - i) / HEIGHT;
        line[512 - EDGE - i] -= strength;
        line[512 + EDGE + i] -= strength;
    }
    static const struct noise streaks = {5, 10, 110};
    int32_t stains[PIPE_ACROSS] = {0};
    int32_t near = row < 320 ? 320 - (int32_t)row : row >= 944 ? ((int32_t)row - 944) * 4 : 0;
    add_noise(stains, &streaks, 77, 0);
    for (uint32_t i = 0; near > 0 && i < PIPE_ACROSS; ++i)
        if (stains[i] > 24)
            line[i] -= (stains[i] - 24) * near / 512;
}

/* The joint: a gap, and in front of it and behind it the lit edges of two pipes. */
static void add_joint(int32_t* line, uint32_t row)
{
    int32_t change = 0;
    if (row < 16)
        change = -150 + (int32_t)row;
    else if (row < 26)
        change = 48 - 4 * (int32_t)(row - 16);
    else if (row >= 1006)
        change = (int32_t)(row - 1006) * 2;
    for (uint32_t i = 0; change != 0 && i < PIPE_ACROSS; ++i)
        line[i] += change;
}

static void add_crack_at(int32_t* line, int32_t place, int32_t width)
{
    for (int32_t i = -width - 3; i <= width + 3; ++i) {
        int32_t off = i < 0 ? -i : i;
        int32_t change = off < width ? -140 : off == width ? -60 : 18 - 6 * (off - width);
        line[(uint32_t)(place + i) & (PIPE_ACROSS - 1)] += change;
    }
}

/* A line that wanders along the pipe: its angle in a row. */
static int32_t wander(uint32_t seed, uint32_t row)
{
    static const struct noise shape[] = {
        {10, 8, 48},
        {10, 6, 11},
        {10, 4, 4 },
    };
    int32_t place = 0;
    for (unsigned i = 0; i < 3; ++i) {
        uint32_t lattice_row = row >> shape[i].along_bits;
        int32_t down =
            ease((int32_t)(((row & ((1u << shape[i].along_bits) - 1)) << 8) >> shape[i].along_bits));
        place += mix(lattice(&shape[i], seed + i, lattice_row, 0),
                     lattice(&shape[i], seed + i, lattice_row + 1, 0), down);
    }
    return place;
}

/* A crack along the pipe, on the upper left, and two that branch off it. */
static void add_cracks(int32_t* line, uint32_t row)
{
    int32_t place = 880 + wander(5, row);
    if (row < 900)
        add_crack_at(line, place, row < 700 ? 2 : 1);
    if (row >= 280 && row < 440)
        add_crack_at(line, place + (int32_t)(row - 280) + wander(9, row) / 4, 1);
    if (row >= 560 && row < 700)
        add_crack_at(line, place - 2 * (int32_t)(row - 560) + wander(13, row) / 4, 1);
}

/* A pipe that joins from the upper right: its end is dark, its lit inside a crescent, its rim bright. */
static void add_junction(int32_t* line, uint32_t row)
{
    enum { PLACE = 190, ALONG = 540, RADIUS = 96 };
    int32_t along = (int32_t)row - ALONG;
    for (int32_t i = -RADIUS - 12; i <= RADIUS + 12; ++i) {
        int32_t square = along * along + i * i;
        int32_t inner = (along + 34) * (along + 34) + i * i;
        if (square >= (RADIUS + 12) * (RADIUS + 12))
            continue;
        if (square >= RADIUS * RADIUS)
            line[PLACE + i] += 34;
        else if (inner < (RADIUS - 8) * (RADIUS - 8))
            line[PLACE + i] = 6 + line[PLACE + i] / 16;
        else
            line[PLACE + i] = line[PLACE + i] * 5 / 8;
    }
}

/* --- Smaller sizes --- */

/* Means of so many rows and neighbours. */
static void shrink(uint8_t* stored, const uint8_t (*rows)[PIPE_ACROSS], uint32_t count, uint32_t neighbours)
{
    uint32_t sums[PIPE_ACROSS] = {0};
    for (uint32_t row = 0; row < count; ++row)
        for (uint32_t i = 0; i < PIPE_ACROSS; ++i)
            sums[i] += rows[row][i];
    for (uint32_t i = 0; i < PIPE_ACROSS; i += neighbours) {
        uint32_t sum = 0;
        for (uint32_t j = 0; j < neighbours; ++j)
            sum += sums[i + j];
        memset(stored + i, (int)(sum / (count * neighbours)), neighbours);
    }
}

static void make_smaller_sizes(struct pipe_surface* surface)
{
    for (uint32_t row = 0; row < PIPE_MIDDLE_ROWS; ++row)
        shrink(surface->middle[row], (const uint8_t(*)[PIPE_ACROSS])surface->near[8 * row], 8, 2);
    for (uint32_t row = 0; row < PIPE_FAR_ROWS; ++row)
        shrink(surface->far[row], (const uint8_t(*)[PIPE_ACROSS])surface->middle[4 * row], 4, 8);
}

static void make_wall_line(uint8_t* stored, const int32_t* sound, int kind, uint32_t row)
{
    int32_t line[PIPE_ACROSS];
    memcpy(line, sound, sizeof line);
    if (kind == PIPE_CRACKED)
        add_cracks(line, row);
    else if (kind == PIPE_JUNCTION)
        add_junction(line, row);
    store_line(stored, line);
}

void pipe_make_walls(struct pipe_surface* walls)
{
    int32_t line[PIPE_ACROSS];
    for (uint32_t row = 0; row < PIPE_NEAR_ROWS; ++row) {
        fill_line(line, WALL_BRIGHTNESS, WALL, sizeof WALL / sizeof *WALL, 1, row);
        add_dirt(line, row);
        add_joint(line, row);
        for (int kind = 0; kind < PIPE_KINDS; ++kind)
            make_wall_line(walls[kind].near[row], line, kind, row);
    }
    for (int kind = 0; kind < PIPE_KINDS; ++kind)
        make_smaller_sizes(&walls[kind]);
}

void pipe_make_water(struct pipe_surface* surface)
{
    int32_t line[PIPE_ACROSS];
    for (uint32_t row = 0; row < PIPE_NEAR_ROWS; ++row) {
        fill_line(line, WATER_BRIGHTNESS, WATER, sizeof WATER / sizeof *WATER, 2, row);
        for (uint32_t i = 0; i < PIPE_ACROSS; ++i)
            if (line[i] > WATER_BRIGHTNESS + 18) /* where a ripple mirrors the lamps */
                line[i] += (line[i] - WATER_BRIGHTNESS - 18) * 4;
        store_line(surface->near[row], line);
    }
    make_smaller_sizes(surface);
}
