/* SPDX-License-Identifier: MIT */
/* A wall clock that stands still. */
#include "tests/support/hw/stopped_clock.h"

#include <ctime>

#include <sys/time.h>

static timeval now;
static bool stopped = false;

static timeval real_time()
{
    timespec time = {};
    clock_gettime(CLOCK_REALTIME, &time);
    return {time.tv_sec, time.tv_nsec / 1000};
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
    now.tv_sec += seconds;
}

extern "C" {

int gettimeofday(timeval* __tv, void* /*__tz*/) noexcept
{
    *__tv = stopped ? now : real_time();
    return 0;
}
}
