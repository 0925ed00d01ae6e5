/* SPDX-License-Identifier: MIT */
/* Allocations that fail on purpose, and those that succeed under watch: malloc() gives memory that isn't zero, and
 * none for 0 bytes, as some C libraries do; a write behind a block ends the process when the block is freed. The
 * program has to be linked with --wrap=malloc, --wrap=calloc and --wrap=free, which reach the calls of our own
 * objects and leave the libraries' alone. */
#ifndef HALDEND_TESTS_FAILING_MALLOC_H
#define HALDEND_TESTS_FAILING_MALLOC_H

#include <cstddef>

/* While one lives, the first so-many allocations succeed and all others fail. */
class failing_malloc
{
public:
    explicit failing_malloc(int succeeding = 0);
    ~failing_malloc();
    failing_malloc(const failing_malloc&) = delete;
    failing_malloc& operator=(const failing_malloc&) = delete;
};

/* Ends the process if something has written behind a block that isn't freed. */
void expect_blocks_whole();

/* The number of blocks that are allocated and not freed. */
size_t allocated_blocks();

#endif
