/* SPDX-License-Identifier: MIT */
/* What the daemon costs its clients, as ratios to a reference that runs beside it.
 *
 * Microseconds belong to a machine, ratios to the daemon. So the daemon and the same interface in Qt with nothing
 * behind it take turns in short rounds, on one bus, for one client. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CRoundMeter.h"

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

const SRatioRow ROWS[] = {
    {"getter, round trip",          eGetterLatency, MICROSECONDS, eBareQt, BARE_QT, eAtMost,  1.00},
    {"getter, processor time",      eGetterCpu,     MICROSECONDS, eBareQt, BARE_QT, eAtMost,  0.92},
    {"one-way setter with a store", eOneWayRate,    PER_SECOND,   eBareQt, BARE_QT, eAtLeast, 1.05},
};

CRoundStatistics measure(const SOptions& rsOptions)
{
    CRoundMeter cMeter(rsOptions.iCalls);
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
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral("Measures the daemon beside its reference, on a bus and a virtual board of its own."));
    cProgram.addNumber(QStringLiteral("rounds"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("interleaved rounds"));
    cProgram.addNumber(QStringLiteral("calls"), CALLS_MIN, CALLS_MAX, sOptions.iCalls,
                       QStringLiteral("getters a round and service, and four times as many one-way calls"));
    return cProgram.run([&sOptions] { print(measure(sOptions), sOptions); });
}
