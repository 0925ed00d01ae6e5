/* SPDX-License-Identifier: MIT */
/* halden-tour: a private bus, a virtual board, the codec stand-in and the daemon, to be shown or to be tried. All of
 * it ends with the program, and its files go. */
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

const int PAUSE_MS = 100; // between two looks for an interruption

const char* const USAGE = "Usage: halden-tour [SCRIPT PICTURES | --version]\n"
                          "\n"
                          "Starts the daemon on a virtual board, with a bus of its own. Without arguments it "
                          "runs until Ctrl-C, and\n"
                          "the program prints what to try. Otherwise the program carries out the script, "
                          "puts the pictures into the\n"
                          "folder PICTURES, which it empties first, and ends.\n";

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

/// %1 is the bus, %2 the board, %3 and %4 the folders of haldenctl and of halden-board, %5 the picture, %6 the folder
/// for files.
const char* const WHAT_TO_TRY = R"(
== haldend runs on a virtual board; Ctrl-C ends it
Picture:  %5 (follows the monitor)

In a second terminal:
  export DBUS_SYSTEM_BUS_ADDRESS=%1 HALDEN_BOARD=%2
  export PATH=%3:%4:$PATH

Try:
  haldenctl status
  haldenctl overlay show
  haldenctl text new "Manhole 17" --at 20,2 --color yellow,navy
  haldenctl message "Hello" --at 20,12 --seconds 5
  haldenctl display size 360 288
  haldenctl display position 300 200
  haldenctl record start %6/film.ts
  haldenctl record stop
  haldenctl image save %6/still.bmp --wait
  haldenctl doctor --register-files %2/cnfs
  halden-board camera unplug
  haldenctl debug frame-generator on
  halden-board registers --changed
  haldenctl --help

Log and signals:)";

void printWhatToTry(CShow& rcShow, const QString& rcFolder, const QString& rcPicture)
{
    print(QString::fromUtf8(WHAT_TO_TRY)
              .arg(rcShow.busAddress(), rcShow.board().directory(),
                   QFileInfo(QStringLiteral(HALDENCTL)).absolutePath(),
                   QFileInfo(QStringLiteral(HALDEND_BOARD_TOOL)).absolutePath(), rcPicture, rcFolder));
}

void stay()
{
    CShow cShow;
    const CMemoryFolder cFolder;
    const QString cPicture = cFolder.filePath(QStringLiteral("picture.png"));
    CTour cSignals(cShow.daemon().client(), cShow.board(), cFolder.path(), print);
    CChildProcess cFollower;
    cFollower.setProcessChannelMode(QProcess::ForwardedChannels);
    cFollower.start(QStringLiteral(HALDEND_BOARD_TOOL),
                    {QStringLiteral("picture"), QStringLiteral("--board"), cShow.board().directory(),
                     cPicture, QStringLiteral("--follow")});
    printWhatToTry(cShow, cFolder.path(), cPicture);
    QTimer cTimer;
    QObject::connect(&cTimer, &QTimer::timeout, [&cShow] {
        if (CInterruption::caught() != 0 || cShow.daemon().process().state() == QProcess::NotRunning)
            QCoreApplication::quit();
    });
    cTimer.start(PAUSE_MS);
    QCoreApplication::exec();
    expect(cShow.daemon().exitCode() == 0 && !cShow.daemon().crashed(),
           QStringLiteral("haldend ended badly; its messages are above"));
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
    if (!cArguments.isEmpty() && cArguments.size() != 2) {
        const bool bHelp = cArguments == QStringList{QStringLiteral("--help")};
        std::fputs(USAGE, bHelp ? stdout : stderr);
        return bHelp ? 0 : 2;
    }
    CInterruption::install();
    try {
        cArguments.isEmpty() ? stay() : carryOut(cArguments[0], cArguments[1]);
    } catch (const CInterruption& rcInterruption) {
        return 128 + rcInterruption.signal();
    } catch (const std::exception& rcError) {
        std::fprintf(stderr, "halden-tour: %s\n", rcError.what());
        return 1;
    }
    return 0;
}
