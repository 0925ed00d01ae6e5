/* SPDX-License-Identifier: MIT */
#include "board/serve/CBusLog.h"

#include "ctl/Interfaces.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QJsonDocument>
#include <QSocketNotifier>
#include <QTime>

#include <chrono>
#include <cmath>

#include <dbus/dbus.h>

namespace
{

const int ENTRIES = 300;
const int NAMES = 500;
const int OPEN = 500;
const int TEXT = 300; // the longest arguments and answers that are shown

qint64 now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

QJsonArray valuesOf(DBusMessageIter& rsAt);

QJsonValue valueOf(DBusMessageIter& rsAt)
{
    DBusBasicValue sValue = {};
    switch (const int iType = dbus_message_iter_get_arg_type(&rsAt)) {
    case DBUS_TYPE_VARIANT:
    case DBUS_TYPE_ARRAY:
    case DBUS_TYPE_STRUCT:
    case DBUS_TYPE_DICT_ENTRY: {
        DBusMessageIter sInner;
        dbus_message_iter_recurse(&rsAt, &sInner);
        return iType == DBUS_TYPE_VARIANT ? valueOf(sInner) : QJsonValue(valuesOf(sInner));
    }
    case DBUS_TYPE_STRING:
    case DBUS_TYPE_OBJECT_PATH:
    case DBUS_TYPE_SIGNATURE:
        dbus_message_iter_get_basic(&rsAt, &sValue);
        return QString::fromUtf8(sValue.str);
    case DBUS_TYPE_BOOLEAN:
        dbus_message_iter_get_basic(&rsAt, &sValue);
        return sValue.bool_val != 0;
    case DBUS_TYPE_INT32:
        dbus_message_iter_get_basic(&rsAt, &sValue);
        return sValue.i32;
    case DBUS_TYPE_UINT32:
        dbus_message_iter_get_basic(&rsAt, &sValue);
        return static_cast<double>(sValue.u32);
    case DBUS_TYPE_DOUBLE:
        dbus_message_iter_get_basic(&rsAt, &sValue);
        return sValue.dbl;
    default:
        return QStringLiteral("a value of the type %1").arg(QChar(iType));
    }
}

QJsonArray valuesOf(DBusMessageIter& rsAt)
{
    QJsonArray cValues;
    while (dbus_message_iter_get_arg_type(&rsAt) != DBUS_TYPE_INVALID) {
        cValues << valueOf(rsAt);
        dbus_message_iter_next(&rsAt);
    }
    return cValues;
}

QJsonArray argumentsOf(DBusMessage* psMessage)
{
    DBusMessageIter sAt;
    return dbus_message_iter_init(psMessage, &sAt) != FALSE ? valuesOf(sAt) : QJsonArray();
}

/// "1, "Manhole 17", [20, 12, 30]"
QString textOf(const QJsonArray& rcValues)
{
    QString cText = QString::fromUtf8(QJsonDocument(rcValues).toJson(QJsonDocument::Compact)).mid(1);
    cText.chop(1);
    cText.replace(QLatin1String(","), QLatin1String(", "));
    return cText.size() > TEXT ? cText.left(TEXT) + QStringLiteral(" ...") : cText;
}

/// The last part of an interface's name.
QString shortName(const char* pszInterface)
{
    return QString::fromUtf8(pszInterface).section(QLatin1Char('.'), -1);
}

QString keyOf(const char* pszCaller, quint32 u32Serial)
{
    return QStringLiteral("%1 %2").arg(QString::fromUtf8(pszCaller)).arg(u32Serial);
}

} // namespace

CBusLog::CBusLog(const QDBusConnection& rcBus, QObject* pcParent) : QObject(pcParent), m_cBus(rcBus)
{
    listen();
    if (m_psMonitor == nullptr)
        return;
    int iDescriptor = -1;
    dbus_connection_get_unix_fd(m_psMonitor, &iDescriptor);
    m_pcNotifier = std::make_unique<QSocketNotifier>(iDescriptor, QSocketNotifier::Read);
    connect(m_pcNotifier.get(), &QSocketNotifier::activated, this, &CBusLog::read);
}

CBusLog::~CBusLog()
{
    m_pcNotifier.reset();
    if (m_psMonitor == nullptr)
        return;
    dbus_connection_close(m_psMonitor);
    dbus_connection_unref(m_psMonitor);
}

