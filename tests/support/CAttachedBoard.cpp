/* SPDX-License-Identifier: MIT */
#include "tests/support/CAttachedBoard.h"

#include "board/preload/haldenboard.h"
#include "tests/support/Judgements.h"

#include <QRegularExpression>

#include <fcntl.h>

CAttachedBoard::CAttachedBoard()
{
    haldenboard_detach();
    m_bReady = m_cBoard.make() && haldenboard_attach(qPrintable(m_cBoard.board().directory())) == 0;
    if (!m_bReady)
        qWarning("No board: %s", qPrintable(m_cBoard.error()));
}

CAttachedBoard::~CAttachedBoard()
{
    haldenboard_detach();
    if (m_bReady && m_bJudging)
        failUnlessEmpty(differenceFromAnnounced(**this, m_cAnnounced), __FILE__, __LINE__);
}

int CAttachedBoard::openDevice(const char* pszFile)
{
    return ::open(qPrintable(m_cBoard.board().path(pszFile)), O_RDWR | O_CLOEXEC);
}

QStringList CAttachedBoard::takeTrace()
{
    QStringList cLines = m_cBoard.board().traceLines();
    m_cBoard.board().clearTrace();
    cLines.replaceInStrings(QRegularExpression(QStringLiteral("open = \\d+$")), QStringLiteral("open = N"));
    return cLines;
}
