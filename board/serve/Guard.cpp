/* SPDX-License-Identifier: MIT */
#include "board/serve/Guard.h"

#include <QRandomGenerator>

#include <arpa/inet.h>

namespace
{

/// The host without its port, and an IPv6 address without its brackets. Empty if it makes no sense.
QByteArray nameOf(const QByteArray& rcHost)
{
    if (rcHost.startsWith('[')) {
        const int iEnd = rcHost.indexOf(']');
        const QByteArray cRest = rcHost.mid(iEnd + 1);
        return iEnd > 0 && (cRest.isEmpty() || cRest.startsWith(':')) ? rcHost.mid(1, iEnd - 1)
                                                                      : QByteArray();
    }
    const int iColon = rcHost.indexOf(':');
    if (iColon < 0)
        return rcHost;
    return rcHost.indexOf(':', iColon + 1) < 0 ? rcHost.left(iColon) : QByteArray();
}

bool isAddress(const QByteArray& rcName)
{
    unsigned char au8Address[sizeof(in6_addr)];
    return inet_pton(AF_INET, rcName.constData(), au8Address) == 1 ||
           inet_pton(AF_INET6, rcName.constData(), au8Address) == 1;
}

bool isLoopback(const QByteArray& rcName)
{
    return rcName == "localhost" || rcName == "::1" || (isAddress(rcName) && rcName.startsWith("127."));
}

} // namespace

bool isGoodHost(const QByteArray& rcHost, const QByteArray& rcListen)
{
    const QByteArray cName = nameOf(rcHost).toLower();
    if (isLoopback(cName) || (!cName.isEmpty() && cName == rcListen.toLower()))
        return true;
    return !isLoopback(rcListen) && isAddress(cName);
}

bool isGoodOrigin(const QByteArray& rcOrigin, const QByteArray& rcHost)
{
    return !rcHost.isEmpty() && rcOrigin == "http://" + rcHost;
}

bool isSameToken(const QByteArray& rcGiven, const QByteArray& rcToken)
{
    int iDifferent = rcGiven.size() ^ rcToken.size();
    for (int i = 0; i < rcGiven.size() && i < rcToken.size(); ++i)
        iDifferent |= rcGiven[i] ^ rcToken[i];
    return iDifferent == 0;
}

QByteArray randomToken()
{
    quint32 au32Random[4];
    QRandomGenerator::system()->fillRange(au32Random);
    return QByteArray(reinterpret_cast<const char*>(au32Random), sizeof au32Random).toHex();
}
