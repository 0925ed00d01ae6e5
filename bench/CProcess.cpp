#include "bench/CProcess.h"

#include "tests/support/CInterruption.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// execvpe wants it mutable for reasons of C's history, and changes nothing.
std::vector<char*> pointersTo(const std::vector<std::string>& rcStrings)
{
    std::vector<char*> cPointers;
    cPointers.reserve(rcStrings.size() + 1);
    for (const std::string& rcString : rcStrings)
        cPointers.push_back(const_cast<char*>(rcString.c_str()));
    cPointers.push_back(nullptr);
    return cPointers;
}

std::string contents(const std::string& rcFile)
{
    std::ostringstream cText;
    cText << std::ifstream(rcFile).rdbuf();
    return cText.str();
}

} // namespace

CProcess::CProcess(const SStart& rcStart)
    : m_cProgram(std::filesystem::path(rcStart.cArguments.front()).filename()),
      m_cLogFile(rcStart.cLogFile),
      m_iProcess(-1),
      m_iEnd(-1)
{
    const pid_t iParent = getpid();
    m_iProcess = fork();
    if (m_iProcess == -1)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (m_iProcess == 0)
        execute(rcStart, iParent);
    // By number: some C libraries declare the call without C linkage.
    m_iEnd = static_cast<int>(syscall(SYS_pidfd_open, m_iProcess, 0));
    if (m_iEnd == -1) {
        const int iErrno = errno;
        end();
        throw std::system_error(iErrno, std::generic_category(), "pidfd_open");
    }
}

void CProcess::execute(const SStart& rcStart, pid_t iParent)
{
    // A group of its own keeps the terminal's Ctrl-C away: the bench ends its processes itself. If the
    // bench is killed, the kernel does.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != iParent)
        _exit(127);

    const int iLog = open(rcStart.cLogFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(iLog, STDERR_FILENO);
    dup2(rcStart.iStandardOutput != -1 ? rcStart.iStandardOutput : iLog, STDOUT_FILENO);

    std::vector<std::string> cEnvironment = rcStart.cEnvironment;
    const char* pszPath = getenv("PATH");
    cEnvironment.push_back(std::string("PATH=") + (pszPath != nullptr ? pszPath : "/usr/bin:/bin"));
    const std::vector<char*> cArgumentPointers = pointersTo(rcStart.cArguments);
    execvpe(cArgumentPointers.front(), cArgumentPointers.data(), pointersTo(cEnvironment).data());
    dprintf(STDERR_FILENO, "%s: %s\n", cArgumentPointers.front(), strerror(errno));
    _exit(127);
}

void CProcess::end() const
{
    kill(m_iProcess, SIGKILL);
    // A second Ctrl-C mustn't leave it behind.
    while (waitpid(m_iProcess, nullptr, 0) == -1 && errno == EINTR) {
    }
}

CProcess::~CProcess()
{
    end();
    close(m_iEnd);
}

bool CProcess::waitFor(int iDescriptor, int iTimeoutMs) const
{
    struct pollfd sWaits[] = {
        {m_iEnd,      POLLIN, 0},
        {iDescriptor, POLLIN, 0}
    };
    const int iReady = poll(sWaits, 2, iTimeoutMs);
    CInterruption::check();
    if (iReady == -1)
        throw std::system_error(errno, std::generic_category(), "poll");
    if (sWaits[0].revents == 0)
        return iReady > 0;

    siginfo_t sInfo = {};
    waitid(P_PIDFD, static_cast<id_t>(m_iEnd), &sInfo, WEXITED | WNOWAIT);
    const bool bAsWished = iDescriptor == -1 && sInfo.si_code == CLD_EXITED && sInfo.si_status == 0;
    if (!bAsWished)
        fail("ended with status " + std::to_string(sInfo.si_status));
    return true;
}

std::uint64_t CProcess::sleeps() const
{
    const std::string cField = "voluntary_ctxt_switches:";
    std::uint64_t u64Sum = 0;
    const std::string cTasks = "/proc/" + std::to_string(m_iProcess) + "/task";
    for (const auto& rcTask : std::filesystem::directory_iterator(cTasks)) {
        std::ifstream cStatus(rcTask.path() / "status");
        std::string cWord;
        while (cStatus >> cWord && cWord != cField) {
        }
        std::uint64_t u64Switches = 0;
        if (!(cStatus >> u64Switches))
            throw std::runtime_error("the kernel doesn't count how often its threads sleep");
        u64Sum += u64Switches;
    }
    return u64Sum;
}

std::uint64_t CProcess::cpuTime() const
{
    std::uint64_t u64Sum = 0;
    const std::string cTasks = "/proc/" + std::to_string(m_iProcess) + "/task";
    for (const auto& rcTask : std::filesystem::directory_iterator(cTasks)) {
        std::uint64_t u64Running = 0;
        if (!(std::ifstream(rcTask.path() / "schedstat") >> u64Running))
            throw std::runtime_error("no schedstat of its threads: the kernel doesn't count processor time");
        u64Sum += u64Running;
    }
    return u64Sum;
}

CProcess::SMemory CProcess::residentMemory(const std::string& rcDirectory) const
{
    // Each mapping is a line "address rights offset device inode path", and then its figures, "Rss: 4 kB".
    std::ifstream cMappings("/proc/" + std::to_string(m_iProcess) + "/smaps");
    SMemory sMemory = {};
    bool bBelow = false;
    for (std::string cLine; std::getline(cMappings, cLine);) {
        std::istringstream cWords(cLine);
        std::string cWord;
        cWords >> cWord;
        if (cWord.back() != ':')
            bBelow = cLine.find(" " + rcDirectory + "/") != std::string::npos;
        std::uint64_t u64Resident = 0;
        if (cWord == "Rss:" && cWords >> u64Resident)
            (bBelow ? sMemory.u64Below : sMemory.u64Elsewhere) += u64Resident;
    }
    if (sMemory.u64Elsewhere == 0)
        throw std::runtime_error("no smaps of it: the kernel doesn't tell its memory");
    return sMemory;
}

void CProcess::fail(const std::string& rcReason) const
{
    throw std::runtime_error(m_cProgram + ": " + rcReason + "\n" + contents(m_cLogFile));
}
