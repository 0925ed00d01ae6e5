/* SPDX-License-Identifier: MIT */
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
    {"1000 texts from a file", eTexts,   MILLISECONDS, eBusctl, "sd-bus, call by call", eAtMost, 1.00},
};

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
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral(
            "Measures haldenctl beside busctl, with a daemon, a bus and a virtual board of its own."));
    cProgram.addNumber(QStringLiteral("rounds"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("runs of each"));
    return cProgram.run([&sOptions] { measure(sOptions); });
}
