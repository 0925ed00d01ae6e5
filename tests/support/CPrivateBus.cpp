/* SPDX-License-Identifier: MIT */
#include "tests/support/CPrivateBus.h"

#include "tests/support/Timeouts.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <pwd.h>
#include <unistd.h>

CPrivateBus::SPolicy::SPolicy()
    : cFile(QStringLiteral(HALDEND_BUS_POLICY)), cRoot(QString::fromLocal8Bit(getpwuid(geteuid())->pw_name))
{
}

CPrivateBus::~CPrivateBus()
{
    stop();
}

QString CPrivateBus::addressOf(const QString& rcSocket)
{
    return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(rcSocket, "/_-.", "~"));
}

bool CPrivateBus::start(const QString& rcConfiguration)
{
    // Not a pipe: the bus stops when it is full, and a long test may not read it for hours.
    const QString cErrors = m_cDirectory.filePath(QStringLiteral("errors"));
    m_cProcess.setStandardErrorFile(cErrors);
    m_cProcess.start(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--config-file=") + rcConfiguration,
         QStringLiteral("--address=") +
             addressOf(m_cSocket.isEmpty() ? m_cDirectory.filePath(QStringLiteral("bus")) : m_cSocket),
         QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    // The bus prints its address when it accepts connections: the read is the wait.
    while (!m_cProcess.canReadLine()) {
        if (!m_cProcess.waitForReadyRead(TIMEOUT_PROCESS_MS)) {
            QFile cFile(cErrors);
            m_cError = m_cProcess.errorString();
            if (cFile.open(QIODevice::ReadOnly))
                m_cError += QString::fromLocal8Bit(cFile.readAll());
            return false;
        }
    }
    m_cAddress = QString::fromLocal8Bit(m_cProcess.readLine()).trimmed();
    return true;
}

static void replaceName(QByteArray& rcPolicy, const QString& rcAttribute, const QString& rcName)
{
    if (!rcName.isEmpty())
        rcPolicy.replace(rcAttribute.toLatin1(), rcAttribute.section(QLatin1Char('"'), 0, 0).toLatin1() +
                                                     '"' + rcName.toLatin1() + '"');
}

bool CPrivateBus::startUnderPolicy(const SPolicy& rsPolicy)
{
    const QString cConfiguration = m_cDirectory.filePath(QStringLiteral("system.conf"));
    QFile cPolicy(rsPolicy.cFile);
    QFile cCopy(m_cDirectory.filePath(QStringLiteral("system.d/velmar.haldend.conf")));
    QFile::remove(cConfiguration);
    if (!QFile::copy(QStringLiteral(HALDEND_SYSTEM_BUS_CONF), cConfiguration) ||
        !QDir(m_cDirectory.path()).mkpath(QStringLiteral("system.d")) || !cPolicy.open(QIODevice::ReadOnly) ||
        !cCopy.open(QIODevice::WriteOnly)) {
        m_cError = QStringLiteral("%1: can't be used").arg(rsPolicy.cFile);
        return false;
    }
    QByteArray cText = cPolicy.readAll();
    replaceName(cText, QStringLiteral("user=\"root\""), rsPolicy.cRoot);
    replaceName(cText, QStringLiteral("user=\"haldend\""), rsPolicy.cUser);
    replaceName(cText, QStringLiteral("group=\"haldend\""), rsPolicy.cGroup);
    cCopy.write(cText);
    cCopy.close();
    QFile::setPermissions(m_cDirectory.path(), QFile::permissions(m_cDirectory.path()) | QFile::ReadGroup |
                                                   QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
    return start(cConfiguration);
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
