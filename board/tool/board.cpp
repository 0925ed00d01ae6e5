/* SPDX-License-Identifier: MIT */
/* halden-board: commands that make a board or change its surroundings. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

int commandCreate(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("create"),
        QStringLiteral("Makes a board: a directory with the files that stand for its devices."));
    cLine.addArgument(QStringLiteral("DIR"), QStringLiteral("the directory; must be new or empty"));
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    QString cError;
    return CBoardMaker::create(cLine.arguments().first(), cError) ? cLine.exitStatus() : cLine.fail(cError);
}

int commandSignal(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("signal"),
        QStringLiteral(
            "Switches the input signal of the video decoder, as plugging and unplugging the camera "
            "does."));
    cLine.addArgument(QStringLiteral("on | off"), QStringLiteral("switch the signal on or off"));
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    if (cWhat != QLatin1String("on") && cWhat != QLatin1String("off"))
        return cLine.refuse(QStringLiteral("'%1' is none of on, off").arg(cWhat));
    CBoard cBoard;
    if (cLine.openBoard(cBoard))
        cBoard.setCameraPlugged(cWhat == QLatin1String("on"));
    return cLine.exitStatus();
}
