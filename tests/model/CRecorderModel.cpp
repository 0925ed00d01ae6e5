/* SPDX-License-Identifier: MIT */
#include "tests/model/CRecorderModel.h"

#include "tests/model/CTimersModel.h"
#include "tests/model/Timers.h"
#include "tests/support/CVideoScene.h"

#include <algorithm>
#include <iterator>

namespace
{

using namespace VideoResult;

const int LOOK_S = 5;
const int LOOKS_BETWEEN_LENGTHS = 5;
const int MAX_LENGTH_S = 58 * 60;
const qint64 FOLDER_BYTES = 1; // any but 0
const qint64 IMAGE_BYTES = 54 + 720 * 576 * 4;

unsigned in(SVideoStates::EState eState)
{
    return 1U << eState;
}

} // namespace

/// A command that the codec service carries out.
struct CRecorderModel::SRow {
    const char* pszMethod;
    unsigned uiStates;
    int iTo;
    const char* pszCodec; ///< the call, without its arguments
};

const CRecorderModel::SRow CRecorderModel::ROWS[] = {
    {"start_video_recording",  in(IDLE),                             RECORDING,        "/Record record(si)"},
    {"pause_video_recording",  in(RECORDING),                        RECORDING_PAUSED, "/Record pause()"   },
    {"resume_video_recording", in(RECORDING_PAUSED),                 RECORDING,        "/Record resume()"  },
    {"stop_video_recording",   in(RECORDING) | in(RECORDING_PAUSED), IDLE,             "/Record stop()"    },
    {"start_video_playback",   in(IDLE),                             PLAYBACK,         "/Play play(s)"     },
    {"pause_video_playback",   in(PLAYBACK),                         PLAYBACK_PAUSED,  "/Play pause()"     },
    {"resume_video_playback",  in(PLAYBACK_PAUSED),                  PLAYBACK,         "/Play resume()"    },
    {"stop_video_playback",    in(PLAYBACK) | in(PLAYBACK_PAUSED),   IDLE,             "/Play stop()"      },
};

int CRecorderModel::command(const QByteArray& rcMethod, const QByteArray& rcFile, CTimersModel& rcTimers)
{
    if (rcMethod == "save_video_image")
        return save(rcFile, rcTimers);
    if (rcMethod == "display_video_image")
        return display(rcFile);
    if (rcMethod == "clear_video_image")
        return clear();
    const SRow* psRow = std::find_if(std::begin(ROWS), std::end(ROWS),
                                     [&rcMethod](const SRow& rsRow) { return rcMethod == rsRow.pszMethod; });
    const int iAnswer = carryOut(*psRow, rcFile, rcTimers);
    // A recording that is resumed may be too long already.
    if (iAnswer == OK && rcMethod == "resume_video_recording")
        checkLength(rcTimers);
    return iAnswer;
}

bool CRecorderModel::callCodec(const SRow& rsRow, const QByteArray& rcFile)
{
    QByteArray cCall = rsRow.pszCodec;
    if (cCall.endsWith("(si)"))
        cCall += ' ' + rcFile + ", 3";
    else if (cCall.endsWith("(s)"))
        cCall += ' ' + rcFile;
    m_cCodecCalls << cCall.trimmed();
    return m_bConfirming;
}

int CRecorderModel::carryOut(const SRow& rsRow, const QByteArray& rcFile, CTimersModel& rcTimers)
{
    if ((rsRow.uiStates & in(static_cast<EState>(m_iState))) == 0)
        return INVALID_STATE;
    const int iFrom = m_iState;
    const bool bConfirmed = callCodec(rsRow, rcFile);
    m_iState = bConfirmed ? rsRow.iTo : FAILED;
    if (!bConfirmed)
        return ERROR;
    if (iFrom == RECORDING && m_iState == RECORDING_PAUSED)
        addSection(rcTimers);
    if (iFrom == RECORDING || iFrom == RECORDING_PAUSED)
        rcTimers.stop(FILE_TIMER);
    if (m_iState == RECORDING && iFrom == IDLE) {
        m_cFilm = rcFile;
        m_iLastSize = 0;
    }
    if (m_iState == RECORDING)
        startWatch(rcTimers);
    if (m_iState == IDLE || iFrom == IDLE)
        m_iRecorded = 0;
    return OK;
}

