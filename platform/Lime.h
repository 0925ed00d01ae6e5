/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_PLATFORM_LIME_H
#define HALDEND_PLATFORM_LIME_H

#include <QString>

#include <cstdint>

/// The Lime display controller after start-up: the live video window (display layer 1), the layers and the
/// background colour. The platform sets the controller up from its register file.
///
/// A singleton without data of its own: callers fetch instance() first, then use the static operations. The
/// class has a mapping of the framebuffer device beside that of the register tables. Before
/// reinit_framebuffer_device(), and if that fails, writes are dropped and reads give 0. No operation reports
/// failure. Use it from the event loop's thread.
///
/// Coordinates are pixels and frame lines from the top left. Register offsets are bytes from the start of the
/// named register window; registers are 32 bits wide, in the controller's byte order.
class Lime
{
public:
    /// The single instance, created by the first call. The platform's finalize() deletes it.
    static Lime& instance();

    /// Neither unmaps nor closes: the device stays open until the process ends. The next instance() is a new
    /// object.
    virtual ~Lime();

    Lime(const Lime&) = delete;
    Lime& operator=(const Lime&) = delete;

    // Device

    /// Releases the present mapping; opens and maps the framebuffer device at path.
    static void reinit_framebuffer_device(QString path);

    /// Opens and maps the device at the last path. Returns the base of the mapping, null if there is none.
    static void* map_lime_framebuffer();

    /// Closes the device and undoes the mapping; nothing if there is neither.
    static void free_lime_framebuffer();

    // Video window

    /// Scales the captured picture to a window of w pixels by h frame lines. Does nothing if one of them is 0
    /// or above 4095.
    ///
    /// Kept: windows narrower than 720 get a captured picture 32 pixels wider and 3 lines higher than the
    /// window, which hides the ragged right and bottom edges, and a window of exactly 720 becomes 688 wide.
    /// Clients reckon with these sizes.
    static void lime_video_resize(unsigned short w, unsigned short h);

    /// Places the window's top left corner. The controller uses the low 12 bits of each value; nothing is
    /// checked here.
    static void lime_video_position(unsigned int x, unsigned int y);

    /// Size of the window as last set, in pixels and frame lines; 688 × 573 before that.
    static std::uint16_t getDisplayedVideoWidth();
    static std::uint16_t getDisplayedVideoHeight();

    // Layers

    /// Switches layer 0..5 on or off; layer 1 is the live video. Other numbers do nothing.
    static void lime_layer_enable(int layer, bool on);

    /// The colour where no layer is shown, 0 to 255 for each part.
    static void lime_set_background_color(unsigned char r, unsigned char g, unsigned char b);

    // Registers, by window

    static void lime_write_disp_reg(std::uint32_t off, std::uint32_t value);
    static std::uint32_t lime_read_disp_reg(std::uint32_t off);
    static void lime_write_capt_reg(std::uint32_t off, std::uint32_t value);
    static std::uint32_t lime_read_capt_reg(std::uint32_t off);
    static void lime_write_host_reg(std::uint32_t off, std::uint32_t value);
    static std::uint32_t lime_read_host_reg(std::uint32_t off);
    static void lime_write_draw_reg(std::uint32_t off, std::uint32_t value);
    static std::uint32_t lime_read_draw_reg(std::uint32_t off);
    static void lime_write_pio_reg(std::uint32_t off, std::uint32_t value);
    static std::uint32_t lime_read_pio_reg(std::uint32_t off);

private:
    Lime() = default;

    static Lime* ins;
    static int fbfd;       ///< descriptor of the device, 0 while it isn't open
    static void* fbp;      ///< base of the mapping, null while there is none
    static QString fbpath; ///< device path
    static std::uint16_t m_u16DisplayedVideoWidth;
    static std::uint16_t m_u16DisplayedVideoHeight;
};

#endif
