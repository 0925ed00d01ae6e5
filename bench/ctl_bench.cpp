/* What haldenctl costs a script: the time of one command, as a ratio to busctl, and of a thousand from a file. */
#include "bench/BenchProgram.h"
#include "bench/CClientMeter.h"
#include "bench/CRatioTable.h"

#include <iostream>

namespace
{

struct SOptions {
    int iRounds = 60;
};

// A benchmark is a row here, and a figure that the meter takes.
const SUnit MILLISECONDS = {1, "ms"};

const SRatioRow ROWS[] = {
    {"haldenctl status",       eOneCall, MILLISECONDS, eBusctl, "busctl call",          eAtMost, 2.00},
    {"1000 texts from a file", eTexts,   MILLISECONDS, eBusctl, "sd-bus, call by call", eNone,   0   },
};

void printUsage(std::ostream& rcStream)
{
    rcStream << "Usage: ctl_bench [--rounds N]\n"
                "\n"
                "Measures haldenctl beside busctl, with a daemon, a bus and a virtual board of its own.\n"
                "\n"
                "  --rounds N  runs of each, at least "
             << ROUNDS_MIN << "; default " << SOptions().iRounds
             << "\n"
                "  --help      this text\n"
                "\n"
                "Exit status: 0 measured, whatever came out; 1 not measured; 2 wrong options.\n";
}

void measure(const SOptions& rsOptions)
{
    CStage cStage;
    CClientMeter cMeter(cStage);
    const CRoundStatistics cStatistics = measureRounds(rsOptions.iRounds, [&cMeter](int iRound) {
        CRoundStatistics::CRound cRound(CLIENTS);
        for (int i = 0; i < CLIENTS; ++i) {
            const auto eClient = static_cast<EClient>((iRound + i) % CLIENTS);
            cRound[eClient] = cMeter.measure(eClient);
        }
        return cRound;
    });
    printRatios(CRatioTable(cStatistics, ROWS), std::to_string(rsOptions.iRounds) + " runs of each");
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

    return runBench("ctl_bench", [&sOptions] { measure(sOptions); });
}
