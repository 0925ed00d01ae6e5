/* SPDX-License-Identifier: MIT */
#include "tests/support/CTcpClient.h"

#include "tests/support/Timeouts.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

CTcpClient::~CTcpClient()
{
    if (m_iSocket >= 0)
        ::close(m_iSocket);
}

bool CTcpClient::connect(int iPort)
{
    sockaddr_in sAddress = {};
    sAddress.sin_family = AF_INET;
    sAddress.sin_port = htons(static_cast<quint16>(iPort));
    sAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_iSocket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return ::connect(m_iSocket, reinterpret_cast<const sockaddr*>(&sAddress), sizeof sAddress) == 0;
}

bool CTcpClient::send(const QByteArray& rcBytes) const
{
    return ::send(m_iSocket, rcBytes.constData(), static_cast<size_t>(rcBytes.size()), MSG_NOSIGNAL) ==
           rcBytes.size();
}

/// False at the end, and when nothing comes.
bool CTcpClient::readMore()
{
    char acBytes[65536];
    pollfd sPoll = {m_iSocket, POLLIN, 0};
    if (::poll(&sPoll, 1, TIMEOUT_CALL_MS) != 1)
        return false;
    const ssize_t iRead = ::read(m_iSocket, acBytes, sizeof acBytes);
    if (iRead > 0)
        m_cReceived.append(acBytes, static_cast<int>(iRead));
    return iRead > 0;
}

bool CTcpClient::waitForBytes(int iBytes)
{
    while (m_cReceived.size() < iBytes)
        if (!readMore())
            return false;
    return true;
}

bool CTcpClient::waitForText(const QByteArray& rcText)
{
    while (!m_cReceived.contains(rcText))
        if (!readMore())
            return false;
    return true;
}

bool CTcpClient::waitForEnd()
{
    pollfd sPoll = {m_iSocket, POLLIN, 0};
    while (readMore()) {
    }
    return ::poll(&sPoll, 1, 0) == 1;
}

QByteArray CTcpClient::take(int iBytes)
{
    QByteArray cTaken = m_cReceived.left(iBytes);
    m_cReceived.remove(0, iBytes);
    return cTaken;
}

QByteArray CTcpClient::ask(int iPort, const QByteArray& rcRequest)
{
    static const QByteArray END = "\r\n\r\n";
    static const QByteArray LENGTH = "content-length:";
    CTcpClient cClient;
    if (!cClient.connect(iPort) || !cClient.send(rcRequest))
        return QByteArray();
    if (cClient.waitForText(END)) {
        const int iHead = cClient.received().indexOf(END) + END.size();
        const QByteArray cHead = cClient.received().left(iHead).toLower();
        const int iLength = cHead.indexOf(LENGTH);
        if (iLength >= 0) {
            const int iBegin = iLength + LENGTH.size();
            cClient.waitForBytes(iHead +
                                 cHead.mid(iBegin, cHead.indexOf('\r', iBegin) - iBegin).trimmed().toInt());
            return cClient.received();
        }
    }
    cClient.waitForEnd();
    return cClient.received();
}
