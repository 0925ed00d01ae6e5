/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_VIDEO_CVIDEOINPUTSIGNALMONITOR_H
#define HALDEND_VIDEO_CVIDEOINPUTSIGNALMONITOR_H

#include "video/EVideoInputType.h"

#include <QObject>

#include <cstdint>

/// Checks once a second whether a camera signal reaches the video decoder, and makes the FPGA show its own
/// frame while there is none.
///
/// It has a descriptor of its own on the I2C bus, bound to the decoder, for its whole life. The hardware
/// layer's functions can't serve it: they reach the chip that was opened last, and after the bring-up none is
/// open.
class CVideoInputSignalMonitor : public QObject
{
    Q_OBJECT

public:
    /// Opens nothing yet. Automatic sync is on.
    CVideoInputSignalMonitor();
    ~CVideoInputSignalMonitor() override;

    CVideoInputSignalMonitor(const CVideoInputSignalMonitor&) = delete;
    CVideoInputSignalMonitor& operator=(const CVideoInputSignalMonitor&) = delete;

    /// Opens the I2C device, sets the sync by the signal, even with automatic sync off, and starts to check;
    /// called once. Returns false after a line on standard error; then nothing is open and no check runs.
    [[nodiscard]] bool initialize(const char* pszDevice);

    /// Reads the decoder's status now, and stores it in the decoder's register table and configuration. A
    /// decoder that can't be read has no signal.
    bool isVideoInputSignalAvailable();

    /// Switches automatic sync, in which the sync follows the signal. Switching it on sets the sync at once,
    /// without a videoInputTypeChanged for the state found then.
    void setVideoInputAutoSyncEnabled(bool bOn);

signals:
    /// The signal came or went since the last check, with automatic sync on or off.
    void videoInputTypeChanged(EVideoInputType eType);

protected:
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    void checkSignalAndSetSync();
    uint32_t readRegister(uint8_t u8Sub) const;

    int m_iI2CHandle; ///< -1 while nothing is open
    bool m_bVideoInputSignalAvailable;
    bool m_bVideoInputAutoSyncEnabled;
};

#endif
