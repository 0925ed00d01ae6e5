/* SPDX-License-Identifier: MIT */
#include "bench/CRoundMeter.h"

#include "bench/ProcessFigures.h"
#include "hw/lime_registers.h"
#include "tests/support/CInterruption.h"

#include <chrono>
#include <stdexcept>

namespace
{

using CClock = std::chrono::steady_clock;

const char* const OBJECT = "videodisplay";
const char* const GETTER = "get_displayed_video_width";
const int WIDTH = 688; // of every service, before anybody sets it
const char* const ONE_WAY = "set_video_position";
const int ONE_WAY_FACTOR = 4;
const int LAST_X = 100;
const int LAST_Y = 50;

double secondsSince(CClock::time_point cStart)
{
    return std::chrono::duration<double>(CClock::now() - cStart).count();
}

void get(CBusClient& rcClient, const std::string& rcBusName)
{
    if (rcClient.get(rcBusName, OBJECT, GETTER) != WIDTH)
        throw std::runtime_error("wrong width");
}

} // namespace

CRoundMeter::CRoundMeter(int iCalls) : m_iCalls(iCalls)
{
    for (int i = 0; i < SERVICES; ++i)
        m_pcServices[i] = m_cStage.start(static_cast<EService>(i));
}

CFigures CRoundMeter::measure(EService eService)
{
    CFigures cFigures(FIGURES);
    const SService& rcService = *m_pcServices[eService];
    try {
        measureGetter(rcService, cFigures);
        measureOneWay(rcService, cFigures);
        if (eService == eDaemon)
            expectStored();
    } catch (const CInterruption&) {
        throw;
    } catch (const std::exception& rcError) {
        rcService.fail(rcError.what());
    }
    return cFigures;
}

void CRoundMeter::measureGetter(const SService& rcService, CFigures& rcFigures)
{
    std::vector<double> cLatencies(static_cast<std::size_t>(m_iCalls));
    const std::uint64_t u64CpuBefore = processorTime(rcService.cProcess.processId());
    for (double& rdLatency : cLatencies) {
        const CClock::time_point cStart = CClock::now();
        get(m_cStage.client(), rcService.cBusName);
        rdLatency = secondsSince(cStart) * 1e6;
    }
    const std::uint64_t u64Cpu = processorTime(rcService.cProcess.processId()) - u64CpuBefore;
    rcFigures[eGetterLatency] = median(cLatencies);
    rcFigures[eGetterCpu] = static_cast<double>(u64Cpu) / 1e3 / m_iCalls;
}

void CRoundMeter::measureOneWay(const SService& rcService, CFigures& rcFigures)
{
    const int iCalls = m_iCalls * ONE_WAY_FACTOR;
    CBusClient& rcClient = m_cStage.client();
    const CClock::time_point cStart = CClock::now();
    for (int i = iCalls - 1; i >= 0; --i)
        rcClient.send(rcService.cBusName, OBJECT, ONE_WAY, "ii", LAST_X + i, LAST_Y + i);
    // The barrier is a getter, because it queues up behind the setters; a ping of a Qt service is answered
    // by the thread that reads the socket, which may be far ahead of the objects.
    get(rcClient, rcService.cBusName);
    rcFigures[eOneWayRate] = iCalls / secondsSince(cStart);
}

void CRoundMeter::expectStored() const
{
    if (m_cStage.board().limeRegister(CBoard::LIME_DISPLAY, LIME_L1WXY) != (LAST_Y << 16 | LAST_X))
        throw std::runtime_error("the setter doesn't reach the display controller");
}
