/* SPDX-License-Identifier: MIT */
#include "board/codec/CCodec.h"

#include "board/codec/CFilmPlayback.h"
#include "board/codec/CFilmRecording.h"
#include "board/codec/CTextFilm.h"
#include "board/state/CBoard.h"

namespace
{

/// The activities in which a command is allowed, as bits, and the activity that it leads to.
struct STransition {
    unsigned uiFrom;
    SCodecState::EActivity eTo;
};

constexpr unsigned bit(SCodecState::EActivity eActivity)
{
    return 1u << eActivity;
}

const unsigned ANY_RECORDING = bit(SCodecState::RECORDING) | bit(SCodecState::RECORDING_PAUSED);
const unsigned ANY_PLAYBACK = bit(SCodecState::PLAYING) | bit(SCodecState::PLAYING_PAUSED);

const STransition TRANSITIONS[] = {
    {bit(SCodecState::IDLE),             SCodecState::RECORDING       }, // RECORD
    {bit(SCodecState::RECORDING),        SCodecState::RECORDING_PAUSED}, // PAUSE_RECORDING
    {bit(SCodecState::RECORDING_PAUSED), SCodecState::RECORDING       }, // RESUME_RECORDING
    {ANY_RECORDING,                      SCodecState::IDLE            }, // STOP_RECORDING
    {bit(SCodecState::IDLE),             SCodecState::PLAYING         }, // PLAY
    {bit(SCodecState::PLAYING),          SCodecState::PLAYING_PAUSED  }, // PAUSE_PLAYBACK
    {bit(SCodecState::PLAYING_PAUSED),   SCodecState::PLAYING         }, // RESUME_PLAYBACK
    {ANY_PLAYBACK,                       SCodecState::IDLE            }, // STOP_PLAYBACK
};

} // namespace

CCodec::CCodec(CBoard& rcBoard, bool bVideo) : m_rcBoard(rcBoard), m_bVideo(bVideo) {}

CCodec::~CCodec() = default;

bool CCodec::carryOut(ECommand eCommand, const QString& rcFile, QString& rcError)
{
    const STransition& rsTransition = TRANSITIONS[eCommand];
    if ((rsTransition.uiFrom & bit(m_sState.eActivity)) == 0) {
        rcError = QStringLiteral("not while %1").arg(m_sState.activityName());
        return false;
    }
    if (m_sState.eActivity == SCodecState::IDLE) {
        m_pcFilm = eCommand == RECORD ? startRecording(rcFile, rcError) : startPlayback(rcFile, rcError);
        if (m_pcFilm == nullptr)
            return false;
        m_sState.cFile = rcFile;
    }
    changeTo(rsTransition.eTo);
    return true;
}

void CCodec::changeTo(SCodecState::EActivity eActivity)
{
    const bool bRan = m_sState.isRunning();
    m_sState.eActivity = eActivity;
    if (m_sState.isRunning()) {
        m_pcFilm->resume();
        m_cTimer.start(IFilm::TICK_MS, Qt::PreciseTimer, this);
    } else {
        m_cTimer.stop();
        if (bRan)
            m_pcFilm->pause();
    }
    m_sState.iFrame = m_pcFilm->frames();
    if (eActivity == SCodecState::IDLE)
        m_sState = SCodecState();
    m_rcBoard.setCodecState(m_sState);
    // Only now: while the board says that a film is played back, its frame is there.
    if (eActivity == SCodecState::IDLE)
        m_pcFilm.reset();
}

std::unique_ptr<IFilm> CCodec::startRecording(const QString& rcFile, QString& rcError)
{
    if (m_rcBoard.codecMode() == BOARD_CODEC_LOSE)
        return CTextFilm::recordNothing(m_rcBoard);
    if (m_bVideo)
        return CFilmRecording::start(m_rcBoard, rcFile, rcError);
    return CTextFilm::record(m_rcBoard, rcFile, rcError);
}

std::unique_ptr<IFilm> CCodec::startPlayback(const QString& rcFile, QString& rcError)
{
    if (m_bVideo)
        return CFilmPlayback::start(m_rcBoard, rcFile, rcError);
    return CTextFilm::play(m_rcBoard, rcFile, rcError);
}

void CCodec::timerEvent(QTimerEvent* /*pcEvent*/)
{
    m_pcFilm->tick();
    m_sState.iFrame = m_pcFilm->frames();
    m_rcBoard.setCodecState(m_sState);
}
