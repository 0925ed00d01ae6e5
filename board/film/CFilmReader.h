/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMREADER_H
#define HALDEND_BOARD_FILM_CFILMREADER_H

#include <QImage>
#include <QString>

#include <memory>

/// Reads the video of a film: a transport stream, MP4, AVI and what else FFmpeg's libraries read and is no list of
/// other files. It opens the named file only, whatever is in it, and takes its name as it is: "a:b.ts" is a file.
///
///     CFilmReader cFilm;
///     if (!cFilm.open(cPath))
///         ... cFilm.errorString()
///     while (cFilm.next())
///         show(cFilm.picture(), cFilm.time());
///
/// One thread at a time may use it.
class CFilmReader
{
public:
    CFilmReader();
    ~CFilmReader();

    CFilmReader(const CFilmReader&) = delete;
    CFilmReader& operator=(const CFilmReader&) = delete;

    /// Whether this was built with FFmpeg's libraries. Otherwise open() fails, and says so.
    static bool isBuiltIn();

    /// Opens a film, by its name in UTF-8; next() gives its first frame. False if it can't be read or has no video;
    /// errorString() says why, and the reader is closed.
    [[nodiscard]] bool open(const QString& rcPath);
    void close();
    bool isOpen() const { return m_pcFilm != nullptr; }

    /// Decodes the next frame. False at the end, where the last one stays, and when closed. Damaged
    /// frames are left out.
    bool next();

    /// Begins again: next() gives the first frame. False if the file can't be opened any more; the reader is closed
    /// then.
    [[nodiscard]] bool rewind();

    /// When the frame is to be shown, in microseconds after the first one. Never less than that of the frame before.
    qint64 time() const { return m_iTime; }

    /// How long the frame is to be shown, in microseconds, more than 0.
    qint64 duration() const { return m_iDuration; }

    /// The frame, scaled to 720 x 576, Format_RGB32; an interlaced one field by field. This is the dear part: a frame
    /// that isn't looked at needs only next(). Null before the first one.
    QImage picture();

    /// Why open() or rewind() failed.
    QString errorString() const { return m_cError; }

private:
    struct SFilm;

    bool fail(const QString& rcReason);

    QString m_cPath;
    QString m_cError;
    std::unique_ptr<SFilm> m_pcFilm;
    qint64 m_iTime = 0;
    qint64 m_iDuration = 0;
};

#endif
