/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TRACE_CTRACESNAPSHOT_H
#define HALDEND_BOARD_TRACE_CTRACESNAPSHOT_H

#include <QStringList>

class CBoard;

/// What a board has now, as lines of a full trace: so that a trace that begins in the middle can be replayed.
class CTraceSnapshot
{
public:
    /// Begins a full trace: switches it on, and notes all that isn't 0. Programs may go on. False if the
    /// trace can't be written.
    static bool begin(CBoard& rcBoard);

    /// Switches the trace off. A full one gets the display controller's last values, which no operation may have noted.
    static bool end(CBoard& rcBoard);

    /// The display controller's registers.
    static QStringList limeLines(const CBoard& rcBoard);
};

#endif
