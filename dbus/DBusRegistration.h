/* SPDX-License-Identifier: MIT */
/* Registers a service object on the system bus: the same steps for all of them. */
#ifndef HALDEND_DBUS_DBUSREGISTRATION_H
#define HALDEND_DBUS_DBUSREGISTRATION_H

#include <QDBusConnection>
#include <QObject>
#include <QString>

/// The lines that an object prints on standard output while it registers; two of the objects do.
///
/// Kept: service staff look for these lines when they watch a board start over its serial line.
struct SRegistrationTrace {
    const char* pszClass; ///< null: silent
    const char* pszEntry; ///< in the brackets of the first line

    void step(const char* pszArgument) const; ///< "CLASS::setupDBusConnection(ARGUMENT) "
    void result(bool bRegistered) const;      ///< "CLASS::setupDBusConnection()=RESULT "
};

const SRegistrationTrace NO_REGISTRATION_TRACE = {nullptr, nullptr};

/// Gives a service object its adaptor, which becomes its Qt child, and exports the adaptor's interface, and
/// nothing else of the object, under a path of the system bus.
///
/// Returns false if the object has its adaptor already (nothing changes), or if the registration fails
/// because the path is taken or there is no bus; then the adaptor is deleted and rpcAdaptor null.
template <class CAdaptor>
[[nodiscard]] bool registerDBusObject(QObject& rcService, CAdaptor*& rpcAdaptor, const QString& rcPath,
                                      const SRegistrationTrace& rsTrace = NO_REGISTRATION_TRACE)
{
    rsTrace.step(rsTrace.pszEntry);
    bool bRegistered = false;
    if (rpcAdaptor == nullptr) {
        rsTrace.step("new");
        rpcAdaptor = new CAdaptor(&rcService);
        bRegistered =
            QDBusConnection::systemBus().registerObject(rcPath, &rcService, QDBusConnection::ExportAdaptors);
        if (!bRegistered) {
            rsTrace.step("delete");
            delete rpcAdaptor;
            rpcAdaptor = nullptr;
        }
    }
    rsTrace.result(bRegistered);
    return bRegistered;
}

#endif
