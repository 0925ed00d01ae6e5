/* SPDX-License-Identifier: MIT */
/* halden-tour: a private bus, a virtual board, the codec stand-in and the daemon, to be shown or to be tried. All of
 * it ends with the program. */
#include "board/tour/CRun.h"
#include "board/tour/CTour.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CInterruption.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace
{

const int INTERRUPTION_MS = 100; // between two looks for an interruption

const char* const USAGE = "Usage: halden-tour [--at DIR] [--verbose]\n"
                          "       halden-tour restart daemon|codec [--at DIR]\n"
                          "       halden-tour SCRIPT PICTURES\n"
                          "       halden-tour --version\n"
                          "\n"
                          "Starts the daemon on a virtual board, with a bus of its own, runs until Ctrl-C, "
                          "and prints what to try and what\n"
                          "happens. Board, bus and picture are in the folder DIR, and the board is there "
                          "again at the next start. Without\n"
                          "--at they are in /dev/shm/haldend-run-UID, and the board is new each time.\n"
                          "\n"
                          "  --verbose  what the programs say comes out as it is\n"
                          "  restart    starts one program of such a run again; the board stays as it is\n"
                          "\n"
                          "With SCRIPT the program carries out the script on a board of its own, puts the "
                          "pictures into the folder PICTURES,\n"
                          "which it empties first, and ends.\n";

// Into a pipe too each line goes at once: the daemon's own lines come in between.
void print(const QString& rcLine)
{
    std::puts(rcLine.toUtf8().constData());
    std::fflush(stdout);
}

void expect(bool bDone, const QString& rcWrong)
{
    CInterruption::check();
    if (!bDone)
        throw std::runtime_error(rcWrong.toStdString());
}

/// All that the daemon needs, and the daemon. What the programs say comes out of this one.
class CShow
{
public:
    CShow()
    {
        const bool bBus = m_cBus.start();
        expect(bBus, m_cBus.error());
        const bool bBoard = m_cBoard.make();
        expect(bBoard, m_cBoard.error());
        m_cCodec.useVideo();
        m_cCodec.process().setProcessChannelMode(QProcess::ForwardedChannels);
        expect(m_cCodec.start(busAddress(), board().directory()), notReady("halden-codec"));
        m_cDaemon.process().setProcessChannelMode(QProcess::ForwardedChannels);
        m_cDaemon.setBusAddress(busAddress());
        m_cDaemon.useBoard(board().directory());
        expect(m_cDaemon.startAndWaitForName(), notReady("haldend"));
    }

    QString busAddress() const { return m_cBus.address().section(QLatin1Char(','), 0, 0); }
    CBoard& board() { return m_cBoard.board(); }
    CDaemonProcess& daemon() { return m_cDaemon; }

private:
    static QString notReady(const char* pszProgram)
    {
        return QStringLiteral("%1 isn't ready; its messages are above").arg(QLatin1String(pszProgram));
    }

    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    CCodecProcess m_cCodec;
    CDaemonProcess m_cDaemon;
};

void carryOut(const QString& rcScript, const QString& rcPictures)
{
    const QVector<CTour::SStep> cSteps = CTour::read(rcScript);
    expect(!cSteps.isEmpty(), QStringLiteral("%1: no steps").arg(rcScript));
    QDir cPictures(rcPictures);
    expect(cPictures.removeRecursively() && cPictures.mkpath(QStringLiteral(".")),
           QStringLiteral("%1: can't be made").arg(rcPictures));
    CShow cShow;
    CTour cTour(cShow.daemon().client(), cShow.board(), cPictures.absolutePath(), print);
    for (const CTour::SStep& rsStep : cSteps) {
        const QString cWrong = cTour.carryOut(rsStep.cText);
        expect(cWrong.isEmpty(), QStringLiteral("%1:%2: %3").arg(rcScript).arg(rsStep.iLine).arg(cWrong));
    }
    print(QStringLiteral("\n== Pictures"));
    print(cTour.files().join(QLatin1Char('\n')));
    print(QStringLiteral("\n== Stopping the daemon"));
    expect(cShow.daemon().endBySignal(SIGTERM) && !cShow.daemon().crashed() && cShow.daemon().exitCode() == 0,
           QStringLiteral("haldend didn't end well"));
}

/// %1 is the folder of the run, %2 the picture, %3 the address of the live view.
const char* const WHAT_TO_TRY = R"(
== haldend runs on a virtual board; Ctrl-C ends it
Monitor:  %3
Picture:  %2 (follows the monitor)

In a second terminal:
  . %1/env

Try:
  haldenctl status
  haldenctl overlay show
  haldenctl text new "Manhole 17" --at 20,2 --color yellow,navy
  haldenctl message "Hello" --at 20,12 --seconds 5
  haldenctl display size 360 288
  haldenctl display position 300 200
  haldenctl record start %1/film.ts
  haldenctl record stop
  haldenctl image save %1/still.bmp --wait
  haldenctl doctor --register-files %1/board/cnfs
  halden-board camera unplug
  haldenctl debug frame-generator on
  halden-board registers --changed
  haldenctl --help

What happens:)";

