#ifndef HALDEND_TESTS_CRAWBUSCLIENT_H
#define HALDEND_TESTS_CRAWBUSCLIENT_H

#include <QByteArray>
#include <QString>

/// A client that speaks the protocol of the bus by itself, and so can send what a bus library refuses to.
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

    /// Whether the bus has closed the connection.
    bool isDropped() const { return m_bDropped; }

private:
    bool send(const QByteArray& rcBytes) const;
    bool readUntil(const QByteArray& rcText);

    int m_iSocket = -1;
    bool m_bDropped = false;
    QByteArray m_cRead;
};

#endif
