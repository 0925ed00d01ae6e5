/* What recording, still images and the watch on the input signal cost, as ratios to the least that does the same.
 *
 * All services are at work on one bus and one board, and measured in turns; idle at the same time. */
#include "bench/BenchProgram.h"
#include "bench/CProcessingMeter.h"
#include "bench/CRatioTable.h"
#include "tests/support/CInterruption.h"

#include <iostream>

namespace
{

struct SOptions {
    int iRounds = ROUNDS_MIN;
};

const SUnit MICROSECONDS = {1, "µs"};
const SUnit MILLISECONDS = {2, "ms"};
const SUnit PER_SECOND = {1, "/s"};
const char* const SD_BUS = "sd-bus, no service";
const char* const PLAIN_C = "bare Qt, C";
const char* const BARE_QT = "bare Qt, timer";

// A benchmark is a row here, and a figure that the meter takes.
const SRatioRow ROWS[] = {
    {"start and stop a recording", eRecording,   MICROSECONDS, eLeastProcessing, "bare Qt", eAtMost, 1.25},
    {"start and stop a recording", eRecording,   MICROSECONDS, eSdBusProcessing, SD_BUS,    eNone,   0   },
    {"save a still image",         eStillImage,  MILLISECONDS, eLeastProcessing, PLAIN_C,   eAtMost, 1.30},
    {"idle, wake-ups",             eIdleWakeUps, PER_SECOND,   eLeastProcessing, BARE_QT,   eAtMost, 1.00},
    {"idle, processor time",       eIdleCpu,     MICROSECONDS, eLeastProcessing, BARE_QT,   eAtMost, 1.20},
};

void printUsage(std::ostream& rcStream)
{
    rcStream
        << "Usage: processing_bench [--rounds N]\n"
           "\n"
           "Measures recording, still images and the idle daemon beside the least that does the same, on a "
           "bus and a virtual board of its own.\n"
           "\n"
           "  --rounds N  rounds of four and a half seconds, at least "
        << ROUNDS_MIN << "; default " << SOptions().iRounds
        << "\n"
           "  --help      this text\n"
           "\n"
           "Exit status: 0 measured, whatever came out; 1 not measured; 2 wrong options.\n";
}

// The first of the sides, each time another one to begin with.
void takeTurns(CProcessingMeter& rcMeter, EProcessingFigure eFigure, int iSides, int iRound,
               CRoundStatistics::CRound& rcRound)
{
    for (int i = 0; i < iSides; ++i) {
        CInterruption::check();
        const auto eSide = static_cast<EProcessingSide>((iRound + i) % iSides);
        rcRound[eSide][eFigure] = rcMeter.measure(eSide, eFigure);
    }
}

CRoundStatistics::CRound measureRound(CProcessingMeter& rcMeter, int iRound)
{
    CRoundStatistics::CRound cRound(PROCESSING_SIDES, CFigures(PROCESSING_FIGURES));
    takeTurns(rcMeter, eRecording, PROCESSING_SIDES, iRound, cRound);
    takeTurns(rcMeter, eStillImage, eSdBusProcessing, iRound, cRound);
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
    const std::vector<SBenchOption> cOptions = {
        roundsOption(sOptions.iRounds),
    };
    const int iStatus = parseOptions(iCount, ppszArguments, cOptions, printUsage);
    if (iStatus != -1)
        return iStatus;
    return runBench("processing_bench", [&sOptions] { measure(sOptions); });
}
