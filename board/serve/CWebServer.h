/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CWEBSERVER_H
#define HALDEND_BOARD_SERVE_CWEBSERVER_H

#include "board/serve/COutbox.h"

#include <QByteArray>
#include <QHash>
#include <QObject>

#include <atomic>
#include <map>
#include <mutex>
#include <thread>

struct lws;
struct lws_context;

/// Serves a few fixed files over HTTP, and one WebSocket for each browser.
///
/// The network has a thread of its own, so that a slow browser never waits for the bus, nor the bus for it. The thread
/// owns the sockets; it shares the outboxes with the thread of this object, under one lock, and tells it everything
/// else by signals, which come in that thread's event loop.
///
/// Refused are: hosts and origins that are not this server's, everything but GET, more than 32 browsers, messages of
/// more than 16 KiB, and more than 1000 that wait to be looked at. Half-open requests are closed after 15 seconds, browsers that answer no ping after 20.
class CWebServer : public QObject
{
    Q_OBJECT

public:
    struct SFile {
        QByteArray cType; ///< MIME
        QByteArray cBytes;
    };

    /// rcFiles: by path, such as "/style.css".
    explicit CWebServer(const QHash<QByteArray, SFile>& rcFiles, QObject* pcParent = nullptr);
    ~CWebServer() override;

    /// When a request that isn't whole is given up; 15 by default. Before listen().
    void setHalfOpenSeconds(int iSeconds) { m_iHalfOpenSeconds = iSeconds; }

    /// Listens and starts the thread, once. Port 0: any free one. False if the port is taken or the address isn't this
    /// machine's.
    [[nodiscard]] bool listen(const QByteArray& rcAddress, int iPort);
    int port() const { return m_iPort; }

    /// To one browser, by the number that joined() told; nothing if it has left. See COutbox.
    void sendState(quint64 u64Browser, const QByteArray& rcTopic, const QByteArray& rcJson);
    void sendLine(quint64 u64Browser, const QByteArray& rcTopic, const QByteArray& rcJson);
    void sendPicture(quint64 u64Browser, const QByteArray& rcPicture);

signals:
    void joined(quint64 u64Browser);
    void left(quint64 u64Browser);
    void received(quint64 u64Browser, const QByteArray& rcText);

private:
    /// One connection, as the network's thread sees it.
    struct SPeer {
        quint64 u64Browser = 0;        ///< 0 while it is plain HTTP
        QByteArray cReceived;          ///< of a message that isn't whole yet
        const SFile* pcFile = nullptr; ///< that is being sent
        int iSent = 0;
    };
    friend struct SWebCallbacks;

    void serve();
    int startFile(lws* psConnection, const QByteArray& rcPath);
    int sendFile(lws* psConnection);
    bool isWelcome(lws* psConnection) const;
    void open(lws* psConnection);
    void close(lws* psConnection);
    int take(lws* psConnection, const QByteArray& rcPart);
    int give(lws* psConnection);
    void wakeWriters();
    template <class FUNCTION>
    void put(quint64 u64Browser, FUNCTION fnPut);

    const QHash<QByteArray, SFile> m_cFiles;
    QByteArray m_cAddress;
    int m_iPort = 0;
    int m_iHalfOpenSeconds = 15;
    lws_context* m_psContext = nullptr;
    std::thread m_cThread;
    std::map<lws*, SPeer> m_cPeers; ///< the network's thread only
    quint64 m_u64Last = 0;          ///< the same
    std::atomic<int> m_iWaiting{0}; ///< messages that this object's thread hasn't seen yet
    std::mutex m_cLock;
    std::map<quint64, COutbox> m_cOutboxes; ///< under the lock
    bool m_bStop = false;                   ///< under the lock
};

#endif
