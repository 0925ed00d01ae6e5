#include "bench/CRoundStatistics.h"

#include <algorithm>

double median(std::vector<double> cValues)
{
    std::sort(cValues.begin(), cValues.end());
    const std::size_t iMiddle = cValues.size() / 2;
    return cValues.size() % 2 == 1 ? cValues[iMiddle] : (cValues[iMiddle - 1] + cValues[iMiddle]) / 2;
}

double CRoundStatistics::median(EService eService, EFigure eFigure) const
{
    std::vector<double> cValues;
    for (const CRound& rcRound : m_cRounds)
        cValues.push_back(rcRound[eService][eFigure]);
    return ::median(cValues);
}

double CRoundStatistics::medianRatio(EService eService, EService eReference, EFigure eFigure) const
{
    std::vector<double> cRatios;
    for (const CRound& rcRound : m_cRounds)
        cRatios.push_back(rcRound[eService][eFigure] / rcRound[eReference][eFigure]);
    return ::median(cRatios);
}
