#ifndef HALDEND_BENCH_CTEMPORARYDIRECTORY_H
#define HALDEND_BENCH_CTEMPORARYDIRECTORY_H

#include <string>

/// A directory that goes with the object, with all that is in it. In memory where the system offers that:
/// the virtual board's stores are to cost what stores cost, not what a disk costs.
class CTemporaryDirectory
{
public:
    /// Throws std::system_error if it can't be made.
    CTemporaryDirectory();
    ~CTemporaryDirectory();

    CTemporaryDirectory(const CTemporaryDirectory&) = delete;
    CTemporaryDirectory& operator=(const CTemporaryDirectory&) = delete;

    /// Path of a file in it.
    std::string file(const std::string& rcName) const { return m_cPath + "/" + rcName; }

private:
    std::string m_cPath;
};

#endif
