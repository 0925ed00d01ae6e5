/* SPDX-License-Identifier: MIT */
/* What the daemon costs the system: how long it takes to be there, and the memory that it then has, as ratios to the
 * same interface in Qt with nothing behind it.
 *
 * Both are started and ended in turns, on one bus and one board. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CStartupMeter.h"

namespace
{

struct SOptions {
    int iRounds = 60;
};

// A benchmark is a row here, and a figure that the meter takes.
const SUnit MILLISECONDS = {1, "ms"};
const SUnit KILOBYTES = {0, "kB"};
const char* const BARE_QT = "bare Qt";

const SRatioRow ROWS[] = {
    {"start, until the bus name", eStartTime, MILLISECONDS, eBareQt, BARE_QT, eAtMost, 1.35},
    {"memory, idle",              eResident,  KILOBYTES,    eBareQt, BARE_QT, eAtMost, 1.05},
};

void measure(const SOptions& rsOptions)
{
    CStage cStage;
    CStartupMeter cMeter(cStage);
    const CRoundStatistics cStatistics = measureRounds(rsOptions.iRounds, [&cMeter](int iRound) {
        CRoundStatistics::CRound cRound(SERVICES);
        for (int i = 0; i < SERVICES; ++i) {
            const auto eService = static_cast<EService>((iRound + i) % SERVICES);
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
    CBenchProgram cProgram(iCount, ppszArguments,
                           QStringLiteral("Measures start and memory of the daemon beside its reference, on "
                                          "a bus and a virtual board of its own."));
    cProgram.addNumber(QStringLiteral("rounds"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("starts of each"));
    return cProgram.run([&sOptions] { measure(sOptions); });
}
