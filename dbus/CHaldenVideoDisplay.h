/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DBUS_CHALDENVIDEODISPLAY_H
#define HALDEND_DBUS_CHALDENVIDEODISPLAY_H

#include <QObject>

class CHaldendVideoDisplayAdaptor;

/// Service object of "/videodisplay": the live video window, forwarded to the display controller. The slots
/// are the bus methods of the same names, documented in velmar.haldend.videodisplay.xml. Sizes are pixels and
/// frame lines; arguments are not checked here.
///
/// Kept: there is no slot set_video_restart. The interface offers the method, and callers rely only on the
/// call being accepted.
class CHaldenVideoDisplay : public QObject
{
    Q_OBJECT

public:
    CHaldenVideoDisplay();

    /// Registers the object on the system bus, once. Returns false if that fails or was done before.
    [[nodiscard]] bool setupDBusConnection();

public slots:
    int get_displayed_video_height();
    int get_displayed_video_width();
    void set_video_layer_enabled(bool value);
    void set_video_position(int x, int y);
    void set_video_size(int width, int height);
    void set_video_rotation(int rot);
    void set_video_mode(int mode);

private:
    CHaldendVideoDisplayAdaptor* m_pcAdaptor; ///< Qt child, null until the object is registered
};

#endif
