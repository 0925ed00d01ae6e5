/* What the programs of the bench have in common as programs: how they read their options, take their rounds, and
 * end. */
#ifndef HALDEND_BENCH_BENCHPROGRAM_H
#define HALDEND_BENCH_BENCHPROGRAM_H

#include "bench/CRatioTable.h"
#include "bench/CRoundStatistics.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

const int WARM_UP_ROUNDS = 5; // measured, and dropped

// Fewer rounds don't give a ratio to rely on.
const int ROUNDS_MIN = 40;
const int ROUNDS_MAX = 100000;

/// An option with an argument, and what takes it: false if it is of no use.
struct SBenchOption {
    const char* pszName;
    std::function<bool(const char*)> cTake;
};

/// An option for a decimal number from iMin to iMax, with nothing behind it.
SBenchOption numberOption(const char* pszName, int iMin, int iMax, int& riNumber);

/// --rounds N.
SBenchOption roundsOption(int& riRounds);

/// Reads the options, and --help besides. Gives the status to end with, or -1 to go on.
int parseOptions(int iCount, char** ppszArguments, const std::vector<SBenchOption>& rcOptions,
                 void (*pfnPrintUsage)(std::ostream&));

/// Does the work and returns the exit status: 0 when it is done and all of it printed, 1 after an exception,
/// which is told on standard error, and 128 + n after the signal n.
int runBench(const char* pszProgram, const std::function<void()>& rcWork);

/// The rounds that are measured, and those of warming up before them, which are dropped. The function gets the number of
/// the round. Looks for an interruption before each.
CRoundStatistics measureRounds(int iRounds, const std::function<CRoundStatistics::CRound(int)>& rcMeasure);

/// Prints the table, what its figures are the medians of, such as "40 rounds", and the warning below.
void printRatios(const CRatioTable& rcTable, const std::string& rcRounds);

/// Says below the table that it is worth nothing, if this isn't the build that is shipped.
void printBuildWarning();

#endif
