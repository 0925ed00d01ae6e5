/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CPROCESSINGMETER_H
#define HALDEND_BENCH_CPROCESSINGMETER_H

#include "bench/CRoundStatistics.h"
#include "bench/CStage.h"

#include <memory>

/// What is compared.
enum EProcessingSide {
    eProcessing,      ///< the daemon
    eLeastProcessing, ///< the least that does the same in Qt; see the figures
    PROCESSING_SIDES
};

/// What a round finds out.
enum EProcessingFigure {
    eRecording,  ///< microseconds to start and stop a recording. Least: a bare service that calls the codec
    eStillImage, ///< milliseconds to save a still image, pauses left out. Least: the same in a few lines of C, in a bare service
    eIdleWakeUps, ///< times a second that an idle service is woken up. Least: a timer of a second, one ioctl
    eIdleCpu,     ///< microseconds of processor time a second of the idle service
    PROCESSING_FIGURES
};

/// Measures the sides. Throws when one doesn't do what it is measured for.
class CProcessingMeter
{
public:
    CProcessingMeter();

    /// eRecording or eStillImage of a side.
    double measure(EProcessingSide eSide, EProcessingFigure eFigure);

    /// Both idle figures of both sides at the same time, which takes two seconds.
    void measureIdle(CRoundStatistics::CRound& rcRound);

private:
    const std::string& service(EProcessingSide eSide) const; ///< bus name
    double record(EProcessingSide eSide);
    void recordWith(const std::string& rcName);
    double saveStillImage(EProcessingSide eSide);
    void expectSameImage();

    CStage m_cStage;
    std::unique_ptr<SService> m_pcDaemon;
    std::unique_ptr<SService> m_pcBare;
    std::unique_ptr<SService> m_pcPoll;
    std::unique_ptr<SService> m_pcCodec;
};

#endif
