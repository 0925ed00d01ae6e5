/* SPDX-License-Identifier: MIT */
/* What texts cost over the bus, as ratios to the same interface in Qt with nothing behind it but the device: strings for
 * a visible text, and how creation and destruction grow with the number of texts.
 *
 * Both services are at work on one bus and one board, and measured in turns. */
#include "bench/BenchProgram.h"
#include "bench/CRatioTable.h"
#include "bench/CTextMeter.h"
#include "tests/support/CInterruption.h"

#include <string>

namespace
{

// A round takes ten seconds, most of it for the largest number of texts, each of which is a call that is measured.
const int ROUNDS = 5;

struct SOptions {
    int iStrings = 0;
};

const SUnit PER_SECOND = {0, "/s"};
const SUnit MICROSECONDS = {1, "µs"};
const char* const BARE_QT = "bare Qt";

// A benchmark is a row here, and a figure that the meter takes.
const SRatioRow ROWS[] = {
    {"strings of 20 cells, one way", eStringRate, PER_SECOND,   eBareTexts, BARE_QT,    eAtLeast, 0.95},
    {"create a text, of 100",        eCreateFew,  MICROSECONDS, eBareTexts, BARE_QT,    eAtMost,  1.15},
    {"create a text, of 1,000",      eCreateSome, MICROSECONDS, eBareTexts, BARE_QT,    eAtMost,  1.15},
    {"create a text, of 10,000",     eCreateMany, MICROSECONDS, eBareTexts, BARE_QT,    eAtMost,  1.15},
    {"create a text, of 65,535",     eCreateAll,  MICROSECONDS, eBareTexts, BARE_QT,    eAtMost,  1.50},
    {"destroy a text, of 10,000",    eDestroy,    MICROSECONDS, eBareTexts, "of 1,000", eAtMost,  2.00},
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

// Strings alone: rounds of some milliseconds.
void measureStrings(int iRounds)
{
    CTextMeter cMeter;
    const SRatioRow asRows[] = {ROWS[eStringRate]};
    const CRoundStatistics cStatistics = measureRounds(iRounds, [&cMeter](int iRound) {
        CRoundStatistics::CRound cRound(TEXT_SIDES, CFigures(TEXT_FIGURES));
        for (int i = 0; i < TEXT_SIDES; ++i) {
            const auto eSide = static_cast<ETextSide>((iRound + i) % TEXT_SIDES);
            cRound[eSide][eStringRate] = cMeter.measure(eSide, eStringRate);
        }
        return cRound;
    });
    printRatios(CRatioTable(cStatistics, asRows), std::to_string(iRounds) + " rounds");
}

void measure(const SOptions& rsOptions)
{
    if (rsOptions.iStrings > 0)
        return measureStrings(rsOptions.iStrings);
    CTextMeter cMeter;
    printRatios(CRatioTable(measureRatios(cMeter), ROWS), std::to_string(ROUNDS) + " rounds");
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral("Measures texts over the bus beside a reference, on a bus and a virtual "
                       "board of its own."));
    cProgram.addNumber(QStringLiteral("strings"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iStrings,
                       QStringLiteral("rounds of strings alone"));
    return cProgram.run([&sOptions] { measure(sOptions); });
}
