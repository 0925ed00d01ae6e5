/* SPDX-License-Identifier: MIT */
#include "tests/support/CServeProcess.h"

#include "board/layout/board_layout.h"
#include "tests/support/Timeouts.h"

#include <QUrl>

bool CServeProcess::start(const QString& rcBusAddress, const QString& rcBoard, const QStringList& rcOptions)
{
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), rcBusAddress);
    cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), rcBoard);
    m_cProcess.setProcessEnvironment(cEnvironment);
    m_cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), QStringList{QStringLiteral("serve")} + rcOptions);
    // It prints the address when it accepts connections: the read is the wait.
    while (!m_cProcess.canReadLine())
        if (!m_cProcess.waitForReadyRead(TIMEOUT_PROCESS_MS))
            return false;
    m_cAddress = QString::fromLatin1(m_cProcess.readLine()).trimmed();
    return port() > 0;
}

int CServeProcess::port() const
{
    return QUrl(m_cAddress).port(0);
}

QByteArray CServeProcess::describe()
{
    return "halden-board serve: " + m_cProcess.readAllStandardError() + " exit code " +
           QByteArray::number(m_cProcess.exitCode());
}
