/* SPDX-License-Identifier: MIT */
#include "board/codec/CFilmRecording.h"

#include "board/film/CFilms.h"
#include "board/picture/CBoardPicture.h"

namespace
{

const CFilmClock::CPosition FRAME_TIME = std::chrono::milliseconds(1000 / VIDEO_FRAME_RATE);

// A machine that is too slow for all pictures gets one in so many frames.
const int MOST_REPEATED = VIDEO_FRAME_RATE;

// So many that are late at the end are still written; the caller of "stop" waits for it.
const int MOST_CAUGHT_UP = VIDEO_FRAME_RATE;

/// The last frame that is due at a position.
int frameAt(CFilmClock::CPosition cPosition)
{
    return static_cast<int>(cPosition / FRAME_TIME);
}

} // namespace

std::unique_ptr<CFilmRecording> CFilmRecording::start(const CBoard& rcBoard, const QString& rcFile,
                                                      QString& rcError)
{
    std::unique_ptr<CFilmRecording> pcFilm(new CFilmRecording);
    pcFilm->m_cFile = rcFile;
    if (!pcFilm->openBoard(rcBoard.directory(), rcError))
        return nullptr;
    pcFilm->m_pcWriter = CFilms::openWriter(rcFile, rcError);
    if (pcFilm->m_pcWriter == nullptr)
        return nullptr;
    pcFilm->CFilmThread::start(CPosition::zero());
    return pcFilm;
}

bool CFilmRecording::openBoard(const QString& rcDirectory, QString& rcError)
{
    if (m_cBoard.open(rcDirectory))
        return true;
    rcError = m_cBoard.errorString();
    return false;
}

CFilmRecording::~CFilmRecording()
{
    const CPosition cEnd = end();
    if (m_pcWriter == nullptr)
        return;
    catchUp(cEnd);
    tell(m_pcWriter->close());
    if (m_iRepeated > 0)
        qWarning("%s: %d of %d frames came late; the ones before were repeated", qPrintable(m_cFile),
                 m_iRepeated, m_pcWriter->frames());
}

CFilmRecording::CPosition CFilmRecording::frame(CPosition cNow)
{
    if (m_cBoard.codecMode() == BOARD_CODEC_STALL)
        ++m_iStalled;
    else
        write(frameAt(cNow) > next() && m_pcWriter->frames() > 0 && m_iInARow < MOST_REPEATED);
    countFrame();
    return next() * FRAME_TIME;
}

void CFilmRecording::write(bool bRepeat)
{
    m_iInARow = bRepeat ? m_iInARow + 1 : 0;
    m_iRepeated += bRepeat ? 1 : 0;
    tell(bRepeat ? m_pcWriter->repeat() : m_pcWriter->write(CBoardPicture::recorded(m_cBoard)));
}

void CFilmRecording::catchUp(CPosition cEnd)
{
    for (int i = 0; i < MOST_CAUGHT_UP && next() <= frameAt(cEnd) && m_pcWriter->frames() > 0; ++i)
        write(true);
    const int iLost = frameAt(cEnd) + 1 - next();
    if (iLost > 0)
        qWarning("%s: the last %d frames are missing; they came too late", qPrintable(m_cFile), iLost);
}

// Once until it goes well again. On a full disk the file stops growing, which the daemon notices.
void CFilmRecording::tell(bool bWritten)
{
    if (!bWritten && !m_bFailed)
        qWarning("%s", qPrintable(m_pcWriter->errorString()));
    m_bFailed = !bWritten;
}
