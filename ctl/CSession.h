/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CSESSION_H
#define HALDEND_CTL_CSESSION_H

#include "ctl/CBus.h"
#include "ctl/COutput.h"

#include <deque>
#include <functional>
#include <memory>

class CArguments;
class CCommandRun;
struct SCommand;

/// One run of haldenctl: where the bus is, how answers look, and the commands on their way.
class CSession
{
public:
    struct SSettings {
        CBus::SPlace sPlace;
        COutput::SStyle sStyle;
        bool bForce = false;
    };

    /// Goes over the answers to a command's calls, in their order.
    using CFinish = std::function<void(CCommandRun&, const QList<QVariantList>&)>;

    explicit CSession(const SSettings& rsSettings);
    ~CSession();

    /// Reads and runs a command. It may still be on its way then. iLine: of a file of commands, counted from 1; 0
    /// elsewhere.
    void run(const QStringList& rcWords, int iLine = 0);

    /// Waits for all commands. Returns the exit status: that of the first that failed, or 0.
    int finish();

    /// The connection, made when it is wanted first. Throws CFailure if there is no bus.
    CBus& bus();

    COutput& output() { return m_cOutput; }
    const SSettings& settings() const { return m_sSettings; }

    /// Leaves a command until its calls are answered. Those before it are finished first.
    void later(const std::shared_ptr<CCommandRun>& rpcRun, const QList<SAsked>& rcAsked, CFinish fnFinish);

    /// Waits for all commands before this moment.
    void drain();

private:
    struct SStep {
        std::shared_ptr<CCommandRun> pcRun;
        QList<SAsked> cAsked;
        CFinish fnFinish;
    };

    void apply(const CArguments& rcArguments);
    void finishFirst();
    void begin(CCommandRun& rcRun, const SCommand* psCommand, const QStringList& rcWords, int iWords,
               int iLine);
    void count(int iStatus);

    SSettings m_sSettings;
    COutput m_cOutput;
    std::unique_ptr<CBus> m_pcBus;
    std::deque<SStep> m_cSteps;
    int m_iStatus = 0;
};

#endif
