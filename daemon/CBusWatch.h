#ifndef HALDEND_DAEMON_CBUSWATCH_H
#define HALDEND_DAEMON_CBUSWATCH_H

#include <QObject>

/// Keeps the daemon's connection to the system bus readable.
class CBusWatch : public QObject
{
    Q_OBJECT

public:
    /// Connects to the bus if that hasn't been done. Lets any number of calls wait in the daemon. False without a bus.
    bool start();
};

#endif
