/* What texts cost over the bus, as ratios to the same interface in Qt with nothing behind it but the device: strings for
 * a visible text, and how creation and destruction grow with the number of texts.
 *
 * Both services are at work on one bus and one board, and measured in turns. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CTextMeter.h"
#include "tests/support/CInterruption.h"

#include <iostream>
#include <string>

namespace
{

// A round takes ten seconds, most of it for the largest number of texts, each of which is a call that is measured.
const int ROUNDS = 5;

const SUnit PER_SECOND = {0, "/s"};
const SUnit MICROSECONDS = {1, "µs"};
const char* const BARE_QT = "bare Qt";

// A benchmark is a row here, and a figure that the meter takes.
const SRatioRow ROWS[] = {
    {"strings of 20 cells, one way", eStringRate, PER_SECOND,   eBareTexts, BARE_QT, eAtLeast, 0.85},
    {"create a text, of 100",        eCreateFew,  MICROSECONDS, eBareTexts, BARE_QT, eAtMost,  1.15},
    {"create a text, of 1,000",      eCreateSome, MICROSECONDS, eBareTexts, BARE_QT, eAtMost,  1.15},
    {"create a text, of 10,000",     eCreateMany, MICROSECONDS, eBareTexts, BARE_QT, eAtMost,  1.15},
    {"create a text, of 65,535",     eCreateAll,  MICROSECONDS, eBareTexts, BARE_QT, eAtMost,  1.50},
};

CRoundStatistics measureRatios(CTextMeter& rcMeter)
{
    CRoundStatistics cStatistics;
    for (int iRound = 0; iRound < ROUNDS; ++iRound) {
        CRoundStatistics::CRound cRound(TEXT_SIDES, CFigures(TEXT_FIGURES));
        for (int iFigure = 0; iFigure < TEXT_FIGURES; ++iFigure)
            for (int i = 0; i < TEXT_SIDES; ++i) {
                CInterruption::check();
                const auto eSide = static_cast<ETextSide>((iRound + i) % TEXT_SIDES);
                cRound[eSide][static_cast<std::size_t>(iFigure)] =
                    rcMeter.measure(eSide, static_cast<ETextFigure>(iFigure));
            }
        cStatistics.add(cRound);
    }
    return cStatistics;
}

void printGrowth(CTextMeter& rcMeter)
{
    std::cout << "\nTo destroy all texts at once, microseconds a text:\n";
    for (const int iTexts : TEXT_COUNTS) {
        CInterruption::check();
        std::cout << "  " << iTexts << " texts: hidden " << rcMeter.destroy(iTexts, false) << ", visible "
                  << rcMeter.destroy(iTexts, true) << std::endl;
    }
}

void measure()
{
    CTextMeter cMeter;
    const CRoundStatistics cStatistics = measureRatios(cMeter);
    std::cout << CRatioTable(cStatistics, ROWS).text() << "\nMedians of " << ROUNDS
              << " rounds; the ratio is the median of the rounds' ratios.\n"
              << std::flush;
    printGrowth(cMeter);
    printBuildWarning();
}

} // namespace

int main(int iCount, char** /*ppszArguments*/)
{
    if (iCount > 1) {
        std::cerr << "Usage: text_bench\n";
        return 2;
    }
    return runBench("text_bench", measure);
}
