/* SPDX-License-Identifier: MIT */
/* EXPECT() of the fuzzing targets: what doesn't hold ends the process, after a line on standard error. */
#ifndef HALDEND_TESTS_FUZZ_EXPECT_H
#define HALDEND_TESTS_FUZZ_EXPECT_H

#include <cstdio>
#include <cstdlib>

#define EXPECT(condition)                                                                 \
    do {                                                                                  \
        if (!(condition)) {                                                               \
            fprintf(stderr, "%s:%d: doesn't hold: %s\n", __FILE__, __LINE__, #condition); \
            abort();                                                                      \
        }                                                                                 \
    } while (false)

#endif
