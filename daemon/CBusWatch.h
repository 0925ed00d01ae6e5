/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DAEMON_CBUSWATCH_H
#define HALDEND_DAEMON_CBUSWATCH_H

#include <QObject>

/// Keeps the daemon's connection to the system bus readable, and ends the daemon if the bus is lost.
class CBusWatch : public QObject
{
    Q_OBJECT

public:
    /// Connects to the bus unless that was done before, lets any number of calls wait in the daemon, and
    /// watches for the loss of the bus. Returns false without a bus.
    [[nodiscard]] bool start();

public slots:
    /// Logs the loss and sends the process SIGTERM.
    void onDisconnected();
};

#endif
