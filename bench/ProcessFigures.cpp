/* SPDX-License-Identifier: MIT */
#include "bench/ProcessFigures.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace
{

std::string folder(std::int64_t i64Process)
{
    return "/proc/" + std::to_string(i64Process);
}

} // namespace

std::uint64_t sleeps(std::int64_t i64Process)
{
    const std::string cField = "voluntary_ctxt_switches:";
    std::uint64_t u64Sum = 0;
    for (const auto& rcTask : std::filesystem::directory_iterator(folder(i64Process) + "/task")) {
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

std::uint64_t processorTime(std::int64_t i64Process)
{
    std::uint64_t u64Sum = 0;
    for (const auto& rcTask : std::filesystem::directory_iterator(folder(i64Process) + "/task")) {
        std::uint64_t u64Running = 0;
        if (!(std::ifstream(rcTask.path() / "schedstat") >> u64Running))
            throw std::runtime_error("no schedstat of its threads: the kernel doesn't count processor time");
        u64Sum += u64Running;
    }
    return u64Sum;
}

std::uint64_t residentMemory(std::int64_t i64Process, const std::string& rcDirectory)
{
    // Each mapping is a line "address rights offset device inode path", and then its figures, "Rss: 4 kB".
    std::ifstream cMappings(folder(i64Process) + "/smaps");
    std::uint64_t u64Sum = 0;
    bool bBelow = false;
    for (std::string cLine; std::getline(cMappings, cLine);) {
        std::istringstream cWords(cLine);
        std::string cWord;
        cWords >> cWord;
        if (cWord.back() != ':')
            bBelow = cLine.find(" " + rcDirectory + "/") != std::string::npos;
        std::uint64_t u64Resident = 0;
        if (!bBelow && cWord == "Rss:" && cWords >> u64Resident)
            u64Sum += u64Resident;
    }
    if (u64Sum == 0)
        throw std::runtime_error("no smaps of it: the kernel doesn't tell its memory");
    return u64Sum;
}
