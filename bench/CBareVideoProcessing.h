/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBAREVIDEOPROCESSING_H
#define HALDEND_BENCH_CBAREVIDEOPROCESSING_H

#include <QObject>

/// "/videoprocessing" with the least behind it: a recording is a call to the codec service, and a still image the trigger,
/// one read, a memcpy a line, two writes, fsync, and the daemon's pauses.
class CBareVideoProcessing : public QObject
{
    Q_OBJECT

public:
    CBareVideoProcessing(const char* pszDevice, QObject* pcParent);

public slots:
    int start_video_recording(const QString& filename);
    int stop_video_recording();

    /// Answers at once; the image is saved on a later turn of the event loop.
    int save_video_image(const QString& filename);

signals:
    void video_image_saved(int result);

private slots:
    void save();

private:
    int m_iDevice;
    QByteArray m_cFile;
};

#endif
