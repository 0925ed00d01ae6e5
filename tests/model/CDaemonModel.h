/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CDAEMONMODEL_H
#define HALDEND_TESTS_CDAEMONMODEL_H

#include "tests/model/CRecorderModel.h"
#include "tests/model/CTextLayerModel.h"
#include "tests/model/CTimersModel.h"
#include "tests/model/SCall.h"

#include <QByteArrayList>

/// What the four interfaces promise, from the start of a daemon on. It knows no other code of the daemon than the
/// characters of the glyph sets and the names of the features that the board doesn't have.
class CDaemonModel
{
public:
    /// What happens around the daemon is a call of this path: see applyWorld().
    static const char* const WORLD;

    CDaemonModel();

    /// The files that clients name, a film that is there and a still that isn't.
    void setFiles(const QByteArray& rcFilm, const QByteArray& rcStill);
    const QByteArray& film() const { return m_cFilm; }
    const QByteArray& still() const { return m_cStill; }

    /// Carries a call out. What it answers: "" if nothing, or the types and values, as in "av i 1 i 5". Null if the
    /// model doesn't know the method.
    QByteArray apply(const SCall& rsCall);

    const CTextLayerModel& texts() const { return m_cTexts; }

    /// Signals since the last time, as in "videocounter_changed i 0 i 0 i 1 i 0"; those of one name in their order.
    QByteArrayList takeSignals();

    QByteArrayList takeCodecCalls() { return m_cRecorder.takeCodecCalls(); }

private:
    using CArguments = QVariantList;
    using FMethod = QByteArray (CDaemonModel::*)(const CArguments&);
    struct SRow {
        const char* pszMethod;
        FMethod pfMethod;
    };
    static const SRow ROWS[];

    QByteArray applyWorld(const SCall& rsCall);
    bool isWithoutEffect(const QByteArray& rcMethod) const;
    void onTimer(const CTimersModel::SPurpose& rsPurpose);

    QByteArray setLocale(const CArguments& rcArguments);
    QByteArray showOverlay(const CArguments& rcArguments);
    QByteArray hideOverlay(const CArguments& rcArguments);
    QByteArray isOverlayVisible(const CArguments& rcArguments);
    QByteArray lineWidth(const CArguments& rcArguments);
    QByteArray lineCount(const CArguments& rcArguments);
    QByteArray setTransparency(const CArguments& rcArguments);

    QByteArray createText(const CArguments& rcArguments);
    QByteArray destroyText(const CArguments& rcArguments);
    QByteArray destroyAllTexts(const CArguments& rcArguments);
    QByteArray showText(const CArguments& rcArguments);
    QByteArray hideText(const CArguments& rcArguments);
    QByteArray showAllTexts(const CArguments& rcArguments);
    QByteArray hideAllTexts(const CArguments& rcArguments);
    QByteArray setString(const CArguments& rcArguments);
    QByteArray setPosition(const CArguments& rcArguments);
    QByteArray setColors(const CArguments& rcArguments);
    QByteArray setId(const CArguments& rcArguments);
    QByteArray handleById(const CArguments& rcArguments);
    QByteArray id(const CArguments& rcArguments);
    QByteArray string(const CArguments& rcArguments);
    QByteArray isVisible(const CArguments& rcArguments);
    QByteArray position(const CArguments& rcArguments);
    QByteArray end(const CArguments& rcArguments);
    QByteArray format(const CArguments& rcArguments);
    QByteArray colors(const CArguments& rcArguments);
    QByteArray drawTemporary(const CArguments& rcArguments);
    QByteArray clearTemporary(const CArguments& rcArguments);
    void destroy(unsigned int uHandle);

    QByteArray startCounter(const CArguments& rcArguments);
    QByteArray pauseCounter(const CArguments& rcArguments);
    QByteArray resumeCounter(const CArguments& rcArguments);
    QByteArray stopCounter(const CArguments& rcArguments);
    QByteArray setCounter(const CArguments& rcArguments);
    QByteArray counter(const CArguments& rcArguments);
    QByteArray isCounterActive(const CArguments& rcArguments);
    bool ownsCounter(const CArguments& rcArguments) const;
    void tick();
    void showCounter();

    QByteArray recordedTime(const CArguments& rcArguments);
    QByteArray inputType(const CArguments& rcArguments);
    QByteArray isInputAvailable(const CArguments& rcArguments);
    QByteArray setInputEnabled(const CArguments& rcArguments);
    QByteArray dataRate(const CArguments& rcArguments);
    QByteArray isRecording(const CArguments& rcArguments);
    QByteArray isRecordingPaused(const CArguments& rcArguments);
    QByteArray isPlaying(const CArguments& rcArguments);
    QByteArray isPlaybackPaused(const CArguments& rcArguments);

    QByteArray setVideoSize(const CArguments& rcArguments);
    QByteArray videoWidth(const CArguments& rcArguments);
    QByteArray videoHeight(const CArguments& rcArguments);
    QByteArray reload(const CArguments& rcArguments);

    CTimersModel m_cTimers;
    CTextLayerModel m_cTexts;
    CRecorderModel m_cRecorder;
    QByteArray m_cFilm;
    QByteArray m_cStill;
    bool m_bOverlay = false;
    bool m_bCounter = false;
    int m_aiCounter[5] = {}; ///< owner, hours, minutes, seconds, frames
    bool m_bPlugged = true;
    bool m_bSignal = true; ///< as it was seen last
    bool m_bAutoSync = true;
    int m_iWidth = 688;
    int m_iHeight = 573;
    QByteArrayList m_cSignals;
};

#endif
