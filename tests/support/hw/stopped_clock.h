/* SPDX-License-Identifier: MIT */
/* A wall clock that stands still: defines gettimeofday, and so replaces it in the program that links it and in
 * its libraries, whose dates and times come from it. Timers have another clock. */
#ifndef HALDEND_TESTS_STOPPED_CLOCK_H
#define HALDEND_TESTS_STOPPED_CLOCK_H

/* While one lives, time passes only as told. */
class stopped_clock
{
public:
    stopped_clock();
    ~stopped_clock();
    stopped_clock(const stopped_clock&) = delete;
    stopped_clock& operator=(const stopped_clock&) = delete;

    static void advance(long seconds);
};

#endif
