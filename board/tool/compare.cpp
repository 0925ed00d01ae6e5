/* SPDX-License-Identifier: MIT */
/* halden-board: the command that looks for the first difference between two boards. */
#include "board/tool/CCommandLine.h"
#include "board/tool/CReplayedBoard.h"
#include "board/tool/Commands.h"
#include "board/trace/CBoardComparison.h"

#include <QFileInfo>

#include <cstdio>
#include <limits>

namespace
{

/// Like that of diff.
enum EResult { SAME = 0, DIFFERENT = 1, TROUBLE = 2 };

/// One of the two: a board, or a trace that a board is built from.
struct SSide {
    CBoard cBoard;
    CReplayedBoard cReplayed;
    bool bTrace = false;

    CBoard& board() { return bTrace ? cReplayed.board() : cBoard; }

    bool open(const QString& rcPath, QString& rcError)
    {
        bTrace = !QFileInfo(rcPath).isDir();
        if (bTrace)
            return cReplayed.open(rcPath, QString(), rcError);
        if (cBoard.open(rcPath))
            return true;
        rcError = cBoard.errorString();
        return false;
    }

    /// A trace has neither camera nor codec: a board beside it lends its own.
    bool finish(SSide& rsOther, QString& rcError)
    {
        if (!bTrace)
            return true;
        if (!rsOther.bTrace) {
            board().setCamera(rsOther.board().cameraImage());
            board().setCodecState(rsOther.board().codecState());
        }
        return cReplayed.run(std::numeric_limits<int>::max(), rcError);
    }
};

} // namespace

int commandCompare(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("compare"),
        QStringLiteral(
            "Names the first register, cell or pixel in which two boards or full traces differ.\n\n"
            "The exit status is 0 if there is no difference, 1 if there is one, 2 if a board or a "
            "trace can't be read."));
    cLine.addArgument(QStringLiteral("A B"), QStringLiteral("boards (directories) or traces (files)"));
    if (!cLine.parse(rcArguments, 2, 2))
        return cLine.exitStatus();
    SSide sOne;
    SSide sOther;
    QString cError;
    if (!sOne.open(cLine.arguments().first(), cError) || !sOther.open(cLine.arguments().last(), cError) ||
        !sOne.finish(sOther, cError) || !sOther.finish(sOne, cError)) {
        CCommandLine::warn(cError);
        return TROUBLE;
    }
    const QString cFound = CBoardComparison::firstDifference(sOne.board(), sOther.board());
    if (cFound.isEmpty())
        return SAME;
    std::puts(cFound.toUtf8().constData());
    return DIFFERENT;
}
