/* SPDX-License-Identifier: MIT */
/* What a program on another clock is started with, and what it leaves behind. Clocks are in FasterClock.h. */
#ifndef HALDEND_TESTS_SCLOCK_H
#define HALDEND_TESTS_SCLOCK_H

#include <QMap>
#include <QString>

struct SClock {
    QString cLibrary; ///< to be preloaded behind the board's: in another order a sanitized program hangs
    QMap<QString, QString> cVariables;
};

/// Removes what the library leaves in shared memory when its program is killed: there it would meet the next program
/// with the same process number.
void removeClockOf(qint64 iPid);

#endif
