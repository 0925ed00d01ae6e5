/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_VIDEO_CVIDEOPROCESSOR_H
#define HALDEND_VIDEO_CVIDEOPROCESSOR_H

#include "video/EVideoInputType.h"
#include "video/EVideoProcessorResult.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class CVideoInputSignalMonitor;
class QDateTime;

/// Recording, playback and still images: which command is allowed in which state, and its later results.
///
/// The codec service on the system bus records and plays; a command returns when the service has answered.
/// The platform keeps still images. Nothing is logged here: failures are results and signals.
///
/// A command that isn't allowed returns eVideoProcessorResultInvalidState and does nothing. If the codec
/// service doesn't confirm a command, or a recording file stops growing, the state becomes eStateError: no
/// command is allowed until the daemon starts again.
class CVideoProcessor : public QObject
{
    Q_OBJECT

public:
    enum ECommand : int {
        eCommandNone = 0,
        eCommandSaveVideoImage = 1,
        eCommandDisplayVideoImage = 2,
        eCommandClearVideoImage = 3,
        eCommandStartVideoRecording = 4,
        eCommandPauseVideoRecording = 5,
        eCommandResumeVideoRecording = 6,
        eCommandStopVideoRecording = 7,
        eCommandStartVideoPlayback = 8,
        eCommandPauseVideoPlayback = 9,
        eCommandResumeVideoPlayback = 10,
        eCommandStopVideoPlayback = 11,
    };

    enum EState : int {
        eStateIdle = 0,
        eStateRecording = 1,
        eStateRecordingPaused = 2,
        eStatePlayback = 3,
        eStatePlaybackPaused = 4,
        eStateImageDisplayed = 5,                ///< entered from idle
        eStateImageDisplayedRecordingPaused = 6, ///< entered from a paused recording
        eStateImageSavePending = 7,              ///< queued
        eStateImageSaving = 8,                   ///< being written
        eStateError = 9,                         ///< final
    };

    CVideoProcessor();

    /// Stops playback and recording through the codec service.
    ~CVideoProcessor() override;

    CVideoProcessor(const CVideoProcessor&) = delete;
    CVideoProcessor& operator=(const CVideoProcessor&) = delete;

    /// Starts to check the input signal over the I2C device; called once. False if the device can't be
    /// opened. Before the call, and after a failure, there is no input signal.
    [[nodiscard]] bool initialize(const char* pszI2CPort);

    /// \name Recording
    /// At most 58 minutes, pauses not counted; then the recording is stopped and videoRecordingError emitted.
    /// @{
    [[nodiscard]] EVideoProcessorResult startVideoRecording(const QString& rcFileName);
    [[nodiscard]] EVideoProcessorResult pauseVideoRecording();
    [[nodiscard]] EVideoProcessorResult resumeVideoRecording();
    [[nodiscard]] EVideoProcessorResult stopVideoRecording();

    bool isVideoRecordingRunning() const;
    bool isVideoRecordingPaused() const;

    /// The time recorded so far, pauses not counted: minutes and seconds 0 to 59. All 0 after a stop.
    void queryVideoRecordingTime(unsigned int& ruiHours, unsigned int& ruiMinutes,
                                 unsigned int& ruiSeconds) const;

    /// Space that a minute of recording takes on the medium; a constant, not measured.
    ///
    /// Kept: 22, in the unit that clients reckon with.
    static unsigned int getRecordingDataRatePerMinute();
    /// @}

    /// \name Playback
    /// Start and stop switch the platform's mode before they call the codec service.
    /// @{
    [[nodiscard]] EVideoProcessorResult startVideoPlayback(const QString& rcFileName);
    [[nodiscard]] EVideoProcessorResult pauseVideoPlayback();
    [[nodiscard]] EVideoProcessorResult resumeVideoPlayback();
    [[nodiscard]] EVideoProcessorResult stopVideoPlayback();

    bool isVideoPlaybackRunning() const;
    bool isVideoPlaybackPaused() const;
    /// @}

    /// \name Still images
    /// @{

    /// Queues the save, which ends with videoImageSaved. Pauses a running recording until then.
    [[nodiscard]] EVideoProcessorResult saveVideoImage(const QString& rcFileName);

    /// Shows the file's picture, or the picture stored in the FPGA if the file can't be loaded. In both cases
    /// the picture is displayed until clearVideoImage(). Returns how the loading ended.
    [[nodiscard]] EVideoProcessorResult displayVideoImage(const QString& rcFileName);

    /// Stores a new picture and shows the live one.
    ///
    /// Kept: returns eVideoProcessorResultInvalidState even after success. Clients have never got another
    /// answer, and ask for the state instead.
    EVideoProcessorResult clearVideoImage();

    /// @}

    /// Carries out what was accepted and is still queued: a save, a check of the recording's length, a
    /// result. To be called after the event loop.
    void finishAccepted();

    /// The input type now; reads the decoder.
    EVideoInputType getVideoInputType() const;

    /// Lets the sync follow the input signal (true), or forces internal sync (false).
    void setVideoInputEnabled(bool bEnabled);

signals:
    void videoRecordingError(EVideoProcessorResult eResult);
    void videoPlaybackError(EVideoProcessorResult eResult); ///< Kept: never emitted; the bus interface has it
    void videoInputTypeChanged(EVideoInputType eType);
    void videoImageSaved(EVideoProcessorResult eResult);

protected:
    void timerEvent(QTimerEvent* pcEvent) override;
    void customEvent(QEvent* pcEvent) override;

    bool verifyCommand(ECommand eCommand) const;

    /// \name Calls of the codec service
    /// A blocking call returns whether the service confirmed it, any other returns true.
    /// @{
    bool _startVideoRecording(const QString& rcFileName, bool bBlocking);
    bool _pauseVideoRecording(bool bBlocking);
    bool _resumeVideoRecording(bool bBlocking);
    bool _stopVideoRecording(bool bBlocking);
    bool _startVideoPlayback(const QString& rcFileName, bool bBlocking);
    bool _pauseVideoPlayback(bool bBlocking);
    bool _resumeVideoPlayback(bool bBlocking);
    bool _stopVideoPlayback(bool bBlocking);
    /// @}

    /// \name Watch over the recording
    /// Checks every 5 s that the file changed, and every 30 s also that the recording is not too long.
    /// @{
    void startFileSizeWatch();
    void stopFileSizeWatch();

    /// False if the file's size is that of the last check, or can't be determined.
    bool checkVideoFileSize();
    void verifyVideoFileSize();

    /// False from 58 minutes on.
    bool checkVideoLength();
    void verifyVideoLength();
    /// @}

private:
    EVideoProcessorResult enter(EState eState);
    unsigned int secondsOfSection() const;
    void writeVideoImage();

    EState m_eState;
    EState m_ePreviousState;           ///< to return to after an image save
    QDateTime* m_pcRecordingStartTime; ///< owned; start of the section that is being recorded
    unsigned int m_uiRecordedSeconds;  ///< sum of the sections before it
    int m_iFileSizeTimerId;            ///< 0: none
    QString m_strImageFileName;        ///< of the image being saved
    QByteArray m_baRecordingFileName;  ///< in UTF-8
    qint64 m_iLastFileSize;            ///< bytes, at the last check
    int m_iLengthCheckCountdown;       ///< checks of the file until the next one of the length
    CVideoInputSignalMonitor* m_pcVideoInputSignalMonitor; ///< owned; null before initialize()
};

#endif
