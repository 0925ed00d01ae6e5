/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSERVEPROCESS_H
#define HALDEND_TESTS_CSERVEPROCESS_H

#include "tests/support/CChildProcess.h"

#include <QString>
#include <QStringList>

/// "halden-board serve" as a process, on the bus and the board of a scene.
class CServeProcess
{
public:
    /// Starts it on a free port, or with these options, and waits until it listens. False if it doesn't get there.
    bool start(const QString& rcBusAddress, const QString& rcBoard,
               const QStringList& rcOptions = {QStringLiteral("--port"), QStringLiteral("0")});

    /// The address that it printed: of the page, with the token behind #.
    QString address() const { return m_cAddress; }
    int port() const;
    QString token() const { return m_cAddress.section(QLatin1Char('#'), 1); }

    CChildProcess& process() { return m_cProcess; }

    /// For failure messages.
    QByteArray describe();

private:
    CChildProcess m_cProcess;
    QString m_cAddress;
};

#endif
