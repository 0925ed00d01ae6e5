#include "tests/support/CPrivateBus.h"

#include "tests/support/Timeouts.h"

CPrivateBus::~CPrivateBus()
{
    stop();
}

bool CPrivateBus::start(const QString& rcConfiguration)
{
    m_cProcess.setProcessChannelMode(QProcess::SeparateChannels);
    m_cProcess.start(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--config-file=") + rcConfiguration,
         QStringLiteral("--address=unix:path=%1").arg(m_cDirectory.filePath(QStringLiteral("bus"))),
         QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    // The bus prints its address when it accepts connections: the read is the wait.
    while (!m_cProcess.canReadLine()) {
        if (!m_cProcess.waitForReadyRead(TIMEOUT_PROCESS_MS)) {
            m_cError = m_cProcess.errorString() + QString::fromLocal8Bit(m_cProcess.readAllStandardError());
            return false;
        }
    }
    m_cAddress = QString::fromLocal8Bit(m_cProcess.readLine()).trimmed();
    return true;
}

void CPrivateBus::stop()
{
    if (m_cProcess.state() == QProcess::NotRunning)
        return;
    m_cProcess.terminate();
    if (!m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS))
        m_cProcess.kill();
    m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
}
