/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CBUSMONITOR_H
#define HALDEND_TESTS_CBUSMONITOR_H

#include "tests/support/CChildProcess.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

/// What really goes over a bus: dbus-monitor beside the daemon and its client.
class CBusMonitor
{
public:
    /// Starts to listen. False if that fails.
    bool start(const QString& rcBusAddress);

    /// Listens until the text comes by. False if it doesn't.
    bool waitFor(const QByteArray& rcText);

    /// All that came by so far, as dbus-monitor prints it.
    QByteArray seen() const { return m_cSeen; }

    /// What one of its members sent, by its unique name: a line a message, without what differs from run to run,
    /// then its arguments, as in
    ///
    ///     method call -> destination=velmar.mobilygen path=/Record; interface=(null); member=record, int32 3
    QStringList messagesOf(const QString& rcSender) const;

    /// Replies and errors that went to the client, by its unique name.
    int repliesTo(const QString& rcClient) const;

    /// Stops to listen. False if dbus-monitor doesn't end.
    bool end();

private:
    CChildProcess m_cMonitor;
    QByteArray m_cSeen;
};

#endif
