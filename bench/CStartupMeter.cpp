/* SPDX-License-Identifier: MIT */
#include "bench/CStartupMeter.h"

#include "bench/ProcessFigures.h"

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
    cFigures[eResident] = static_cast<double>(
        residentMemory(pcService->cProcess.processId(), m_rcStage.board().directory().toStdString()));

    const std::string cBusName = pcService->cBusName;
    pcService.reset();
    m_rcStage.client().waitForEndOfName(cBusName);
    return cFigures;
}
