/* SPDX-License-Identifier: MIT */
#include "board/camera/dots.h"

#include "hw/video_geometry.h"

#include <string.h>

#define COLUMNS 5
#define ROWS    7

/* A dot in pixels, and how far the shadow falls. */
#define DOT    3
#define SHADOW 2

#define WHITE 0xfff0f0f0u
#define BLACK 0xff101010u

static const char LETTERS[] = "0123456789.m";

static const uint8_t DOTS[][ROWS] = {
    {0x0e, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0e},
    {0x04, 0x0c, 0x04, 0x04, 0x04, 0x04, 0x0e},
    {0x0e, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1f},
    {0x1f, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0e},
    {0x02, 0x06, 0x0a, 0x12, 0x1f, 0x02, 0x02},
    {0x1f, 0x10, 0x1e, 0x01, 0x01, 0x11, 0x0e},
    {0x06, 0x08, 0x10, 0x1e, 0x11, 0x11, 0x0e},
    {0x1f, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08},
    {0x0e, 0x11, 0x11, 0x0e, 0x11, 0x11, 0x0e},
    {0x0e, 0x11, 0x11, 0x0f, 0x01, 0x02, 0x0c},
    {0x00, 0x00, 0x00, 0x00, 0x00, 0x0c, 0x0c},
    {0x00, 0x00, 0x1a, 0x15, 0x15, 0x15, 0x15},
};

static void fill_dot(uint32_t* pixels, uint32_t left, uint32_t top, uint32_t color)
{
    for (uint32_t y = top; y < top + DOT && y < VIDEO_HEIGHT; ++y)
        for (uint32_t x = left; x < left + DOT && x < VIDEO_WIDTH; ++x)
            pixels[y * VIDEO_WIDTH + x] = color;
}

static void write_letter(uint32_t* pixels, uint32_t x, uint32_t y, char letter, uint32_t color)
{
    const char* found = strchr(LETTERS, letter);
    for (uint32_t row = 0; found != NULL && row < ROWS; ++row)
        for (uint32_t column = 0; column < COLUMNS; ++column)
            if ((DOTS[found - LETTERS][row] >> (COLUMNS - 1 - column) & 1) != 0)
                fill_dot(pixels, x + column * DOT, y + row * DOT, color);
}

void dots_write(uint32_t* pixels, uint32_t x, uint32_t y, const char* text)
{
    for (; *text != '\0'; ++text, x += (COLUMNS + 1) * DOT) {
        write_letter(pixels, x + SHADOW, y + SHADOW, *text, BLACK);
        write_letter(pixels, x, y, *text, WHITE);
    }
}
