/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CFILMPROBE_H
#define HALDEND_TESTS_CFILMPROBE_H

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

/// What FFmpeg's own programs find in a film: their view, not that of the libraries in our hands.
class CFilmProbe
{
public:
    /// Reads the film once through.
    explicit CFilmProbe(const QString& rcFile);

    /// What is wrong with it: that ffprobe or ffmpeg can't read it, or what they warn of. Empty if nothing is.
    QString complaints() const { return m_cComplaints; }

    /// A field of ffprobe's about the video, as it prints it: "codec_name", "field_order" ...
    QString video(const QString& rcField) const { return m_cVideo.value(rcField); }

    /// In seconds, from the first frame to the end of the last one.
    double duration() const { return m_dDuration; }

    int frames() const { return m_cTimes.size(); }

    /// Empty if each frame comes 40 ms after the one before; otherwise the first one that doesn't.
    QString gap() const;

    /// Frames from the first on, as luma and chroma planes, decoded by ffmpeg. 622,080 bytes each.
    static QByteArray decoded(const QString& rcFile, int iFirst, int iCount);

    /// Makes a film by ffmpeg. False if that fails, after a line of Qt's warnings.
    static bool make(const QStringList& rcArguments);

private:
    QString m_cComplaints;
    QHash<QString, QString> m_cVideo;
    double m_dDuration = 0;
    QVector<double> m_cTimes; ///< of the frames' display, seconds
};

#endif
