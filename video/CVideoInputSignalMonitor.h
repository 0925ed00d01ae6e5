#ifndef HALDEND_VIDEO_CVIDEOINPUTSIGNALMONITOR_H
#define HALDEND_VIDEO_CVIDEOINPUTSIGNALMONITOR_H

#include "video/EVideoInputType.h"

#include <QObject>

#include <cstdint>

/// Watches once a second whether a camera signal reaches the video decoder, and lets the FPGA show its own frame
/// while there is none.
///
/// Has the I2C bus open for itself, bound to the decoder, for its whole life: the hardware layer's functions reach
/// whichever chip was opened last, and nothing after the bring-up.
class CVideoInputSignalMonitor : public QObject
{
    Q_OBJECT

public:
    /// Automatic sync is on.
    CVideoInputSignalMonitor();
    ~CVideoInputSignalMonitor() override;

    CVideoInputSignalMonitor(const CVideoInputSignalMonitor&) = delete;
    CVideoInputSignalMonitor& operator=(const CVideoInputSignalMonitor&) = delete;

    /// Opens the I2C device, sets the sync by the signal, whether automatic sync is on or not, and starts to
    /// watch; called once. Returns false after a line on standard error; then nothing is open and nothing
    /// watched.
    bool initialize(const char* pszDevice);

    /// Asks the decoder now, and stores nothing but what it says in its register table. A decoder that can't be
    /// read has no signal.
    bool isVideoInputSignalAvailable();

    /// Whether the sync follows the signal. Switching it on sets the sync at once; no signal is emitted for what
    /// is found then.
    void setVideoInputAutoSyncEnabled(bool bOn);

signals:
    /// Signal came or went, whether automatic sync is on or not.
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
