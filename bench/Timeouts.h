/* How long the bench waits for what should take milliseconds; what takes longer is broken. Milliseconds. */
#ifndef HALDEND_BENCH_TIMEOUTS_H
#define HALDEND_BENCH_TIMEOUTS_H

const int TIMEOUT_START_MS = 10000;
const int TIMEOUT_CALL_MS = 5000;

#endif
