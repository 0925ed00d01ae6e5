#ifndef HALDEND_BENCH_CROUNDMETER_H
#define HALDEND_BENCH_CROUNDMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CScene.h"

/// What a round finds out about a service.
enum EFigure {
    eGetterLatency, ///< microseconds from call to reply, as the client sees it; the median of the calls
    eGetterCpu,     ///< microseconds of processor time of the service, a call
    eOneWayRate,    ///< calls carried out a second
    FIGURES
};

/// One short round with one service: getters one by one, then a burst of one-way setters. Throws when a
/// service doesn't do what it is measured for.
class CRoundMeter
{
public:
    /// iCalls getters and four times as many one-way calls a round.
    CRoundMeter(CScene& rcScene, int iCalls) : m_rcScene(rcScene), m_iCalls(iCalls) {}

    CFigures measure(EService eService);

private:
    void measureGetter(const SService& rcService, CFigures& rcFigures);
    void measureOneWay(const SService& rcService, CFigures& rcFigures);
    void expectStored() const;

    CScene& m_rcScene;
    int m_iCalls;
};

#endif
