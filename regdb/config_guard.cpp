/* Which files can be given to the configuration library. */
#include "regdb/config_guard.h"

#include "hw/open_path.h"

#include <cerrno>
#include <cstdio>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <fcntl.h>

static const char BLANKS[] = " \t";

/* The library's time for a word or a comment grows with the square of its length: megabytes in one line, such as a
 * damaged file may have, would take minutes. */
static const size_t LONGEST_LINE = 131072;

/* Where in a line the name of the file begins that it includes; npos if it includes none. As the library reads it,
 * the directive begins its line. Lines in comments count as well, which refuses more than the library would fail
 * on, and never less. */
static size_t name_in_include(std::string_view line)
{
    static const std::string_view directive = "@include";
    size_t at = line.find_first_not_of(BLANKS);
    if (at == std::string_view::npos || line.compare(at, directive.size(), directive) != 0)
        return std::string_view::npos;
    at = line.find_first_not_of(BLANKS, at + directive.size());
    return at != std::string_view::npos && line[at] == '"' ? at + 1 : std::string_view::npos;
}

/* The name up to its closing quote, a backslash before what is meant as it stands. Nothing if it isn't closed in
 * its line, or has a byte 0 in it: the library reads on behind both, and might come to a name that we don't see. */
static std::optional<std::string> quoted_name(std::string_view line, size_t at)
{
    std::string name;
    for (; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] == '\\' && at + 1 < line.size())
            ++at;
        name += line[at];
    }
    if (at == line.size() || name.find('\0') != std::string::npos)
        return std::nullopt;
    return name;
}

static bool is_safe(const std::string& path, std::set<std::string>* seen);

static bool is_safe_line(std::string_view line, std::set<std::string>* seen)
{
    if (line.size() > LONGEST_LINE)
        return false;
    /* Most lines have none, and blanks are slow to pass over. */
    if (line.find('@') == std::string_view::npos)
        return true;
    const size_t at = name_in_include(line);
    if (at == std::string_view::npos)
        return true;
    const std::optional<std::string> included = quoted_name(line, at);
    return included && is_safe(*included, seen);
}

/* With stdio, because C++ streams bring their locales up at the first use, which would be a tenth of a start. */
static bool has_safe_lines(FILE* file, std::set<std::string>* seen)
{
    std::string text; /* the part of a line that was read before its rest */
    char piece[4096];
    for (size_t count; (count = fread(piece, 1, sizeof piece, file)) > 0;) {
        text.append(piece, count);
        size_t begin = 0;
        for (size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
            if (!is_safe_line(std::string_view(text).substr(begin, end - begin), seen))
                return false;
        text.erase(0, begin);
        if (text.size() > LONGEST_LINE)
            return false;
    }
    return is_safe_line(text, seen) && ferror(file) == 0;
}

/* Each file is looked at once, however often and in whatever circle files include each other. */
static bool is_safe(const std::string& path, std::set<std::string>* seen)
{
    if (!seen->insert(path).second)
        return true;
    struct stat status = {};
    const int descriptor = open_path(path.c_str(), O_RDONLY, &status);
    if (descriptor < 0)
        return errno != EWOULDBLOCK;
    FILE* file = stream_of_descriptor(descriptor, "r");
    if (file == nullptr)
        return false;
    const bool safe = S_ISREG(status.st_mode) && has_safe_lines(file, seen);
    fclose(file);
    return safe;
}

int config_file_is_safe(const char* path)
{
    std::set<std::string> seen;
    return is_safe(path, &seen) ? 1 : 0;
}
