/* SPDX-License-Identifier: MIT */
/* halden-board: the command that shows what programs did to the board against its rules. */
#include "board/judge/CJudgements.h"
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <cstdio>

int commandJudgements(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("judgements"),
        QStringLiteral("Shows the operations that no program for the board may do, but one did."));
    cLine.addArgument(QStringLiteral("[show | clear]"),
                      QStringLiteral("show them (default); or forget the noted ones"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 0, 1) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().value(0, QStringLiteral("show"));
    if (cWhat == QLatin1String("show"))
        for (const QString& rcLine : CJudgements::of(cBoard))
            std::puts(qPrintable(rcLine));
    else if (cWhat != QLatin1String("clear"))
        return cLine.refuse(QStringLiteral("'%1' is none of show, clear").arg(cWhat));
    else if (!cBoard.clearJudgements())
        return cLine.fail(QStringLiteral("%1: can't be cleared").arg(cBoard.path(BOARD_JUDGEMENTS)));
    return cLine.exitStatus();
}
