/* SPDX-License-Identifier: MIT */
/* How long the tests wait before they call something hung. Nothing waits this long when all is well; the
 * limits are wide because sanitized and emulated runs are slow.
 */
#ifndef HALDEND_TESTS_TIMEOUTS_H
#define HALDEND_TESTS_TIMEOUTS_H

const int TIMEOUT_PROCESS_MS = 20000; // start or end of a process
const int TIMEOUT_CALL_MS = 20000;    // reply to a bus call

#endif
