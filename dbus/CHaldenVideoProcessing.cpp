/* SPDX-License-Identifier: MIT */
#include "dbus/CHaldenVideoProcessing.h"

#include "CHaldendVideoProcessingAdaptor.h"
#include "dbus/DBusRegistration.h"
#include "video/CVideoProcessor.h"

#include <QDBusMessage>

namespace
{

const QString PATH = QStringLiteral("/videoprocessing");

/// Sends a signal of the interface with its one argument. The adaptor can't relay the processor's signals:
/// they have other names, and enumerations as arguments.
void sendSignal(const char* pszName, int iArgument)
{
    QDBusMessage cSignal = QDBusMessage::createSignal(PATH, QStringLiteral("velmar.haldend.videoprocessing"),
                                                      QLatin1String(pszName));
    cSignal << QVariant(iArgument);
    QDBusConnection::systemBus().send(cSignal);
}

} // namespace

CHaldenVideoProcessing::CHaldenVideoProcessing(CVideoProcessor& rcVideoProcessor)
    : m_rcVideoProcessor(rcVideoProcessor), m_pcAdaptor(nullptr)
{
    connectSignals();
}

void CHaldenVideoProcessing::connectSignals()
{
    connect(&m_rcVideoProcessor, SIGNAL(videoImageSaved(EVideoProcessorResult)), this,
            SLOT(onVideoImageSaved(EVideoProcessorResult)));
    connect(&m_rcVideoProcessor, SIGNAL(videoInputTypeChanged(EVideoInputType)), this,
            SLOT(onVideoInputTypeChanged(EVideoInputType)));
    connect(&m_rcVideoProcessor, SIGNAL(videoPlaybackError(EVideoProcessorResult)), this,
            SLOT(onVideoPlaybackError(EVideoProcessorResult)));
    connect(&m_rcVideoProcessor, SIGNAL(videoRecordingError(EVideoProcessorResult)), this,
            SLOT(onVideoRecordingError(EVideoProcessorResult)));
}

bool CHaldenVideoProcessing::setupDBusConnection()
{
    return registerDBusObject(*this, m_pcAdaptor, PATH, {"CHaldenVideoProcessing", ""});
}

void CHaldenVideoProcessing::onVideoRecordingError(EVideoProcessorResult eResult)
{
    sendSignal("video_recording_error", eResult);
}

void CHaldenVideoProcessing::onVideoPlaybackError(EVideoProcessorResult eResult)
{
    sendSignal("video_playback_error", eResult);
}

void CHaldenVideoProcessing::onVideoInputTypeChanged(EVideoInputType eType)
{
    sendSignal("video_input_type_changed", eType);
}

void CHaldenVideoProcessing::onVideoImageSaved(EVideoProcessorResult eResult)
{
    sendSignal("video_image_saved", eResult);
}

int CHaldenVideoProcessing::clear_video_image()
{
    return m_rcVideoProcessor.clearVideoImage();
}

int CHaldenVideoProcessing::display_video_image(const QString& filename)
{
    return m_rcVideoProcessor.displayVideoImage(filename);
}

int CHaldenVideoProcessing::get_video_input_type()
{
    return m_rcVideoProcessor.getVideoInputType();
}

int CHaldenVideoProcessing::get_video_recording_average_data_rate()
{
    return static_cast<int>(CVideoProcessor::getRecordingDataRatePerMinute());
}

// Kept: the opposite of its name. Clients have always got this answer, and go by it.
bool CHaldenVideoProcessing::is_video_input_available()
{
    return m_rcVideoProcessor.getVideoInputType() != eVideoInputTypeExternal;
}

bool CHaldenVideoProcessing::is_video_playback_paused()
{
    return m_rcVideoProcessor.isVideoPlaybackPaused();
}

bool CHaldenVideoProcessing::is_video_playback_running()
{
    return m_rcVideoProcessor.isVideoPlaybackRunning();
}

bool CHaldenVideoProcessing::is_video_recording_paused()
{
    return m_rcVideoProcessor.isVideoRecordingPaused();
}

bool CHaldenVideoProcessing::is_video_recording_running()
{
    return m_rcVideoProcessor.isVideoRecordingRunning();
}

int CHaldenVideoProcessing::pause_video_playback()
{
    return m_rcVideoProcessor.pauseVideoPlayback();
}

int CHaldenVideoProcessing::pause_video_recording()
{
    return m_rcVideoProcessor.pauseVideoRecording();
}

QVariantList CHaldenVideoProcessing::query_video_recording_time()
{
    unsigned int uiHours = 0;
    unsigned int uiMinutes = 0;
    unsigned int uiSeconds = 0;
    m_rcVideoProcessor.queryVideoRecordingTime(uiHours, uiMinutes, uiSeconds);
    return {uiHours, uiMinutes, uiSeconds};
}

int CHaldenVideoProcessing::resume_video_playback()
{
    return m_rcVideoProcessor.resumeVideoPlayback();
}

int CHaldenVideoProcessing::resume_video_recording()
{
    return m_rcVideoProcessor.resumeVideoRecording();
}

int CHaldenVideoProcessing::save_video_image(const QString& filename)
{
    return m_rcVideoProcessor.saveVideoImage(filename);
}

void CHaldenVideoProcessing::set_video_input_enabled(int value)
{
    m_rcVideoProcessor.setVideoInputEnabled(value != 0);
}

int CHaldenVideoProcessing::start_video_playback(const QString& filename)
{
    return m_rcVideoProcessor.startVideoPlayback(filename);
}

int CHaldenVideoProcessing::start_video_recording(const QString& filename)
{
    return m_rcVideoProcessor.startVideoRecording(filename);
}

int CHaldenVideoProcessing::stop_video_playback()
{
    return m_rcVideoProcessor.stopVideoPlayback();
}

int CHaldenVideoProcessing::stop_video_recording()
{
    return m_rcVideoProcessor.stopVideoRecording();
}
