/* SPDX-License-Identifier: MIT */
/* What the kernel counts of a process. All functions throw std::runtime_error when it doesn't tell. */
#ifndef HALDEND_BENCH_PROCESSFIGURES_H
#define HALDEND_BENCH_PROCESSFIGURES_H

#include <cstdint>
#include <string>

/// Processor time used so far by all threads of a process, in nanoseconds.
std::uint64_t processorTime(std::int64_t i64Process);

/// How often the threads of a process went to sleep so far, and so had to be woken up.
std::uint64_t sleeps(std::int64_t i64Process);

/// Memory of a process that is there at the moment, shared or not, in kilobytes. Mapped files below the directory are
/// left out.
std::uint64_t residentMemory(std::int64_t i64Process, const std::string& rcDirectory);

#endif
