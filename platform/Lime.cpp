/* SPDX-License-Identifier: MIT */
#include "platform/Lime.h"

#include "hw/lime_map.h"
#include "hw/lime_mmio.h"
#include "hw/lime_registers.h"
#include "hw/video_geometry.h"

#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace
{

const unsigned short SIZE_MAX_12BIT = 4095;
const unsigned short FULL_WIDTH_VISIBLE = 688; // the part of VIDEO_WIDTH that the monitor gets
const float CAPTURE_WIDTH = VIDEO_WIDTH;
const float CAPTURE_HEIGHT = VIDEO_HEIGHT;
const float SCALE_ONE = 2048.0F; // 1.0 in the capture scale's fixed point
const float MARGIN_PIXELS = 32.0F;
const float MARGIN_LINES = 3.0F;

} // namespace

Lime* Lime::ins = nullptr;
int Lime::fbfd = 0;
void* Lime::fbp = nullptr;
QString Lime::fbpath;
std::uint16_t Lime::m_u16DisplayedVideoWidth = 688;
std::uint16_t Lime::m_u16DisplayedVideoHeight = 573;

Lime& Lime::instance()
{
    if (ins == nullptr)
        ins = new Lime;
    return *ins;
}

Lime::~Lime()
{
    // A caller after finalize() must not reach the deleted object.
    ins = nullptr;
}

void Lime::reinit_framebuffer_device(QString path)
{
    free_lime_framebuffer();
    fbpath = std::move(path);
    map_lime_framebuffer();
}

void* Lime::map_lime_framebuffer()
{
    fbfd = open(fbpath.toLocal8Bit().constData(), O_RDWR);
    if (fbfd != 0)
        fbp = lime_map(fbfd);
    return fbp;
}

void Lime::free_lime_framebuffer()
{
    if (fbfd != 0) {
        close(fbfd);
        fbfd = 0;
    }
    if (fbp != nullptr) {
        lime_unmap(fbp);
        fbp = nullptr;
    }
}

void Lime::lime_video_resize(unsigned short w, unsigned short h)
{
    if (w == 0 || h == 0 || w > SIZE_MAX_12BIT || h > SIZE_MAX_12BIT)
        return;

    const bool bMargins = w < VIDEO_WIDTH;
    const float fWidth = static_cast<float>(w) + (bMargins ? MARGIN_PIXELS : 0.0F);
    const float fHeight = static_cast<float>(h) + (bMargins ? MARGIN_LINES : 0.0F);
    const auto u32Vertical = static_cast<std::uint32_t>(CAPTURE_HEIGHT / fHeight * SCALE_ONE);
    const auto u32Horizontal = static_cast<std::uint32_t>(CAPTURE_WIDTH / fWidth * SCALE_ONE);
    lime_write_capt_reg(LIME_CSC, u32Vertical << 16 | u32Horizontal);

    if (w == VIDEO_WIDTH)
        w = FULL_WIDTH_VISIBLE;
    lime_write_disp_reg(LIME_L1WWH, static_cast<std::uint32_t>(h) << 16 | w);
    m_u16DisplayedVideoWidth = w;
    m_u16DisplayedVideoHeight = h;
}

void Lime::lime_video_position(unsigned int x, unsigned int y)
{
    lime_write_disp_reg(LIME_L1WXY, y << 16 | x);
}

std::uint16_t Lime::getDisplayedVideoWidth()
{
    return m_u16DisplayedVideoWidth;
}

std::uint16_t Lime::getDisplayedVideoHeight()
{
    return m_u16DisplayedVideoHeight;
}

void Lime::lime_layer_enable(int layer, bool on)
{
    if (layer < 0 || layer >= LIME_LAYERS)
        return;
    const std::uint32_t u32Mask = LIME_DCM1_LAYER(layer);
    const std::uint32_t u32Mode = lime_read_disp_reg(LIME_DCM1);
    lime_write_disp_reg(LIME_DCM1, on ? u32Mode | u32Mask : u32Mode & ~u32Mask);
}

void Lime::lime_set_background_color(unsigned char r, unsigned char g, unsigned char b)
{
    lime_write_disp_reg(LIME_DBGC,
                        static_cast<std::uint32_t>(r) << 16 | static_cast<std::uint32_t>(g) << 8 | b);
}

#define LIME_WINDOW_ACCESS(name, window)                                 \
    void Lime::lime_write_##name(std::uint32_t off, std::uint32_t value) \
    {                                                                    \
        lime_store(fbp, window, off, value);                             \
    }                                                                    \
    std::uint32_t Lime::lime_read_##name(std::uint32_t off)              \
    {                                                                    \
        return lime_load(fbp, window, off);                              \
    }

LIME_WINDOW_ACCESS(disp_reg, LIME_DISP_WINDOW)
LIME_WINDOW_ACCESS(capt_reg, LIME_CAPT_WINDOW)
LIME_WINDOW_ACCESS(host_reg, LIME_HOST_WINDOW)
LIME_WINDOW_ACCESS(draw_reg, LIME_DRAW_WINDOW)
LIME_WINDOW_ACCESS(pio_reg, LIME_PIO_WINDOW)