/// Opens the connection and makes it a monitor.
void CBusLog::listen()
{
    const QByteArray cService = SERVICE.toLatin1();
    const QByteArray cCodec = CODEC_SERVICE.toLatin1();
    const QByteArray cRules[] = {
        "destination='" + cService + "'",
        "sender='" + cService + "'",
        "sender='" + cCodec + "'",
        "type='error',sender='org.freedesktop.DBus'",
        "type='method_call',destination='org.freedesktop.DBus',member='Hello'",
    };
    QByteArray cAddress = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    if (cAddress.isEmpty())
        cAddress = "unix:path=/run/dbus/system_bus_socket";
    m_psMonitor = dbus_connection_open_private(cAddress.constData(), nullptr);
    if (m_psMonitor == nullptr)
        return;
    dbus_connection_set_exit_on_disconnect(m_psMonitor, FALSE);
    DBusMessage* psCall = dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS,
                                                       "org.freedesktop.DBus.Monitoring", "BecomeMonitor");
    DBusMessageIter sArguments;
    DBusMessageIter sRules;
    dbus_message_iter_init_append(psCall, &sArguments);
    dbus_message_iter_open_container(&sArguments, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING_AS_STRING, &sRules);
    for (const QByteArray& rcRule : cRules) {
        const char* pszRule = rcRule.constData();
        dbus_message_iter_append_basic(&sRules, DBUS_TYPE_STRING, &pszRule);
    }
    dbus_message_iter_close_container(&sArguments, &sRules);
    const dbus_uint32_t u32Flags = 0;
    dbus_message_iter_append_basic(&sArguments, DBUS_TYPE_UINT32, &u32Flags);
    DBusMessage* psAnswer = nullptr;
    if (dbus_bus_register(m_psMonitor, nullptr) != FALSE)
        psAnswer = dbus_connection_send_with_reply_and_block(m_psMonitor, psCall, -1, nullptr);
    dbus_message_unref(psCall);
    if (psAnswer != nullptr) {
        dbus_message_unref(psAnswer);
        return;
    }
    dbus_connection_close(m_psMonitor);
    dbus_connection_unref(m_psMonitor);
    m_psMonitor = nullptr;
}

void CBusLog::read()
{
    if (dbus_connection_read_write(m_psMonitor, 0) == FALSE)
        m_pcNotifier->setEnabled(false);
    while (DBusMessage* psMessage = dbus_connection_pop_message(m_psMonitor)) {
        hear(psMessage);
        dbus_message_unref(psMessage);
    }
}

void CBusLog::hear(DBusMessage* psMessage)
{
    switch (dbus_message_get_type(psMessage)) {
    case DBUS_MESSAGE_TYPE_METHOD_CALL:
        hearCall(psMessage);
        break;
    case DBUS_MESSAGE_TYPE_METHOD_RETURN:
    case DBUS_MESSAGE_TYPE_ERROR:
        hearAnswer(psMessage);
        break;
    case DBUS_MESSAGE_TYPE_SIGNAL:
        hearSignal(psMessage);
        break;
    default:
        break;
    }
}

void CBusLog::hearCall(DBusMessage* psMessage)
{
    const QString cCaller = QString::fromUtf8(dbus_message_get_sender(psMessage));
    const QString cTo = QString::fromUtf8(dbus_message_get_destination(psMessage));
    const QString cWho = nameOf(cCaller);
    // A newcomer's first call is heard for its name only; the daemon's calls of the bus are its own affair.
    if (cTo == QLatin1String(DBUS_SERVICE_DBUS) || cCaller == m_cBus.baseService())
        return;
    const bool bCodec = cTo == CODEC_SERVICE;
    SOpen sOpen;
    sOpen.i64Begin = now();
    sOpen.sCall.cObject = QString::fromUtf8(dbus_message_get_path(psMessage)).mid(1);
    sOpen.sCall.cMethod = QString::fromUtf8(dbus_message_get_member(psMessage));
    sOpen.sCall.cArguments = argumentsOf(psMessage);
    sOpen.cEntry = {
        {QStringLiteral("kind"),      bCodec ? QStringLiteral("codec") : QStringLiteral("call")   },
        {QStringLiteral("who"),       cWho                                                        },
        {QStringLiteral("what"),      sOpen.sCall.cObject + QLatin1Char('.') + sOpen.sCall.cMethod},
        {QStringLiteral("arguments"), textOf(sOpen.sCall.cArguments)                              },
    };
    add(sOpen.cEntry);
    if (dbus_message_get_no_reply(psMessage) != FALSE) {
        if (!bCodec)
            emit carriedOut(sOpen.sCall);
    } else if (m_cOpen.size() < OPEN) {
        m_cOpen[keyOf(dbus_message_get_sender(psMessage), dbus_message_get_serial(psMessage))] = sOpen;
    }
}

