/* SPDX-License-Identifier: MIT */
#include "video/CVideoProcessor.h"

#include "video/CVideoAsyncResultEvent.h"
#include "video/CVideoInputSignalMonitor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDateTime>

#include <sys/stat.h>

namespace
{

const QEvent::Type SAVE_IMAGE_EVENT = QEvent::User;
const QEvent::Type CHECK_LENGTH_EVENT = static_cast<QEvent::Type>(QEvent::User + 2);

const int FILE_SIZE_INTERVAL_MS = 5000;
const int TICKS_BETWEEN_LENGTH_CHECKS = 5;
const unsigned int MAXIMUM_MINUTES = 58;
const unsigned int DATA_RATE_PER_MINUTE = 22;

const char* const RECORD = "/Record";
const char* const PLAY = "/Play";
const int RECORD_PARAMETER = 3; // the record method of the codec service takes no other value

constexpr unsigned int bit(CVideoProcessor::EState eState)
{
    return 1U << eState;
}

// The states in which commands are allowed.
const unsigned int IDLE = bit(CVideoProcessor::eStateIdle);
const unsigned int RECORDING = bit(CVideoProcessor::eStateRecording);
const unsigned int RECORDING_PAUSED = bit(CVideoProcessor::eStateRecordingPaused);
const unsigned int PLAYBACK = bit(CVideoProcessor::eStatePlayback);
const unsigned int PLAYBACK_PAUSED = bit(CVideoProcessor::eStatePlaybackPaused);
const unsigned int IMAGE_DISPLAYED = bit(CVideoProcessor::eStateImageDisplayed);
const unsigned int IMAGE_DISPLAYED_RECORDING_PAUSED =
    bit(CVideoProcessor::eStateImageDisplayedRecordingPaused);

/// Calls a method of the codec service. The message has no interface field, because the service's interfaces
/// have no reliable names: it finds the method by path and name.
bool callCodec(const char* pszPath, const char* pszMethod, bool bBlocking,
               const QVariantList& rcArguments = QVariantList())
{
    QDBusMessage cMessage = QDBusMessage::createMethodCall(
        QStringLiteral("velmar.mobilygen"), QLatin1String(pszPath), QString(), QLatin1String(pszMethod));
    cMessage.setArguments(rcArguments);
    const QDBusMessage cAnswer =
        QDBusConnection::systemBus().call(cMessage, bBlocking ? QDBus::Block : QDBus::NoBlock);
    return !bBlocking || cAnswer.type() == QDBusMessage::ReplyMessage;
}

} // namespace

CVideoProcessor::CVideoProcessor()
    : m_eState(eStateIdle),
      m_ePreviousState(eStateIdle),
      m_pcRecordingStartTime(new QDateTime),
      m_uiRecordedSeconds(0),
      m_iFileSizeTimerId(0),
      m_iLastFileSize(0),
      m_iLengthCheckCountdown(0),
      m_pcVideoInputSignalMonitor(nullptr)
{
}

CVideoProcessor::~CVideoProcessor()
{
    // Only one of them is allowed, if any, and there is no client left to report a failure to.
    (void)stopVideoPlayback();
    (void)stopVideoRecording();
    delete m_pcVideoInputSignalMonitor;
    delete m_pcRecordingStartTime;
}

bool CVideoProcessor::initialize(const char* pszI2CPort)
{
    m_pcVideoInputSignalMonitor = new CVideoInputSignalMonitor;
    connect(m_pcVideoInputSignalMonitor, SIGNAL(videoInputTypeChanged(EVideoInputType)), this,
            SIGNAL(videoInputTypeChanged(EVideoInputType)));
    return m_pcVideoInputSignalMonitor->initialize(pszI2CPort);
}

// No command is allowed while an image is saved, nor after an error.
bool CVideoProcessor::verifyCommand(ECommand eCommand) const
{
    static const struct {
        ECommand eCommand;
        unsigned int uiStates;
    } asAllowed[] = {
        {eCommandSaveVideoImage,       IDLE | RECORDING | RECORDING_PAUSED               },
        {eCommandDisplayVideoImage,    IDLE | RECORDING_PAUSED                           },
        {eCommandClearVideoImage,      IMAGE_DISPLAYED | IMAGE_DISPLAYED_RECORDING_PAUSED},
        {eCommandStartVideoRecording,  IDLE                                              },
        {eCommandPauseVideoRecording,  RECORDING                                         },
        {eCommandResumeVideoRecording, RECORDING_PAUSED                                  },
        {eCommandStopVideoRecording,   RECORDING | RECORDING_PAUSED                      },
        {eCommandStartVideoPlayback,   IDLE                                              },
        {eCommandPauseVideoPlayback,   PLAYBACK                                          },
        {eCommandResumeVideoPlayback,  PLAYBACK_PAUSED                                   },
        {eCommandStopVideoPlayback,    PLAYBACK | PLAYBACK_PAUSED                        },
    };

    for (const auto& rsRow : asAllowed)
        if (rsRow.eCommand == eCommand)
            return (rsRow.uiStates & bit(m_eState)) != 0;
    return false;
}