struct SOptions {
    QString cAt; ///< empty without --at
    bool bVerbose = false;
    QStringList cWords; ///< all that are no options
    bool bUsable = true;

    QString folder() const { return cAt.isEmpty() ? CRunFolder::defaultPath() : cAt; }
};

SOptions readOptions(QStringList cArguments)
{
    SOptions sOptions;
    while (!cArguments.isEmpty()) {
        const QString cWord = cArguments.takeFirst();
        if (cWord == QLatin1String("--at") && !cArguments.value(0).isEmpty())
            sOptions.cAt = cArguments.takeFirst();
        else if (cWord == QLatin1String("--verbose"))
            sOptions.bVerbose = true;
        else if (cWord.startsWith(QLatin1Char('-')))
            sOptions.bUsable = false;
        else
            sOptions.cWords << cWord;
    }
    return sOptions;
}

void stay(const SOptions& rsOptions)
{
    CRunFolder cFolder(rsOptions.folder(), !rsOptions.cAt.isEmpty());
    const bool bFolder = cFolder.open();
    expect(bFolder, cFolder.error());
    CRun cRun(cFolder, rsOptions.bVerbose);
    const bool bRuns = cRun.start();
    expect(bRuns, cRun.error());
    const bool bWritten = cFolder.writeEnvironment(
        cRun.busAddress(), {QFileInfo(QStringLiteral(HALDENCTL)).absolutePath(),
                            QFileInfo(QStringLiteral(HALDEND_BOARD_TOOL)).absolutePath()});
    expect(bWritten, cFolder.error());
    print(QString::fromUtf8(WHAT_TO_TRY).arg(cFolder.path(), cRun.picture(), cRun.liveView()));
    QTimer cTimer;
    QObject::connect(&cTimer, &QTimer::timeout, [] {
        if (CInterruption::caught() != 0)
            QCoreApplication::quit();
    });
    cTimer.start(INTERRUPTION_MS);
    QCoreApplication::exec();
    if (!cRun.end())
        throw std::runtime_error(cRun.error().toStdString());
    CInterruption::check();
}

void restart(const SOptions& rsOptions)
{
    const QString cWrong =
        CRun::askForRestart(CRunFolder(rsOptions.folder(), true), rsOptions.cWords.value(1));
    expect(cWrong.isEmpty(), cWrong);
    print(QStringLiteral("%1 started again").arg(rsOptions.cWords[1]));
}

/// False if the command line is wrong.
bool carryOutCommand(const SOptions& rsOptions)
{
    const QStringList& rcWords = rsOptions.cWords;
    const bool bRestart = rcWords.value(0) == QLatin1String("restart");
    if (!rsOptions.bUsable || (!rcWords.isEmpty() && rcWords.size() != 2) || (bRestart && rsOptions.bVerbose))
        return false;
    if (rcWords.isEmpty())
        stay(rsOptions);
    else if (bRestart)
        restart(rsOptions);
    else
        carryOut(rcWords[0], rcWords[1]);
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication cApplication(argc, argv);
    const QStringList cArguments = QCoreApplication::arguments().mid(1);
    if (cArguments == QStringList{QStringLiteral("--version")}) {
        print(QStringLiteral("halden-tour " HALDEND_VERSION));
        return 0;
    }
    if (cArguments == QStringList{QStringLiteral("--help")}) {
        std::fputs(USAGE, stdout);
        return 0;
    }
    CInterruption::install();
    try {
        if (carryOutCommand(readOptions(cArguments)))
            return 0;
        std::fputs(USAGE, stderr);
        return 2;
    } catch (const CInterruption& rcInterruption) {
        return 128 + rcInterruption.signal();
    } catch (const std::exception& rcError) {
        std::fprintf(stderr, "halden-tour: %s\n", rcError.what());
        return 1;
    }
}