void CBusLog::hearAnswer(DBusMessage* psMessage)
{
    const QString cKey =
        keyOf(dbus_message_get_destination(psMessage), dbus_message_get_reply_serial(psMessage));
    const auto pOpen = m_cOpen.find(cKey);
    if (pOpen == m_cOpen.end())
        return;
    SOpen sOpen = *pOpen;
    m_cOpen.erase(pOpen);
    sOpen.sCall.cAnswer = argumentsOf(psMessage);
    const bool bError = dbus_message_get_type(psMessage) == DBUS_MESSAGE_TYPE_ERROR;
    const QString cError = QString::fromUtf8(dbus_message_get_error_name(psMessage));
    sOpen.cEntry[QStringLiteral("answer")] = bError ? cError : textOf(sOpen.sCall.cAnswer);
    sOpen.cEntry[QStringLiteral("error")] = bError;
    sOpen.cEntry[QStringLiteral("ms")] = std::round(static_cast<double>(now() - sOpen.i64Begin) / 1e5) / 10;
    change(sOpen.cEntry);
    if (sOpen.cEntry[QStringLiteral("kind")] == QLatin1String("call"))
        emit carriedOut(sOpen.sCall);
}

void CBusLog::hearSignal(DBusMessage* psMessage)
{
    const QString cInterface = QString::fromUtf8(dbus_message_get_interface(psMessage));
    if (!cInterface.startsWith(SERVICE))
        return;
    QJsonObject cEntry{
        {QStringLiteral("kind"),      QStringLiteral("signal")                                                            },
        {QStringLiteral("who"),       QStringLiteral("haldend")                                                           },
        {QStringLiteral("what"),      shortName(dbus_message_get_interface(psMessage)) + QLatin1Char('.') +
                                     QString::fromUtf8(dbus_message_get_member(psMessage))},
        {QStringLiteral("arguments"), textOf(argumentsOf(psMessage))                                                      },
    };
    add(cEntry);
}

/// The program behind a unique name. The first time the bus has to be asked; until then it is the name itself, and
/// entries that have it are changed when the answer comes.
QString CBusLog::nameOf(const QString& rcUnique)
{
    const auto pName = m_cNames.constFind(rcUnique);
    if (pName != m_cNames.constEnd())
        return *pName;
    if (m_cNames.size() > NAMES)
        m_cNames.clear();
    m_cNames[rcUnique] = rcUnique;
    QDBusMessage cQuestion = QDBusMessage::createMethodCall(
        QStringLiteral(DBUS_SERVICE_DBUS), QStringLiteral(DBUS_PATH_DBUS),
        QStringLiteral(DBUS_INTERFACE_DBUS), QStringLiteral("GetConnectionUnixProcessID"));
    cQuestion << rcUnique;
    auto* pcWatcher = new QDBusPendingCallWatcher(m_cBus.asyncCall(cQuestion), this);
    ++m_iOpenQuestions;
    connect(pcWatcher, &QDBusPendingCallWatcher::finished, this, [this, rcUnique, pcWatcher] {
        pcWatcher->deleteLater();
        --m_iOpenQuestions;
        const QDBusPendingReply<uint> cReply = *pcWatcher;
        QFile cFile(QStringLiteral("/proc/%1/comm").arg(cReply.isError() ? 0 : cReply.value()));
        if (cReply.isError() || !cFile.open(QIODevice::ReadOnly))
            return;
        const QString cName = QString::fromLocal8Bit(cFile.readAll()).trimmed();
        m_cNames[rcUnique] = cName;
        for (SOpen& rsOpen : m_cOpen)
            if (rsOpen.cEntry[QStringLiteral("who")] == rcUnique)
                rsOpen.cEntry[QStringLiteral("who")] = cName;
        const QList<QJsonObject> cEntries = m_cEntries;
        for (QJsonObject cEntry : cEntries)
            if (cEntry[QStringLiteral("who")] == rcUnique) {
                cEntry[QStringLiteral("who")] = cName;
                change(cEntry);
            }
    });
    return rcUnique;
}

void CBusLog::add(QJsonObject& rcEntry)
{
    rcEntry[QStringLiteral("n")] = ++m_iLast;
    rcEntry[QStringLiteral("time")] = QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz"));
    m_cEntries << rcEntry;
    if (m_cEntries.size() > ENTRIES)
        m_cEntries.removeFirst();
    emit entry(rcEntry);
}

void CBusLog::change(const QJsonObject& rcEntry)
{
    for (QJsonObject& rcOld : m_cEntries)
        if (rcOld[QStringLiteral("n")] == rcEntry[QStringLiteral("n")])
            rcOld = rcEntry;
    emit entry(rcEntry);
}
