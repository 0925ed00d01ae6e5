/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMWRITER_H
#define HALDEND_BOARD_FILM_CFILMWRITER_H

#include <QImage>
#include <QString>

#include <memory>

/// Writes a film as the board's codec does: an MPEG transport stream with MPEG-2 video, 720 x 576, 25 frames a second,
/// interlaced with the top field first, 4:3, at 22 million bytes a minute.
///
/// The file grows with each frame, so that it is a film that plays whenever its writer is killed. It is opened in
/// append mode: if another program changes the file's length, the film grows on from there.
///
///     CFilmWriter cFilm;
///     if (!cFilm.open(cPath))
///         ... cFilm.errorString()
///     while (...)
///         cFilm.write(CBoardPicture::recorded(cBoard));
///     cFilm.close();
///
/// One thread at a time may use it.
class CFilmWriter
{
public:
    CFilmWriter();
    ~CFilmWriter(); ///< closes

    CFilmWriter(const CFilmWriter&) = delete;
    CFilmWriter& operator=(const CFilmWriter&) = delete;

    /// Whether this was built with FFmpeg's libraries. Otherwise open() fails, and says so.
    static bool isBuiltIn();

    /// Makes the file, or empties it; its name is in UTF-8, and taken as it is. False if that fails; errorString()
    /// says why.
    [[nodiscard]] bool open(const QString& rcPath);

    /// Ends the film. False if the end of it could not be written; errorString() says why.
    bool close();
    bool isOpen() const { return m_pcFilm != nullptr; }

    /// Writes the next frame: a picture of 720 x 576, Format_RGB32, taken field by field. False if it could not be
    /// written, as on a full disk; errorString() says why. The film is whole up to the frame before, and goes on
    /// when there is room again, within half a second.
    bool write(const QImage& rcPicture);

    /// Writes the frame before once more.
    bool repeat();

    /// Frames so far, those that could not be written too.
    int frames() const { return m_iFrames; }

    QString errorString() const { return m_cError; }

private:
    struct SFilm;

    bool fail(const QString& rcReason);
    bool encode();

    QString m_cPath;
    QString m_cError;
    std::unique_ptr<SFilm> m_pcFilm;
    int m_iFrames = 0;
};

#endif
