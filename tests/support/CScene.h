/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSCENE_H
#define HALDEND_TESTS_CSCENE_H

#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

/// What a system test is played on: a private bus with the daemon's policy, a virtual board and the daemon, all its
/// own.
///
///     CScene cScene;
///     QVERIFY2(cScene.start(), cScene.describe());
///     cScene.daemon().send("/videodisplay", "set_video_size", {360, 288});
///     QVERIFY(cScene.daemon().settle());
///     QCOMPARE(cScene.board().limeRegister(CBoard::LIME_CAPTURE, 4), 0x0fd50eb1U);
///     QCOMPARE(cScene.end(), QString());
///
/// A test fails when the daemon does what no program for the board may do, unless that is announced.
class CScene
{
public:
    CScene() = default;
    ~CScene();

    CScene(const CScene&) = delete;
    CScene& operator=(const CScene&) = delete;

    /// Bus up, board made; the daemon knows both but isn't started.
    bool prepare();

    /// prepare() if that hasn't been done, and the daemon up to its bus name.
    bool start();

    /// Ends the daemon by SIGTERM. Returns what is wrong with the way it lived and ended: an exit status
    /// other than 0, or output on standard error that the test didn't announce, or what judge() says; empty if
    /// nothing is.
    QString end();

    /// Announces lines on standard error that end() would complain about otherwise.
    void announce(const QString& rcLine) { m_cAnnounced << rcLine; }

    /// What the board says of the daemon's operations so far, other than what was announced; empty if nothing.
    /// Tests that share a scene ask after each of them. The announcements are used up.
    QString judge();

    /// Announces a judgement of the board; see CJudgements.
    void announceJudgement(const QString& rcLine) { m_cAnnouncedJudgements << rcLine; }

    CPrivateBus& bus() { return m_cBus; }
    CBoard& board() { return m_cBoard.board(); }
    CDaemonProcess& daemon() { return m_cDaemon; }

    /// For failure messages.
    QByteArray describe();

private:
    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    CDaemonProcess m_cDaemon;
    QStringList m_cAnnounced;
    QStringList m_cAnnouncedJudgements;
    QString m_cError;
};

#endif
