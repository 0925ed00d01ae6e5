#include "bench/BenchProgram.h"

#include "tests/support/CInterruption.h"

#include <charconv>
#include <cstring>
#include <exception>
#include <iostream>

#include <getopt.h>

SBenchOption numberOption(const char* pszName, int iMin, int iMax, int& riNumber)
{
    return {pszName, [iMin, iMax, &riNumber](const char* pszText) {
                const char* pszEnd = pszText + strlen(pszText);
                const auto [pszStop, eError] = std::from_chars(pszText, pszEnd, riNumber);
                return eError == std::errc() && pszStop == pszEnd && riNumber >= iMin && riNumber <= iMax;
            }};
}

SBenchOption roundsOption(int& riRounds)
{
    return numberOption("rounds", ROUNDS_MIN, ROUNDS_MAX, riRounds);
}

int parseOptions(int iCount, char** ppszArguments, const std::vector<SBenchOption>& rcOptions,
                 void (*pfnPrintUsage)(std::ostream&))
{
    const int HELP = 'h';
    const int FIRST = 256; // behind all characters, '?' among them
    std::vector<option> cOptions;
    cOptions.reserve(rcOptions.size() + 2);
    for (const SBenchOption& rsOption : rcOptions)
        cOptions.push_back(
            {rsOption.pszName, required_argument, nullptr, FIRST + static_cast<int>(cOptions.size())});
    cOptions.push_back({"help", no_argument, nullptr, HELP});
    cOptions.push_back({nullptr, 0, nullptr, 0});

    bool bGood = true;
    int iOption = 0;
    while ((iOption = getopt_long(iCount, ppszArguments, "", cOptions.data(), nullptr)) != -1) {
        if (iOption == HELP) {
            pfnPrintUsage(std::cout);
            return 0;
        }
        bGood =
            bGood && iOption >= FIRST && rcOptions[static_cast<std::size_t>(iOption - FIRST)].cTake(optarg);
    }
    if (bGood && optind == iCount)
        return -1;
    pfnPrintUsage(std::cerr);
    return 2;
}

int runBench(const char* pszProgram, const std::function<void()>& rcWork)
{
    CInterruption::install();
    try {
        rcWork();
    } catch (const CInterruption& rcInterruption) {
        return 128 + rcInterruption.signal();
    } catch (const std::exception& rcError) {
        std::cerr << pszProgram << ": " << rcError.what() << '\n';
        return 1;
    }
    return std::cout.flush() ? 0 : 1;
}

CRoundStatistics measureRounds(int iRounds, const std::function<CRoundStatistics::CRound(int)>& rcMeasure)
{
    CRoundStatistics cStatistics;
    for (int iRound = 0; iRound < WARM_UP_ROUNDS + iRounds; ++iRound) {
        CInterruption::check();
        const CRoundStatistics::CRound cRound = rcMeasure(iRound);
        if (iRound >= WARM_UP_ROUNDS)
            cStatistics.add(cRound);
    }
    return cStatistics;
}

void printRatios(const CRatioTable& rcTable, const std::string& rcRounds)
{
    std::cout << rcTable.text() << "\nMedians of " << rcRounds
              << "; the ratio is the median of the rounds' ratios.\n";
    printBuildWarning();
}

void printBuildWarning()
{
    if (strcmp(BENCH_BUILD_TYPE, "Release") != 0)
        std::cout << "This is no release build: its ratios say nothing about what is shipped.\n";
}
