/* SPDX-License-Identifier: MIT */
/* What scripts/mutants puts into the daemon's sources: each mutant is a number, and HALDEND_MUTANT chooses one of them when a
 * program starts. So all mutants are built at once.
 *
 * HALDEND_MUTANTS_REACHED names a file with a byte for each mutant: those that a program reaches become 1.
 */
#ifndef HALDEND_TESTS_MUTANTS_MUTANT_H
#define HALDEND_TESTS_MUTANTS_MUTANT_H

#include <cstddef>
#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace mutants
{

const size_t MOST = 65536;

inline unsigned char* map_reached()
{
    const char* path = getenv("HALDEND_MUTANTS_REACHED");
    if (path == nullptr)
        return nullptr;
    /* By number: the virtual board replaces the functions. */
    const auto fd = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC));
    const long at = syscall(SYS_mmap, nullptr, MOST, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    syscall(SYS_close, fd);
    return reinterpret_cast<unsigned char*>(at);
}

inline bool on(int number)
{
    static const char* const chosen = getenv("HALDEND_MUTANT");
    static const int mutant = chosen != nullptr ? atoi(chosen) : 0;
    static unsigned char* const reached = map_reached();
    if (reached != nullptr)
        reached[number] = 1;
    return number == mutant;
}

template <typename T>
T constant(int number, T value, T other)
{
    return on(number) ? other : value;
}

inline const char* text(int number, const char* value)
{
    return on(number) ? "" : value;
}

/* Operators: with the first number the second operator takes the first one's place, and so on. */
#define MUTANT_OPERATOR(name, op, first)            \
    template <typename A, typename B>               \
    auto name(int number, const A& a, const B& b)   \
    {                                               \
        return on(number) ? (a first b) : (a op b); \
    }
#define MUTANT_COMPARISON(name, op, first, second)                                  \
    template <typename A, typename B>                                               \
    bool name(int number, const A& a, const B& b)                                   \
    {                                                                               \
        return on(number) ? (a first b) : on(number + 1) ? (a second b) : (a op b); \
    }
MUTANT_OPERATOR(equal, ==, !=)
MUTANT_OPERATOR(unequal, !=, ==)
MUTANT_COMPARISON(less, <, <=, >=)
MUTANT_COMPARISON(less_equal, <=, <, >)
MUTANT_COMPARISON(greater, >, >=, <=)
MUTANT_COMPARISON(greater_equal, >=, >, <)
MUTANT_OPERATOR(add, +, -)
MUTANT_OPERATOR(subtract, -, +)
MUTANT_OPERATOR(multiply, *, /)
MUTANT_OPERATOR(divide, /, *)
MUTANT_OPERATOR(modulo, %, *)
MUTANT_OPERATOR(bit_and, &, |)
MUTANT_OPERATOR(bit_or, |, &)
MUTANT_OPERATOR(shift_left, <<, >>)
MUTANT_OPERATOR(shift_right, >>, <<)
#undef MUTANT_OPERATOR
#undef MUTANT_COMPARISON

} // namespace mutants

#endif
