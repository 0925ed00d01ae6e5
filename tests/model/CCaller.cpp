/* SPDX-License-Identifier: MIT */
#include "tests/model/CCaller.h"

#include "tests/support/Timeouts.h"

#include <QDeadlineTimer>

#include <dbus/dbus.h>

namespace
{

const char* const SERVICE = "velmar.haldend";

void appendArgument(DBusMessageIter& rsIterator, const QVariant& rcArgument)
{
    if (rcArgument.type() == QVariant::ByteArray) {
        const QByteArray cText = rcArgument.toByteArray();
        const char* pszText = cText.constData();
        dbus_message_iter_append_basic(&rsIterator, DBUS_TYPE_STRING, &pszText);
    } else if (rcArgument.type() == QVariant::Bool) {
        const dbus_bool_t bValue = rcArgument.toBool() ? 1 : 0;
        dbus_message_iter_append_basic(&rsIterator, DBUS_TYPE_BOOLEAN, &bValue);
    } else {
        const dbus_int32_t i32Value = rcArgument.toInt();
        dbus_message_iter_append_basic(&rsIterator, DBUS_TYPE_INT32, &i32Value);
    }
}

DBusMessage* messageOf(const SCall& rsCall)
{
    const QByteArray cInterface = SERVICE + QByteArray(rsCall.cPath).replace('/', '.');
    DBusMessage* psMessage = dbus_message_new_method_call(SERVICE, rsCall.cPath, cInterface, rsCall.cMethod);
    DBusMessageIter sIterator;
    dbus_message_iter_init_append(psMessage, &sIterator);
    for (const QVariant& rcArgument : rsCall.cArguments)
        appendArgument(sIterator, rcArgument);
    return psMessage;
}

QByteArray describe(DBusMessageIter sIterator)
{
    QByteArray cText;
    for (; dbus_message_iter_get_arg_type(&sIterator) != DBUS_TYPE_INVALID;
         dbus_message_iter_next(&sIterator)) {
        DBusBasicValue uValue;
        DBusMessageIter sInner;
        cText += cText.isEmpty() ? "" : " ";
        switch (dbus_message_iter_get_arg_type(&sIterator)) {
        case DBUS_TYPE_ARRAY:
            dbus_message_iter_recurse(&sIterator, &sInner);
            cText += "av " + describe(sInner);
            break;
        case DBUS_TYPE_VARIANT:
            dbus_message_iter_recurse(&sIterator, &sInner);
            cText += describe(sInner);
            break;
        case DBUS_TYPE_STRING:
            dbus_message_iter_get_basic(&sIterator, &uValue);
            cText += describeText(uValue.str);
            break;
        case DBUS_TYPE_BOOLEAN:
            dbus_message_iter_get_basic(&sIterator, &uValue);
            cText += describeValue(uValue.bool_val != 0);
            break;
        case DBUS_TYPE_UINT32:
            dbus_message_iter_get_basic(&sIterator, &uValue);
            cText += describeValue(uValue.u32);
            break;
        case DBUS_TYPE_INT32:
            dbus_message_iter_get_basic(&sIterator, &uValue);
            cText += describeValue(uValue.i32);
            break;
        default:
            cText += "a value of another type";
        }
    }
    return cText;
}

QByteArray describe(DBusMessage* psMessage)
{
    DBusMessageIter sIterator;
    dbus_message_iter_init(psMessage, &sIterator);
    if (dbus_message_get_type(psMessage) == DBUS_MESSAGE_TYPE_ERROR)
        return QByteArray("error ") + dbus_message_get_error_name(psMessage);
    return describe(sIterator);
}

} // namespace

CCaller::~CCaller()
{
    if (m_psConnection == nullptr)
        return;
    dbus_connection_close(m_psConnection);
    dbus_connection_unref(m_psConnection);
}

bool CCaller::start(const QString& rcBusAddress)
{
    m_psConnection = dbus_connection_open_private(rcBusAddress.toUtf8(), nullptr);
    if (m_psConnection == nullptr)
        return false;
    dbus_connection_set_exit_on_disconnect(m_psConnection, 0);
    if (dbus_bus_register(m_psConnection, nullptr) == 0)
        return false;
    dbus_bus_add_match(m_psConnection, "type='signal',sender='velmar.haldend'", nullptr);
    dbus_connection_flush(m_psConnection);
    return true;
}

void CCaller::send(const SCall& rsCall)
{
    DBusMessage* psMessage = messageOf(rsCall);
    dbus_message_set_no_reply(psMessage, 1);
    dbus_connection_send(m_psConnection, psMessage, nullptr);
    dbus_message_unref(psMessage);
}

quint32 CCaller::post(const SCall& rsCall)
{
    DBusMessage* psMessage = messageOf(rsCall);
    dbus_uint32_t u32Serial = 0;
    dbus_connection_send(m_psConnection, psMessage, &u32Serial);
    dbus_message_unref(psMessage);
    return u32Serial;
}

void CCaller::write()
{
    dbus_connection_flush(m_psConnection);
}

bool CCaller::receive(int iMilliseconds)
{
    bool bTaken = false;
    bool bConnected = dbus_connection_read_write(m_psConnection, 0) != 0;
    while (true) {
        DBusMessage* psMessage = dbus_connection_pop_message(m_psConnection);
        if (psMessage != nullptr) {
            take(psMessage);
            dbus_message_unref(psMessage);
            bTaken = true;
        } else if (bTaken || !bConnected || iMilliseconds == 0) {
            return bConnected;
        } else {
            bConnected = dbus_connection_read_write(m_psConnection, iMilliseconds) != 0;
            iMilliseconds = 0;
        }
    }
}

void CCaller::take(DBusMessage* psMessage)
{
    const quint32 u32Serial = dbus_message_get_reply_serial(psMessage);
    if (u32Serial != 0)
        m_cAnswers[u32Serial] = describe(psMessage);
    else if (dbus_message_has_path(psMessage, "/videooverlay") != 0 ||
             dbus_message_has_path(psMessage, "/videoprocessing") != 0)
        m_cSignals << dbus_message_get_member(psMessage) + (" " + describe(psMessage));
}

QHash<quint32, QByteArray> CCaller::takeAnswers()
{
    QHash<quint32, QByteArray> cAnswers;
    cAnswers.swap(m_cAnswers);
    return cAnswers;
}

QVector<QByteArray> CCaller::ask(const QVector<SCall>& rcCalls)
{
    QVector<quint32> cSerials;
    for (const SCall& rsCall : rcCalls)
        cSerials << post(rsCall);
    const QDeadlineTimer cDeadline(TIMEOUT_CALL_MS);
    while (m_cAnswers.size() < cSerials.size() && !cDeadline.hasExpired() && receive(TIMEOUT_CALL_MS))
        ;
    const QHash<quint32, QByteArray> cCame = takeAnswers();
    QVector<QByteArray> cAnswers;
    for (const quint32 u32Serial : cSerials)
        cAnswers << cCame.value(u32Serial, "no answer");
    return cAnswers;
}

QByteArrayList CCaller::takeSignals()
{
    QByteArrayList cSignals;
    cSignals.swap(m_cSignals);
    return cSignals;
}
