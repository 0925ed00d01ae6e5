/* SPDX-License-Identifier: MIT */
#include "tests/support/CHaldenctl.h"

#include "tests/support/CChildProcess.h"
#include "tests/support/Timeouts.h"

#include <QJsonDocument>

CHaldenctl::CHaldenctl(const QString& rcBusAddress) : m_cEnvironment(QProcessEnvironment::systemEnvironment())
{
    setVariable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), rcBusAddress);
    // Whole stacks, because the suppressions name libraries without frame pointers.
    setVariable(QStringLiteral("ASAN_OPTIONS"),
                QStringLiteral("verify_asan_link_order=0:fast_unwind_on_malloc=0"));
    setVariable(QStringLiteral("LSAN_OPTIONS"),
                QStringLiteral("print_suppressions=0:suppressions=" HALDENCTL_LSAN_SUPPRESSIONS));
}

void CHaldenctl::setVariable(const QString& rcName, const QString& rcValue)
{
    m_cEnvironment.insert(rcName, rcValue);
}

void CHaldenctl::start(QProcess& rcProcess, const QStringList& rcArguments)
{
    rcProcess.setProcessEnvironment(m_cEnvironment);
    if (!m_cFolder.isEmpty())
        rcProcess.setWorkingDirectory(m_cFolder);
    rcProcess.start(QStringLiteral(HALDENCTL_EXECUTABLE), rcArguments);
}

static QString withoutLastEnd(const QByteArray& rcText)
{
    const QString cText = QString::fromUtf8(rcText);
    return cText.endsWith(QLatin1Char('\n')) ? cText.chopped(1) : cText;
}

int CHaldenctl::run(const QStringList& rcArguments, const QByteArray& rcInput)
{
    CChildProcess cProcess;
    start(cProcess, rcArguments);
    cProcess.write(rcInput);
    cProcess.closeWriteChannel();
    const bool bEnded = cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
    m_cOutput = withoutLastEnd(cProcess.readAllStandardOutput());
    m_cErrors = withoutLastEnd(cProcess.readAllStandardError());
    if (bEnded && cProcess.exitStatus() == QProcess::NormalExit)
        return cProcess.exitCode();
    qWarning("haldenctl %s: %s", qPrintable(rcArguments.join(QLatin1Char(' '))),
             qPrintable(cProcess.errorString()));
    return -1;
}

QJsonObject CHaldenctl::object() const
{
    return QJsonDocument::fromJson(m_cOutput.toUtf8()).object();
}

QByteArray CHaldenctl::describe() const
{
    return "\n--- output\n" + m_cOutput.toUtf8() + "\n--- errors\n" + m_cErrors.toUtf8();
}
