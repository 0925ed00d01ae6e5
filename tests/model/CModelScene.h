/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CMODELSCENE_H
#define HALDEND_TESTS_CMODELSCENE_H

#include "tests/model/CCaller.h"
#include "tests/model/CDaemonModel.h"
#include "tests/model/CInterfaces.h"
#include "tests/support/CFakeCodec.h"
#include "tests/support/CScene.h"
#include "tests/support/FasterClock.h"

#include <memory>

/// What is compared with the model: the shipped daemon on a board, a bus and a leaping clock of its own, with a codec
/// service that only confirms or refuses.
class CModelScene
{
public:
    explicit CModelScene(const QVector<CInterfaces::SMethod>& rcMethods) : m_cMethods(rcMethods) {}

    /// Bus and board up. False if not; describe() says why.
    bool prepare();

    /// The model of a daemon that begin() has started.
    CDaemonModel newModel() const;

    /// Starts a daemon, and makes the world what a new model has. False if not.
    bool begin();

    /// Ends the daemon. Returns the first fault that the scene has seen, empty if there was none.
    QByteArray end();

    /// Carries a call out on the daemon, or in the world around it. What it answers, as the model has it.
    QByteArray carryOut(const SCall& rsCall, bool bReply);

    /// The first difference between the daemon and the model, or empty.
    QByteArray difference(CDaemonModel& rcModel);

    QByteArray describe() { return m_cScene.describe(); }

private:
    QString file(const char* pszName) const { return m_cFiles.filePath(QLatin1String(pszName)); }
    bool growFilm();
    bool settle(int iCalls);
    QVector<SCall> getterCalls(const CDaemonModel& rcModel) const;
    QByteArray codecDifference(CDaemonModel& rcModel);
    QByteArray getterDifference(CDaemonModel& rcModel);
    QByteArray pageDifference(const CDaemonModel& rcModel);

    const QVector<CInterfaces::SMethod>& m_cMethods;
    QTemporaryDir m_cFiles;
    CLeapingClock m_cClock;
    CScene m_cScene;
    CFakeCodec m_cCodec;
    std::unique_ptr<CCaller> m_pcCaller;
    bool m_bCodecMayBeAsked = false; ///< by the last step
};

#endif
