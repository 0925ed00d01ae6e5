/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CRAWBUSCLIENT_H
#define HALDEND_TESTS_CRAWBUSCLIENT_H

#include <QByteArray>
#include <QString>

#include <initializer_list>

/// A client that speaks the protocol of the bus by itself. It can send what a bus library refuses to, and it sends
/// as fast as the bus reads, without a queue of its own.
class CRawBusClient
{
public:
    CRawBusClient() = default;
    ~CRawBusClient();

    CRawBusClient(const CRawBusClient&) = delete;
    CRawBusClient& operator=(const CRawBusClient&) = delete;

    /// Becomes a member of the bus. False if it isn't let in.
    bool start(const QString& rcBusAddress);

    /// Calls a method of the daemon with one text, whatever its bytes are, and waits. True if it was answered.
    bool call(const QString& rcPath, const QString& rcMethod, const QByteArray& rcText);

    /// Sends a call, but not all of it. False if the bus doesn't take it.
    bool sendHalf() const;

    /// The bytes of an overlay call that wants no reply, with numbers and a text; a null text is none.
    static QByteArray oneWayCall(const char* pszMethod, std::initializer_list<qint32> cNumbers,
                                 const QByteArray& rcText = QByteArray());

    /// Sends such bytes, and returns when the bus has read them. False if it doesn't.
    bool send(const QByteArray& rcBytes) const;

    /// Sends calls of set_text_string that want no reply, each with a text of so many characters, and returns when
    /// the bus has read them. Their bytes, or -1 if the bus doesn't take them.
    qint64 flood(qint32 i32Handle, int iCharacters, int iCalls) const;

    /// Calls a method without arguments, and waits. True if it was answered.
    bool call(const QString& rcPath, const QString& rcMethod);

    /// Waits until the daemon has received all that this client sent, carried out or not. False if it doesn't.
    bool ping();

    /// Whether the bus has closed the connection.
    bool isDropped() const { return m_bDropped; }

private:
    bool callAndWait(const QByteArray& rcCall);
    bool readUntil(const QByteArray& rcText);

    int m_iSocket = -1;
    bool m_bDropped = false;
    QByteArray m_cRead;
};

#endif
