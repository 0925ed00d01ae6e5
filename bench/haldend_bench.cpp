/* What the daemon costs its clients, as ratios to references that run beside it.
 *
 * Microseconds belong to a machine, ratios to the daemon. So the daemon, the same interface in Qt with
 * nothing behind it, and the same in C take turns in short rounds, on one bus, for one client. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CRoundMeter.h"
#include "bench/CScene.h"

#include <iostream>

namespace
{

const int CALLS_MIN = 10;
const int CALLS_MAX = 10000;

struct SOptions {
    int iRounds = 60;
    int iCalls = 250;
};

// A benchmark is a row here, and a figure that the meter takes.
const SUnit MICROSECONDS = {1, "µs"};
const SUnit PER_SECOND = {0, "/s"};
const char* const BARE_QT = "bare Qt";
const char* const SD_BUS = "sd-bus in C";

const SRatioRow ROWS[] = {
    {"getter, round trip",          eGetterLatency, MICROSECONDS, eBareQt, BARE_QT, eAtMost,  1.10},
    {"getter, processor time",      eGetterCpu,     MICROSECONDS, eBareQt, BARE_QT, eAtMost,  1.15},
    {"one-way setter with a store", eOneWayRate,    PER_SECOND,   eBareQt, BARE_QT, eAtLeast, 0.90},
    {"getter, round trip",          eGetterLatency, MICROSECONDS, eSdBus,  SD_BUS,  eNone,    0   },
    {"getter, processor time",      eGetterCpu,     MICROSECONDS, eSdBus,  SD_BUS,  eNone,    0   },
    {"one-way setter with a store", eOneWayRate,    PER_SECOND,   eSdBus,  SD_BUS,  eNone,    0   },
};

void printUsage(std::ostream& rcStream)
{
    rcStream << "Usage: haldend_bench [--rounds N] [--calls N]\n"
                "\n"
                "Measures the daemon beside its references, on a bus and a virtual board of its own.\n"
                "\n"
                "  --rounds N  interleaved rounds, at least "
             << ROUNDS_MIN << "; default " << SOptions().iRounds
             << "\n"
                "  --calls N   getters a round and service, and four times as many one-way calls;\n"
                "              at least "
             << CALLS_MIN << "; default " << SOptions().iCalls
             << "\n"
                "  --help      this text\n"
                "\n"
                "Exit status: 0 measured, whatever came out; 1 not measured; 2 wrong options.\n";
}

CRoundStatistics measure(const SOptions& rsOptions)
{
    CScene cScene;
    CRoundMeter cMeter(cScene, rsOptions.iCalls);
    return measureRounds(rsOptions.iRounds, [&cMeter](int iRound) {
        CRoundStatistics::CRound cRound(SERVICES);
        for (int i = 0; i < SERVICES; ++i) {
            const auto eService = static_cast<EService>((iRound + i) % SERVICES);
            cRound[eService] = cMeter.measure(eService);
        }
        return cRound;
    });
}

void print(const CRoundStatistics& rcStatistics, const SOptions& rsOptions)
{
    printRatios(CRatioTable(rcStatistics, ROWS), std::to_string(rsOptions.iRounds) + " rounds of " +
                                                     std::to_string(rsOptions.iCalls) + " getters a service");
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    const std::vector<SBenchOption> cOptions = {
        roundsOption(sOptions.iRounds),
        numberOption("calls", CALLS_MIN, CALLS_MAX, sOptions.iCalls),
    };
    const int iStatus = parseOptions(iCount, ppszArguments, cOptions, printUsage);
    if (iStatus != -1)
        return iStatus;

    return runBench("haldend_bench", [&sOptions] { print(measure(sOptions), sOptions); });
}
