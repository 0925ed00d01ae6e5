/* SPDX-License-Identifier: MIT */
/* How haldenctl ends. Scripts go by these numbers. */
#ifndef HALDEND_CTL_EXITSTATUS_H
#define HALDEND_CTL_EXITSTATUS_H

enum EExitStatus {
    eDone = 0,
    eFailed = 1,     ///< the daemon refused or failed, or doctor or check-registers found something
    eWrongUse = 2,   ///< wrong command, argument or option; nothing was sent
    eNoDaemon = 3,   ///< no bus, or no daemon on it
    eNotAllowed = 4, ///< the bus denied the call
};

#endif
