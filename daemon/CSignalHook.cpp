/* SPDX-License-Identifier: MIT */
#include "daemon/CSignalHook.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

int CSignalHook::m_iSigHupHandle[2] = {-1, -1};
int CSignalHook::m_iSigTermHandle[2] = {-1, -1};

namespace
{

bool openPair(int* piHandles)
{
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, piHandles) != 0)
        return false;
    // Many signals while the loop is busy fill the socket. A handler that waited for room would wait for the
    // loop that it interrupts: for ever.
    fcntl(piHandles[0], F_SETFL, O_NONBLOCK);
    return true;
}

// Does only what a signal handler may do. A byte that doesn't fit is not needed: others wait already.
void writeByte(int iHandle)
{
    const int iErrno = errno;
    const char cByte = 1;
    [[maybe_unused]] const ssize_t iWritten = write(iHandle, &cByte, sizeof(cByte));
    errno = iErrno;
}

void drainAndQuit(QSocketNotifier* pcNotifier, int iHandle)
{
    pcNotifier->setEnabled(false);
    char cByte = 0;
    [[maybe_unused]] const ssize_t iRead = read(iHandle, &cByte, sizeof(cByte));
    pcNotifier->setEnabled(true);
    QCoreApplication::quit();
}

} // namespace

CSignalHook::CSignalHook() : m_pcSigHupNotifier(nullptr), m_pcSigTermNotifier(nullptr) {}

bool CSignalHook::install()
{
    if (m_pcSigHupNotifier != nullptr || m_pcSigTermNotifier != nullptr)
        return false;
    if (!setupSockets())
        return false;
    return setupUnixSignalHandlers();
}

bool CSignalHook::setupSockets()
{
    if (!openPair(m_iSigHupHandle) || !openPair(m_iSigTermHandle))
        return false;
    m_pcSigHupNotifier = new QSocketNotifier(m_iSigHupHandle[1], QSocketNotifier::Read, this);
    m_pcSigTermNotifier = new QSocketNotifier(m_iSigTermHandle[1], QSocketNotifier::Read, this);
    connect(m_pcSigHupNotifier, SIGNAL(activated(int)), this, SLOT(onSigHup()));
    connect(m_pcSigTermNotifier, SIGNAL(activated(int)), this, SLOT(onSigTerm()));
    return true;
}

bool CSignalHook::setupUnixSignalHandlers()
{
    struct sigaction sAction = {};
    sAction.sa_handler = hupSignalHandler;
    sigemptyset(&sAction.sa_mask);
    sAction.sa_flags = SA_RESTART;
    if (sigaction(SIGHUP, &sAction, nullptr) > 0)
        return false;

    sAction.sa_handler = termSignalHandler;
    sigemptyset(&sAction.sa_mask);
    sAction.sa_flags |= SA_RESTART;
    return sigaction(SIGTERM, &sAction, nullptr) <= 0;
}

void CSignalHook::hupSignalHandler(int /*iSignal*/)
{
    writeByte(m_iSigHupHandle[0]);
}

void CSignalHook::termSignalHandler(int /*iSignal*/)
{
    writeByte(m_iSigTermHandle[0]);
}

void CSignalHook::onSigHup()
{
    drainAndQuit(m_pcSigHupNotifier, m_iSigHupHandle[1]);
}

void CSignalHook::onSigTerm()
{
    drainAndQuit(m_pcSigTermNotifier, m_iSigTermHandle[1]);
}
