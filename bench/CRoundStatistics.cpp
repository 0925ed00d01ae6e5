/* SPDX-License-Identifier: MIT */
#include "bench/CRoundStatistics.h"

#include <algorithm>

double median(std::vector<double> cValues)
{
    std::sort(cValues.begin(), cValues.end());
    const std::size_t iMiddle = cValues.size() / 2;
    return cValues.size() % 2 == 1 ? cValues[iMiddle] : (cValues[iMiddle - 1] + cValues[iMiddle]) / 2;
}

double CRoundStatistics::median(std::size_t iSide, std::size_t iFigure) const
{
    std::vector<double> cValues;
    for (const CRound& rcRound : m_cRounds)
        cValues.push_back(rcRound[iSide][iFigure]);
    return ::median(cValues);
}

double CRoundStatistics::medianRatio(std::size_t iSide, std::size_t iReference, std::size_t iFigure) const
{
    std::vector<double> cRatios;
    for (const CRound& rcRound : m_cRounds)
        cRatios.push_back(rcRound[iSide][iFigure] / rcRound[iReference][iFigure]);
    return ::median(cRatios);
}
