/* SPDX-License-Identifier: MIT */
#include "tests/support/CWebSocketClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtEndian>

namespace
{

const quint8 FINAL = 0x80;
const quint8 TEXT = 1;
const quint8 BINARY = 2;
const quint8 MASKED = 0x80;
const quint8 LENGTH_16 = 126;
const quint8 LENGTH_64 = 127;

} // namespace

QByteArray CWebSocketClient::request(const QByteArray& rcHost, const QByteArray& rcOrigin,
                                     const QByteArray& rcProtocol)
{
    return "GET /live HTTP/1.1\r\nHost: " + rcHost + "\r\nOrigin: " + rcOrigin +
           "\r\nConnection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
           "Sec-WebSocket-Key: MTIzNDU2Nzg5MDEyMzQ1Ng==\r\nSec-WebSocket-Protocol: " +
           rcProtocol + "\r\n\r\n";
}

bool CWebSocketClient::open(int iPort)
{
    const QByteArray cHost = "127.0.0.1:" + QByteArray::number(iPort);
    const QByteArray cEnd = "\r\n\r\n";
    if (!m_cClient.connect(iPort) || !m_cClient.send(request(cHost, "http://" + cHost)) ||
        !m_cClient.waitForText(cEnd))
        return false;
    const QByteArray cHead = m_cClient.take(m_cClient.received().indexOf(cEnd) + cEnd.size());
    return cHead.startsWith("HTTP/1.1 101 ");
}

/// Masked by zeros, which leave the text as it is.
bool CWebSocketClient::send(const QByteArray& rcText)
{
    QByteArray cFrame(1, static_cast<char>(FINAL | TEXT));
    if (rcText.size() < LENGTH_16) {
        cFrame += static_cast<char>(MASKED | rcText.size());
    } else {
        cFrame += static_cast<char>(MASKED | LENGTH_16);
        QByteArray cLength(2, '\0');
        qToBigEndian(static_cast<quint16>(rcText.size()), cLength.data());
        cFrame += cLength;
    }
    return m_cClient.send(cFrame + QByteArray(4, '\0') + rcText);
}

bool CWebSocketClient::send(const QJsonObject& rcMessage)
{
    return send(QJsonDocument(rcMessage).toJson(QJsonDocument::Compact));
}

bool CWebSocketClient::next(SMessage& rsMessage)
{
    rsMessage = {};
    while (true) {
        if (!m_cClient.waitForBytes(2))
            return false;
        const QByteArray cHead = m_cClient.take(2);
        const quint8 u8Head = static_cast<quint8>(cHead[0]);
        quint64 u64Length = static_cast<quint8>(cHead[1]);
        const int iMore = u64Length == LENGTH_16 ? 2 : u64Length == LENGTH_64 ? 8 : 0;
        if (!m_cClient.waitForBytes(iMore))
            return false;
        const QByteArray cMore = m_cClient.take(iMore);
        if (iMore == 2)
            u64Length = qFromBigEndian<quint16>(cMore.constData());
        if (iMore == 8)
            u64Length = qFromBigEndian<quint64>(cMore.constData());
        if (!m_cClient.waitForBytes(static_cast<int>(u64Length)))
            return false;
        const QByteArray cPayload = m_cClient.take(static_cast<int>(u64Length));
        const int iKind = u8Head & 0xf;
        if (iKind > BINARY)
            continue; // a ping: the connection doesn't last that long
        rsMessage.bBinary = rsMessage.bBinary || iKind == BINARY;
        rsMessage.cBytes += cPayload;
        if ((u8Head & FINAL) != 0)
            return true;
    }
}

QJsonObject CWebSocketClient::nextOf(const char* pszType)
{
    SMessage sMessage;
    while (next(sMessage)) {
        QJsonObject cObject = QJsonDocument::fromJson(sMessage.cBytes).object();
        if (!sMessage.bBinary && cObject[QStringLiteral("type")] == QLatin1String(pszType))
            return cObject;
    }
    return QJsonObject();
}

QByteArray CWebSocketClient::nextPicture()
{
    SMessage sMessage;
    while (next(sMessage))
        if (sMessage.bBinary)
            return sMessage.cBytes;
    return QByteArray();
}

QJsonObject CWebSocketClient::answerTo(int iId)
{
    while (true) {
        const QJsonObject cAnswers = nextOf("answers");
        if (cAnswers.isEmpty())
            return QJsonObject();
        for (const QJsonValue cAnswer : cAnswers[QStringLiteral("items")].toArray())
            if (cAnswer.toObject()[QStringLiteral("id")].toInt() == iId)
                return cAnswer.toObject();
    }
}