// Enters the state in which a command ends. Returns the result that belongs to it.
EVideoProcessorResult CVideoProcessor::enter(EState eState)
{
    m_eState = eState;
    return eState == eStateError ? eVideoProcessorResultError : eVideoProcessorResultOk;
}

EVideoProcessorResult CVideoProcessor::startVideoRecording(const QString& rcFileName)
{
    if (!verifyCommand(eCommandStartVideoRecording))
        return eVideoProcessorResultInvalidState;
    if (!_startVideoRecording(rcFileName, true))
        return enter(eStateError);
    // The state is still idle: by that startFileSizeWatch() knows a new recording.
    startFileSizeWatch();
    m_baRecordingFileName = rcFileName.toUtf8();
    *m_pcRecordingStartTime = QDateTime::currentDateTime();
    m_uiRecordedSeconds = 0;
    return enter(eStateRecording);
}

EVideoProcessorResult CVideoProcessor::pauseVideoRecording()
{
    if (!verifyCommand(eCommandPauseVideoRecording))
        return eVideoProcessorResultInvalidState;
    if (!_pauseVideoRecording(true))
        return enter(eStateError);
    stopFileSizeWatch();
    m_uiRecordedSeconds += secondsOfSection();
    return enter(eStateRecordingPaused);
}

EVideoProcessorResult CVideoProcessor::resumeVideoRecording()
{
    if (!verifyCommand(eCommandResumeVideoRecording))
        return eVideoProcessorResultInvalidState;
    if (!_resumeVideoRecording(true))
        return enter(eStateError);
    startFileSizeWatch();
    *m_pcRecordingStartTime = QDateTime::currentDateTime();
    // The recording may be too long already.
    QCoreApplication::postEvent(this, new QEvent(CHECK_LENGTH_EVENT));
    return enter(eStateRecording);
}

EVideoProcessorResult CVideoProcessor::stopVideoRecording()
{
    if (!verifyCommand(eCommandStopVideoRecording))
        return eVideoProcessorResultInvalidState;
    if (!_stopVideoRecording(true))
        return enter(eStateError);
    stopFileSizeWatch();
    m_uiRecordedSeconds = 0;
    m_baRecordingFileName.clear();
    return enter(eStateIdle);
}

EVideoProcessorResult CVideoProcessor::startVideoPlayback(const QString& rcFileName)
{
    if (!verifyCommand(eCommandStartVideoPlayback))
        return eVideoProcessorResultInvalidState;
    CMultimediaPlatform::enterVideoPlaybackMode();
    return enter(_startVideoPlayback(rcFileName, true) ? eStatePlayback : eStateError);
}

EVideoProcessorResult CVideoProcessor::pauseVideoPlayback()
{
    if (!verifyCommand(eCommandPauseVideoPlayback))
        return eVideoProcessorResultInvalidState;
    return enter(_pauseVideoPlayback(true) ? eStatePlaybackPaused : eStateError);
}

EVideoProcessorResult CVideoProcessor::resumeVideoPlayback()
{
    if (!verifyCommand(eCommandResumeVideoPlayback))
        return eVideoProcessorResultInvalidState;
    return enter(_resumeVideoPlayback(true) ? eStatePlayback : eStateError);
}

EVideoProcessorResult CVideoProcessor::stopVideoPlayback()
{
    if (!verifyCommand(eCommandStopVideoPlayback))
        return eVideoProcessorResultInvalidState;
    CMultimediaPlatform::enterVideoRecordingMode();
    return enter(_stopVideoPlayback(true) ? eStateIdle : eStateError);
}

