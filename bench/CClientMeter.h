/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CCLIENTMETER_H
#define HALDEND_BENCH_CCLIENTMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CStage.h"

/// The clients that are compared.
enum EClient { eHaldenctl, eBusctl, CLIENTS };

/// What a round finds out about one of them.
enum EClientFigure {
    eOneCall, ///< milliseconds of a process: haldenctl status, or busctl with one getter
    eTexts, ///< milliseconds for 1000 texts: haldenctl with a file of commands, or a client in C, call by call
    CLIENT_FIGURES
};

/// Runs the clients against the daemon of a stage.
class CClientMeter
{
public:
    /// Starts the daemon, and makes the text that is set. Throws like the stage.
    explicit CClientMeter(CStage& rcStage);

    /// Throws std::runtime_error when a client doesn't do what it is measured for.
    CFigures measure(EClient eClient);

private:
    double run(const std::vector<std::string>& rcArguments) const;
    double setTexts() const;

    CStage& m_rcStage;
    std::unique_ptr<SService> m_pcDaemon;
    std::string m_cCommands; ///< file of the commands
};

#endif
