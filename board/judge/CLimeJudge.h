/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_JUDGE_CLIMEJUDGE_H
#define HALDEND_BOARD_JUDGE_CLIMEJUDGE_H

#include "board/state/CBoard.h"

#include <QStringList>

/// Judges the values in the register windows of the display controller. It can't see the stores, only their
/// results: a word where there is no register, and a bit that its register doesn't declare.
class CLimeJudge
{
public:
    explicit CLimeJudge(const CBoard& rcBoard) : m_rcBoard(rcBoard) {}

    /// One line for each wrong word, in the order of the windows.
    QStringList judgements() const;

private:
    const CBoard& m_rcBoard;
};

#endif
