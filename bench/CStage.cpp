#include "bench/CStage.h"

namespace
{

struct SProgram {
    std::string cBusName;
    std::vector<std::string> cArguments;
};

SProgram daemonProgram(const CVirtualBoard& rcBoard)
{
    return {
        "velmar.haldend",
        {BENCH_DAEMON, "-i", rcBoard.device("i2c-1"), "-f", rcBoard.device("fpgamem"), "-l",
          rcBoard.device("fb0")}
    };
}

SProgram referenceProgram(const std::string& rcBusName, const std::string& rcPath)
{
    return {
        rcBusName, {rcPath, rcBusName}
    };
}

SProgram program(EService eService, const CVirtualBoard& rcBoard)
{
    switch (eService) {
    case eBareQt:
        return referenceProgram("velmar.bench.qt", BENCH_BARE_QT_SERVICE);
    case eBareQtOverlay:
        return {
            "velmar.bench.overlay",
            {BENCH_BARE_QT_SERVICE, "velmar.bench.overlay", rcBoard.device("fpgamem")}
        };
    case eSdBus:
        return referenceProgram("velmar.bench.sdbus", BENCH_SDBUS_SERVICE);
    default:
        return daemonProgram(rcBoard);
    }
}

} // namespace

CStage::CStage() : m_cBus(m_cDirectory), m_cBoard(m_cDirectory), m_cClient(m_cBus.address()) {}

std::unique_ptr<SService> CStage::start(EService eService)
{
    const SProgram sProgram = program(eService, m_cBoard);
    CProcess::SStart cStart;
    cStart.cArguments = sProgram.cArguments;
    cStart.cEnvironment = m_cBoard.environment();
    cStart.cEnvironment.insert(cStart.cEnvironment.end(),
                               {"LC_ALL=C.UTF-8", "TZ=UTC", "DBUS_SYSTEM_BUS_ADDRESS=" + m_cBus.address()});
    cStart.cLogFile = m_cDirectory.file(sProgram.cBusName + ".log");
    std::unique_ptr<SService> pcService(new SService{sProgram.cBusName, CProcess(cStart)});
    m_cClient.waitForName(pcService->cBusName, pcService->cProcess);
    return pcService;
}
