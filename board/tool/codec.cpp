/* SPDX-License-Identifier: MIT */
/* halden-board: the command that steers the codec stand-in. */
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <cstdio>

static QString modeNames()
{
    QStringList cNames;
    for (int iMode = 0; iMode < BOARD_CODEC_MODE_COUNT; ++iMode)
        cNames << CBoard::codecModeName(static_cast<board_codec_mode>(iMode));
    return cNames.join(QStringLiteral(", "));
}

static void printState(const CBoard& rcBoard)
{
    const SCodecState sState = rcBoard.codecState();
    std::printf("%s, %u ms a call; %s %d %s\n", qPrintable(CBoard::codecModeName(rcBoard.codecMode())),
                rcBoard.codecDelay(), qPrintable(sState.activityName()), sState.iFrame,
                qPrintable(sState.cFile));
    std::puts(rcBoard.codecRuns() ? "halden-codec runs" : "halden-codec doesn't run");
}

static int slowDown(CCommandLine& rcLine, CBoard& rcBoard)
{
    bool bNumber = false;
    const QString cDelay = rcLine.arguments().value(1);
    const int iDelay = cDelay.toInt(&bNumber);
    if (!bNumber || iDelay < 0)
        return rcLine.refuse(QStringLiteral("'%1' is not a number of milliseconds").arg(cDelay));
    rcBoard.setCodecDelay(static_cast<quint32>(iDelay));
    return rcLine.exitStatus();
}

static int changeMode(CCommandLine& rcLine, CBoard& rcBoard, const QString& rcName)
{
    const board_codec_mode eMode = CBoard::codecModeByName(rcName);
    if (eMode == BOARD_CODEC_MODE_COUNT)
        return rcLine.refuse(
            QStringLiteral("'%1' is none of show, log, clear, slow, %2").arg(rcName, modeNames()));
    rcBoard.setCodecMode(eMode);
    return rcLine.exitStatus();
}

int commandCodec(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("codec"),
        QStringLiteral("Controls the codec stand-in, halden-codec, while it runs: chooses how it takes "
                       "its calls, and shows the calls that it got.\n\nModes: %1")
            .arg(modeNames()));
    cLine.addArgument(
        QStringLiteral("[show | MODE | slow MS | log | clear]"),
        QStringLiteral(
            "show mode and state, and whether it runs (default); choose the mode; make each call take MS "
            "milliseconds; show or forget the calls"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 0, 2))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().value(0, QStringLiteral("show"));
    const bool bSlow = cWhat == QLatin1String("slow");
    if (!bSlow && cLine.arguments().size() > 1)
        return cLine.refuse(QStringLiteral("unexpected argument '%1'").arg(cLine.arguments().at(1)));
    if (!cLine.openBoard(cBoard))
        return cLine.exitStatus();
    if (bSlow)
        return slowDown(cLine, cBoard);
    if (cWhat == QLatin1String("show"))
        printState(cBoard);
    else if (cWhat == QLatin1String("log"))
        for (const QString& rcLine : cBoard.codecCalls())
            std::puts(rcLine.toUtf8().constData());
    else if (cWhat != QLatin1String("clear"))
        return changeMode(cLine, cBoard, cWhat);
    else if (!cBoard.clearCodecCalls())
        return cLine.fail(QStringLiteral("%1: can't be cleared").arg(cBoard.path(BOARD_CODEC_LOG)));
    return cLine.exitStatus();
}
