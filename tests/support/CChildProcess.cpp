/* SPDX-License-Identifier: MIT */
#include "tests/support/CChildProcess.h"

#include "tests/support/Timeouts.h"

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

CChildProcess::CChildProcess() : m_iParent(getpid()) {}

CChildProcess::~CChildProcess()
{
    if (state() == NotRunning)
        return;
    kill();
    waitForFinished(TIMEOUT_PROCESS_MS);
}

void CChildProcess::setupChildProcess()
{
    // A group of its own keeps the terminal's Ctrl-C away: the parent ends its children itself. If the parent is
    // killed, the kernel does.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != m_iParent)
        _exit(127);
}
