/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CSTARTUPMETER_H
#define HALDEND_BENCH_CSTARTUPMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CStage.h"

/// What a start finds out about a service.
enum EStartupFigure {
    eStartTime, ///< milliseconds from the new process to its bus name
    eResident,  ///< kilobytes of memory that it has when it is idle, the board's left out
    STARTUP_FIGURES
};

/// One start and end of a service. Idle is what has answered one call, and waits for the next.
class CStartupMeter
{
public:
    explicit CStartupMeter(CStage& rcStage) : m_rcStage(rcStage) {}

    CFigures measure(EService eService);

private:
    CStage& m_rcStage;
};

#endif
