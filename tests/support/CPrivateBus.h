/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CPRIVATEBUS_H
#define HALDEND_TESTS_CPRIVATEBUS_H

#include "tests/support/CChildProcess.h"

#include <QString>
#include <QTemporaryDir>

/// A bus daemon of one's own, in the place of the system bus. Lives from start() to the end of the
/// object, or to stop().
class CPrivateBus
{
public:
    CPrivateBus() = default;
    ~CPrivateBus();

    /// Starts the bus; it accepts connections when this returns true. On false error() says why. Another
    /// configuration file than the virtual board's can be named.
    bool start(const QString& rcConfiguration = QStringLiteral(HALDEND_PRIVATE_BUS_CONF));

    /// The socket of the next start, in place of one in a folder of its own.
    void setSocket(const QString& rcPath) { m_cSocket = rcPath; }

    /// The address of a socket, as the bus takes it.
    static QString addressOf(const QString& rcSocket);

    /// Who stands in for whom in the daemon's policy; an empty name is left as it is.
    struct SPolicy {
        SPolicy(); ///< The shipped policy, where root is the user of the test.

        QString cFile;
        QString cRoot;
        QString cUser;  ///< of the user haldend, who may own the name
        QString cGroup; ///< of the group haldend, who may call
    };

    /// Starts a bus as strict as a machine's system bus, with the daemon's policy. Every user can reach it.
    bool startUnderPolicy(const SPolicy& rsPolicy = SPolicy());

    void stop();

    /// What DBUS_SYSTEM_BUS_ADDRESS has to hold for its clients.
    QString address() const { return m_cAddress; }
    QString error() const { return m_cError; }

private:
    QTemporaryDir m_cDirectory;
    QString m_cSocket;
    CChildProcess m_cProcess;
    QString m_cAddress;
    QString m_cError;
};

#endif
