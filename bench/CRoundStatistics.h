#ifndef HALDEND_BENCH_CROUNDSTATISTICS_H
#define HALDEND_BENCH_CROUNDSTATISTICS_H

#include "bench/CRoundMeter.h"
#include "bench/CScene.h"

#include <array>
#include <vector>

/// Median of a set of values that isn't empty; of the two in the middle, their mean.
double median(std::vector<double> cValues);

/// What all rounds found out. Ratios are taken within a round, whose two sides had the machine in the same
/// mood, and only then the median: a single round may be off by a factor of two, the median of forty by a
/// few hundredths.
class CRoundStatistics
{
public:
    /// The figures of all services from one round.
    using CRound = std::array<CFigures, SERVICES>;

    void add(const CRound& rcRound) { m_cRounds.push_back(rcRound); }

    double median(EService eService, EFigure eFigure) const;

    /// Median of the rounds' quotients of eService by eReference.
    double medianRatio(EService eService, EService eReference, EFigure eFigure) const;

private:
    std::vector<CRound> m_cRounds;
};

#endif
