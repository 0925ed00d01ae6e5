/* SPDX-License-Identifier: MIT */
/* Sleeps that take no time: defines sleep and usleep, and so replaces them in the program that links it. */
#ifndef HALDEND_TESTS_SKIPPED_SLEEP_H
#define HALDEND_TESTS_SKIPPED_SLEEP_H

#include <functional>

/* What is done in the place of the next sleep; nothing in the place of those after it. */
void skipped_sleep_do(const std::function<void()>& deed);

#endif
