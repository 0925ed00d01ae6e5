/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOOL_CREPLAYEDBOARD_H
#define HALDEND_BOARD_TOOL_CREPLAYEDBOARD_H

#include "board/state/CBoard.h"
#include "board/trace/CTraceReplay.h"

#include <QScopedPointer>
#include <QStringList>
#include <QTemporaryDir>

/// A new board, and the trace that it is built from.
class CReplayedBoard
{
public:
    /// Reads the trace, from a file or from a board, and makes the board in the directory; in a temporary one, which
    /// goes with the object, if that is empty. False if that fails; rcError says why.
    [[nodiscard]] bool open(const QString& rcTrace, const QString& rcDirectory, QString& rcError);

    CBoard& board() { return m_cBoard; }
    const QStringList& lines() const { return m_cLines; }

    /// Lines carried out so far.
    int position() const { return m_iPosition; }

    /// Carries out the next line, or those up to a number of lines. False if a line can't be carried out; rcError has
    /// its number, and says why.
    [[nodiscard]] bool step(QString& rcError);
    [[nodiscard]] bool run(int iUntil, QString& rcError);

private:
    bool readTrace(const QString& rcTrace, QString& rcError);

    QString m_cTrace;
    QStringList m_cLines;
    QScopedPointer<QTemporaryDir> m_pcFolder;
    CBoard m_cBoard;
    CTraceReplay m_cReplay{m_cBoard};
    int m_iPosition = 0;
};

#endif
