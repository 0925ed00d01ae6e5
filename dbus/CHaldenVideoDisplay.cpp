/* SPDX-License-Identifier: MIT */
#include "dbus/CHaldenVideoDisplay.h"

#include "CHaldendVideoDisplayAdaptor.h"
#include "dbus/DBusRegistration.h"
#include "platform/Lime.h"

namespace
{

const int VIDEO_LAYER = 1;

} // namespace

CHaldenVideoDisplay::CHaldenVideoDisplay() : m_pcAdaptor(nullptr) {}

bool CHaldenVideoDisplay::setupDBusConnection()
{
    return registerDBusObject(*this, m_pcAdaptor, QStringLiteral("/videodisplay"));
}

int CHaldenVideoDisplay::get_displayed_video_height()
{
    return Lime::getDisplayedVideoHeight();
}

int CHaldenVideoDisplay::get_displayed_video_width()
{
    return Lime::getDisplayedVideoWidth();
}

void CHaldenVideoDisplay::set_video_layer_enabled(bool value)
{
    Lime::instance().lime_layer_enable(VIDEO_LAYER, value);
}

void CHaldenVideoDisplay::set_video_position(int x, int y)
{
    Lime::instance().lime_video_position(static_cast<unsigned int>(x), static_cast<unsigned int>(y));
}

void CHaldenVideoDisplay::set_video_size(int width, int height)
{
    // The controller's sizes are 16 bits wide: larger and negative values wrap.
    Lime::instance().lime_video_resize(static_cast<unsigned short>(width),
                                       static_cast<unsigned short>(height));
}

void CHaldenVideoDisplay::set_video_rotation(int /*rot*/) {}

void CHaldenVideoDisplay::set_video_mode(int /*mode*/) {}
