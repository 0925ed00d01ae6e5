/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CDRIFTMETER_H
#define HALDEND_BENCH_CDRIFTMETER_H

#include "tests/support/CCodecProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

#include <QString>

#include <string>

/// A recording in real time, beside the clock. Seconds.
struct SDrift {
    double dClock;     ///< between the answers to "record" and to "stop"
    double dFilm;      ///< the film's length
    double dProcessor; ///< time that the codec stand-in spent
    std::string cSaid; ///< by the stand-in, such as how many frames came late
};

/// Records by the codec stand-in, on a board and a bus of its own.
class CDriftMeter
{
public:
    /// Throws std::runtime_error when it can't record, and CInterruption.
    SDrift record(int iSeconds);

private:
    CMemoryFolder m_cFolder;
    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    CCodecProcess m_cCodec;
};

#endif
