#ifndef HALDEND_DAEMON_CBUSWATCH_H
#define HALDEND_DAEMON_CBUSWATCH_H

#include <QObject>

/// Keeps the daemon's connection to the system bus readable, and ends the daemon when the bus is gone.
class CBusWatch : public QObject
{
    Q_OBJECT

public:
    /// Connects to the bus if that hasn't been done. Lets any number of calls wait in the daemon, and watches for
    /// the loss of the bus. False without a bus.
    bool start();

public slots:
    /// Logs the loss and sends the process SIGTERM.
    void onDisconnected();
};

#endif