void CRecorderModel::startWatch(CTimersModel& rcTimers)
{
    rcTimers.start(FILE_TIMER, LOOK_S);
    m_iLooksUntilLength = LOOKS_BETWEEN_LENGTHS;
    m_iSectionStart = rcTimers.now();
}

void CRecorderModel::addSection(const CTimersModel& rcTimers)
{
    m_iRecorded += rcTimers.now() - m_iSectionStart;
}

unsigned int CRecorderModel::recordedSeconds(const CTimersModel& rcTimers) const
{
    const int iSection = m_iState == RECORDING ? rcTimers.now() - m_iSectionStart : 0;
    return static_cast<unsigned int>(m_iRecorded + iSection);
}

qint64 CRecorderModel::filmBytes() const
{
    if (m_cFilm == m_cFolder)
        return FOLDER_BYTES;
    const auto it = m_cFiles.find(m_cFilm);
    return it != m_cFiles.end() ? it->second : -1;
}

void CRecorderModel::lookAtFile(CTimersModel& rcTimers)
{
    if (m_iState != RECORDING)
        return;
    const qint64 iSize = filmBytes();
    if (iSize < 0 || iSize == m_iLastSize) {
        rcTimers.stop(FILE_TIMER);
        m_cCodecCalls << "/Record stop()";
        m_iState = FAILED;
        signal("video_recording_error", ERROR);
    } else {
        m_iLastSize = iSize;
    }
    if (m_iLooksUntilLength-- != 0)
        return;
    m_iLooksUntilLength = LOOKS_BETWEEN_LENGTHS;
    checkLength(rcTimers);
}

void CRecorderModel::checkLength(CTimersModel& rcTimers)
{
    if (m_iState != RECORDING || recordedSeconds(rcTimers) < MAX_LENGTH_S)
        return;
    const int iStopped = command("stop_video_recording", QByteArray(), rcTimers);
    signal("video_recording_error", iStopped == OK ? MAX_LENGTH_REACHED : iStopped);
}

int CRecorderModel::save(const QByteArray& rcFile, CTimersModel& rcTimers)
{
    const int iFrom = m_iState;
    if (iFrom != IDLE && iFrom != RECORDING && iFrom != RECORDING_PAUSED)
        return INVALID_STATE;
    // A pause that isn't confirmed doesn't stop the save.
    command("pause_video_recording", QByteArray(), rcTimers);
    const auto it = m_cFiles.find(rcFile);
    if (it != m_cFiles.end())
        it->second = IMAGE_BYTES;
    m_iState = iFrom == RECORDING ? RECORDING_PAUSED : iFrom;
    signal("video_image_saved", it != m_cFiles.end() ? OK : FILE_OPEN_ERROR);
    if (iFrom == RECORDING)
        command("resume_video_recording", QByteArray(), rcTimers);
    return OK;
}

int CRecorderModel::display(const QByteArray& rcFile)
{
    if (m_iState != IDLE && m_iState != RECORDING_PAUSED)
        return INVALID_STATE;
    m_iState = m_iState == IDLE ? IMAGE : IMAGE_RECORDING_PAUSED;
    const auto it = m_cFiles.find(rcFile);
    if (it == m_cFiles.end() || it->second < 0)
        return FILE_OPEN_ERROR;
    return it->second < IMAGE_BYTES ? FILE_READ_ERROR : OK;
}

// Answers so in any case.
int CRecorderModel::clear()
{
    if (m_iState == IMAGE)
        m_iState = IDLE;
    else if (m_iState == IMAGE_RECORDING_PAUSED)
        m_iState = RECORDING_PAUSED;
    return INVALID_STATE;
}

void CRecorderModel::signal(const char* pszName, int iValue)
{
    m_cSignals << QByteArray(pszName) + " i " + QByteArray::number(iValue);
}

QByteArrayList CRecorderModel::takeSignals()
{
    QByteArrayList cSignals;
    cSignals.swap(m_cSignals);
    return cSignals;
}

QByteArrayList CRecorderModel::takeCodecCalls()
{
    QByteArrayList cCalls;
    cCalls.swap(m_cCodecCalls);
    return cCalls;
}
