/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CFLOOD_H
#define HALDEND_BENCH_CFLOOD_H

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>
#include <vector>

/// A client that calls and calls, in a thread of its own, as fast as the bus reads.
class CFlood
{
public:
    /// Sends the pieces in turns until stop(). Each piece is one or more calls that want no reply, and no half ones.
    /// A polite client waits behind each piece until the daemon has answered a getter.
    CFlood(const QString& rcBusAddress, std::vector<QByteArray> cPieces, bool bPolite);
    ~CFlood();

    CFlood(const CFlood&) = delete;
    CFlood& operator=(const CFlood&) = delete;

    /// Ends it. False if it couldn't send: the bus doesn't read any more, or has thrown it out.
    bool stop();

    qint64 bytes() const { return m_iBytes; } ///< that the bus has read

private:
    void run();

    QString m_cBusAddress;
    std::vector<QByteArray> m_cPieces;
    bool m_bPolite;
    std::atomic<bool> m_bStop{false};
    std::atomic<bool> m_bFailed{false};
    std::atomic<qint64> m_iBytes{0};
    std::thread m_cThread;
};

#endif
