/* SPDX-License-Identifier: MIT */
/* Allocations that fail on purpose. The program has to be linked with --wrap=malloc and --wrap=calloc, which
 * reach the calls of our own objects and leave the libraries' alone. */
#ifndef HALDEND_TESTS_FAILING_MALLOC_H
#define HALDEND_TESTS_FAILING_MALLOC_H

/* While one lives, the first so-many allocations succeed and all others fail. */
class failing_malloc
{
public:
    explicit failing_malloc(int succeeding = 0);
    ~failing_malloc();
    failing_malloc(const failing_malloc&) = delete;
    failing_malloc& operator=(const failing_malloc&) = delete;
};

#endif
