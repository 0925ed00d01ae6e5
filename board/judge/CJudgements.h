#ifndef HALDEND_BOARD_JUDGE_CJUDGEMENTS_H
#define HALDEND_BOARD_JUDGE_CJUDGEMENTS_H

#include <QStringList>

class CBoard;

/// What programs did to the devices that no program for the board may do, and what they left behind in the
/// display controller's windows.
class CJudgements
{
public:
    /// One line a judgement, each said once; none if the board isn't open. virtual-board-reference.md has the
    /// grammar.
    static QStringList of(const CBoard& rcBoard);
};

#endif
