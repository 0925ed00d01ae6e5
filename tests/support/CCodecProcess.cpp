/* SPDX-License-Identifier: MIT */
#include "tests/support/CCodecProcess.h"

#include "board/layout/board_layout.h"
#include "tests/support/Preload.h"
#include "tests/support/ServiceStart.h"
#include "tests/support/Timeouts.h"

#include <QUuid>

#include <csignal>

CCodecProcess::CCodecProcess()
    : m_cEnvironment(QProcessEnvironment::systemEnvironment()), m_cProgram(QStringLiteral(HALDEND_CODEC))
{
    m_cProcess.setProcessChannelMode(QProcess::MergedChannels);
}

CCodecProcess::~CCodecProcess()
{
    end();
}

void CCodecProcess::setVariable(const QString& rcName, const QString& rcValue)
{
    m_cEnvironment.insert(rcName, rcValue);
}

void CCodecProcess::useClock(const SClock& rsClock)
{
    preload(m_cEnvironment, rsClock.cLibrary);
    for (auto it = rsClock.cVariables.begin(); it != rsClock.cVariables.end(); ++it)
        setVariable(it.key(), it.value());
}

bool CCodecProcess::start(const QString& rcBusAddress, const QString& rcBoard)
{
    setVariable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), rcBusAddress);
    setVariable(QStringLiteral(BOARD_VARIABLE), rcBoard);
    m_cProcess.setProcessEnvironment(m_cEnvironment);
    const QString cClient = QUuid::createUuid().toString();
    const bool bStarted = startAndWaitForService(
        [this] { m_cProcess.start(m_cProgram, m_cArguments); }, m_cProcess,
        QDBusConnection::connectToBus(rcBusAddress, cClient), QStringLiteral("velmar.mobilygen"));
    QDBusConnection::disconnectFromBus(cClient);
    m_iPid = m_cProcess.processId();
    return bStarted;
}

bool CCodecProcess::waitForEnd()
{
    return m_cProcess.state() == QProcess::NotRunning || m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
}

void CCodecProcess::sendSignal(int iSignal)
{
    // Without a process it would go to the whole group.
    if (m_cProcess.processId() > 0)
        ::kill(static_cast<pid_t>(m_cProcess.processId()), iSignal);
}

void CCodecProcess::hold()
{
    sendSignal(SIGSTOP);
}

void CCodecProcess::goOn()
{
    sendSignal(SIGCONT);
}

bool CCodecProcess::kill()
{
    m_cProcess.kill();
    return waitForEnd();
}

void CCodecProcess::end()
{
    goOn();
    m_cProcess.terminate();
    if (!waitForEnd()) {
        m_cProcess.kill();
        m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
    }
    removeClockOf(m_iPid);
    m_iPid = 0;
}

QByteArray CCodecProcess::describe()
{
    return "halden-codec: exit code " + QByteArray::number(m_cProcess.exitCode()) + "\n" +
           (m_cProcess.isOpen() ? m_cProcess.readAll() : QByteArray());
}