EVideoProcessorResult CVideoProcessor::saveVideoImage(const QString& rcFileName)
{
    if (!verifyCommand(eCommandSaveVideoImage))
        return eVideoProcessorResultInvalidState;
    m_strImageFileName = rcFileName;
    m_ePreviousState = m_eState;
    // Refused unless a recording runs; the image is saved even if the codec doesn't confirm the pause.
    (void)pauseVideoRecording();
    QCoreApplication::postEvent(this, new QEvent(SAVE_IMAGE_EVENT));
    return enter(eStateImageSavePending);
}

EVideoProcessorResult CVideoProcessor::displayVideoImage(const QString& rcFileName)
{
    if (!verifyCommand(eCommandDisplayVideoImage))
        return eVideoProcessorResultInvalidState;
    const CMultimediaPlatform::EImageOpResult eLoaded = CMultimediaPlatform::loadVideoImage(rcFileName);
    CMultimediaPlatform::freezeVideoPictureDisplay(true);
    m_eState = m_eState == eStateRecordingPaused ? eStateImageDisplayedRecordingPaused : eStateImageDisplayed;
    return ConvertImageOpResultToVideoProcessorResult(eLoaded);
}

EVideoProcessorResult CVideoProcessor::clearVideoImage()
{
    if (!verifyCommand(eCommandClearVideoImage))
        return eVideoProcessorResultInvalidState;
    CMultimediaPlatform::freezeVideoPicture(false);
    CMultimediaPlatform::freezeVideoPictureDisplay(false);
    m_eState = m_eState == eStateImageDisplayedRecordingPaused ? eStateRecordingPaused : eStateIdle;
    // Kept: clients have never got another answer, and ask for the state instead.
    return eVideoProcessorResultInvalidState;
}

bool CVideoProcessor::isVideoRecordingRunning() const
{
    return m_eState == eStateRecording;
}

bool CVideoProcessor::isVideoRecordingPaused() const
{
    return m_eState == eStateRecordingPaused;
}

bool CVideoProcessor::isVideoPlaybackRunning() const
{
    return m_eState == eStatePlayback;
}

bool CVideoProcessor::isVideoPlaybackPaused() const
{
    return m_eState == eStatePlaybackPaused;
}

unsigned int CVideoProcessor::secondsOfSection() const
{
    return static_cast<unsigned int>(m_pcRecordingStartTime->secsTo(QDateTime::currentDateTime()));
}

void CVideoProcessor::queryVideoRecordingTime(unsigned int& ruiHours, unsigned int& ruiMinutes,
                                              unsigned int& ruiSeconds) const
{
    unsigned int uiTotal = m_uiRecordedSeconds;
    if (m_eState == eStateRecording)
        uiTotal += secondsOfSection();
    ruiSeconds = uiTotal % 60;
    ruiMinutes = uiTotal / 60 % 60;
    ruiHours = uiTotal / 3600;
}

unsigned int CVideoProcessor::getRecordingDataRatePerMinute()
{
    return DATA_RATE_PER_MINUTE;
}

EVideoInputType CVideoProcessor::getVideoInputType() const
{
    const bool bAvailable =
        m_pcVideoInputSignalMonitor != nullptr && m_pcVideoInputSignalMonitor->isVideoInputSignalAvailable();
    return bAvailable ? eVideoInputTypeExternal : eVideoInputTypeInternal;
}

void CVideoProcessor::setVideoInputEnabled(bool bEnabled)
{
    if (m_pcVideoInputSignalMonitor != nullptr)
        m_pcVideoInputSignalMonitor->setVideoInputAutoSyncEnabled(bEnabled);
    if (!bEnabled)
        CMultimediaPlatform::setVideoInternalSync(true);
}

void CVideoProcessor::timerEvent(QTimerEvent* /*pcEvent*/)
{
    if (m_eState != eStateRecording)
        return;
    verifyVideoFileSize();
    if (m_iLengthCheckCountdown != 0) {
        --m_iLengthCheckCountdown;
        return;
    }
    m_iLengthCheckCountdown = TICKS_BETWEEN_LENGTH_CHECKS;
    verifyVideoLength();
}

void CVideoProcessor::customEvent(QEvent* pcEvent)
{
    switch (static_cast<int>(pcEvent->type())) {
    case SAVE_IMAGE_EVENT:
        writeVideoImage();
        break;
    case CVideoAsyncResultEvent::TYPE:
        emit videoRecordingError(static_cast<CVideoAsyncResultEvent*>(pcEvent)->result());
        break;
    case CHECK_LENGTH_EVENT:
        verifyVideoLength();
        break;
    default:
        break;
    }
}

