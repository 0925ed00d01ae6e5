/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CROUNDSTATISTICS_H
#define HALDEND_BENCH_CROUNDSTATISTICS_H

#include <cstddef>
#include <vector>

/// What a round finds out about one of the sides that are compared, by number of the figure.
using CFigures = std::vector<double>;

/// Median of a set of values that isn't empty; of the two in the middle, their mean.
double median(std::vector<double> cValues);

/// What all rounds found out. Ratios are taken within a round, whose sides had the machine in the same
/// mood, and only then the median: a single round may be off by a factor of two, the median of forty by a
/// few hundredths. Sides and figures are numbered from 0, by an enumeration of the bench.
class CRoundStatistics
{
public:
    /// The figures of all sides from one round.
    using CRound = std::vector<CFigures>;

    void add(const CRound& rcRound) { m_cRounds.push_back(rcRound); }

    double median(std::size_t iSide, std::size_t iFigure) const;

    /// Median of the rounds' quotients of iSide by iReference.
    double medianRatio(std::size_t iSide, std::size_t iReference, std::size_t iFigure) const;

private:
    std::vector<CRound> m_cRounds;
};

#endif
