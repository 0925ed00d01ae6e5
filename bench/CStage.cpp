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

SProgram bareQtProgram(const std::string& rcBusName, const std::vector<std::string>& rcRole = {})
{
    std::vector<std::string> cArguments = {BENCH_BARE_QT_SERVICE, rcBusName};
    cArguments.insert(cArguments.end(), rcRole.begin(), rcRole.end());
    return {rcBusName, cArguments};
}

SProgram program(EService eService, const CVirtualBoard& rcBoard)
{
    switch (eService) {
    case eBareQt:
        return bareQtProgram("velmar.bench.qt");
    case eBareQtOverlay:
        return bareQtProgram("velmar.bench.overlay", {"overlay", rcBoard.device("fpgamem")});
    case eBareQtProcessing:
        return bareQtProgram("velmar.bench.processing", {"processing", rcBoard.device("fpgamem")});
    case eBareQtPoll:
        return bareQtProgram("velmar.bench.poll", {"poll", rcBoard.device("i2c-1")});
    case eBareCodec:
        return bareQtProgram("velmar.mobilygen", {"codec"});
    case eSdBus:
        return {
            "velmar.bench.sdbus", {BENCH_SDBUS_SERVICE, "velmar.bench.sdbus"}
        };
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
