#include "tests/support/CBusMonitor.h"

#include "tests/support/Timeouts.h"

bool CBusMonitor::start(const QString& rcBusAddress)
{
    m_cMonitor.start(QStringLiteral("dbus-monitor"), {QStringLiteral("--address"), rcBusAddress});
    return m_cMonitor.waitForReadyRead(TIMEOUT_PROCESS_MS);
}

bool CBusMonitor::waitFor(const QByteArray& rcText)
{
    m_cSeen += m_cMonitor.readAllStandardOutput();
    while (!m_cSeen.contains(rcText)) {
        if (!m_cMonitor.waitForReadyRead(TIMEOUT_CALL_MS))
            return false;
        m_cSeen += m_cMonitor.readAllStandardOutput();
    }
    return true;
}

int CBusMonitor::repliesTo(const QString& rcClient) const
{
    const QByteArray cDestination = "-> destination=" + rcClient.toLatin1() + " ";
    int iReplies = 0;
    for (const QByteArray& rcLine : m_cSeen.split('\n'))
        if ((rcLine.startsWith("method return") || rcLine.startsWith("error")) &&
            rcLine.contains(cDestination))
            ++iReplies;
    return iReplies;
}

bool CBusMonitor::end()
{
    m_cMonitor.terminate();
    return m_cMonitor.waitForFinished(TIMEOUT_PROCESS_MS);
}
