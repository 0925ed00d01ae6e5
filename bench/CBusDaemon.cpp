#include "bench/CBusDaemon.h"

#include "bench/CTemporaryDirectory.h"
#include "bench/Timeouts.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace
{

/// Both ends are closed with the object, and neither reaches a program that is started.
struct SPipe {
    SPipe()
    {
        if (pipe2(iEnds, O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category(), "pipe");
    }
    ~SPipe()
    {
        close(iEnds[0]);
        close(iEnds[1]);
    }
    SPipe(const SPipe&) = delete;
    SPipe& operator=(const SPipe&) = delete;

    int iEnds[2] = {-1, -1};
};

std::string readLine(int iDescriptor)
{
    std::string cLine;
    char cCharacter = 0;
    while (read(iDescriptor, &cCharacter, 1) == 1 && cCharacter != '\n')
        cLine += cCharacter;
    return cLine;
}

} // namespace

CBusDaemon::CBusDaemon(const CTemporaryDirectory& rcDirectory)
{
    const SPipe sAddress;
    CProcess::SStart cStart;
    cStart.cArguments = {"dbus-daemon", std::string("--config-file=") + BENCH_BUS_CONFIGURATION,
                         "--address=unix:path=" + rcDirectory.file("bus"), "--nofork", "--print-address"};
    cStart.cLogFile = rcDirectory.file("bus.log");
    cStart.iStandardOutput = sAddress.iEnds[1];
    m_cProcess.emplace(cStart);
    // The bus prints its address, in one write, when it accepts connections.
    if (!m_cProcess->waitFor(sAddress.iEnds[0], TIMEOUT_START_MS))
        m_cProcess->fail("not ready in time");
    m_cAddress = readLine(sAddress.iEnds[0]);
}
