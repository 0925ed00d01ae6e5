/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CTEXTMETER_H
#define HALDEND_BENCH_CTEXTMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CStage.h"

#include <memory>

/// What is compared.
enum ETextSide {
    eTexts,     ///< the daemon
    eBareTexts, ///< the same interface in Qt, which answers, and writes the cells
    TEXT_SIDES
};

/// What a round finds out.
enum ETextFigure {
    eStringRate, ///< strings of 20 characters that a visible text is given, a second
    eCreateFew,  ///< microseconds a text, one of 100
    eCreateSome, ///< one of 1,000
    eCreateMany, ///< one of 10,000
    eCreateAll,  ///< one of 65,535, as many as there can be
    eDestroy,    ///< microseconds a visible text, all of 10,000 at once. Least: of 1,000, by the daemon too
    TEXT_FIGURES
};

/// How many texts the figures of creation are about, in their order.
const int TEXT_COUNTS[] = {100, 1000, 10000, 65535};

/// Measures both sides in turns. Throws when one doesn't do what it is measured for.
class CTextMeter
{
public:
    CTextMeter();

    /// A figure of a side. Texts that it made are gone afterwards.
    double measure(ETextSide eSide, ETextFigure eFigure);

private:
    const SService& service(ETextSide eSide) const { return *m_pcServices[eSide]; }
    double rateOfStrings(const std::string& rcName);
    double create(const std::string& rcName, int iTexts);
    double destroy(int iTexts);
    double createOnce(const std::string& rcName, int iTexts);
    void barrier(const std::string& rcName);

    CStage m_cStage;
    std::unique_ptr<SService> m_pcServices[TEXT_SIDES];
};

#endif
