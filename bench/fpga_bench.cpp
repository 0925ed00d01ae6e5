/* What the overlay library adds to the device's own transfers, as ratios to the least that moves the same bytes.
 *
 * Library and references take turns in this process, on one device. The device is a virtual board's, and that
 * takes its library preloaded: so the program makes a board and starts itself again on it. */
#include "bench/BenchProgram.h"
#include "bench/COverlayMeter.h"
#include "bench/CProcess.h"
#include "bench/CRatioTable.h"
#include "bench/CTemporaryDirectory.h"
#include "bench/CVirtualBoard.h"
#include "tests/support/CInterruption.h"

#include <filesystem>
#include <iostream>
#include <string>

#include <unistd.h>

namespace
{

struct SOptions {
    int iRounds = 200;
    std::string cBoard;
};

const SUnit MICROSECONDS = {1, "µs"};
const char* const COPY = "one memcpy, transfer";
const char* const SWAP = "swap, transfer";
const char* const CELL = "seek, write a cell";

// A benchmark is a row here, and an operation of the meter.
const SRatioRow ROWS[] = {
    {"get_video_image_from_fpga",               eFrameRead,       MICROSECONDS, eLeast, COPY, eAtMost, 2.0 },
    {"write_video_image_to_fpga",               eFrameWrite,      MICROSECONDS, eLeast, COPY, eAtMost, 2.0 },
    {"load_font, another set",                  eGlyphSet,        MICROSECONDS, eLeast, SWAP, eAtMost, 1.3 },
    {"drawText, 53 cells",                      eTextLine,        MICROSECONDS, eLeast, CELL, eAtMost, 1.25},
    {"get_video_image_from_fpga, fresh memory", eFrameReadFresh,  MICROSECONDS, eLeast, COPY, eNone,   0   },
    {"write_video_image_to_fpga, fresh memory", eFrameWriteFresh, MICROSECONDS, eLeast, COPY, eNone,   0   },
};

void printUsage(std::ostream& rcStream)
{
    rcStream
        << "Usage: fpga_bench [--rounds N] [--board DIR]\n"
           "\n"
           "Measures the overlay library beside the least that moves the same bytes, on a virtual board.\n"
           "\n"
           "  --rounds N   interleaved rounds, at least "
        << ROUNDS_MIN << "; default " << SOptions().iRounds
        << "\n"
           "  --board DIR  the board on which this process runs, its library preloaded and HALDEN_BOARD "
           "set;\n"
           "               its image and glyph memory is overwritten. Default: a board made for the run\n"
           "  --help       this text\n"
           "\n"
           "Exit status: 0 measured, whatever came out; 1 not measured; 2 wrong options.\n";
}

CRoundStatistics::CRound measureRound(COverlayMeter& rcMeter, int iRound)
{
    CRoundStatistics::CRound cRound(SIDES, CFigures(OPERATIONS));
    for (int iOperation = 0; iOperation < OPERATIONS; ++iOperation) {
        for (int i = 0; i < SIDES; ++i) {
            CInterruption::check();
            const auto eSide = static_cast<ESide>((iRound + i) % SIDES);
            const auto eOperation = static_cast<EOperation>(iOperation);
            cRound[eSide][eOperation] = rcMeter.measure(eSide, eOperation);
        }
    }
    return cRound;
}

void measure(const SOptions& rsOptions)
{
    COverlayMeter cMeter(rsOptions.cBoard + "/fpgamem");
    const CRoundStatistics cStatistics =
        measureRounds(rsOptions.iRounds, [&cMeter](int iRound) { return measureRound(cMeter, iRound); });
    printRatios(CRatioTable(cStatistics, ROWS), std::to_string(rsOptions.iRounds) + " rounds");
}

void measureOnNewBoard(const SOptions& rsOptions)
{
    const CTemporaryDirectory cDirectory;
    const CVirtualBoard cBoard(cDirectory);
    CProcess::SStart cStart;
    cStart.cArguments = {std::filesystem::read_symlink("/proc/self/exe"), "--board", cBoard.path(),
                         "--rounds", std::to_string(rsOptions.iRounds)};
    cStart.cEnvironment = cBoard.environment();
    cStart.cLogFile = cDirectory.file("fpga_bench.log");
    cStart.iStandardOutput = STDOUT_FILENO;
    const CProcess cMeasuring(cStart);
    cMeasuring.waitFor(-1, -1);
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    const std::vector<SBenchOption> cOptions = {
        roundsOption(sOptions.iRounds),
        {"board",
                            [&sOptions](const char* pszText) {
             sOptions.cBoard = pszText;
             return true;
         }},
    };
    const int iStatus = parseOptions(iCount, ppszArguments, cOptions, printUsage);
    if (iStatus != -1)
        return iStatus;
    return runBench("fpga_bench", [&sOptions] {
        sOptions.cBoard.empty() ? measureOnNewBoard(sOptions) : measure(sOptions);
    });
}
