/* Which files can be given to the configuration library. */
#include "regdb/config_guard.h"

#include <fstream>
#include <set>
#include <string>

#include <sys/stat.h>

static const char BLANKS[] = " \t";

static bool is_regular_or_absent(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

/* The file that a line includes; empty if it includes none. As the library reads it: the directive begins its
 * line, and a backslash takes the next character as it stands. Lines in comments count as well, which refuses
 * more than the library would fail on, and never less. */
static std::string included_file(const std::string& line)
{
    static const std::string directive = "@include";
    size_t at = line.find_first_not_of(BLANKS);
    if (at == std::string::npos || line.compare(at, directive.size(), directive) != 0)
        return {};
    at = line.find_first_not_of(BLANKS, at + directive.size());
    if (at == std::string::npos || line[at] != '"')
        return {};
    std::string path;
    for (++at; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] == '\\' && at + 1 < line.size())
            ++at;
        path += line[at];
    }
    return path;
}

/* Each file is looked at once, however often and in whatever circle files include each other. */
static bool is_safe(const std::string& path, std::set<std::string>* seen)
{
    if (!seen->insert(path).second)
        return true;
    if (!is_regular_or_absent(path))
        return false;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const std::string included = included_file(line);
        if (!included.empty() && !is_safe(included, seen))
            return false;
    }
    return true;
}

int config_file_is_safe(const char* path)
{
    std::set<std::string> seen;
    return is_safe(path, &seen) ? 1 : 0;
}
