/* SPDX-License-Identifier: MIT */
/* Other clocks for the daemon and the codec stand-in, which know nothing of them: Debian's libfaketime, preloaded. The
 * test itself stays on the real one.
 *
 *     cScene.prepare();
 *     cScene.daemon().useClock(fasterClock(50));
 *     cCodec.useClock(fasterClock(50)); // or one waits too short a time for the other
 */
#ifndef HALDEND_TESTS_FASTERCLOCK_H
#define HALDEND_TESTS_FASTERCLOCK_H

#include "tests/support/SClock.h"

#include <QString>
#include <QTemporaryDir>

/// A clock that is so many times as fast, for what has to run by itself. On an idle machine a timer of a second loses no
/// tick up to 1000; one that is late by more than such a second loses some, so that tests stay well below 100.
SClock fasterClock(int iFactor);

/// A clock that stands, and leaps by whole seconds when the test says so: for times of any length, exactly, whatever
/// the load. A program that waits isn't woken by a leap; something has to come in, or a second of the real time to pass.
/// It then finds each timer expired once, however far the leap went.
class CLeapingClock
{
public:
    /// Usable if isValid() says so.
    CLeapingClock();
    bool isValid() const { return m_bValid; }

    SClock clock() const;

    /// False if the clock can't be set.
    bool leap(int iSeconds);

private:
    QString path(const char* pszFile) const;

    QTemporaryDir m_cDirectory; ///< of the file that holds the programs' time
    qint64 m_iNow;              ///< s since 1970
    bool m_bValid;
};

#endif
