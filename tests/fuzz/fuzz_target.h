/* SPDX-License-Identifier: MIT */
/* What a fuzzing engine calls. The name is the engine's. */
#ifndef HALDEND_TESTS_FUZZ_TARGET_H
#define HALDEND_TESTS_FUZZ_TARGET_H

#include <stddef.h>
#include <stdint.h>

/* What it wants to know of an input: whether it may become part of the corpus. */
enum { INPUT_TAKEN = 0, INPUT_REFUSED = -1 };

/* Goes through one input. Leaves nothing behind that another input could see; ends the process if it finds a
 * fault. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

#endif
