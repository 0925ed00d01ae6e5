/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DBUS_CHALDENVIDEOPROCESSING_H
#define HALDEND_DBUS_CHALDENVIDEOPROCESSING_H

#include "video/EVideoInputType.h"
#include "video/EVideoProcessorResult.h"

#include <QObject>
#include <QVariantList>

class CHaldendVideoProcessingAdaptor;
class CVideoProcessor;

/// Service object of "/videoprocessing": the commands of the video processor, and its signals. The slots are
/// the bus methods of the same names, documented in velmar.haldend.videoprocessing.xml. Results and input
/// types are numbers on the bus: EVideoProcessorResult, EVideoInputType.
class CHaldenVideoProcessing : public QObject
{
    Q_OBJECT

public:
    /// Keeps a reference: the processor must outlive this object. Its signals go to the bus from now on.
    explicit CHaldenVideoProcessing(CVideoProcessor& rcVideoProcessor);

    /// Registers the object on the system bus, once. Returns false if that fails or was done before. Prints
    /// lines on standard output (SRegistrationTrace).
    [[nodiscard]] bool setupDBusConnection();

private slots:
    void onVideoRecordingError(EVideoProcessorResult eResult);
    void onVideoPlaybackError(EVideoProcessorResult eResult);
    void onVideoInputTypeChanged(EVideoInputType eType);
    void onVideoImageSaved(EVideoProcessorResult eResult);

public slots:
    int clear_video_image();
    int display_video_image(const QString& filename);
    int get_video_input_type();
    int get_video_recording_average_data_rate();
    bool is_video_input_available();
    bool is_video_playback_paused();
    bool is_video_playback_running();
    bool is_video_recording_paused();
    bool is_video_recording_running();
    int pause_video_playback();
    int pause_video_recording();
    QVariantList query_video_recording_time();
    int resume_video_playback();
    int resume_video_recording();
    int save_video_image(const QString& filename);
    void set_video_input_enabled(int value);
    int start_video_playback(const QString& filename);
    int start_video_recording(const QString& filename);
    int stop_video_playback();
    int stop_video_recording();

private:
    void connectSignals();

    CVideoProcessor& m_rcVideoProcessor;
    CHaldendVideoProcessingAdaptor* m_pcAdaptor; ///< Qt child, null until the object is registered
};

#endif
