/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DBUS_CHALDENDEBUG_H
#define HALDEND_DBUS_CHALDENDEBUG_H

#include <QObject>

class CHaldendDebugAdaptor;

/// Service object of "/debug": the hardware for service staff. The slots are the bus methods of the same
/// names, documented in velmar.haldend.debug.xml. No method has a result or reports a failure: failures show
/// in the log and on standard error.
///
/// The FPGA is switched whatever the video processor is doing; the video processor isn't told.
class CHaldenDebug : public QObject
{
    Q_OBJECT

public:
    CHaldenDebug();

    /// Registers the object on the system bus, once. Returns false if that fails or was done before. Prints
    /// lines on standard output (SRegistrationTrace).
    [[nodiscard]] bool setupDBusConnection();

public slots:
    void fpga_disable_frame_generator();
    void fpga_disable_video_restore();
    void fpga_enable_frame_generator();
    void fpga_enable_video_restore();
    void fpga_enter_playback_mode();
    void fpga_enter_recording_mode();
    void print_hardware_config(const QString& hardware_name);
    void reload_hardware_config();
    void save_hardware_config();

private:
    CHaldendDebugAdaptor* m_pcAdaptor; ///< Qt child, null until the object is registered
};

#endif
