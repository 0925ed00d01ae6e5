#ifndef HALDEND_VIDEO_CVIDEOPROCESSOR_H
#define HALDEND_VIDEO_CVIDEOPROCESSOR_H

#include "video/EVideoInputType.h"
#include "video/EVideoProcessorResult.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class CVideoInputSignalMonitor;
class QDateTime;

/// Recording, playback and still images: which command is allowed when, and what becomes of it later.
///
/// Video is recorded and played by the codec service on the system bus, which this commands; a command returns
/// when the service has answered. Still images are the platform's. Nothing is logged here: failures are results
/// and signals.
///
/// A command that isn't allowed returns eVideoProcessorResultInvalidState and does nothing. A codec service that
/// doesn't confirm a command, or a recording file that stops growing, leaves a state in which no command is
/// allowed until the daemon is started again.
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

    /// Stops what is running through the codec service.
    ~CVideoProcessor() override;

    CVideoProcessor(const CVideoProcessor&) = delete;
    CVideoProcessor& operator=(const CVideoProcessor&) = delete;

    /// Starts to watch the input signal over the I2C device, once. False if that can't be opened. Before it, and
    /// after a failure, there is no input signal.
    bool initialize(const char* pszI2CPort);

    /// \name Recording
    /// At most 58 minutes of it, pauses not counted; then it is stopped, and videoRecordingError emitted.
    /// @{
    EVideoProcessorResult startVideoRecording(const QString& rcFileName);
    EVideoProcessorResult pauseVideoRecording();
    EVideoProcessorResult resumeVideoRecording();
    EVideoProcessorResult stopVideoRecording();

    bool isVideoRecordingRunning() const;
    bool isVideoRecordingPaused() const;

    /// Recorded so far, pauses not counted: minutes and seconds 0 to 59. All 0 after a stop.
    void queryVideoRecordingTime(unsigned int& ruiHours, unsigned int& ruiMinutes,
                                 unsigned int& ruiSeconds) const;

    /// In the unit that clients reckon with; not measured.
    static unsigned int getRecordingDataRatePerMinute();
    /// @}

    /// \name Playback
    /// Start and stop switch the platform's mode before the codec service is asked.
    /// @{
    EVideoProcessorResult startVideoPlayback(const QString& rcFileName);
    EVideoProcessorResult pauseVideoPlayback();
    EVideoProcessorResult resumeVideoPlayback();
    EVideoProcessorResult stopVideoPlayback();

    bool isVideoPlaybackRunning() const;
    bool isVideoPlaybackPaused() const;
    /// @}

    /// \name Still images
    /// @{

    /// Queues the save, which ends with videoImageSaved. A running recording is paused for it.
    EVideoProcessorResult saveVideoImage(const QString& rcFileName);

    /// Shows the file's picture; if it can't be loaded, the picture that is stored in the FPGA. Either way it has
    /// to be cleared.
    EVideoProcessorResult displayVideoImage(const QString& rcFileName);

    /// Stores a new picture and shows the live one. Always returns eVideoProcessorResultInvalidState.
    EVideoProcessorResult clearVideoImage();

    /// @}

    /// Does what was accepted and still waits in the event queue: a save, the look at a recording's length, a result.
    /// For the time after the event loop.
    void finishAccepted();

    /// Asks the decoder now.
    EVideoInputType getVideoInputType() const;

    /// Lets the sync follow the input signal, or forces internal sync.
    void setVideoInputEnabled(bool bEnabled);

signals:
    void videoRecordingError(EVideoProcessorResult eResult);
    void videoPlaybackError(EVideoProcessorResult eResult); ///< never emitted
    void videoInputTypeChanged(EVideoInputType eType);
    void videoImageSaved(EVideoProcessorResult eResult);

protected:
    void timerEvent(QTimerEvent* pcEvent) override;
    void customEvent(QEvent* pcEvent) override;

    bool verifyCommand(ECommand eCommand) const;

    /// \name Calls of the codec service
    /// One that blocks returns whether the service confirmed it, one that doesn't returns true.
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
    /// Every 5 s: whether the file changed; every 30 s also whether the recording has become too long.
    /// @{
    void startFileSizeWatch();
    void stopFileSizeWatch();

    /// False if the file's size is what it was at the last look, or can't be found out.
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
    QDateTime* m_pcRecordingStartTime; ///< owned; of the section that is being recorded
    unsigned int m_uiRecordedSeconds;  ///< in the sections before it
    int m_iFileSizeTimerId;            ///< 0: none
    QString m_strImageFileName;        ///< of the image being saved
    QByteArray m_baRecordingFileName;  ///< in UTF-8
    qint64 m_iLastFileSize;            ///< bytes, at the last look
    int m_iLengthCheckCountdown;       ///< looks at the file before the next one at the length
    CVideoInputSignalMonitor* m_pcVideoInputSignalMonitor; ///< owned; null before initialize()
};

#endif
