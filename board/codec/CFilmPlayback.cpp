/* SPDX-License-Identifier: MIT */
#include "board/codec/CFilmPlayback.h"

#include "board/film/CFilms.h"
#include "board/state/CBoard.h"

namespace
{

// A machine that is too slow for the film shows one in so many frames.
const int MOST_LEFT_OUT = VIDEO_FRAME_RATE;

} // namespace

std::unique_ptr<CFilmPlayback> CFilmPlayback::start(const CBoard& rcBoard, const QString& rcFile,
                                                    QString& rcError)
{
    std::unique_ptr<CFilmPlayback> pcFilm(new CFilmPlayback);
    if (!pcFilm->open(rcBoard, rcFile, rcError))
        return nullptr;
    pcFilm->show();
    pcFilm->CFilmThread::start(pcFilm->next());
    return pcFilm;
}

bool CFilmPlayback::open(const CBoard& rcBoard, const QString& rcFile, QString& rcError)
{
    m_pcReader = CFilms::openReader(rcFile, rcError);
    if (m_pcReader == nullptr)
        return false;
    if (!m_pcReader->next()) {
        rcError = QStringLiteral("%1: no frame of it can be decoded").arg(rcFile);
        return false;
    }
    return m_cFile.create(rcBoard, rcError);
}

CFilmPlayback::~CFilmPlayback()
{
    end();
}

CFilmPlayback::CPosition CFilmPlayback::frame(CPosition cNow)
{
    const CPosition cOver = std::chrono::microseconds(m_pcReader->time() + m_pcReader->duration());
    if (cOver > cNow || m_iLeftOut >= MOST_LEFT_OUT)
        show();
    else
        ++m_iLeftOut;
    return next();
}

void CFilmPlayback::show()
{
    m_cFile.show(m_pcReader->picture());
    m_iLeftOut = 0;
}

/// Decodes the next frame ahead of its time. At the end of the film the last one stays, and is shown in any case.
CFilmPlayback::CPosition CFilmPlayback::next()
{
    countFrame();
    if (m_pcReader->next())
        return std::chrono::microseconds(m_pcReader->time());
    if (m_iLeftOut > 0)
        show();
    return NEVER;
}
