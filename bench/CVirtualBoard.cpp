#include "bench/CVirtualBoard.h"

#include "bench/CProcess.h"
#include "bench/CTemporaryDirectory.h"
#include "bench/Timeouts.h"
#include "hw/lime_registers.h"

#include <fstream>
#include <stdexcept>

CVirtualBoard::CVirtualBoard(const CTemporaryDirectory& rcDirectory) : m_cPath(rcDirectory.file("board"))
{
    CProcess::SStart cStart;
    cStart.cArguments = {BENCH_BOARD_TOOL, "create", m_cPath};
    cStart.cEnvironment = {"LC_ALL=C.UTF-8"};
    cStart.cLogFile = rcDirectory.file("board.log");
    const CProcess cTool(cStart);
    if (!cTool.waitFor(-1, TIMEOUT_START_MS))
        cTool.fail("not done in time");
}

std::vector<std::string> CVirtualBoard::environment() const
{
    return {"HALDEN_BOARD=" + m_cPath, std::string("LD_PRELOAD=") + BENCH_BOARD_PRELOAD};
}

std::uint32_t CVirtualBoard::videoPosition() const
{
    std::ifstream cDevice(device("fb0"), std::ios::binary);
    cDevice.seekg(LIME_DISP_WINDOW + LIME_L1WXY);
    // Controller registers are in the byte order of the processor, which is ours.
    std::uint32_t u32Value = 0;
    if (!cDevice.read(reinterpret_cast<char*>(&u32Value), sizeof(u32Value)))
        throw std::runtime_error(device("fb0") + ": cannot be read");
    return u32Value;
}
