#ifndef HALDEND_BENCH_CPROCESS_H
#define HALDEND_BENCH_CPROCESS_H

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

/// A program started by the bench. It never outlives the object, nor the bench itself, however that ends.
///
/// Its environment is what it is given and nothing inherited but PATH. What it says goes to a log file, which
/// is shown only when something failed.
class CProcess
{
public:
    struct SStart {
        std::vector<std::string> cArguments;   ///< the program first, looked for in PATH
        std::vector<std::string> cEnvironment; ///< NAME=value
        std::string cLogFile;                  ///< standard error, and standard output unless named below
        int iStandardOutput = -1;              ///< descriptor to use instead, stays the caller's
    };

    /// Starts the program. Throws std::system_error if there can be no new process; a program that can't be
    /// executed shows as a process that ends at once.
    explicit CProcess(const SStart& rcStart);

    /// Kills and reaps it.
    ~CProcess();

    CProcess(const CProcess&) = delete;
    CProcess& operator=(const CProcess&) = delete;

    /// Waits up to a time, in milliseconds (-1: without limit), until iDescriptor is readable (-1: for nothing but the end).
    /// Returns false when the time is up. Throws std::runtime_error with the log if the process ends
    /// otherwise than with status 0, or while something else is waited for.
    bool waitFor(int iDescriptor, int iTimeoutMs) const;

    /// Processor time used so far by all its threads, in nanoseconds. Throws std::runtime_error when the
    /// kernel doesn't tell.
    std::uint64_t cpuTime() const;

    /// How often its threads went to sleep so far, and so had to be woken up.
    std::uint64_t sleeps() const;

    /// Memory that is there at the moment, shared or not, in kilobytes.
    struct SMemory {
        std::uint64_t u64Below;     ///< of mapped files below a directory
        std::uint64_t u64Elsewhere; ///< all other
    };

    /// Throws std::runtime_error when the kernel doesn't tell.
    SMemory residentMemory(const std::string& rcDirectory) const;

    /// Throws std::runtime_error: the program's name, the reason, and its log.
    [[noreturn]] void fail(const std::string& rcReason) const;

private:
    [[noreturn]] static void execute(const SStart& rcStart, pid_t iParent);
    void end() const;

    std::string m_cProgram;
    std::string m_cLogFile;
    pid_t m_iProcess;
    int m_iEnd; ///< readable once the process has ended
};

#endif
