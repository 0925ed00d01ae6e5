/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CRATIOTABLE_H
#define HALDEND_BENCH_CRATIOTABLE_H

#include "bench/CRoundStatistics.h"
#include "bench/CTable.h"

#include <string>

// What a goal demands of a ratio.
enum EGoal { eAtMost, eAtLeast };

/// How a figure is printed.
struct SUnit {
    int iDecimals;
    const char* pszUnit;
};

/// A line of the table: a figure of the side under measurement and of its reference. Sides and figures are
/// the numbers under which CRoundStatistics has them.
struct SRatioRow {
    const char* pszWhat;
    std::size_t iFigure;
    SUnit sUnit;
    std::size_t iReference;
    const char* pszReference; ///< its name, or an empty text
    EGoal eGoal;
    double dLimit;
};

/// What every bench prints: ours beside the reference, their ratio, the goal and whether it is met. Ours is
/// side 0.
class CRatioTable
{
public:
    /// With all rows that a bench has.
    template <typename TRows>
    CRatioTable(const CRoundStatistics& rcStatistics, const TRows& rcRows) : CRatioTable(rcStatistics)
    {
        for (const SRatioRow& rsRow : rcRows)
            add(rsRow);
    }

    /// Lines to print, the last one ended too.
    std::string text() const { return m_cTable.text(); }

private:
    explicit CRatioTable(const CRoundStatistics& rcStatistics);

    void add(const SRatioRow& rsRow);
    std::string figure(const SRatioRow& rsRow, std::size_t iSide) const;

    const CRoundStatistics& m_rcStatistics;
    CTable m_cTable;
};

#endif
