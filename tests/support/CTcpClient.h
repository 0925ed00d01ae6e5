/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CTCPCLIENT_H
#define HALDEND_TESTS_CTCPCLIENT_H

#include <QByteArray>

/// A connection to a port of this machine that sends any bytes, right or wrong ones.
class CTcpClient
{
public:
    CTcpClient() = default;
    ~CTcpClient();

    CTcpClient(const CTcpClient&) = delete;
    CTcpClient& operator=(const CTcpClient&) = delete;

    bool connect(int iPort);
    bool send(const QByteArray& rcBytes) const;

    /// Waits until so many bytes have come, or this text. False if the other side closes before that, or nothing comes.
    bool waitForBytes(int iBytes);
    bool waitForText(const QByteArray& rcText);

    /// Waits until the other side has closed. False if it doesn't.
    bool waitForEnd();

    /// What came and wasn't taken.
    const QByteArray& received() const { return m_cReceived; }
    QByteArray take(int iBytes);

    /// A whole request over a connection of its own; the answer, headers too, as long as it says, or up to the close.
    static QByteArray ask(int iPort, const QByteArray& rcRequest);

private:
    bool readMore();

    int m_iSocket = -1;
    QByteArray m_cReceived;
};

#endif
