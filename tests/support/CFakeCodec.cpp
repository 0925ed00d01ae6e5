/* SPDX-License-Identifier: MIT */
#include "tests/support/CFakeCodec.h"

#include "tests/support/Timeouts.h"

#include <QDBusMessage>
#include <QMutexLocker>

namespace
{

const QString CODEC_SERVICE = QStringLiteral("velmar.mobilygen");
const QString CONNECTION = QStringLiteral("codec");
const QString ARRIVED = QStringLiteral("arrived"); // not a method of a codec

} // namespace

CFakeCodec::~CFakeCodec()
{
    QDBusConnection::disconnectFromBus(CONNECTION);
    m_cThread.quit();
    m_cThread.wait();
}

bool CFakeCodec::start(const QString& rcBusAddress)
{
    QDBusConnection cConnection = QDBusConnection::connectToBus(rcBusAddress, CONNECTION);
    const bool bRegistered =
        cConnection.registerVirtualObject(QStringLiteral("/"), &m_cObject, QDBusConnection::SubPath);
    m_cObject.moveToThread(&m_cThread);
    m_cThread.start();
    return bRegistered && cConnection.registerService(CODEC_SERVICE);
}

void CFakeCodec::setPresent(bool bPresent)
{
    QDBusConnection cConnection(CONNECTION);
    if (bPresent)
        cConnection.registerService(CODEC_SERVICE);
    else
        cConnection.unregisterService(CODEC_SERVICE);
}

QStringList CFakeCodec::takeCalls()
{
    // On the connection of the other calls, and so behind them.
    QDBusMessage cMessage = QDBusMessage::createMethodCall(QDBusConnection(CONNECTION).baseService(),
                                                           QStringLiteral("/"), QString(), ARRIVED);
    QDBusConnection::systemBus().call(cMessage, QDBus::Block, TIMEOUT_CALL_MS);
    return m_cObject.takeCalls();
}

void CFakeCodec::CObject::setConfirming(bool bConfirming)
{
    const QMutexLocker cLocker(&m_cMutex);
    m_bConfirming = bConfirming;
}

void CFakeCodec::CObject::setAtCall(std::function<void()> fnAtCall)
{
    const QMutexLocker cLocker(&m_cMutex);
    m_fnAtCall = std::move(fnAtCall);
}

QStringList CFakeCodec::CObject::takeCalls()
{
    const QMutexLocker cLocker(&m_cMutex);
    QStringList cCalls;
    m_cCalls.swap(cCalls);
    return cCalls;
}

bool CFakeCodec::CObject::handleMessage(const QDBusMessage& rcMessage, const QDBusConnection& rcConnection)
{
    if (rcMessage.member() == ARRIVED)
        return rcConnection.send(rcMessage.createReply());
    QStringList cArguments;
    for (const QVariant& rcArgument : rcMessage.arguments())
        cArguments << rcArgument.toString();
    const QMutexLocker cLocker(&m_cMutex);
    if (m_fnAtCall)
        m_fnAtCall();
    m_cCalls << QStringLiteral("%1 %2 %3(%4) %5")
                    .arg(rcMessage.interface(), rcMessage.path(), rcMessage.member(), rcMessage.signature(),
                         cArguments.join(QStringLiteral(", ")))
                    .trimmed();
    return rcConnection.send(m_bConfirming
                                 ? rcMessage.createReply()
                                 : rcMessage.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
}
