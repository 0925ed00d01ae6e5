#include "bench/CStartupMeter.h"

#include <chrono>

namespace
{

using CClock = std::chrono::steady_clock;

const char* const OBJECT = "videodisplay";
const char* const GETTER = "get_displayed_video_width";

} // namespace

CFigures CStartupMeter::measure(EService eService)
{
    CFigures cFigures(STARTUP_FIGURES);
    const CClock::time_point cStart = CClock::now();
    std::unique_ptr<SService> pcService = m_rcStage.start(eService);
    cFigures[eStartTime] = std::chrono::duration<double, std::milli>(CClock::now() - cStart).count();

    m_rcStage.client().get(pcService->cBusName, OBJECT, GETTER);
    const CProcess::SMemory sMemory = pcService->cProcess.residentMemory(m_rcStage.board().path());
    cFigures[eResident] = static_cast<double>(sMemory.u64Elsewhere);
    cFigures[eResidentBoard] = static_cast<double>(sMemory.u64Elsewhere + sMemory.u64Below);

    const std::string cBusName = pcService->cBusName;
    pcService.reset();
    m_rcStage.client().waitForEndOfName(cBusName);
    return cFigures;
}
