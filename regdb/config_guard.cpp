/* SPDX-License-Identifier: MIT */
/* Whether a file may be given to the configuration library. */
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

/* The library's time for a word or a comment grows with the square of its length. One line of megabytes, as
 * in a damaged file, would take minutes. */
static const size_t LONGEST_LINE = 131072;
static const char LINE_TOO_LONG[] = "line longer than 128 KiB";

/* The library's own text for a file that it can't open. */
static const char UNREADABLE[] = "file I/O error";

/* The check of one file and of all files that it includes. */
struct look_ahead {
    std::set<std::string> seen;
    int long_line; /* number of the line that is too long, 0 without one */
};

/* Offset of the file name in an @include line, npos for any other line. Like the library, takes only a
 * directive at the start of its line. Lines in comments count too: that may refuse a good file, but never
 * passes a bad one. */
static size_t name_in_include(std::string_view line)
{
    static const std::string_view directive = "@include";
    /* Most lines have no '@', and the search for a directive is slow on blanks. A line that has one isn't
     * blank. */
    if (line.find('@') == std::string_view::npos)
        return std::string_view::npos;
    size_t at = line.find_first_not_of(BLANKS);
    if (line.compare(at, directive.size(), directive) != 0)
        return std::string_view::npos;
    at = line.find_first_not_of(BLANKS, at + directive.size());
    return at != std::string_view::npos && line[at] == '"' ? at + 1 : std::string_view::npos;
}

/* The name that begins the rest of a line, up to its closing quote; a backslash makes the next character
 * literal. Nothing if the quote is missing or the name holds a byte 0: the library reads on behind both, and
 * may come to a name that is not checked here. */
static std::optional<std::string> quoted_name(std::string_view rest)
{
    std::string name;
    size_t at = 0;
    for (; at < rest.size() && rest[at] != '"'; ++at) {
        if (rest[at] == '\\' && at + 1 < rest.size())
            ++at;
        name += rest[at];
    }
    if (at == rest.size() || name.find('\0') != std::string::npos)
        return std::nullopt;
    return name;
}

static bool is_safe(const std::string& path, look_ahead* look);

static bool is_safe_line(std::string_view line, int number, look_ahead* look)
{
    if (line.size() > LONGEST_LINE) {
        look->long_line = number;
        return false;
    }
    const size_t at = name_in_include(line);
    if (at == std::string_view::npos)
        return true;
    const std::optional<std::string> included = quoted_name(line.substr(at));
    return included && is_safe(*included, look);
}

/* stdio, because the first use of a C++ stream sets up locales: a tenth of the daemon's start. */
static bool has_safe_lines(FILE* file, look_ahead* look)
{
    std::string text; /* the part of a line that was read before its rest */
    int number = 1;
    char piece[4096];
    for (size_t count; (count = fread(piece, 1, sizeof piece, file)) > 0;) {
        text.append(piece, count);
        size_t begin = 0;
        for (size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1, ++number)
            if (!is_safe_line(std::string_view(text).substr(begin, end - begin), number, look))
                return false;
        text.erase(0, begin);
        if (text.size() > LONGEST_LINE)
            break;
    }
    return is_safe_line(text, number, look) && ferror(file) == 0;
}

/* Each file is checked once, so files that include each other in a circle end the search. */
static bool is_safe(const std::string& path, look_ahead* look)
{
    if (!look->seen.insert(path).second)
        return true;
    struct stat status = {};
    const int descriptor = open_path(path.c_str(), O_RDONLY, &status);
    if (descriptor < 0)
        return errno != EWOULDBLOCK;
    FILE* file = stream_of_descriptor(descriptor, "r");
    if (file == nullptr)
        return false;
    const bool safe = S_ISREG(status.st_mode) && has_safe_lines(file, look);
    fclose(file);
    return safe;
}

const char* config_file_fault(const char* path, int* line)
{
    look_ahead look = {};
    const bool safe = is_safe(path, &look);
    *line = look.long_line;
    if (safe)
        return nullptr;
    return look.long_line != 0 ? LINE_TOO_LONG : UNREADABLE;
}
