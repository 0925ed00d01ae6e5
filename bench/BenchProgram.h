/* SPDX-License-Identifier: MIT */
/* What the programs of the bench have in common as programs: how they read their options, take their rounds, and
 * end. */
#ifndef HALDEND_BENCH_BENCHPROGRAM_H
#define HALDEND_BENCH_BENCHPROGRAM_H

#include "bench/CRatioTable.h"
#include "bench/CRoundStatistics.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <functional>
#include <string>

const int WARM_UP_ROUNDS = 5; // measured, and dropped

// Fewer rounds don't give a ratio to rely on.
const int ROUNDS_MIN = 40;
const int ROUNDS_MAX = 100000;

/// The program itself: its options and its end.
class CBenchProgram
{
public:
    /// rcPurpose: a sentence for --help.
    CBenchProgram(int& riCount, char** ppszArguments, const QString& rcPurpose);

    /// An option for a decimal number from iMin to iMax, with nothing behind it. riNumber holds the default.
    void addNumber(const QString& rcName, int iMin, int iMax, int& riNumber, const QString& rcDescription);

    /// An option for a text.
    void addText(const QString& rcName, const QString& rcValueName, QString& rcText,
                 const QString& rcDescription);

    /// Reads the options, does the work and returns the exit status: 0 when it is done and all of it printed, 1 after
    /// an exception, which is told on standard error, 2 for wrong options, and 128 + n after the signal n.
    int run(const std::function<void()>& rcWork);

private:
    struct SOption {
        QString cName;
        std::function<bool(const QString&)> fnTake; ///< false if the value is of no use
    };

    bool takeOptions() const;

    QCoreApplication m_cApplication;
    QCommandLineParser m_cParser;
    std::vector<SOption> m_cOptions;
};

/// The rounds that are measured, and those of warming up before them, which are dropped. The function gets the number of
/// the round. Looks for an interruption before each.
CRoundStatistics measureRounds(int iRounds, const std::function<CRoundStatistics::CRound(int)>& rcMeasure);

/// Prints the table, what its figures are the medians of, such as "40 rounds", and a warning if this isn't the build
/// that is shipped.
void printRatios(const CRatioTable& rcTable, const std::string& rcRounds);

/// Prints the warning alone.
void warnOfOtherBuilds();

#endif
