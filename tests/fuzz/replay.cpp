/* SPDX-License-Identifier: MIT */
/* Goes once through the inputs that are named, for builds without a fuzzing engine.
 *
 * Usage: PROGRAM FILE...
 */
#include "tests/fuzz/fuzz_target.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

static bool is_taken(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(file), {}};
    const auto* data = reinterpret_cast<const uint8_t*>(input.data());
    return file.is_open() && LLVMFuzzerTestOneInput(data, input.size()) == INPUT_TAKEN;
}

int main(int argc, char** argv)
{
    int status = argc > 1 ? 0 : 2;
    for (int i = 1; i < argc; ++i) {
        printf("%s\n", argv[i]);
        fflush(stdout);
        if (!is_taken(argv[i])) {
            fprintf(stderr, "%s: refused, or not to be read\n", argv[i]);
            status = 1;
        }
    }
    return status;
}
