/* How a service object puts itself on the system bus: the same steps for all of them. */
#ifndef HALDEND_DBUS_DBUSREGISTRATION_H
#define HALDEND_DBUS_DBUSREGISTRATION_H

#include <QDBusConnection>
#include <QObject>
#include <QString>

/// What an object says on standard output while it registers; some do, others are silent. Who watches a board
/// start over its serial line knows these lines by heart.
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
/// Returns false if the object has its adaptor already (nothing changes), or if the registration fails (path
/// taken, no bus); then the adaptor is gone again and rpcAdaptor null.
template <class CAdaptor>
bool registerDBusObject(QObject& rcService, CAdaptor*& rpcAdaptor, const QString& rcPath,
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
