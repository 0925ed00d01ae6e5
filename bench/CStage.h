#ifndef HALDEND_BENCH_CSTAGE_H
#define HALDEND_BENCH_CSTAGE_H

#include "bench/CBusClient.h"
#include "bench/CBusDaemon.h"
#include "bench/CProcess.h"
#include "bench/CTemporaryDirectory.h"
#include "bench/CVirtualBoard.h"

#include <memory>
#include <string>

/// What is compared.
enum EService {
    eDaemon, ///< the daemon as it is shipped
    eBareQt, ///< its interface in Qt with nothing behind it
    eSdBus,  ///< its interface in C with nothing behind it
    SERVICES,
    eBareQtOverlay = SERVICES, ///< the overlay in Qt with nothing behind it but the device calls
    eBareQtProcessing,         ///< recordings and still images in Qt, with the least behind them
    eBareQtPoll,               ///< Qt with the decoder's status read each second
    eBareCodec                 ///< in the codec service's place, one that does nothing but answer
};

/// One of them at work.
struct SService {
    std::string cBusName;
    CProcess cProcess;
};

/// Bus, board and client, and what it takes to put a service among them. All are gone with the object, with their
/// files.
class CStage
{
public:
    /// Throws, with the log of the program that is to blame, when something doesn't come up.
    CStage();

    CBusClient& client() { return m_cClient; }
    const CVirtualBoard& board() const { return m_cBoard; }

    /// What DBUS_SYSTEM_BUS_ADDRESS has to hold for other clients.
    const std::string& busAddress() const { return m_cBus.address(); }

    /// Path of a file that is gone with the stage; in memory where the system offers that.
    std::string file(const std::string& rcName) const { return m_cDirectory.file(rcName); }

    /// Starts a service, and returns when it owns its bus name. The references get the daemon's environment, the
    /// preloaded board included: it costs all of them the same. Throws like the constructor.
    std::unique_ptr<SService> start(EService eService);

private:
    CTemporaryDirectory m_cDirectory;
    CBusDaemon m_cBus;
    CVirtualBoard m_cBoard;
    CBusClient m_cClient;
};

#endif
