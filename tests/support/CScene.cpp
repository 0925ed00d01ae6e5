#include "tests/support/CScene.h"

#include "board/create/CBoardMaker.h"
#include "tests/support/Judgements.h"

#include <csignal>

CScene::~CScene()
{
    failUnlessEmpty(judge(), __FILE__, __LINE__);
}

bool CScene::prepare()
{
    const QString cDirectory = m_cDirectory.filePath(QStringLiteral("board"));
    if (!m_cBus.startUnderPolicy()) {
        m_cError = m_cBus.error();
        return false;
    }
    if (!CBoardMaker::create(cDirectory, m_cError))
        return false;
    if (!m_cBoard.open(cDirectory)) {
        m_cError = m_cBoard.errorString();
        return false;
    }
    m_cDaemon.setBusAddress(m_cBus.address());
    m_cDaemon.useBoard(cDirectory);
    return true;
}

bool CScene::start()
{
    return (m_cBoard.isOpen() || prepare()) && m_cDaemon.startAndWaitForName();
}

QString CScene::end()
{
    if (!m_cDaemon.endBySignal(SIGTERM))
        return QStringLiteral("doesn't end on SIGTERM") + QString::fromUtf8(describe());
    if (m_cDaemon.crashed() || m_cDaemon.exitCode() != 0)
        return QStringLiteral("ended badly") + QString::fromUtf8(describe());
    const QStringList cUnexpected = m_cDaemon.unexpectedOutput();
    if (cUnexpected != m_cAnnounced)
        return QStringLiteral("said: ") + cUnexpected.join(QLatin1Char('\n'));
    return judge();
}

QString CScene::judge()
{
    QString cDifference =
        m_cBoard.isOpen() ? differenceFromAnnounced(m_cBoard, m_cAnnouncedJudgements) : QString();
    m_cAnnouncedJudgements.clear();
    return cDifference;
}

QByteArray CScene::describe()
{
    return m_cError.toUtf8() + m_cDaemon.describe();
}
