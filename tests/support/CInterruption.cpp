/* SPDX-License-Identifier: MIT */
#include "tests/support/CInterruption.h"

#include <csignal>
#include <cstring>

namespace
{

volatile std::sig_atomic_t iCaughtSignal = 0;

void noteSignal(int iSignal)
{
    iCaughtSignal = iSignal;
}

} // namespace

CInterruption::CInterruption(int iSignal) : std::runtime_error(strsignal(iSignal)), m_iSignal(iSignal) {}

void CInterruption::install()
{
    struct sigaction sAction = {};
    sAction.sa_handler = noteSignal;
    sigemptyset(&sAction.sa_mask);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(iSignal, &sAction, nullptr);
}

void CInterruption::check()
{
    if (iCaughtSignal != 0)
        throw CInterruption(iCaughtSignal);
}

int CInterruption::caught()
{
    return iCaughtSignal;
}
