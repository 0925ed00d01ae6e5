/* SPDX-License-Identifier: MIT */
#include "tests/support/CRawBusClient.h"

#include "tests/support/Timeouts.h"

#include <QDataStream>

#include <algorithm>

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

const quint8 METHOD_CALL = 1;
const quint8 NO_FLAG = 0;
const quint8 NO_REPLY_EXPECTED = 1;
const quint8 PROTOCOL_VERSION = 1;
const char* const REPLY = "\2\1\1"; // type, flags and version
const int BLOCK = 8;                // what the structures of a message begin at
const int BYTES_AT_ONCE = 64 * 1024;
const QByteArray DAEMON_SERVICE = "velmar.haldend";

enum EField : quint8 { PATH = 1, INTERFACE = 2, MEMBER = 3, DESTINATION = 6, SIGNATURE = 8 };

void align(QByteArray& rcBytes, int iTo)
{
    while (rcBytes.size() % iTo != 0)
        rcBytes += '\0';
}

QByteArray number(quint32 u32Value)
{
    QByteArray cBytes;
    QDataStream cStream(&cBytes, QIODevice::WriteOnly);
    cStream.setByteOrder(QDataStream::LittleEndian);
    cStream << u32Value;
    return cBytes;
}

QByteArray text(const QByteArray& rcText)
{
    return number(static_cast<quint32>(rcText.size())) + rcText + '\0';
}

QByteArray signature(const char* pszTypes)
{
    const QByteArray cTypes = pszTypes;
    return QByteArray(1, static_cast<char>(cTypes.size())) + cTypes + '\0';
}

// Begins at a block: so does the first one, 16 bytes behind the begin of the message.
void addField(QByteArray& rcFields, EField eField, const char* pszType, const QByteArray& rcValue)
{
    align(rcFields, BLOCK);
    rcFields += static_cast<char>(eField) + signature(pszType) + rcValue;
}

QByteArray methodCall(quint32 u32Serial, quint8 u8Flags, const QByteArray& rcService,
                      const QByteArray& rcPath, const QByteArray& rcInterface, const QByteArray& rcMember,
                      const char* pszTypes = "", const QByteArray& rcBody = QByteArray())
{
    QByteArray cFields;
    addField(cFields, PATH, "o", text(rcPath));
    addField(cFields, INTERFACE, "s", text(rcInterface));
    addField(cFields, MEMBER, "s", text(rcMember));
    addField(cFields, DESTINATION, "s", text(rcService));
    if (!rcBody.isEmpty())
        addField(cFields, SIGNATURE, "g", signature(pszTypes));
    QByteArray cMessage = QByteArray("l") + static_cast<char>(METHOD_CALL) + static_cast<char>(u8Flags) +
                          static_cast<char>(PROTOCOL_VERSION) + number(static_cast<quint32>(rcBody.size())) +
                          number(u32Serial) + number(static_cast<quint32>(cFields.size())) + cFields;
    align(cMessage, BLOCK);
    return cMessage + rcBody;
}

QByteArray interfaceOf(const QString& rcPath)
{
    return DAEMON_SERVICE + rcPath.toLatin1().replace('/', '.');
}

} // namespace

CRawBusClient::~CRawBusClient()
{
    if (m_iSocket >= 0)
        ::close(m_iSocket);
}

bool CRawBusClient::start(const QString& rcBusAddress)
{
    const QByteArray cPath =
        rcBusAddress.section(QStringLiteral("unix:path="), 1).section(QLatin1Char(','), 0, 0).toLocal8Bit();
    sockaddr_un sAddress = {};
    sAddress.sun_family = AF_UNIX;
    if (cPath.isEmpty() || cPath.size() >= static_cast<int>(sizeof sAddress.sun_path))
        return false;
    std::copy(cPath.begin(), cPath.end(), sAddress.sun_path);
    m_iSocket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    // A bus that doesn't read any more fails the call that sends.
    const timeval sTimeout = {TIMEOUT_CALL_MS / 1000, 0};
    ::setsockopt(m_iSocket, SOL_SOCKET, SO_SNDTIMEO, &sTimeout, sizeof sTimeout);
    if (::connect(m_iSocket, reinterpret_cast<const sockaddr*>(&sAddress), sizeof sAddress) != 0)
        return false;
    const QByteArray cUser = QByteArray::number(::geteuid()).toHex();
    const QByteArray cBus = "org.freedesktop.DBus";
    return send(QByteArray(1, '\0') + "AUTH EXTERNAL " + cUser + "\r\n") && readUntil("OK ") &&
           send("BEGIN\r\n" + methodCall(1, NO_FLAG, cBus, "/org/freedesktop/DBus", cBus, "Hello")) &&
           readUntil("NameAcquired");
}

