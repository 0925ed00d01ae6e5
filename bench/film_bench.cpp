/* SPDX-License-Identifier: MIT */
/* What a recorded frame costs: to render beside a plain copy, to encode beside the program ffmpeg. And, on request, how
 * long a film is that was recorded in real time, beside the clock. */
#include "bench/BenchProgram.h"
#include "bench/CDriftMeter.h"
#include "bench/CFilmMeter.h"
#include "bench/CTable.h"
#include "tests/support/CInterruption.h"

#include <iomanip>
#include <iostream>
#include <sstream>

namespace
{

struct SOptions {
    int iRounds = 10;
    int iSeconds = 0; ///< of a recording in real time; 0: the costs instead
};

// Films are long rounds: few of them will do.
const int FILM_ROUNDS_MIN = 3;
const int MOST_SECONDS = 3600;

/// A goal of these is an amount of time: a camera's frame comes each 40 ms.
struct SFilmRow {
    const char* pszWhat;
    EFilmFigure eFigure;
    const char* pszReference;
    double dLimit; ///< milliseconds
};

const SFilmRow ROWS[] = {
    {"render the recorded picture", eRender, "plain copy", 4},
    {"encode a frame",              eEncode, "ffmpeg",     8},
};

std::string number(double dValue)
{
    std::ostringstream cText;
    cText << std::fixed << std::setprecision(2) << dValue;
    return cText.str();
}

CRoundStatistics::CRound measureRound(CFilmMeter& rcMeter, int iRound)
{
    CRoundStatistics::CRound cRound(FILM_SIDES, CFigures(FILM_FIGURES));
    for (int iFigure = 0; iFigure < FILM_FIGURES; ++iFigure)
        for (int i = 0; i < FILM_SIDES; ++i) {
            CInterruption::check();
            const auto eSide = static_cast<EFilmSide>((iRound + i) % FILM_SIDES);
            cRound[eSide][static_cast<std::size_t>(iFigure)] =
                rcMeter.measure(eSide, static_cast<EFilmFigure>(iFigure));
        }
    return cRound;
}

void measureCosts(int iRounds)
{
    CFilmMeter cMeter;
    CRoundStatistics cStatistics;
    for (int iRound = 0; iRound < iRounds; ++iRound)
        cStatistics.add(measureRound(cMeter, iRound));
    CTable cTable({"processor time a frame", "ours", "reference", "ratio", "goal", "result"});
    for (const SFilmRow& rsRow : ROWS) {
        const double dOurs = cStatistics.median(eBoardFilm, rsRow.eFigure);
        cTable.add({rsRow.pszWhat, number(dOurs) + " ms",
                    number(cStatistics.median(eReferenceFilm, rsRow.eFigure)) + " ms " + rsRow.pszReference,
                    number(cStatistics.medianRatio(eBoardFilm, eReferenceFilm, rsRow.eFigure)),
                    "≤ " + number(rsRow.dLimit) + " ms", dOurs <= rsRow.dLimit ? "met" : "MISSED"});
    }
    std::cout << cTable.text() << "\nMedians of " << iRounds << " rounds.\n";
    warnOfOtherBuilds();
}

void measureDrift(int iSeconds)
{
    const SDrift sDrift = CDriftMeter().record(iSeconds);
    std::cout << "recorded " << std::fixed << std::setprecision(3) << sDrift.dClock << " s, the film has "
              << sDrift.dFilm << " s: " << std::setprecision(1)
              << (sDrift.dFilm - sDrift.dClock) * VIDEO_FRAME_RATE << " frames off; the codec stand-in took "
              << std::setprecision(1) << 100 * sDrift.dProcessor / sDrift.dClock << " % of a processor\n"
              << sDrift.cSaid;
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    CBenchProgram cProgram(iCount, ppszArguments,
                           QStringLiteral("Measures what a frame costs that the virtual board records."));
    cProgram.addNumber(QStringLiteral("rounds"), FILM_ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("interleaved rounds"));
    cProgram.addNumber(
        QStringLiteral("seconds"), 0, MOST_SECONDS, sOptions.iSeconds,
        QStringLiteral("records so long instead, in real time, and compares the film with the clock"));
    return cProgram.run([&sOptions] {
        sOptions.iSeconds > 0 ? measureDrift(sOptions.iSeconds) : measureCosts(sOptions.iRounds);
    });
}
