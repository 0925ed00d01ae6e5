/* SPDX-License-Identifier: MIT */
/* What the overlay library adds to the device's own transfers, as ratios to the least that moves the same bytes.
 *
 * Library and references take turns in this process, on one device. The device is a virtual board's, and that
 * takes its library preloaded: so the program makes a board and starts itself again on it. */
#include "bench/BenchProgram.h"
#include "bench/COverlayMeter.h"
#include "bench/CRatioTable.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CInterruption.h"
#include "tests/support/CTemporaryBoard.h"

#include <stdexcept>
#include <string>

namespace
{

struct SOptions {
    int iRounds = 200;
    QString cBoard;
};

const int PAUSE_MS = 100; // between two looks for an interruption

const SUnit MICROSECONDS = {1, "µs"};
const char* const COPY = "one memcpy, transfer";
const char* const SWAP = "swap, transfer";
const char* const CELL = "seek, write a cell";

// A benchmark is a row here, and an operation of the meter.
const SRatioRow ROWS[] = {
    {"get_video_image_from_fpga", eFrameRead,  MICROSECONDS, eLeast, COPY, eAtMost, 2.0 },
    {"write_video_image_to_fpga", eFrameWrite, MICROSECONDS, eLeast, COPY, eAtMost, 2.0 },
    {"load_font, another set",    eGlyphSet,   MICROSECONDS, eLeast, SWAP, eAtMost, 1.3 },
    {"drawText, 53 cells",        eTextLine,   MICROSECONDS, eLeast, CELL, eAtMost, 1.25},
};

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
    COverlayMeter cMeter(rsOptions.cBoard.toStdString() + "/" BOARD_FPGA);
    const CRoundStatistics cStatistics =
        measureRounds(rsOptions.iRounds, [&cMeter](int iRound) { return measureRound(cMeter, iRound); });
    printRatios(CRatioTable(cStatistics, ROWS), std::to_string(rsOptions.iRounds) + " rounds");
}

void measureOnNewBoard(const SOptions& rsOptions)
{
    CTemporaryBoard cBoard;
    if (!cBoard.make())
        throw std::runtime_error(cBoard.error().toStdString());
    const QString cDirectory = cBoard.board().directory();
    QProcessEnvironment cEnvironment;
    cEnvironment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    CTemporaryBoard::addTo(cEnvironment, cDirectory);
    CChildProcess cMeasuring;
    cMeasuring.setProcessEnvironment(cEnvironment);
    cMeasuring.setProcessChannelMode(QProcess::ForwardedChannels);
    cMeasuring.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--board"), cDirectory, QStringLiteral("--rounds"),
                      QString::number(rsOptions.iRounds)});
    while (cMeasuring.state() != QProcess::NotRunning && !cMeasuring.waitForFinished(PAUSE_MS))
        CInterruption::check();
    if (cMeasuring.exitStatus() != QProcess::NormalExit || cMeasuring.exitCode() != 0)
        throw std::runtime_error("not measured");
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    SOptions sOptions;
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral(
            "Measures the overlay library beside the least that moves the same bytes, on a virtual board."));
    cProgram.addNumber(QStringLiteral("rounds"), ROUNDS_MIN, ROUNDS_MAX, sOptions.iRounds,
                       QStringLiteral("interleaved rounds"));
    cProgram.addText(
        QStringLiteral("board"), QStringLiteral("DIR"), sOptions.cBoard,
        QStringLiteral("the board on which this process runs, its library preloaded and HALDEN_BOARD set; "
                       "its image and glyph memory is overwritten. Default: a board made for the run"));
    return cProgram.run(
        [&sOptions] { sOptions.cBoard.isEmpty() ? measureOnNewBoard(sOptions) : measure(sOptions); });
}
