/* SPDX-License-Identifier: MIT */
#include "board/judge/CJudgements.h"

#include "board/judge/CLimeJudge.h"
#include "board/state/CBoard.h"

QStringList CJudgements::of(const CBoard& rcBoard)
{
    if (!rcBoard.isOpen())
        return QStringList();
    QStringList cLines = rcBoard.notedJudgements() + CLimeJudge(rcBoard).judgements();
    cLines.removeDuplicates();
    return cLines;
}
