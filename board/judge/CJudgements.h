/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_JUDGE_CJUDGEMENTS_H
#define HALDEND_BOARD_JUDGE_CJUDGEMENTS_H

#include <QStringList>

class CBoard;

/// All judgements on a board: operations that no program for the board may do to the devices, and wrong
/// values in the display controller's windows.
class CJudgements
{
public:
    /// One line a judgement, without repetitions; none if the board isn't open. virtual-board-reference.md has the
    /// grammar.
    static QStringList of(const CBoard& rcBoard);
};

#endif