void CVideoProcessor::finishAccepted()
{
    // In this order: a save that resumes a recording may queue a check of its length, and that check a
    // result.
    for (const QEvent::Type eType : {SAVE_IMAGE_EVENT, CHECK_LENGTH_EVENT, CVideoAsyncResultEvent::TYPE})
        QCoreApplication::sendPostedEvents(this, eType);
}

void CVideoProcessor::writeVideoImage()
{
    if (m_eState != eStateImageSavePending)
        return;
    m_eState = eStateImageSaving;
    CMultimediaPlatform::freezeVideoPicture(false);
    CMultimediaPlatform::freezeVideoPictureDisplay(true);
    const CMultimediaPlatform::EImageOpResult eSaved =
        CMultimediaPlatform::saveVideoImage(m_strImageFileName);
    CMultimediaPlatform::freezeVideoPictureDisplay(false);
    m_eState = m_ePreviousState;
    m_ePreviousState = eStateIdle;
    if (m_eState == eStateRecording) {
        m_eState = eStateRecordingPaused;
        // A failure leaves the error state; the signal is about the image alone.
        (void)resumeVideoRecording();
    }
    emit videoImageSaved(ConvertImageOpResultToVideoProcessorResult(eSaved));
}

bool CVideoProcessor::_startVideoRecording(const QString& rcFileName, bool bBlocking)
{
    return callCodec(RECORD, "record", bBlocking, {rcFileName, RECORD_PARAMETER});
}

bool CVideoProcessor::_pauseVideoRecording(bool bBlocking)
{
    return callCodec(RECORD, "pause", bBlocking);
}

bool CVideoProcessor::_resumeVideoRecording(bool bBlocking)
{
    return callCodec(RECORD, "resume", bBlocking);
}

bool CVideoProcessor::_stopVideoRecording(bool bBlocking)
{
    return callCodec(RECORD, "stop", bBlocking);
}

bool CVideoProcessor::_startVideoPlayback(const QString& rcFileName, bool bBlocking)
{
    return callCodec(PLAY, "play", bBlocking, {rcFileName});
}

bool CVideoProcessor::_pauseVideoPlayback(bool bBlocking)
{
    return callCodec(PLAY, "pause", bBlocking);
}

bool CVideoProcessor::_resumeVideoPlayback(bool bBlocking)
{
    return callCodec(PLAY, "resume", bBlocking);
}

bool CVideoProcessor::_stopVideoPlayback(bool bBlocking)
{
    return callCodec(PLAY, "stop", bBlocking);
}

void CVideoProcessor::startFileSizeWatch()
{
    // A failed pause leaves the watch running.
    stopFileSizeWatch();
    m_iFileSizeTimerId = startTimer(FILE_SIZE_INTERVAL_MS, Qt::PreciseTimer);
    if (m_eState == eStateIdle)
        m_iLastFileSize = 0;
    m_iLengthCheckCountdown = TICKS_BETWEEN_LENGTH_CHECKS;
}

void CVideoProcessor::stopFileSizeWatch()
{
    killTimer(m_iFileSizeTimerId);
    m_iFileSizeTimerId = 0;
}

bool CVideoProcessor::checkVideoFileSize()
{
    struct stat sStat;
    if (stat(m_baRecordingFileName.constData(), &sStat) != 0)
        return false;
    const qint64 iLastFileSize = m_iLastFileSize;
    m_iLastFileSize = sStat.st_size;
    return m_iLastFileSize != iLastFileSize;
}

void CVideoProcessor::verifyVideoFileSize()
{
    if (checkVideoFileSize())
        return;
    stopFileSizeWatch();
    _stopVideoRecording(false);
    m_eState = eStateError;
    QCoreApplication::postEvent(this, new CVideoAsyncResultEvent(eVideoProcessorResultError));
}

bool CVideoProcessor::checkVideoLength()
{
    unsigned int uiHours = 0;
    unsigned int uiMinutes = 0;
    unsigned int uiSeconds = 0;
    queryVideoRecordingTime(uiHours, uiMinutes, uiSeconds);
    return uiHours == 0 && uiMinutes < MAXIMUM_MINUTES;
}

void CVideoProcessor::verifyVideoLength()
{
    if (m_eState != eStateRecording || checkVideoLength())
        return;
    const EVideoProcessorResult eStopped = stopVideoRecording();
    if (eStopped == eVideoProcessorResultOk)
        QCoreApplication::postEvent(this, new CVideoAsyncResultEvent(eVideoProcessorResultMaxLengthReached));
    else
        emit videoRecordingError(eStopped);
}
