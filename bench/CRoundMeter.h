/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CROUNDMETER_H
#define HALDEND_BENCH_CROUNDMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CStage.h"

#include <memory>

/// What a round finds out about a service.
enum EFigure {
    eGetterLatency, ///< microseconds from call to reply, as the client sees it; the median of the calls
    eGetterCpu,     ///< microseconds of processor time of the service, a call
    eOneWayRate,    ///< calls carried out a second
    FIGURES
};

/// All services at work, side by side from the beginning to the end, and one short round with one of them: getters one
/// by one, then a burst of one-way setters. Throws when a service doesn't do what it is measured for.
class CRoundMeter
{
public:
    /// iCalls getters and four times as many one-way calls a round.
    explicit CRoundMeter(int iCalls);

    CFigures measure(EService eService);

private:
    void measureGetter(const SService& rcService, CFigures& rcFigures);
    void measureOneWay(const SService& rcService, CFigures& rcFigures);
    void expectStored() const;

    CStage m_cStage;
    std::unique_ptr<SService> m_pcServices[SERVICES];
    int m_iCalls;
};

#endif
