/* What the daemon costs its clients, as ratios to references that run beside it.
 *
 * Microseconds belong to a machine, ratios to the daemon. So the daemon, the same interface in Qt with
 * nothing behind it, and the same in C take turns in short rounds, on one bus, for one client. */
#include "bench/CInterruption.h"
#include "bench/CRoundMeter.h"
#include "bench/CRoundStatistics.h"
#include "bench/CScene.h"
#include "bench/CTable.h"

#include <charconv>
#include <cstring>
#include <exception>
#include <iomanip>
#include <iostream>
#include <sstream>

#include <getopt.h>

namespace
{

const int WARM_UP_ROUNDS = 5;
const int ROUNDS_MIN = 40;
const int ROUNDS_MAX = 100000;
const int CALLS_MIN = 10;
const int CALLS_MAX = 10000;

struct SOptions {
    int iRounds = 60;
    int iCalls = 250;
};

// What a goal demands of a ratio.
enum EGoal { eNone, eAtMost, eAtLeast };

struct SUnit {
    int iDecimals;
    const char* pszUnit;
};

// In the order of EFigure.
const SUnit UNITS[FIGURES] = {
    {1, "µs"},
    {1, "µs"},
    {0, "/s" },
};

// In the order of EService.
const char* const NAMES[SERVICES] = {"haldend", "bare Qt", "sd-bus in C"};

struct SRow {
    const char* pszWhat;
    EFigure eFigure;
    EService eReference;
    EGoal eGoal;
    double dLimit;
};

// A benchmark is a row here, and a figure that the meter takes.
const SRow ROWS[] = {
    {"getter, round trip",          eGetterLatency, eBareQt, eAtMost,  1.10},
    {"getter, processor time",      eGetterCpu,     eBareQt, eAtMost,  1.15},
    {"one-way setter with a store", eOneWayRate,    eBareQt, eAtLeast, 0.90},
    {"getter, round trip",          eGetterLatency, eSdBus,  eNone,    0   },
    {"getter, processor time",      eGetterCpu,     eSdBus,  eNone,    0   },
    {"one-way setter with a store", eOneWayRate,    eSdBus,  eNone,    0   },
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

bool parseNumber(const char* pszText, int iMin, int iMax, int& riNumber)
{
    const char* pszEnd = pszText + strlen(pszText);
    const auto [pszStop, eError] = std::from_chars(pszText, pszEnd, riNumber);
    return eError == std::errc() && pszStop == pszEnd && riNumber >= iMin && riNumber <= iMax;
}

// Gives the status to end with, or -1 to go on.
int parseOptions(int iCount, char** ppszArguments, SOptions& rsOptions)
{
    const option sOptions[] = {
        {"rounds", required_argument, nullptr, 'r'},
        {"calls",  required_argument, nullptr, 'c'},
        {"help",   no_argument,       nullptr, 'h'},
        {nullptr,  0,                 nullptr, 0  }
    };
    bool bGood = true;
    int iOption = 0;
    while ((iOption = getopt_long(iCount, ppszArguments, "", sOptions, nullptr)) != -1) {
        switch (iOption) {
        case 'r':
            bGood = bGood && parseNumber(optarg, ROUNDS_MIN, ROUNDS_MAX, rsOptions.iRounds);
            break;
        case 'c':
            bGood = bGood && parseNumber(optarg, CALLS_MIN, CALLS_MAX, rsOptions.iCalls);
            break;
        case 'h':
            printUsage(std::cout);
            return 0;
        default:
            bGood = false;
        }
    }
    if (bGood && optind == iCount)
        return -1;
    printUsage(std::cerr);
    return 2;
}

CRoundStatistics measure(const SOptions& rsOptions)
{
    CScene cScene;
    CRoundMeter cMeter(cScene, rsOptions.iCalls);
    CRoundStatistics cStatistics;
    for (int iRound = 0; iRound < WARM_UP_ROUNDS + rsOptions.iRounds; ++iRound) {
        CRoundStatistics::CRound cRound = {};
        for (int i = 0; i < SERVICES; ++i) {
            CInterruption::check();
            const auto eService = static_cast<EService>((iRound + i) % SERVICES);
            cRound[eService] = cMeter.measure(eService);
        }
        if (iRound >= WARM_UP_ROUNDS)
            cStatistics.add(cRound);
    }
    return cStatistics;
}

std::string number(double dValue, int iDecimals)
{
    std::ostringstream cText;
    cText << std::fixed << std::setprecision(iDecimals) << dValue;
    return cText.str();
}

std::string figure(const CRoundStatistics& rcStatistics, EService eService, EFigure eFigure)
{
    const SUnit& rsUnit = UNITS[eFigure];
    return number(rcStatistics.median(eService, eFigure), rsUnit.iDecimals) + " " + rsUnit.pszUnit;
}

CTable::CRow tableRow(const SRow& rsRow, const CRoundStatistics& rcStatistics)
{
    const double dRatio = rcStatistics.medianRatio(eDaemon, rsRow.eReference, rsRow.eFigure);
    CTable::CRow cRow = {rsRow.pszWhat, figure(rcStatistics, eDaemon, rsRow.eFigure),
                         figure(rcStatistics, rsRow.eReference, rsRow.eFigure) + " " +
                             NAMES[rsRow.eReference],
                         number(dRatio, 2)};
    if (rsRow.eGoal == eNone) {
        cRow.insert(cRow.end(), {"-", "-"});
        return cRow;
    }
    const bool bMet = rsRow.eGoal == eAtMost ? dRatio <= rsRow.dLimit : dRatio >= rsRow.dLimit;
    cRow.push_back((rsRow.eGoal == eAtMost ? "≤ " : "≥ ") + number(rsRow.dLimit, 2));
    cRow.push_back(bMet ? "met" : "MISSED");
    return cRow;
}

void print(const CRoundStatistics& rcStatistics, const SOptions& rsOptions)
{
    CTable cTable({"what", "ours", "reference", "ratio", "goal", "result"});
    for (const SRow& rsRow : ROWS)
        cTable.add(tableRow(rsRow, rcStatistics));
    std::cout << cTable.text() << "\nMedians of " << rsOptions.iRounds << " rounds of " << rsOptions.iCalls
              << " getters a service; the ratio is the median of the rounds' ratios.\n";
    if (strcmp(BENCH_BUILD_TYPE, "Release") != 0)
        std::cout << "This is no release build: its ratios say nothing about the shipped daemon.\n";
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    const int iStatus = parseOptions(iCount, ppszArguments, sOptions);
    if (iStatus != -1)
        return iStatus;

    CInterruption::install();
    try {
        print(measure(sOptions), sOptions);
    } catch (const CInterruption& rcInterruption) {
        return 128 + rcInterruption.signal();
    } catch (const std::exception& rcError) {
        std::cerr << "haldend_bench: " << rcError.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}
