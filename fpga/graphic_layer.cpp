/* SPDX-License-Identifier: MIT */
/* The graphic layer. */
#include "fpga/graphic_layer.h"

#include "fpga/fpga_block.h"
#include "fpga/palettes.h"
#include "fpga/screen.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <cstdlib>
#include <cstring>

static const int PAGES = static_cast<int>(FPGA_PAGES);

const uint32_t graphic_page_addr_offset[9] = {
    0 * FPGA_GRAPHIC_PAGE_STRIDE, 1 * FPGA_GRAPHIC_PAGE_STRIDE, 2 * FPGA_GRAPHIC_PAGE_STRIDE,
    3 * FPGA_GRAPHIC_PAGE_STRIDE, 4 * FPGA_GRAPHIC_PAGE_STRIDE, 5 * FPGA_GRAPHIC_PAGE_STRIDE,
    6 * FPGA_GRAPHIC_PAGE_STRIDE, 7 * FPGA_GRAPHIC_PAGE_STRIDE, 8 * FPGA_GRAPHIC_PAGE_STRIDE,
};

static bool page_exists(int page)
{
    return page >= 0 && page < PAGES;
}

static bool can_draw(int page)
{
    return current_screen != nullptr && page_exists(page);
}

static uint32_t pixel_address(uint32_t x, uint32_t y, int page)
{
    return graphic_page_addr_offset[page] + current_screen->graphic_width * y + x;
}

/* The same with the screen's offsets, which keep drawings inside the visible picture. */
static uint32_t inset_pixel_address(uint32_t x, uint32_t y, int page)
{
    return pixel_address(x + current_screen->graphic_x_offset, y + current_screen->graphic_y_offset, page);
}

int init_fpga_graphic_layer(void)
{
    return write_fpga_words<GRAPHIC_COLORS>(FPGA_GRAPHIC_PALETTE, std_graphic_color_tab, GRAPHIC_COLORS);
}

int clear_graphic_memory(void)
{
    const unsigned char zeros[VIDEO_WIDTH] = {};
    int result = 0;
    for (const uint32_t page : graphic_page_addr_offset)
        for (uint32_t line = 0; line < VIDEO_FIELD_LINES; ++line)
            result = write_fpga_block(page + line * VIDEO_WIDTH, zeros, sizeof(zeros));
    return result;
}

void clear_graphic_page(int page)
{
    if (!can_draw(page))
        return;
    auto* zeros = static_cast<unsigned char*>(calloc(1, current_screen->graphic_width));
    if (zeros == nullptr)
        return;
    for (uint32_t line = 0; line < current_screen->graphic_height; ++line)
        write_fpga_block(pixel_address(0, line, page), zeros, current_screen->graphic_width);
    free(zeros);
}

void set_active_grahic_write_page(int page)
{
    if (current_screen != nullptr && page < PAGES)
        current_screen->graphic_write_page = static_cast<uint32_t>(page);
}

void show_graphic_page(int page)
{
    if (page_exists(page))
        fpga_device_write_reg(FPGA_GRAPHIC_SHOW, graphic_page_addr_offset[page] >> 8);
}

unsigned int get_active_graphic_color(void)
{
    return current_screen != nullptr ? current_screen->graphic_color : 0;
}

void set_active_graphic_color(unsigned int color)
{
    if (current_screen != nullptr)
        current_screen->graphic_color = color;
}

int get_graphic_image(void* buffer, int page, size_t length)
{
    return page_exists(page) ? read_fpga_block(graphic_page_addr_offset[page], buffer, length) : -1;
}

/* count bytes of one colour; the caller frees them. Null if there is no memory. */
static unsigned char* colored_line(size_t count, unsigned int color)
{
    auto* line = static_cast<unsigned char*>(malloc(count != 0 ? count : 1));
    if (line != nullptr)
        memset(line, static_cast<int>(color & 0xff), count);
    return line;
}

int write_graphic_pixel_xy(unsigned int x, unsigned int y, unsigned int color, size_t count, int page)
{
    unsigned char* line = can_draw(page) ? colored_line(count, color) : nullptr;
    if (line == nullptr)
        return -1;
    const int result = write_fpga_block(pixel_address(x, y, page), line, count);
    free(line);
    return result;
}

int write_graphic_window(unsigned int x, unsigned int y, unsigned int width, unsigned int height,
                         unsigned int color, int page)
{
    unsigned char* line = can_draw(page) ? colored_line(width, color) : nullptr;
    if (line == nullptr)
        return -1;
    int result = 0;
    for (unsigned int r = 0; r < height; ++r)
        result = write_fpga_block(inset_pixel_address(x, y + r, page), line, width);
    free(line);
    return result;
}

static uint32_t little_endian_16(const unsigned char* bytes)
{
    return bytes[0] | static_cast<uint32_t>(bytes[1]) << 8;
}

static uint32_t little_endian_32(const unsigned char* bytes)
{
    return little_endian_16(bytes) | little_endian_16(bytes + 2) << 16;
}

int write_graphic_image_xy(unsigned int x, unsigned int y, unsigned char* image, int page, unsigned int base)
{
    if (!can_draw(page))
        return -1;
    const uint32_t width = little_endian_16(image);
    const uint32_t height = little_endian_16(image + 2);
    const uint32_t colors = little_endian_16(image + 4);
    const unsigned char* palette = image + 8;
    unsigned char* pixels = image + 8 + size_t{4} * colors;

    int result = 0;
    for (uint32_t i = 0; i < colors; ++i)
        result = fpga_device_write_reg(FPGA_GRAPHIC_PALETTE + 4 * (base + i),
                                       little_endian_32(palette + size_t{4} * i));
    for (size_t i = 0; i < size_t{width} * height; ++i)
        pixels[i] = static_cast<unsigned char>(pixels[i] + base);
    for (uint32_t r = 0; r < height; ++r)
        result = write_fpga_block(inset_pixel_address(x, y + r, page), pixels + size_t{r} * width, width);
    return result;
}
