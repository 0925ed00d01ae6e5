/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CRECORDERMODEL_H
#define HALDEND_TESTS_CRECORDERMODEL_H

#include "tests/support/SVideoStates.h"

#include <QByteArray>
#include <QByteArrayList>

#include <map>

class CTimersModel;

/// The rules of recordings, playback and still images: states, answers, the calls of the codec service, the signals.
class CRecorderModel : SVideoStates
{
public:
    /// \name Around the daemon
    /// The codec service confirms or refuses; the files that can be opened, with their sizes.
    /// @{
    void setConfirming(bool bConfirming) { m_bConfirming = bConfirming; }
    void setFile(const QByteArray& rcPath, qint64 iBytes) { m_cFiles[rcPath] = iBytes; }
    /// A folder can be looked at, as a file whose size stays, but not opened.
    void setFolder(const QByteArray& rcPath) { m_cFolder = rcPath; }
    void growFile(const QByteArray& rcPath) { ++m_cFiles[rcPath]; }
    /// @}

    /// A command, with a file if it takes one: what it answers, after what it leaves for later.
    int command(const QByteArray& rcMethod, const QByteArray& rcFile, CTimersModel& rcTimers);

    /// The timer of the recorded file.
    void lookAtFile(CTimersModel& rcTimers);

    bool isInState(int iState) const { return m_iState == iState; }
    unsigned int recordedSeconds(const CTimersModel& rcTimers) const;

    /// Since the last time; as "video_image_saved i 0", and as CFakeCodec has them.
    QByteArrayList takeSignals();
    QByteArrayList takeCodecCalls();

private:
    struct SRow;
    static const SRow ROWS[];

    bool callCodec(const SRow& rsRow, const QByteArray& rcFile);
    int carryOut(const SRow& rsRow, const QByteArray& rcFile, CTimersModel& rcTimers);
    void startWatch(CTimersModel& rcTimers);
    void addSection(const CTimersModel& rcTimers);
    void checkLength(CTimersModel& rcTimers);
    int save(const QByteArray& rcFile, CTimersModel& rcTimers);
    int display(const QByteArray& rcFile);
    int clear();
    qint64 filmBytes() const;
    void signal(const char* pszName, int iValue);

    int m_iState = 0;
    bool m_bConfirming = true;
    std::map<QByteArray, qint64> m_cFiles; ///< bytes; -1: isn't there, but can be made
    QByteArray m_cFolder;
    QByteArray m_cFilm;
    qint64 m_iLastSize = 0;
    int m_iLooksUntilLength = 0;
    int m_iSectionStart = 0;
    int m_iRecorded = 0; ///< s, of earlier sections
    QByteArrayList m_cSignals;
    QByteArrayList m_cCodecCalls;
};

#endif
