#include "bench/CScene.h"

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

} // namespace

CScene::CScene() : m_cBus(m_cDirectory), m_cBoard(m_cDirectory), m_cClient(m_cBus.address())
{
    // In the order of EService.
    const SProgram cPrograms[SERVICES] = {
        daemonProgram(m_cBoard),
        referenceProgram("velmar.bench.qt", BENCH_BARE_QT_SERVICE),
        referenceProgram("velmar.bench.sdbus", BENCH_SDBUS_SERVICE),
    };
    for (int i = 0; i < SERVICES; ++i) {
        CProcess::SStart cStart;
        cStart.cArguments = cPrograms[i].cArguments;
        cStart.cEnvironment = m_cBoard.environment();
        cStart.cEnvironment.insert(
            cStart.cEnvironment.end(),
            {"LC_ALL=C.UTF-8", "TZ=UTC", "DBUS_SYSTEM_BUS_ADDRESS=" + m_cBus.address()});
        cStart.cLogFile = m_cDirectory.file(cPrograms[i].cBusName + ".log");
        m_cServices[i].reset(new SService{cPrograms[i].cBusName, CProcess(cStart)});
        m_cClient.waitForName(m_cServices[i]->cBusName, m_cServices[i]->cProcess);
    }
}
