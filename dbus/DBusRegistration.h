/* How a service object puts itself on the system bus: the same steps for all of them. */
#ifndef HALDEND_DBUS_DBUSREGISTRATION_H
#define HALDEND_DBUS_DBUSREGISTRATION_H

#include <QDBusConnection>
#include <QObject>
#include <QString>

/// Gives a service object its adaptor, which becomes its Qt child, and exports the adaptor's interface, and
/// nothing else of the object, under a path of the system bus.
///
/// Returns false if the object has its adaptor already (nothing changes), or if the registration fails (path
/// taken, no bus); then the adaptor is gone again and rpcAdaptor null.
template <class CAdaptor>
bool registerDBusObject(QObject& rcService, CAdaptor*& rpcAdaptor, const QString& rcPath)
{
    if (rpcAdaptor != nullptr)
        return false;
    rpcAdaptor = new CAdaptor(&rcService);
    const bool bRegistered =
        QDBusConnection::systemBus().registerObject(rcPath, &rcService, QDBusConnection::ExportAdaptors);
    if (!bRegistered) {
        delete rpcAdaptor;
        rpcAdaptor = nullptr;
    }
    return bRegistered;
}

#endif
