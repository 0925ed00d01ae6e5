/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_IFILMWRITER_H
#define HALDEND_BOARD_FILM_IFILMWRITER_H

#include <QImage>
#include <QString>

/// Writes a film as the board's codec does: an MPEG transport stream with MPEG-2 video, 720 x 576, 25 frames a second,
/// interlaced with the top field first, 4:3, at 22 million bytes a minute.
///
/// The file grows with each frame, so that it is a film that plays whenever its writer is killed. It is opened in
/// append mode: if another program changes the file's length, the film grows on from there.
///
///     if (!pcFilm->open(cPath))
///         ... pcFilm->errorString()
///     while (...)
///         pcFilm->write(CBoardPicture::recorded(cBoard));
///     pcFilm->close();
///
/// One thread at a time may use it.
class IFilmWriter
{
public:
    IFilmWriter() = default;
    virtual ~IFilmWriter() = default; ///< closes

    IFilmWriter(const IFilmWriter&) = delete;
    IFilmWriter& operator=(const IFilmWriter&) = delete;

    /// Makes the file, or empties it; its name is in UTF-8, and taken as it is. False if that fails; errorString()
    /// says why.
    [[nodiscard]] virtual bool open(const QString& rcPath) = 0;

    /// Ends the film. False if the end of it could not be written; errorString() says why.
    virtual bool close() = 0;
    virtual bool isOpen() const = 0;

    /// Writes the next frame: a picture of 720 x 576, Format_RGB32, taken field by field. False if it could not be
    /// written, as on a full disk; errorString() says why. The film is whole up to the frame before, and goes on
    /// when there is room again, within half a second.
    virtual bool write(const QImage& rcPicture) = 0;

    /// Writes the frame before once more.
    virtual bool repeat() = 0;

    /// Frames so far, those that could not be written too.
    virtual int frames() const = 0;

    virtual QString errorString() const = 0;
};

#endif
