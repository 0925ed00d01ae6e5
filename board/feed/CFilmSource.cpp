/* SPDX-License-Identifier: MIT */
#include "board/feed/CFilmSource.h"

#include "board/film/CFilms.h"
#include "hw/video_geometry.h"

#include <QElapsedTimer>

#include <cstring>

namespace
{

const qint64 FRAME_US = 40000;
const qint64 CATCHING_UP_MS = 100; // then the frame that was reached is shown

} // namespace

bool CFilmSource::open()
{
    QString cError;
    m_pcFilm = CFilms::openReader(m_cPath, cError);
    if (m_pcFilm == nullptr)
        return fail(cError);
    return m_pcFilm->next() || fail(m_cPath + QStringLiteral(": no frame"));
}

// To the next frame, of the next showing after the last one.
bool CFilmSource::advance()
{
    const qint64 iEnd = m_pcFilm->time() + m_pcFilm->duration();
    m_bShown = false;
    if (m_pcFilm->next())
        return true;
    m_iLength = iEnd;
    m_iRound += iEnd;
    return (m_pcFilm->rewind() && m_pcFilm->next()) ||
           fail(m_cPath + QStringLiteral(": can't be read any more"));
}

IFrameSource::EResult CFilmSource::take(quint32 u32Frame, QRgb* puPixels)
{
    const qint64 iTime = u32Frame * FRAME_US;
    if (m_iLength > 0 && iTime - m_iRound >= 2 * m_iLength) // showings that were not seen
        m_iRound += ((iTime - m_iRound) / m_iLength - 1) * m_iLength;
    QElapsedTimer cTimer;
    cTimer.start();
    while (m_iRound + m_pcFilm->time() + m_pcFilm->duration() <= iTime && !cTimer.hasExpired(CATCHING_UP_MS))
        if (!advance())
            return FAILED;
    if (m_bShown)
        return NONE;
    const QImage cPicture = m_pcFilm->picture();
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        std::memcpy(puPixels + y * VIDEO_WIDTH, cPicture.constScanLine(y), VIDEO_LINE_BYTES);
    m_bShown = true;
    return NEW;
}
