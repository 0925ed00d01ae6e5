/* SPDX-License-Identifier: MIT */
#include "tests/support/CScene.h"

#include "tests/support/Judgements.h"

#include <csignal>

CScene::~CScene()
{
    failUnlessEmpty(judge(), __FILE__, __LINE__);
}

bool CScene::prepare()
{
    if (!m_cBus.startUnderPolicy()) {
        m_cError = m_cBus.error();
        return false;
    }
    if (!m_cBoard.make()) {
        m_cError = m_cBoard.error();
        return false;
    }
    m_cDaemon.setBusAddress(m_cBus.address());
    m_cDaemon.useBoard(board().directory());
    return true;
}

bool CScene::start()
{
    return (board().isOpen() || prepare()) && m_cDaemon.startAndWaitForName();
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
        board().isOpen() ? differenceFromAnnounced(board(), m_cAnnouncedJudgements) : QString();
    m_cAnnouncedJudgements.clear();
    return cDifference;
}

QByteArray CScene::describe()
{
    return m_cError.toUtf8() + m_cDaemon.describe();
}
