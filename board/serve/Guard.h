/* SPDX-License-Identifier: MIT */
/* Which requests a browser may send here. */
#ifndef HALDEND_BOARD_SERVE_GUARD_H
#define HALDEND_BOARD_SERVE_GUARD_H

#include <QByteArray>

/// Whether a request with this header "Host" is meant for this server, which listens on that address. A page from
/// elsewhere can make its own name lead here, but that name stays in the header: so only addresses, "localhost" and the
/// name that the server was told to listen on are good ones. On the loopback only the loopback's are.
bool isGoodHost(const QByteArray& rcHost, const QByteArray& rcListen);

/// Whether the page that sent the request came from this server: the header "Origin" names the host of the request.
bool isGoodOrigin(const QByteArray& rcOrigin, const QByteArray& rcHost);

/// Whether two tokens are the same, in a time that doesn't tell where they differ.
bool isSameToken(const QByteArray& rcGiven, const QByteArray& rcToken);

/// 128 random bits as 32 hexadecimal digits.
QByteArray randomToken();

#endif
