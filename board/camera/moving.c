/* SPDX-License-Identifier: MIT */
#include "board/camera/moving.h"

#include "board/camera/dots.h"
#include "board/camera/pipe.h"

#include <string.h>

#define SPEED      8 /* texels a frame */
#define WATER_FLOW 3 /* more for the water, which comes towards the camera */

/* Distances, in texels, from which on the smaller sizes of a surface are used. */
#define MIDDLE_FROM 400
#define FAR_FROM    1300

#define NOISE_COUNT 65536
#define NOISE_MOST  8

/* Colours by brightness, with room for the noise; first those of the wall, then those of the water. */
#define SHADES 512

#define KEYS (2 * PIPE_FAR) /* of a pixel of the view, above its place across */

struct moving {
    uint32_t view[PIPE_VIEW_HEIGHT][PIPE_VIEW_WIDTH];
    struct pipe_surface walls[PIPE_KINDS];
    struct pipe_surface water;
    uint8_t noise[NOISE_COUNT];
    uint16_t light[KEYS]; /* 256 for full light */
    uint32_t colors[2 * SHADES];
};

/* What a frame shows at each distance. */
struct scene {
    const uint8_t* rows[KEYS];
    uint16_t light[KEYS];
};

/* --- Tables --- */

/* Three throws of a die: small values are as rare as large ones. */
static void make_noise(uint8_t* noise)
{
    for (uint32_t i = 0; i < NOISE_COUNT; ++i) {
        uint32_t number = pipe_random(3, i);
        noise[i] = (uint8_t)((number & 3) + (number >> 8 & 3) + (number >> 16 & 2));
    }
}

/* The camera carries the lamps: their light falls off with the distance. */
static void make_light(uint16_t* light)
{
    for (uint32_t distance = 0; distance < PIPE_FAR; ++distance) {
        uint32_t reach = 560 * 560;
        uint32_t full = 270 * reach / (reach + distance * distance);
        light[distance] = (uint16_t)full;
        light[PIPE_FAR + distance] = (uint16_t)full;
    }
}

static uint32_t color(uint32_t red, uint32_t green, uint32_t blue)
{
    return 0xff000000u | (red > 255 ? 255 : red) << 16 | (green > 255 ? 255 : green) << 8 |
           (blue > 255 ? 255 : blue);
}

static void make_colors(uint32_t* colors)
{
    for (uint32_t i = 0; i < SHADES; ++i) {
        colors[i] = color(6 + i, 7 + i * 60 / 64, 10 + i * 53 / 64);
        colors[SHADES + i] = color(7 + i * 57 / 64, 8 + i * 54 / 64, 9 + i * 40 / 64);
    }
}

size_t moving_bytes(void)
{
    return sizeof(struct moving);
}

struct moving* moving_prepare(void* memory)
{
    struct moving* moving = memory;
    pipe_make_view(moving->view);
    pipe_make_walls(moving->walls);
    pipe_make_water(&moving->water);
    make_noise(moving->noise);
    make_light(moving->light);
    make_colors(moving->colors);
    return moving;
}

/* --- A frame --- */

static const uint8_t* row_of(const struct pipe_surface* surface, uint32_t place, uint32_t distance)
{
    place %= PIPE_METRE;
    if (distance < MIDDLE_FROM)
        return surface->near[place];
    return distance < FAR_FROM ? surface->middle[place / 8] : surface->far[place / 32];
}

static int kind_of(uint32_t length)
{
    static const uint8_t kinds[] = {PIPE_SOUND, PIPE_CRACKED, PIPE_SOUND,   PIPE_JUNCTION,
                                    PIPE_SOUND, PIPE_SOUND,   PIPE_CRACKED, PIPE_SOUND};
    return kinds[length % sizeof kinds];
}

/* No two pipes are of the same brightness. */
static uint32_t tone_of(uint32_t length)
{
    return 244 + pipe_random(11, length) % 24;
}

static void make_scene(struct scene* scene, const struct moving* moving, uint32_t frame)
{
    uint32_t camera = frame * SPEED;
    for (uint32_t distance = 0; distance < PIPE_FAR; ++distance) {
        uint32_t place = camera + distance;
        uint32_t length = place / PIPE_METRE;
        scene->rows[distance] = row_of(&moving->walls[kind_of(length)], place, distance);
        scene->light[distance] = (uint16_t)(moving->light[distance] * tone_of(length) >> 8);
        scene->rows[PIPE_FAR + distance] = row_of(&moving->water, place + frame * WATER_FLOW, distance);
        scene->light[PIPE_FAR + distance] = moving->light[PIPE_FAR + distance];
    }
}

/* From -amplitude to amplitude and back, once in so many frames. */
static int32_t swing(uint32_t frame, uint32_t period, int32_t amplitude)
{
    int32_t phase = (int32_t)(frame % period * 1024 / period); /* two parabolas in place of a sine */
    int32_t half = phase % 512;
    int32_t height = half * (512 - half) * amplitude / (256 * 256);
    return phase < 512 ? height : -height;
}

static void draw_line(uint32_t* line, const uint32_t* view, const struct scene* scene, const uint8_t* noise,
                      const uint32_t* colors)
{
    for (uint32_t x = 0; x < VIDEO_WIDTH; ++x) {
        uint32_t seen = view[x];
        uint32_t key = seen >> PIPE_ACROSS_BITS;
        uint32_t shade = (uint32_t)scene->rows[key][seen & (PIPE_ACROSS - 1)] * scene->light[key] >> 8;
        line[x] = colors[(key >> PIPE_FAR_BITS) * SHADES + shade + noise[x]];
    }
}

static void draw_view(const struct moving* moving, const struct scene* scene, uint32_t frame,
                      uint32_t* pixels)
{
    uint32_t left = (uint32_t)(PIPE_SWAY_X + swing(frame, 226, 15) + swing(frame, 91, 6));
    uint32_t top = (uint32_t)(PIPE_SWAY_Y + swing(frame, 178, 8) + swing(frame, 74, 4));
    for (uint32_t y = 0; y < VIDEO_HEIGHT; ++y) {
        uint32_t noise = pipe_random(frame, y) % (NOISE_COUNT - VIDEO_WIDTH);
        draw_line(pixels + y * VIDEO_WIDTH, moving->view[top + y] + left, scene, moving->noise + noise,
                  moving->colors);
    }
}

/* Writes the distance in centimetres as metres: at least three digits, the last two behind the point. */
static char* write_distance(char* end, uint32_t centimetres)
{
    static const char unit[] = " m";
    char* text = end - sizeof unit;
    memcpy(text, unit, sizeof unit);
    for (unsigned digits = 0; digits < 5 || centimetres != 0; ++digits) {
        if (digits == 2)
            *--text = '.';
        *--text = (char)('0' + centimetres % 10);
        centimetres /= 10;
    }
    return text;
}

void moving_frame(const struct moving* moving, uint32_t frame, uint32_t* pixels)
{
    struct scene scene;
    make_scene(&scene, moving, frame);
    draw_view(moving, &scene, frame, pixels);
    char text[32];
    uint32_t centimetres = (uint32_t)((uint64_t)frame * SPEED * 100 / PIPE_METRE);
    dots_write(pixels, 40, 528, write_distance(text + sizeof text, centimetres));
}
