#include "bench/CTemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace
{

const char* const MEMORY = "/dev/shm";

} // namespace

CTemporaryDirectory::CTemporaryDirectory()
    : m_cPath((access(MEMORY, W_OK) == 0 ? MEMORY : std::filesystem::temp_directory_path().string()) +
              "/haldend-bench.XXXXXX")
{
    if (mkdtemp(m_cPath.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), m_cPath);
}

CTemporaryDirectory::~CTemporaryDirectory()
{
    std::error_code cIgnored;
    std::filesystem::remove_all(m_cPath, cIgnored);
}
