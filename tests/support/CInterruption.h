/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CINTERRUPTION_H
#define HALDEND_TESTS_CINTERRUPTION_H

#include <stdexcept>

/// SIGINT, SIGTERM and SIGHUP as an exception, so that they unwind what was started like any failure does.
/// The handler only notes the signal; long work calls check() now and then, or looks at caught() where an event
/// loop is in between. Waiting system calls return with EINTR.
class CInterruption : public std::runtime_error
{
public:
    /// Takes the three signals over, once, before anything is started.
    static void install();

    /// Throws if one of them has come.
    static void check();

    /// The signal that has come, 0 if none has.
    static int caught();

    int signal() const { return m_iSignal; }

private:
    explicit CInterruption(int iSignal);

    int m_iSignal;
};

#endif
