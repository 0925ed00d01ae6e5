/* SPDX-License-Identifier: MIT */
/* halden-board: commands that show what a board does. */
#include "board/follow/CBoardFollower.h"
#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <QElapsedTimer>
#include <QSaveFile>
#include <QThread>

#include <csignal>
#include <cstdio>

namespace
{

volatile std::sig_atomic_t s_iStopped = 0;

void stop(int)
{
    s_iStopped = 1;
}

} // namespace

void repeatUntilStopped(bool (*pfnStep)(void* pvContext), void* pvContext)
{
    struct sigaction sAction = {};
    sAction.sa_handler = stop;
    sigaction(SIGINT, &sAction, nullptr);
    sigaction(SIGTERM, &sAction, nullptr);
    while (s_iStopped == 0 && pfnStep(pvContext))
        QThread::msleep(CBoardFollower::PAUSE_MS);
}

// Picture

namespace
{

const int FILE_PAUSE_MS = 250; // a camera that moves has 25 frames a second, and a file is slow to write

struct SPictureFile {
    CBoard cBoard;
    CBoardFollower cFollower{cBoard};
    QString cPath;
    QString cError;
    QImage cLast;
    QElapsedTimer cWritten;
    bool bRecorded = false;
};

/// Writes the picture if it has changed. The file is replaced whole: viewers never see half a picture.
bool updatePicture(void* pvFile)
{
    auto& rcFile = *static_cast<SPictureFile*>(pvFile);
    if (rcFile.cWritten.isValid() && !rcFile.cWritten.hasExpired(FILE_PAUSE_MS))
        return true;
    if (!rcFile.cFollower.look())
        return true;
    const QImage cPicture =
        rcFile.bRecorded ? CBoardPicture::recorded(rcFile.cBoard) : CBoardPicture::monitor(rcFile.cBoard);
    if (cPicture == rcFile.cLast)
        return true;
    QSaveFile cFile(rcFile.cPath);
    if (!cFile.open(QIODevice::WriteOnly) || !cPicture.save(&cFile, "PNG") || !cFile.commit()) {
        rcFile.cError = QStringLiteral("%1: %2").arg(rcFile.cPath, cFile.errorString());
        return false;
    }
    rcFile.cLast = cPicture;
    rcFile.cWritten.start();
    return true;
}

} // namespace

int commandPicture(const QStringList& rcArguments)
{
    const QString FOLLOW = QStringLiteral("follow");
    const QString RECORDED = QStringLiteral("recorded");
    CCommandLine cLine(QStringLiteral("picture"),
                       QStringLiteral("Writes the picture on the monitor as a PNG file."));
    cLine.addArgument(QStringLiteral("OUT.png"), QStringLiteral("the file, replaced if it exists"));
    cLine.addFlag(FOLLOW, QStringLiteral("replace the file whenever the picture changes, until Ctrl-C"));
    cLine.addFlag(RECORDED, QStringLiteral("write the recorded picture instead"));
    SPictureFile cFile;
    if (!cLine.parse(rcArguments, 1, 1) || !cLine.openBoard(cFile.cBoard))
        return cLine.exitStatus();
    cFile.cPath = cLine.arguments().first();
    cFile.bRecorded = cLine.isSet(RECORDED);
    if (cLine.isSet(FOLLOW))
        repeatUntilStopped(updatePicture, &cFile);
    else
        updatePicture(&cFile);
    return cFile.cError.isEmpty() ? cLine.exitStatus() : cLine.fail(cFile.cError);
}
