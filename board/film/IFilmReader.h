/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_IFILMREADER_H
#define HALDEND_BOARD_FILM_IFILMREADER_H

#include <QImage>
#include <QString>

/// Reads the video of a film: a transport stream, MP4, AVI and what else FFmpeg's libraries read and is no list of
/// other files. It opens the named file only, whatever is in it, and takes its name as it is: "a:b.ts" is a file.
///
///     if (!pcFilm->open(cPath))
///         ... pcFilm->errorString()
///     while (pcFilm->next())
///         show(pcFilm->picture(), pcFilm->time());
///
/// One thread at a time may use it.
class IFilmReader
{
public:
    IFilmReader() = default;
    virtual ~IFilmReader() = default;

    IFilmReader(const IFilmReader&) = delete;
    IFilmReader& operator=(const IFilmReader&) = delete;

    /// Opens a film, by its name in UTF-8; next() gives its first frame. False if it can't be read or has no video;
    /// errorString() says why, and the reader is closed.
    [[nodiscard]] virtual bool open(const QString& rcPath) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;

    /// Decodes the next frame. False at the end, where the last one stays, and when closed. Damaged
    /// frames are left out.
    virtual bool next() = 0;

    /// Begins again: next() gives the first frame. False if the file can't be opened any more; the reader is closed
    /// then.
    [[nodiscard]] virtual bool rewind() = 0;

    /// When the frame is to be shown, in microseconds after the first one. Never less than that of the frame before.
    virtual qint64 time() const = 0;

    /// How long the frame is to be shown, in microseconds, more than 0.
    virtual qint64 duration() const = 0;

    /// The frame, scaled to 720 x 576, Format_RGB32; an interlaced one field by field. This is the dear part: a frame
    /// that isn't looked at needs only next(). Null before the first one.
    virtual QImage picture() = 0;

    /// Why open() or rewind() failed.
    virtual QString errorString() const = 0;
};

#endif
