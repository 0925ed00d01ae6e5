/* SPDX-License-Identifier: MIT */
/* A wall clock that stands still. */
#include "tests/support/hw/stopped_clock.h"

#include <ctime>

/* As wide as in the program's libraries, whatever this program's own times are. */
struct library_time {
    long seconds;
    long microseconds;
};

static library_time now;
static bool stopped = false;

static library_time real_time()
{
    timespec time = {};
    clock_gettime(CLOCK_REALTIME, &time);
    return {static_cast<long>(time.tv_sec), time.tv_nsec / 1000};
}

stopped_clock::stopped_clock()
{
    now = real_time();
    stopped = true;
}

stopped_clock::~stopped_clock()
{
    stopped = false;
}

void stopped_clock::advance(long seconds)
{
    now.seconds += seconds;
}

/* The C library's header may give the public name to another function. */
extern "C" int stopped_gettimeofday(library_time* time, void* zone) __asm__("gettimeofday");

extern "C" int stopped_gettimeofday(library_time* time, void* /*zone*/)
{
    *time = stopped ? now : real_time();
    return 0;
}
