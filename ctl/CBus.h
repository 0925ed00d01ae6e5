/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CBUS_H
#define HALDEND_CTL_CBUS_H

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>

#include <deque>

/// A call that is on its way.
struct SAsked {
    QDBusPendingCall cCall;
    QString cObject; ///< empty: the bus itself
    QString cMethod;
    bool bResult; ///< whether the method has one; else its reply may never come
};

/// One connection to the bus of the daemon. Calls are carried out in the order in which they are sent, and the next
/// can be sent before the last is answered.
class CBus
{
public:
    /// Which bus; empty names are not given.
    struct SPlace {
        QString cHost;    ///< reached by ssh
        QString cAddress; ///< in place of the system bus
    };

    /// Connects. Throws CFailure if there is no bus.
    explicit CBus(const SPlace& rsPlace);
    ~CBus();

    CBus(const CBus&) = delete;
    CBus& operator=(const CBus&) = delete;

    /// Sends a call of a method with a result, or of one without. A reply is wanted of both.
    SAsked ask(const char* pszObject, const char* pszMethod, const QVariantList& rcArguments = {});
    SAsked send(const char* pszObject, const char* pszMethod, const QVariantList& rcArguments = {});
    SAsked sendCall(const QString& rcObject, const QString& rcMethod, const QVariantList& rcArguments,
                    bool bResult);

    /// The same to the bus.
    SAsked askBus(const char* pszMethod, const QVariantList& rcArguments = {});

    /// Asks an object what it has, which changes nothing.
    SAsked askIntrospection(const char* pszObject);

    /// Waits until the call is answered, and gives what the answer holds. Throws CFailure when it failed.
    ///
    /// Where no reply comes within a second, a getter is sent behind the call. When that is answered, a method
    /// without a result is taken for done.
    QVariantList wait(const SAsked& rsAsked);

    /// The first value of the answer.
    int number(const SAsked& rsAsked) { return wait(rsAsked).value(0).toInt(); }
    bool flag(const SAsked& rsAsked) { return wait(rsAsked).value(0).toBool(); }
    QString text(const SAsked& rsAsked) { return wait(rsAsked).value(0).toString(); }
    QList<int> numbers(const SAsked& rsAsked);

    QDBusConnection connection() const { return m_cConnection; }
    bool isRemote() const { return m_bRemote; }

private:
    QDBusPendingCall sendMessage(const QDBusMessage& rcMessage);
    QVariantList answerOf(const SAsked& rsAsked);

    QDBusConnection m_cConnection;
    bool m_bRemote;
    std::deque<QDBusPendingCall> m_cOpen; ///< calls that may not be answered yet, the oldest first
};

/// The numbers of a list that a method answered, whichever type they have.
QList<int> numbersOf(const QVariant& rcList);

#endif
