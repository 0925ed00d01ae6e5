/* SPDX-License-Identifier: MIT */
#include "daemon/CBusWatch.h"

#include "daemon/CEventLogger.h"

#include <QDBusConnection>

#include <climits>
#include <csignal>

#include <dbus/dbus.h>

bool CBusWatch::start()
{
    QDBusConnection cConnection = QDBusConnection::systemBus();
    if (!cConnection.isConnected())
        return false;
    // The library's own limit is 63 MiB. Behind it the library stops reading, and Qt can't make it read
    // again: messages are freed in this thread, but Qt's own thread watches the sockets.
    dbus_connection_set_max_received_size(static_cast<DBusConnection*>(cConnection.internalPointer()),
                                          LONG_MAX);
    return cConnection.connect(QString(), QStringLiteral(DBUS_PATH_LOCAL),
                               QStringLiteral(DBUS_INTERFACE_LOCAL), QStringLiteral("Disconnected"), this,
                               SLOT(onDisconnected()));
}

void CBusWatch::onDisconnected()
{
    CEventLogger::logMessage(CEventLogger::eLogLevelError, "Lost the system bus");
    raise(SIGTERM);
}
