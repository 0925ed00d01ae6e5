/* SPDX-License-Identifier: MIT */
/* What recording, still images and the watch on the input signal cost, as ratios to the least that does the same.
 *
 * All services are at work on one bus and one board, and measured in turns; idle at the same time. */
#include "bench/BenchProgram.h"
#include "bench/CProcessingMeter.h"
#include "bench/CRatioTable.h"
#include "tests/support/CInterruption.h"

namespace
{

struct SOptions {
    int iRounds = ROUNDS_MIN;
};

const SUnit MICROSECONDS = {1, "µs"};
const SUnit MILLISECONDS = {2, "ms"};
const SUnit PER_SECOND = {1, "/s"};
const char* const PLAIN_C = "bare Qt, C";
const char* const BARE_QT = "bare Qt, timer";

// A benchmark is a row here, and a figure that the meter takes.
const SRatioRow ROWS[] = {
    {"start and stop a recording", eRecording,   MICROSECONDS, eLeastProcessing, "bare Qt", eAtMost, 1.25},
    {"save a still image",         eStillImage,  MILLISECONDS, eLeastProcessing, PLAIN_C,   eAtMost, 1.10},
    {"idle, wake-ups",             eIdleWakeUps, PER_SECOND,   eLeastProcessing, BARE_QT,   eAtMost, 1.00},
    {"idle, processor time",       eIdleCpu,     MICROSECONDS, eLeastProcessing, BARE_QT,   eAtMost, 1.20},
};

// Both sides, each time the other one to begin with.
void takeTurns(CProcessingMeter& rcMeter, EProcessingFigure eFigure, int iRound,
               CRoundStatistics::CRound& rcRound)
{
    for (int i = 0; i < PROCESSING_SIDES; ++i) {
        CInterruption::check();
        const auto eSide = static_cast<EProcessingSide>((iRound + i) % PROCESSING_SIDES);
        rcRound[eSide][eFigure] = rcMeter.measure(eSide, eFigure);
    }
}

CRoundStatistics::CRound measureRound(CProcessingMeter& rcMeter, int iRound)
{
    CRoundStatistics::CRound cRound(PROCESSING_SIDES, CFigures(PROCESSING_FIGURES));
    takeTurns(rcMeter, eRecording, iRound, cRound);
    takeTurns(rcMeter, eStillImage, iRound, cRound);
    rcMeter.measureIdle(cRound);
    return cRound;
}

void measure(const SOptions& rsOptions)
{
    CProcessingMeter cMeter;
    const CRoundStatistics cStatistics =
        measureRounds(rsOptions.iRounds, [&cMeter](int iRound) { return measureRound(cMeter, iRound); });
    printRatios(CRatioTable(cStatistics, ROWS), std::to_string(rsOptions.iRounds) + " rounds");
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral("Measures recording, still images and the idle daemon beside the least that does the "
                       "same, on a bus and a virtual board of its own."));
    cProgram.addNumber(QStringLiteral("rounds"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("rounds of four and a half seconds"));
    return cProgram.run([&sOptions] { measure(sOptions); });
}
