/* SPDX-License-Identifier: MIT */
#include "bench/CProcessingMeter.h"

#include "bench/ProcessFigures.h"
#include "fpga/video_image.h"
#include "hw/video_geometry.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <unistd.h>

namespace
{

using CClock = std::chrono::steady_clock;

const char* const OBJECT = "videoprocessing";
const char* const FILM = "film.ts";
const int RECORDINGS = 50;
const unsigned int IDLE_TIME_S = 2;

// A still image lets the FPGA finish a frame, and the file system settle.
const double PAUSES_MS = 1100;

const char* const IMAGES[] = {"still.bmp", "reference.bmp"}; // by side
const std::size_t HEADER_BYTES = 54;
const std::size_t LINE_BYTES = VIDEO_LINE_BYTES;

double microsecondsSince(CClock::time_point cStart)
{
    return std::chrono::duration<double, std::micro>(CClock::now() - cStart).count();
}

void expect(bool bDone, const char* pszWhat)
{
    if (!bDone)
        throw std::runtime_error(pszWhat);
}

std::string contents(const std::string& rcFile)
{
    std::ifstream cFile(rcFile, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(cFile), {});
}

} // namespace

CProcessingMeter::CProcessingMeter()
{
    m_pcCodec = m_cStage.start(eBareCodec);
    m_pcDaemon = m_cStage.start(eDaemon);
    m_pcPoll = m_cStage.start(eBareQtPoll);
    m_pcBare = m_cStage.start(eBareQtProcessing);
    for (const SService* psService : {m_pcDaemon.get(), m_pcBare.get()})
        m_cStage.client().listen(psService->cBusName, OBJECT, "video_image_saved");
    expectSameImage();
}

const std::string& CProcessingMeter::service(EProcessingSide eSide) const
{
    return (eSide == eProcessing ? m_pcDaemon : m_pcBare)->cBusName;
}

double CProcessingMeter::measure(EProcessingSide eSide, EProcessingFigure eFigure)
{
    return eFigure == eRecording ? record(eSide) : saveStillImage(eSide);
}

double CProcessingMeter::record(EProcessingSide eSide)
{
    const CClock::time_point cStart = CClock::now();
    for (int i = 0; i < RECORDINGS; ++i)
        recordWith(service(eSide));
    return microsecondsSince(cStart) / RECORDINGS;
}

void CProcessingMeter::recordWith(const std::string& rcName)
{
    CBusClient& rcClient = m_cStage.client();
    expect(rcClient.call(rcName, OBJECT, "start_video_recording", "s", m_cStage.file(FILM).c_str()) == 0 &&
               rcClient.get(rcName, OBJECT, "stop_video_recording") == 0,
           "no recording");
}

double CProcessingMeter::saveStillImage(EProcessingSide eSide)
{
    const std::string& rcName = service(eSide);
    const std::string cFile = m_cStage.file(IMAGES[eSide]);
    CBusClient& rcClient = m_cStage.client();
    const CClock::time_point cStart = CClock::now();
    expect(rcClient.call(rcName, OBJECT, "save_video_image", "s", cFile.c_str()) == 0 &&
               rcClient.waitForSignal() == 0,
           "no still image");
    return microsecondsSince(cStart) / 1000 - PAUSES_MS;
}

// But for the header, and the last line, which the overlay library leaves as it is.
void CProcessingMeter::expectSameImage()
{
    saveStillImage(eProcessing);
    saveStillImage(eLeastProcessing);
    const std::string cOurs = contents(m_cStage.file(IMAGES[eProcessing]));
    const std::string cReference = contents(m_cStage.file(IMAGES[eLeastProcessing]));
    expect(cOurs.size() == HEADER_BYTES + VIDEO_IMAGE_SIZE && cReference.size() == cOurs.size() &&
               cOurs.compare(HEADER_BYTES, VIDEO_IMAGE_SIZE - LINE_BYTES, cReference, HEADER_BYTES,
                             VIDEO_IMAGE_SIZE - LINE_BYTES) == 0,
           "the still images differ");
}

void CProcessingMeter::measureIdle(CRoundStatistics::CRound& rcRound)
{
    const std::int64_t ai64Processes[] = {m_pcDaemon->cProcess.processId(),
                                          m_pcPoll->cProcess.processId()}; // by side
    std::uint64_t au64Sleeps[] = {0, 0};
    std::uint64_t au64Cpu[] = {0, 0};
    for (std::size_t i = 0; i < std::size(ai64Processes); ++i) {
        au64Sleeps[i] = sleeps(ai64Processes[i]);
        au64Cpu[i] = processorTime(ai64Processes[i]);
    }
    sleep(IDLE_TIME_S);
    for (std::size_t i = 0; i < std::size(ai64Processes); ++i) {
        rcRound[i][eIdleWakeUps] =
            static_cast<double>(sleeps(ai64Processes[i]) - au64Sleeps[i]) / IDLE_TIME_S;
        rcRound[i][eIdleCpu] =
            static_cast<double>(processorTime(ai64Processes[i]) - au64Cpu[i]) / 1e3 / IDLE_TIME_S;
    }
}
