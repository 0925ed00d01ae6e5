/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CWEBSOCKETCLIENT_H
#define HALDEND_TESTS_CWEBSOCKETCLIENT_H

#include "tests/support/CTcpClient.h"

#include <QJsonObject>

/// What the live view's page does, without a browser.
class CWebSocketClient
{
public:
    struct SMessage {
        bool bBinary = false;
        QByteArray cBytes;
    };

    /// The request that opens a WebSocket.
    static QByteArray request(const QByteArray& rcHost, const QByteArray& rcOrigin,
                              const QByteArray& rcProtocol = "halden-live");

    /// Opens one as the server's own page would. False if it is refused.
    bool open(int iPort);

    bool send(const QByteArray& rcText);
    bool send(const QJsonObject& rcMessage);

    /// Waits for the next message. False if the connection ends, or nothing comes.
    bool next(SMessage& rsMessage);

    /// Waits for a JSON message of this type, or for a picture, and forgets those before it. Empty if none comes.
    QJsonObject nextOf(const char* pszType);
    QByteArray nextPicture();

    /// Waits for the answer to the call or order with this number.
    QJsonObject answerTo(int iId);

    bool waitForEnd() { return m_cClient.waitForEnd(); }

private:
    CTcpClient m_cClient;
};

#endif
