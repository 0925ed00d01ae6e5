/* SPDX-License-Identifier: MIT */
#include "board/codec/CTextFilm.h"

#include "board/state/CBoard.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace
{

const int FRAMES_PER_TICK = VIDEO_FRAME_RATE * IFilm::TICK_MS / 1000;
const int LINES_PER_TICK = 1024; // 64 bytes each

} // namespace

CTextFilm::~CTextFilm()
{
    if (m_iFile >= 0)
        ::close(m_iFile);
}

std::unique_ptr<CTextFilm> CTextFilm::open(std::unique_ptr<CTextFilm> pcFilm, int iFlags,
                                           const QString& rcFile, QString& rcError)
{
    pcFilm->m_cName = rcFile;
    // Not QFile, which encodes names as the environment says.
    pcFilm->m_iFile = ::open(rcFile.toUtf8().constData(), iFlags | O_CLOEXEC, 0666);
    if (pcFilm->m_iFile >= 0)
        return pcFilm;
    rcError = QStringLiteral("%1: %2").arg(rcFile, QString::fromLocal8Bit(std::strerror(errno)));
    return nullptr;
}

std::unique_ptr<CTextFilm> CTextFilm::record(const CBoard& rcBoard, const QString& rcFile, QString& rcError)
{
    // Append mode: if another program changes the file's length, the file grows on from there.
    return open(recordNothing(rcBoard), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, rcFile, rcError);
}

std::unique_ptr<CTextFilm> CTextFilm::recordNothing(const CBoard& rcBoard)
{
    return std::unique_ptr<CTextFilm>(new CTextFilm(rcBoard, true));
}

std::unique_ptr<CTextFilm> CTextFilm::play(const CBoard& rcBoard, const QString& rcFile, QString& rcError)
{
    return open(std::unique_ptr<CTextFilm>(new CTextFilm(rcBoard, false)), O_RDONLY, rcFile, rcError);
}

void CTextFilm::tick()
{
    if (m_bRecording && m_rcBoard.codecMode() != BOARD_CODEC_STALL)
        grow();
    m_iFrames += FRAMES_PER_TICK;
}

void CTextFilm::grow()
{
    QByteArray cBlock;
    for (int i = 0; i < LINES_PER_TICK; ++i)
        cBlock += QStringLiteral("halden-codec: frame %1, line %2")
                      .arg(m_iFrames, 10, 10, QLatin1Char('0'))
                      .arg(i, 4, 10, QLatin1Char('0'))
                      .leftJustified(63)
                      .toLatin1() +
                  '\n';
    // On a full disk the file stops growing, which the daemon notices.
    if (m_iFile >= 0 && ::write(m_iFile, cBlock.constData(), static_cast<size_t>(cBlock.size())) < 0)
        qWarning("%s: %s", qPrintable(m_cName), std::strerror(errno));
}
