#include "tests/support/CAttachedBoard.h"

#include "board/create/CBoardMaker.h"
#include "board/preload/haldenboard.h"
#include "tests/support/Judgements.h"

#include <QRegularExpression>

#include <fcntl.h>

CAttachedBoard::CAttachedBoard()
{
    const QString cPath = m_cDirectory.filePath(QStringLiteral("board"));
    QString cError;
    haldenboard_detach();
    m_bReady = CBoardMaker::create(cPath, cError) && m_cBoard.open(cPath) &&
               haldenboard_attach(qPrintable(cPath)) == 0;
    if (!m_bReady)
        qWarning("No board: %s %s", qPrintable(cError), qPrintable(m_cBoard.errorString()));
}

CAttachedBoard::~CAttachedBoard()
{
    haldenboard_detach();
    if (m_bReady && m_bJudging)
        failUnlessEmpty(differenceFromAnnounced(m_cBoard, m_cAnnounced), __FILE__, __LINE__);
}

int CAttachedBoard::openDevice(const char* pszFile)
{
    return ::open(qPrintable(m_cBoard.path(pszFile)), O_RDWR | O_CLOEXEC);
}

QStringList CAttachedBoard::takeTrace()
{
    QStringList cLines = m_cBoard.traceLines();
    m_cBoard.clearTrace();
    cLines.replaceInStrings(QRegularExpression(QStringLiteral("open = \\d+$")), QStringLiteral("open = N"));
    return cLines;
}
