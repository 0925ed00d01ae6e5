/* SPDX-License-Identifier: MIT */
#include "tests/support/CBusMonitor.h"

#include "tests/support/Timeouts.h"

#include <QRegularExpression>

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

QStringList CBusMonitor::messagesOf(const QString& rcSender) const
{
    static const QRegularExpression cVariable(QStringLiteral("(time|sender|serial|reply_serial)=\\S+ ?"));
    QStringList cMessages;
    bool bOwn = false;
    for (const QString& rcLine : QString::fromUtf8(m_cSeen).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        // Arguments are indented.
        if (rcLine.startsWith(QLatin1Char(' '))) {
            if (bOwn)
                cMessages.last() += QStringLiteral(", ") + rcLine.simplified();
            continue;
        }
        bOwn = rcLine.contains(QStringLiteral(" sender=%1 ").arg(rcSender));
        if (bOwn)
            cMessages << QString(rcLine).remove(cVariable).trimmed();
    }
    return cMessages;
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
