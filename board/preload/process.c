/* SPDX-License-Identifier: MIT */
/* Functions that are taken over only to make them fail. */
#include "board/devices/devices.h"
#include "board/preload/wraps.h"

#include <signal.h>

/* True if the call has to fail; then errno is set. */
static bool strikes(enum board_operation operation)
{
    const struct board* board = board_current();
    int error = board != NULL ? fault_take(board, operation, NULL) : 0;
    if (error != 0)
        errno = error;
    return error != 0;
}

NEXT(fork, pid_t, void)
pid_t board_fork(void) WRAPS(fork);
pid_t board_fork(void)
{
    return strikes(BOARD_OPERATION_FORK) ? -1 : next_fork()();
}

NEXT(socketpair, int, int, int, int, int*)
int board_socketpair(int domain, int type, int protocol, int* sockets) WRAPS(socketpair);
int board_socketpair(int domain, int type, int protocol, int* sockets)
{
    return strikes(BOARD_OPERATION_SOCKETPAIR) ? -1 : next_socketpair()(domain, type, protocol, sockets);
}

NEXT(sigaction, int, int, const struct sigaction*, struct sigaction*)
int board_sigaction(int number, const struct sigaction* action, struct sigaction* previous) WRAPS(sigaction);
int board_sigaction(int number, const struct sigaction* action, struct sigaction* previous)
{
    return strikes(BOARD_OPERATION_SIGACTION) ? -1 : next_sigaction()(number, action, previous);
}
