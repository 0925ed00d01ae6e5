#ifndef HALDEND_BENCH_CSCENE_H
#define HALDEND_BENCH_CSCENE_H

#include "bench/CBusClient.h"
#include "bench/CBusDaemon.h"
#include "bench/CProcess.h"
#include "bench/CTemporaryDirectory.h"
#include "bench/CVirtualBoard.h"

#include <memory>
#include <string>

/// What is compared. Each runs from the beginning to the end, side by side with the others.
enum EService {
    eDaemon, ///< the daemon as it is shipped
    eBareQt, ///< its interface in Qt with nothing behind it
    eSdBus,  ///< its interface in C with nothing behind it
    SERVICES
};

/// One of them at work.
struct SService {
    std::string cBusName;
    CProcess cProcess;
};

/// Bus, board, client and services. All of them are ready when the constructor returns, and gone with the
/// object, with their files. The references get the daemon's environment, the preloaded board included: it
/// costs all of them the same.
class CScene
{
public:
    /// Throws, with the log of the program that is to blame, when something doesn't come up.
    CScene();

    CBusClient& client() { return m_cClient; }
    const CVirtualBoard& board() const { return m_cBoard; }
    const SService& service(EService eService) const { return *m_cServices[eService]; }

private:
    CTemporaryDirectory m_cDirectory;
    CBusDaemon m_cBus;
    CVirtualBoard m_cBoard;
    CBusClient m_cClient;
    std::unique_ptr<SService> m_cServices[SERVICES];
};

#endif
