/* SPDX-License-Identifier: MIT */
#include "board/codec/CCodec.h"

#include "board/state/CBoard.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace
{

const int TICK_MS = 200;
const int FRAMES_PER_TICK = 5;
const int LINES_PER_TICK = 1024; // 64 bytes each

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

CCodec::CCodec(CBoard& rcBoard) : m_rcBoard(rcBoard) {}

CCodec::~CCodec()
{
    closeFile();
}

bool CCodec::carryOut(ECommand eCommand, const QString& rcFile, QString& rcError)
{
    const STransition& rsTransition = TRANSITIONS[eCommand];
    if ((rsTransition.uiFrom & bit(m_sState.eActivity)) == 0) {
        rcError = QStringLiteral("not while %1").arg(m_sState.activityName());
        return false;
    }
    if (m_sState.eActivity == SCodecState::IDLE) {
        if (!openFile(eCommand, rcFile, rcError))
            return false;
        m_sState.iFrame = 0;
        m_sState.cFile = rcFile;
    }
    m_sState.eActivity = rsTransition.eTo;
    if (m_sState.eActivity == SCodecState::IDLE) {
        closeFile();
        m_sState = SCodecState();
    }
    if (m_sState.isRunning())
        m_cTimer.start(TICK_MS, Qt::PreciseTimer, this);
    else
        m_cTimer.stop();
    m_rcBoard.setCodecState(m_sState);
    return true;
}

bool CCodec::openFile(ECommand eCommand, const QString& rcFile, QString& rcError)
{
    if (eCommand == RECORD && m_rcBoard.codecMode() == BOARD_CODEC_LOSE)
        return true;
    // Append mode: if another program changes the file's length, the file grows on from there.
    const int iFlags = eCommand == RECORD ? O_WRONLY | O_CREAT | O_TRUNC | O_APPEND : O_RDONLY;
    // Not QFile, which encodes names as the environment says.
    m_iFile = ::open(rcFile.toUtf8().constData(), iFlags | O_CLOEXEC, 0666);
    if (m_iFile >= 0)
        return true;
    rcError = QStringLiteral("%1: %2").arg(rcFile, QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

void CCodec::closeFile()
{
    if (m_iFile >= 0)
        ::close(m_iFile);
    m_iFile = -1;
}

void CCodec::timerEvent(QTimerEvent* /*pcEvent*/)
{
    if (m_sState.eActivity == SCodecState::RECORDING && m_rcBoard.codecMode() != BOARD_CODEC_STALL)
        grow();
    m_sState.iFrame += FRAMES_PER_TICK;
    m_rcBoard.setCodecState(m_sState);
}

void CCodec::grow()
{
    QByteArray cBlock;
    for (int i = 0; i < LINES_PER_TICK; ++i)
        cBlock += QStringLiteral("halden-codec: frame %1, line %2")
                      .arg(m_sState.iFrame, 10, 10, QLatin1Char('0'))
                      .arg(i, 4, 10, QLatin1Char('0'))
                      .leftJustified(63)
                      .toLatin1() +
                  '\n';
    // On a full disk the file stops growing, which the daemon notices.
    if (m_iFile >= 0 && ::write(m_iFile, cBlock.constData(), static_cast<size_t>(cBlock.size())) < 0)
        qWarning("%s: %s", qPrintable(m_sState.cFile), std::strerror(errno));
}
