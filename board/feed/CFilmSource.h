/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FEED_CFILMSOURCE_H
#define HALDEND_BOARD_FEED_CFILMSOURCE_H

#include "board/feed/IFrameSource.h"
#include "board/film/IFilmReader.h"

#include <memory>

/// A film, again and again, at its own rate.
class CFilmSource : public IFrameSource
{
public:
    /// The path is absolute.
    explicit CFilmSource(const QString& rcPath) : m_cPath(rcPath) {}

    bool open() override;

    /// A film that is behind catches up while it is looked at, as fast as it can be decoded.
    EResult take(quint32 u32Frame, QRgb* puPixels) override;
    void rest() override { m_bShown = false; }

private:
    bool advance();

    QString m_cPath;
    std::unique_ptr<IFilmReader> m_pcFilm;
    qint64 m_iRound = 0;   ///< when this showing of the film began, µs
    qint64 m_iLength = 0;  ///< of the film, µs; 0 while it isn't known
    bool m_bShown = false; ///< the film's frame was taken since the last rest
};

#endif
