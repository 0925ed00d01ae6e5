/* SPDX-License-Identifier: MIT */
#include "ctl/CBus.h"

#include "ctl/CFailure.h"
#include "ctl/Interfaces.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>

namespace
{

const QString CONNECTION = QStringLiteral("haldenctl");
const QString BUS = QStringLiteral("org.freedesktop.DBus");

const int REPLY_MS = 1000; // within this the daemon answers, if it is idle
const int PATIENCE_MS =
    60000; // a call of the codec service may keep the daemon for 25 s, and one may wait behind another

/// A system bus lets a client have 128 calls open.
const std::size_t OPEN_MAX = 100;

/// A value of a D-Bus address: all but the plainest characters as %xx.
QString escaped(const QString& rcText)
{
    QString cEscaped;
    for (const char cByte : rcText.toUtf8()) {
        const auto u8Byte = static_cast<unsigned char>(cByte);
        const bool bPlain = (u8Byte < 128 && QChar::fromLatin1(cByte).isLetterOrNumber()) || cByte == '-' ||
                            cByte == '_' || cByte == '/' || cByte == '.';
        cEscaped += bPlain ? QString(QChar::fromLatin1(cByte))
                           : QStringLiteral("%%1").arg(u8Byte, 2, 16, QLatin1Char('0'));
    }
    return cEscaped;
}

QString programFrom(const char* pszVariable, const QString& rcUsual)
{
    const QString cProgram = QString::fromLocal8Bit(qgetenv(pszVariable));
    return cProgram.isEmpty() ? rcUsual : cProgram;
}

/// A word for the shell at the far end, which joins what ssh is given and splits it again.
QString quoted(QString cWord)
{
    return QLatin1Char('\'') + cWord.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

/// The program at the other end that passes the bus on through its standard input and output.
QString remoteCommand(const QString& rcAddress)
{
    QString cCommand = programFrom("HALDENCTL_BRIDGE", QStringLiteral("systemd-stdio-bridge"));
    if (!rcAddress.isEmpty())
        cCommand += QStringLiteral(" --bus-path=") + quoted(rcAddress);
    return cCommand;
}

QString addressOf(const CBus::SPlace& rsPlace)
{
    if (rsPlace.cHost.isEmpty())
        return rsPlace.cAddress;
    return QStringLiteral("unixexec:path=%1,argv1=-xT,argv2=--,argv3=%2,argv4=%3")
        .arg(escaped(programFrom("HALDENCTL_SSH", QStringLiteral("ssh"))), escaped(rsPlace.cHost),
             escaped(remoteCommand(rsPlace.cAddress)));
}

QDBusConnection connectTo(const QString& rcAddress)
{
    return rcAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, CONNECTION)
                               : QDBusConnection::connectToBus(rcAddress, CONNECTION);
}

QString notConnected(const CBus::SPlace& rsPlace, const QDBusError& rcError)
{
    if (!rsPlace.cHost.isEmpty())
        return QStringLiteral("%1 can't be reached: try ssh %1 systemd-stdio-bridge").arg(rsPlace.cHost);
    return QStringLiteral("no bus: %1").arg(rcError.message());
}

QString notAllowed(const QString& rcObject)
{
    return rcObject == QLatin1String("debug")
               ? QStringLiteral("not allowed: /debug is root's alone")
               : QStringLiteral("not allowed: only root and the group haldend may call the daemon");
}

CFailure failureOf(const QDBusError& rcError, const SAsked& rsAsked)
{
    switch (rcError.type()) {
    case QDBusError::AccessDenied:
        return {eNotAllowed, notAllowed(rsAsked.cObject)};
    case QDBusError::ServiceUnknown:
        return {eNoDaemon,
                QStringLiteral("haldend isn't on the bus: start it, and look at its log if it doesn't stay")};
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return {eNoDaemon, QStringLiteral("the bus is gone")};
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return {eFailed,
                QStringLiteral("no answer to %1: haldend ended, or its codec service keeps it waiting")
                    .arg(rsAsked.cMethod)};
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownObject:
        return {eFailed, QStringLiteral("this haldend has no %1 %2").arg(rsAsked.cObject, rsAsked.cMethod)};
    default:
        if (rcError.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
            return {eNoDaemon, QStringLiteral("haldend isn't on the bus: start it")};
        return {eFailed, rsAsked.cMethod + QStringLiteral(": ") + rcError.message().simplified()};
    }
}

/// Until one of them is finished, or the time is over.
void waitForOne(const QDBusPendingCall& rcFirst, const QDBusPendingCall* pcSecond, int iMilliseconds)
{
    if (rcFirst.isFinished())
        return;
    QEventLoop cLoop;
    const QDBusPendingCallWatcher cFirst(rcFirst);
    QObject::connect(&cFirst, &QDBusPendingCallWatcher::finished, &cLoop, &QEventLoop::quit);
    const QDBusPendingCallWatcher cSecond(pcSecond != nullptr ? *pcSecond : rcFirst);
    QObject::connect(&cSecond, &QDBusPendingCallWatcher::finished, &cLoop, &QEventLoop::quit);
    QTimer::singleShot(iMilliseconds, &cLoop, &QEventLoop::quit);
    cLoop.exec();
}

} // namespace

CBus::CBus(const SPlace& rsPlace)
    : m_cConnection(connectTo(addressOf(rsPlace))), m_bRemote(!rsPlace.cHost.isEmpty())
{
    if (!m_cConnection.isConnected())
        throw CFailure(eNoDaemon, notConnected(rsPlace, m_cConnection.lastError()));
    // When the event loop first runs, Qt's own thread adds the connection's name to a list, without a lock. Each call that
    // is sent reads that list. So wait for an answer of the bus, which comes behind the name, before anything is sent.
    const SAsked sFirst = askBus("GetId");
    waitForOne(sFirst.cCall, nullptr, PATIENCE_MS);
    answerOf(sFirst);
}

CBus::~CBus()
{
    QDBusConnection::disconnectFromBus(CONNECTION);
}

SAsked CBus::ask(const char* pszObject, const char* pszMethod, const QVariantList& rcArguments)
{
    return sendCall(QString::fromLatin1(pszObject), QString::fromLatin1(pszMethod), rcArguments, true);
}

SAsked CBus::send(const char* pszObject, const char* pszMethod, const QVariantList& rcArguments)
{
    return sendCall(QString::fromLatin1(pszObject), QString::fromLatin1(pszMethod), rcArguments, false);
}

SAsked CBus::sendCall(const QString& rcObject, const QString& rcMethod, const QVariantList& rcArguments,
                      bool bResult)
{
    QDBusMessage cMessage =
        QDBusMessage::createMethodCall(SERVICE, pathOf(rcObject), interfaceOf(rcObject), rcMethod);
    cMessage.setArguments(rcArguments);
    return {sendMessage(cMessage), rcObject, rcMethod, bResult};
}

QDBusPendingCall CBus::sendMessage(const QDBusMessage& rcMessage)
{
    while (!m_cOpen.empty() && m_cOpen.front().isFinished())
        m_cOpen.pop_front();
    if (m_cOpen.size() >= OPEN_MAX)
        waitForOne(m_cOpen.front(), nullptr, PATIENCE_MS);
    m_cOpen.push_back(m_cConnection.asyncCall(rcMessage, PATIENCE_MS));
    return m_cOpen.back();
}

SAsked CBus::askBus(const char* pszMethod, const QVariantList& rcArguments)
{
    QDBusMessage cMessage = QDBusMessage::createMethodCall(BUS, QStringLiteral("/org/freedesktop/DBus"), BUS,
                                                           QString::fromLatin1(pszMethod));
    cMessage.setArguments(rcArguments);
    return {sendMessage(cMessage), QString(), QString::fromLatin1(pszMethod), true};
}

SAsked CBus::askIntrospection(const char* pszObject)
{
    const QString cObject = QString::fromLatin1(pszObject);
    const QString cMethod = QStringLiteral("Introspect");
    return {sendMessage(QDBusMessage::createMethodCall(
                SERVICE, pathOf(cObject), QStringLiteral("org.freedesktop.DBus.Introspectable"), cMethod)),
            cObject, cMethod, true};
}

QVariantList CBus::wait(const SAsked& rsAsked)
{
    waitForOne(rsAsked.cCall, nullptr, REPLY_MS);
    if (rsAsked.cCall.isFinished())
        return answerOf(rsAsked);
    const SAsked sMark = ask("videodisplay", "get_displayed_video_width");
    waitForOne(rsAsked.cCall, &sMark.cCall, PATIENCE_MS);
    if (rsAsked.cCall.isFinished() || rsAsked.bResult)
        return answerOf(rsAsked);
    answerOf(sMark);
    return {};
}

QVariantList CBus::answerOf(const SAsked& rsAsked)
{
    QDBusPendingCall cCall = rsAsked.cCall;
    cCall.waitForFinished();
    const QDBusMessage cReply = cCall.reply();
    if (cReply.type() != QDBusMessage::ReplyMessage)
        throw failureOf(QDBusError(cReply), rsAsked);
    return cReply.arguments();
}

QList<int> CBus::numbers(const SAsked& rsAsked)
{
    return numbersOf(wait(rsAsked).value(0));
}

QList<int> numbersOf(const QVariant& rcList)
{
    QVariantList cValues = rcList.toList();
    if (rcList.userType() == qMetaTypeId<QDBusArgument>())
        cValues = qdbus_cast<QVariantList>(rcList);
    QList<int> cNumbers;
    for (const QVariant& rcValue : cValues)
        cNumbers << (rcValue.userType() == qMetaTypeId<QDBusVariant>()
                         ? rcValue.value<QDBusVariant>().variant().toInt()
                         : rcValue.toInt());
    return cNumbers;
}