bool CRawBusClient::call(const QString& rcPath, const QString& rcMethod, const QByteArray& rcText)
{
    return callAndWait(methodCall(2, NO_FLAG, DAEMON_SERVICE, rcPath.toLatin1(), interfaceOf(rcPath),
                                  rcMethod.toLatin1(), "s", text(rcText)));
}

bool CRawBusClient::call(const QString& rcPath, const QString& rcMethod)
{
    return callAndWait(
        methodCall(2, NO_FLAG, DAEMON_SERVICE, rcPath.toLatin1(), interfaceOf(rcPath), rcMethod.toLatin1()));
}

bool CRawBusClient::sendHalf() const
{
    const QByteArray cCall =
        methodCall(2, NO_FLAG, DAEMON_SERVICE, "/videooverlay", interfaceOf(QStringLiteral("/videooverlay")),
                   "set_text_string", "is", number(1) + text("half"));
    return send(cCall.left(cCall.size() / 2));
}

QByteArray CRawBusClient::oneWayCall(const char* pszMethod, std::initializer_list<qint32> cNumbers,
                                     const QByteArray& rcText)
{
    const QByteArray cPath = "/videooverlay";
    QByteArray cTypes(static_cast<int>(cNumbers.size()), 'i');
    QByteArray cBody;
    for (const qint32 i32Number : cNumbers)
        cBody += number(static_cast<quint32>(i32Number));
    if (!rcText.isNull()) {
        cTypes += 's';
        cBody += text(rcText);
    }
    return methodCall(2, NO_REPLY_EXPECTED, DAEMON_SERVICE, cPath, interfaceOf(cPath), pszMethod, cTypes,
                      cBody);
}

qint64 CRawBusClient::flood(qint32 i32Handle, int iCharacters, int iCalls) const
{
    const QByteArray cCall = oneWayCall("set_text_string", {i32Handle}, QByteArray(iCharacters, 'x'));
    const int iCallsAtOnce = std::max(1, BYTES_AT_ONCE / cCall.size());
    const QByteArray cCalls = cCall.repeated(iCallsAtOnce);
    for (int iSent = 0; iSent < iCalls; iSent += iCallsAtOnce)
        if (!send(cCalls.left(std::min(iCallsAtOnce, iCalls - iSent) * cCall.size())))
            return -1;
    return static_cast<qint64>(iCalls) * cCall.size();
}

bool CRawBusClient::ping()
{
    return callAndWait(methodCall(2, NO_FLAG, DAEMON_SERVICE, "/", "org.freedesktop.DBus.Peer", "Ping"));
}

bool CRawBusClient::callAndWait(const QByteArray& rcCall)
{
    m_cRead.clear();
    return send(rcCall) && readUntil(REPLY);
}

bool CRawBusClient::send(const QByteArray& rcBytes) const
{
    return ::send(m_iSocket, rcBytes.constData(), static_cast<size_t>(rcBytes.size()), MSG_NOSIGNAL) ==
           rcBytes.size();
}

bool CRawBusClient::readUntil(const QByteArray& rcText)
{
    char acBytes[4096];
    while (!m_cRead.contains(rcText)) {
        pollfd sPoll = {m_iSocket, POLLIN, 0};
        if (::poll(&sPoll, 1, TIMEOUT_CALL_MS) != 1)
            return false;
        const ssize_t iRead = ::read(m_iSocket, acBytes, sizeof acBytes);
        m_bDropped = iRead <= 0;
        if (m_bDropped)
            return false;
        m_cRead.append(acBytes, static_cast<int>(iRead));
    }
    return true;
}
