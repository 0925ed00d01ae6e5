/* SPDX-License-Identifier: MIT */
#include "bench/CRatioTable.h"

#include <iomanip>
#include <sstream>

namespace
{

const std::size_t OURS = 0;

std::string number(double dValue, int iDecimals)
{
    std::ostringstream cText;
    cText << std::fixed << std::setprecision(iDecimals) << dValue;
    return cText.str();
}

std::string goal(const SRatioRow& rsRow)
{
    return (rsRow.eGoal == eAtMost ? "≤ " : "≥ ") + number(rsRow.dLimit, 2);
}

std::string result(const SRatioRow& rsRow, double dRatio)
{
    const bool bMet = rsRow.eGoal == eAtMost ? dRatio <= rsRow.dLimit : dRatio >= rsRow.dLimit;
    return bMet ? "met" : "MISSED";
}

} // namespace

CRatioTable::CRatioTable(const CRoundStatistics& rcStatistics)
    : m_rcStatistics(rcStatistics), m_cTable({"what", "ours", "reference", "ratio", "goal", "result"})
{
}

std::string CRatioTable::figure(const SRatioRow& rsRow, std::size_t iSide) const
{
    return number(m_rcStatistics.median(iSide, rsRow.iFigure), rsRow.sUnit.iDecimals) + " " +
           rsRow.sUnit.pszUnit;
}

void CRatioTable::add(const SRatioRow& rsRow)
{
    const double dRatio = m_rcStatistics.medianRatio(OURS, rsRow.iReference, rsRow.iFigure);
    m_cTable.add({rsRow.pszWhat, figure(rsRow, OURS),
                  figure(rsRow, rsRow.iReference) + " " + rsRow.pszReference, number(dRatio, 2), goal(rsRow),
                  result(rsRow, dRatio)});
}
