/* SPDX-License-Identifier: MIT */
#include "board/camera/decoder.h"

#include "hw/saa71xx_registers.h"

/* Fixed point: factors have 12 fraction bits. */
#define ONE 4096

/* Weights of red, green and blue in luma, in 256ths. */
#define RED   77
#define GREEN 150
#define BLUE  29

/* V is R - Y times this, U is B - Y times this; in 1000ths. */
#define V_SHARE 877
#define U_SHARE 492

/* The decoder's work on colours. */
struct transfer {
    int32_t luma;   /* factor */
    int32_t offset; /* added to luma; 20 fraction bits */
    int32_t red[2]; /* factors of R - Y and B - Y, here and below */
    int32_t green[2];
    int32_t blue[2];
};

bool chip_is_zeroed(const uint8_t* registers)
{
    for (unsigned i = 0; i < 256; ++i)
        if (registers[i] != 0 && i != SAA7113_STATUS)
            return false;
    return true;
}

/* Sine of an angle in 256ths of the circle. */
static int32_t sine(uint8_t angle)
{
    static const int16_t quarter[] = {
        0,    101,  201,  301,  401,  501,  601,  700,  799,  897,  995,  1092, 1189, 1285, 1380, 1474, 1567,
        1660, 1751, 1842, 1931, 2019, 2106, 2191, 2276, 2359, 2440, 2520, 2598, 2675, 2751, 2824, 2896, 2967,
        3035, 3102, 3166, 3229, 3290, 3349, 3406, 3461, 3513, 3564, 3612, 3659, 3703, 3745, 3784, 3822, 3857,
        3889, 3920, 3948, 3973, 3996, 4017, 4036, 4052, 4065, 4076, 4085, 4091, 4095, 4096,
    };
    unsigned part = angle % 128u;
    int32_t height = quarter[part <= 64 ? part : 128 - part];
    return angle < 128 ? height : -height;
}

/* A byte as a signed number. */
static int32_t signed_byte(uint8_t byte)
{
    return byte < 128 ? byte : byte - 256;
}

static struct transfer transfer_of(const uint8_t* registers)
{
    int32_t brightness = registers[SAA7113_BRIGHTNESS];
    int32_t contrast = signed_byte(registers[SAA7113_CONTRAST]);
    int32_t saturation = signed_byte(registers[SAA7113_SATURATION]);
    uint8_t hue = registers[SAA7113_HUE];
    int32_t straight = sine((uint8_t)(hue + 64)) * saturation / DECODER_SATURATION;
    int32_t crossed = sine(hue) * saturation / DECODER_SATURATION;

    /* Black, 16, comes as 16 + 3; 219 steps of the signal are 255 of a colour. */
    int32_t standard = SAA7113_BRIGHTNESS_STANDARD;
    int32_t black = 16 + standard - DECODER_BRIGHTNESS;
    int64_t steps = (int64_t)(brightness - 16) * DECODER_CONTRAST + (int64_t)contrast * (black - standard);
    struct transfer transfer = {
        .luma = contrast * ONE / DECODER_CONTRAST,
        .offset = (int32_t)(steps * 255 * (1 << 20) / (219 * DECODER_CONTRAST)),
        .red = {straight,                    -crossed * U_SHARE / V_SHARE},
        .blue = {crossed * V_SHARE / U_SHARE, straight                    },
    };
    for (int i = 0; i < 2; ++i)
        transfer.green[i] = -(RED * transfer.red[i] + BLUE * transfer.blue[i]) / GREEN;
    return transfer;
}

static uint32_t clamp(int32_t value)
{
    value >>= 20;
    return (uint32_t)(value < 0 ? 0 : value > 255 ? 255 : value);
}

static uint32_t transferred(const struct transfer* transfer, uint32_t pixel)
{
    int32_t red = (int32_t)(pixel >> 16 & 0xff) * 256;
    int32_t green = (int32_t)(pixel >> 8 & 0xff) * 256;
    int32_t blue = (int32_t)(pixel & 0xff) * 256;
    int32_t luma = (RED * red + GREEN * green + BLUE * blue) / 256;
    int32_t base = luma * transfer->luma + transfer->offset + (1 << 19);
    red -= luma;
    blue -= luma;
    return 0xff000000u | clamp(base + red * transfer->red[0] + blue * transfer->red[1]) << 16 |
           clamp(base + red * transfer->green[0] + blue * transfer->green[1]) << 8 |
           clamp(base + red * transfer->blue[0] + blue * transfer->blue[1]);
}

static bool changes_nothing(const uint8_t* registers)
{
    return registers[SAA7113_BRIGHTNESS] == DECODER_BRIGHTNESS &&
           registers[SAA7113_CONTRAST] == DECODER_CONTRAST &&
           registers[SAA7113_SATURATION] == DECODER_SATURATION && registers[SAA7113_HUE] == DECODER_HUE;
}

void decoder_apply(const uint8_t* registers, uint32_t* pixels, size_t count)
{
    if (changes_nothing(registers))
        return;
    struct transfer transfer = transfer_of(registers);
    bool silent = chip_is_zeroed(registers);
    for (size_t i = 0; i < count; ++i)
        pixels[i] = silent ? 0xff000000u : transferred(&transfer, pixels[i]);
}
