/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CSTAGE_H
#define HALDEND_BENCH_CSTAGE_H

#include "bench/CBusClient.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CMemoryFolder.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

#include <memory>
#include <string>

/// What is compared.
enum EService {
    eDaemon, ///< the daemon as it is shipped
    eBareQt, ///< its interface in Qt with nothing behind it
    SERVICES,
    eBareQtOverlay = SERVICES, ///< the overlay in Qt with nothing behind it but the device calls
    eBareQtProcessing,         ///< recordings and still images in Qt, with the least behind them
    eBareQtPoll,               ///< Qt with the decoder's status read each second
    eBareCodec                 ///< in the codec service's place, one that does nothing but answer
};

/// One of them at work. What it says goes to a log file, which is shown only when something failed.
struct SService {
    std::string cBusName;
    QString cLogFile;
    CChildProcess cProcess;

    /// Throws std::runtime_error: the bus name, the reason, and the log.
    [[noreturn]] void fail(const std::string& rcReason) const;
};

/// Bus, board and client, and what it takes to put a service among them. All are gone with the object, with their
/// files.
class CStage
{
public:
    /// Throws std::runtime_error when something doesn't come up.
    CStage();

    CBusClient& client() { return *m_pcClient; }
    const CBoard& board() const { return m_cBoard.board(); }

    /// What DBUS_SYSTEM_BUS_ADDRESS has to hold for other clients.
    std::string busAddress() const { return m_cBus.address().toStdString(); }

    /// Path of a file that is gone with the stage; in memory where the system offers that.
    std::string file(const std::string& rcName) const;

    /// Starts a service, and returns when it owns its bus name. The references get the daemon's environment, the
    /// preloaded board included: it costs all of them the same. Throws like the constructor, with the service's log.
    std::unique_ptr<SService> start(EService eService);

private:
    QProcessEnvironment environment() const;

    CMemoryFolder m_cFolder;
    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    std::unique_ptr<CBusClient> m_pcClient;
};

#endif
