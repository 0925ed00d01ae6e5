/* What the daemon costs the system: how long it takes to be there, and the memory that it then has, as ratios to the
 * same interface in Qt with nothing behind it.
 *
 * Both are started and ended in turns, on one bus and one board. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CStartupMeter.h"

#include <iostream>

namespace
{

const EService SIDES[] = {eDaemon, eBareQt};
const int SIDE_COUNT = 2;

struct SOptions {
    int iRounds = 60;
};

// A benchmark is a row here, and a figure that the meter takes.
const SUnit MILLISECONDS = {1, "ms"};
const SUnit KILOBYTES = {0, "kB"};
const char* const BARE_QT = "bare Qt";

const SRatioRow ROWS[] = {
    {"start, until the bus name",      eStartTime,     MILLISECONDS, eBareQt, BARE_QT, eAtMost, 1.50},
    {"memory, idle",                   eResident,      KILOBYTES,    eBareQt, BARE_QT, eAtMost, 1.20},
    {"memory, idle, with the board's", eResidentBoard, KILOBYTES,    eBareQt, BARE_QT, eNone,   0   },
};

void printUsage(std::ostream& rcStream)
{
    rcStream << "Usage: startup_bench [--rounds N]\n"
                "\n"
                "Measures start and memory of the daemon beside its reference, on a bus and a virtual board "
                "of its "
                "own.\n"
                "\n"
                "  --rounds N  starts of each, at least "
             << ROUNDS_MIN << "; default " << SOptions().iRounds
             << "\n"
                "  --help      this text\n"
                "\n"
                "Exit status: 0 measured, whatever came out; 1 not measured; 2 wrong options.\n";
}

void measure(const SOptions& rsOptions)
{
    CStage cStage;
    CStartupMeter cMeter(cStage);
    const CRoundStatistics cStatistics = measureRounds(rsOptions.iRounds, [&cMeter](int iRound) {
        CRoundStatistics::CRound cRound(SERVICES);
        for (int i = 0; i < SIDE_COUNT; ++i) {
            const EService eService = SIDES[(iRound + i) % SIDE_COUNT];
            cRound[eService] = cMeter.measure(eService);
        }
        return cRound;
    });
    printRatios(CRatioTable(cStatistics, ROWS), std::to_string(rsOptions.iRounds) + " starts of each");
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

    return runBench("startup_bench", [&sOptions] { measure(sOptions); });
}
