/* SPDX-License-Identifier: MIT */
/* board_record: plays a script of the tour's steps, and writes down what has to be the same on every processor. */
#include "board/tour/CTour.h"
#include "tests/compare/CBoardRecord.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace
{

void expect(bool bDone, const QString& rcWrong)
{
    if (!bDone)
        throw std::runtime_error(rcWrong.toStdString());
}

/// The step, with a temporary text that stays while an emulated program takes its picture. Its last word is the time.
QString withoutHurry(const QString& rcStep)
{
    const bool bTemporary = rcStep.startsWith(QLatin1String("call videooverlay draw_temp_text "));
    return bTemporary ? rcStep.section(QLatin1Char(' '), 0, -2) + QStringLiteral(" 20") : rcStep;
}

void addFiles(CBoardRecord& rcRecord, const QDir& rcFolder, const QString& rcNames)
{
    const QStringList cNames = rcFolder.entryList({rcNames}, QDir::Files);
    expect(!cNames.isEmpty(), rcFolder.filePath(rcNames) + QStringLiteral(": no file"));
    for (const QString& rcName : cNames)
        rcRecord.addFile(rcFolder.filePath(rcName));
}

void record(const QString& rcScript, const QString& rcFolder)
{
    const QVector<CTour::SStep> cSteps = CTour::read(rcScript);
    expect(!cSteps.isEmpty(), rcScript + QStringLiteral(": no steps"));
    CPrivateBus cBus;
    const bool bBus = cBus.start();
    expect(bBus, cBus.error());
    CTemporaryBoard cBoard;
    const bool bBoard = cBoard.make();
    expect(bBoard, cBoard.error());
    CCodecProcess cCodec;
    expect(cCodec.start(cBus.address(), cBoard.board().directory()), QStringLiteral("no codec stand-in"));
    CBoardRecord cRecord(cBoard.board(), rcFolder);

    CDaemonProcess cDaemon;
    cDaemon.setBusAddress(cBus.address());
    cDaemon.useBoard(cBoard.board().directory());
    expect(cDaemon.startAndWaitForName(), QString::fromUtf8(cDaemon.describe()));
    const QString cFiles = rcFolder + QStringLiteral("/work");
    QDir().mkpath(cFiles);
    CTour cTour(cDaemon.client(), cBoard.board(), cFiles, [](const QString&) {});
    for (const CTour::SStep& rsStep : cSteps) {
        const QString cCommand = rsStep.cText.section(QLatin1Char(' '), 0, 0);
        // Shots show a film, whose frame is a matter of time.
        if (cCommand == QLatin1String("shot"))
            continue;
        if (cCommand == QLatin1String("picture"))
            cRecord.take();
        const QString cWrong = cTour.carryOut(withoutHurry(rsStep.cText));
        expect(cWrong.isEmpty(), QStringLiteral("%1:%2: %3").arg(rcScript).arg(rsStep.iLine).arg(cWrong));
        if (cCommand == QLatin1String("picture")) {
            const QString cName = rsStep.cText.section(QLatin1Char(' '), 1);
            cRecord.add(QStringLiteral("%1-%2").arg(rsStep.iLine, 3, 10, QLatin1Char('0')).arg(cName),
                        cTour.picture(cName));
        }
    }
    addFiles(cRecord, cFiles, QStringLiteral("*.bmp"));
    cDaemon.call(QStringLiteral("/debug"), QStringLiteral("save_hardware_config"));
    expect(cDaemon.endBySignal(SIGTERM) && !cDaemon.crashed() && cDaemon.exitCode() == 0,
           QString::fromUtf8(cDaemon.describe()));
    addFiles(cRecord, cBoard.board().path(BOARD_CNFS), QStringLiteral("*.cnf"));
    QDir(cFiles).removeRecursively();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication cApplication(argc, argv);
    const QStringList cArguments = QCoreApplication::arguments();
    if (cArguments.size() != 3) {
        std::fputs("Usage: board_record SCRIPT FOLDER\n", stderr);
        return 2;
    }
    try {
        record(cArguments[1], cArguments[2]);
    } catch (const std::exception& rcError) {
        std::fprintf(stderr, "board_record: %s\n", rcError.what());
        return 1;
    }
    return 0;
}
