/* SPDX-License-Identifier: MIT */
#include "board/tool/CReplayedBoard.h"

#include "board/create/CBoardMaker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool CReplayedBoard::readTrace(const QString& rcTrace, QString& rcError)
{
    m_cTrace = QFileInfo(rcTrace).isDir() ? rcTrace + QStringLiteral("/" BOARD_TRACE) : rcTrace;
    QFile cFile(m_cTrace);
    if (!cFile.open(QIODevice::ReadOnly)) {
        rcError = QStringLiteral("%1: %2").arg(m_cTrace, cFile.errorString());
        return false;
    }
    m_cLines = QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'));
    if (m_cLines.constLast().isEmpty())
        m_cLines.removeLast();
    return true;
}

// In memory where the system offers that: a board is large, and its files are sparse.
static QString temporaryPlace()
{
    const QString cMemory = QStringLiteral("/dev/shm");
    return (QFileInfo(cMemory).isWritable() ? cMemory : QDir::tempPath()) +
           QStringLiteral("/halden-replay.XXXXXX");
}

bool CReplayedBoard::open(const QString& rcTrace, const QString& rcDirectory, QString& rcError)
{
    QString cDirectory = rcDirectory;
    if (!readTrace(rcTrace, rcError))
        return false;
    if (cDirectory.isEmpty()) {
        m_pcFolder.reset(new QTemporaryDir(temporaryPlace()));
        cDirectory = m_pcFolder->filePath(QStringLiteral("board"));
    }
    if (!CBoardMaker::create(cDirectory, rcError))
        return false;
    if (m_cBoard.open(cDirectory))
        return m_cReplay.open(rcError);
    rcError = m_cBoard.errorString();
    return false;
}

bool CReplayedBoard::step(QString& rcError)
{
    QString cWrong;
    if (m_cReplay.apply(m_cLines.at(m_iPosition), cWrong)) {
        ++m_iPosition;
        return true;
    }
    rcError = QStringLiteral("%1:%2: %3").arg(m_cTrace).arg(m_iPosition + 1).arg(cWrong);
    return false;
}

bool CReplayedBoard::run(int iUntil, QString& rcError)
{
    while (m_iPosition < qMin(iUntil, m_cLines.size()))
        if (!step(rcError))
            return false;
    return true;
}
