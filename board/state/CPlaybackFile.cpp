/* SPDX-License-Identifier: MIT */
#include "board/state/CPlaybackFile.h"

#include "board/layout/board_layout.h"
#include "board/state/CBoard.h"

#include <QtEndian>

namespace
{

// A frame lasts much longer than its copy takes. So more attempts are only for a machine that stood still.
const int ATTEMPTS = 10;

board_playback* head(const CMappedFile& rcFile)
{
    return reinterpret_cast<board_playback*>(rcFile.data());
}

uchar* frameBytes(const CMappedFile& rcFile, quint32 u32Sequence)
{
    return rcFile.data() + sizeof(board_playback) + u32Sequence % 2 * VIDEO_FRAME_BYTES;
}

QImage readFrame(const uchar* pu8Bytes)
{
    QImage cFrame(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        qFromLittleEndian<quint32>(pu8Bytes + VIDEO_LINE_BYTES * static_cast<quint32>(y), VIDEO_WIDTH,
                                   cFrame.scanLine(y));
    return cFrame;
}

} // namespace

CPlaybackFile::~CPlaybackFile()
{
    if (!m_cPath.isEmpty())
        QFile::remove(m_cPath);
}

bool CPlaybackFile::create(const CBoard& rcBoard, QString& rcError)
{
    const QString cPath = rcBoard.path(BOARD_PLAYBACK);
    // A new file: a reader of an old one isn't disturbed.
    QFile::remove(cPath);
    QFile cFile(cPath);
    if (!cFile.open(QIODevice::WriteOnly | QIODevice::NewOnly) || !cFile.resize(BOARD_PLAYBACK_BYTES)) {
        rcError = QStringLiteral("%1: %2").arg(cPath, cFile.errorString());
        return false;
    }
    m_cPath = cPath;
    m_pcBoard = &rcBoard;
    return m_cFile.open(cPath, BOARD_PLAYBACK_BYTES, rcError);
}

void CPlaybackFile::show(const QImage& rcFrame)
{
    if (m_cFile.data() == nullptr || rcFrame.size() != QSize(VIDEO_WIDTH, VIDEO_HEIGHT))
        return;
    // 0 stands for no frame: the number after the last one is 2.
    const quint32 u32Last = board_load(&head(m_cFile)->sequence);
    const quint32 u32Next = u32Last == 0xffffffff ? 2 : u32Last + 1;
    uchar* pu8Bytes = frameBytes(m_cFile, u32Next);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        qToLittleEndian<quint32>(rcFrame.constScanLine(y), VIDEO_WIDTH,
                                 pu8Bytes + VIDEO_LINE_BYTES * static_cast<quint32>(y));
    board_store(&head(m_cFile)->sequence, u32Next);
    m_pcBoard->noteChange();
}

QImage CPlaybackFile::frame(const CBoard& rcBoard)
{
    CMappedFile cFile;
    QString cError;
    if (!rcBoard.isOpen() || !cFile.open(rcBoard.path(BOARD_PLAYBACK), BOARD_PLAYBACK_BYTES, cError))
        return QImage();
    QImage cFrame;
    quint32 u32Sequence = board_load(&head(cFile)->sequence);
    for (int i = 0; i < ATTEMPTS && u32Sequence != 0; ++i) {
        cFrame = readFrame(frameBytes(cFile, u32Sequence));
        const quint32 u32After = board_load(&head(cFile)->sequence);
        if (u32After == u32Sequence)
            break;
        u32Sequence = u32After;
    }
    return cFrame;
}

void CPlaybackFile::remove(const CBoard& rcBoard)
{
    QFile::remove(rcBoard.path(BOARD_PLAYBACK));
}
