#include "bench/BenchProgram.h"

#include "bench/CInterruption.h"

#include <charconv>
#include <cstring>
#include <exception>
#include <iostream>

bool parseNumber(const char* pszText, int iMin, int iMax, int& riNumber)
{
    const char* pszEnd = pszText + strlen(pszText);
    const auto [pszStop, eError] = std::from_chars(pszText, pszEnd, riNumber);
    return eError == std::errc() && pszStop == pszEnd && riNumber >= iMin && riNumber <= iMax;
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

void printBuildWarning()
{
    if (strcmp(BENCH_BUILD_TYPE, "Release") != 0)
        std::cout << "This is no release build: its ratios say nothing about what is shipped.\n";
}
