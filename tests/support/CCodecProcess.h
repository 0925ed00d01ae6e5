/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CCODECPROCESS_H
#define HALDEND_TESTS_CCODECPROCESS_H

#include "tests/support/CChildProcess.h"
#include "tests/support/SClock.h"

#include <QString>

/// The codec stand-in as a process beside the daemon, on the bus and the board of a scene.
///
///     CCodecProcess cCodec;
///     QVERIFY2(cCodec.start(cScene.bus().address(), cScene.board().directory()), cCodec.describe());
///     cScene.board().setCodecMode(BOARD_CODEC_REFUSE);
class CCodecProcess
{
public:
    CCodecProcess();
    ~CCodecProcess();

    /// Adds a variable to the environment of the next start.
    void setVariable(const QString& rcName, const QString& rcValue);

    /// Starts on another clock.
    void useClock(const SClock& rsClock);

    /// Lets it record and play films from the next start on. By default it does without video, which costs nothing.
    void useVideo() { m_cArguments.clear(); }

    /// Takes another file as the program from the next start on.
    void useProgram(const QString& rcFile) { m_cProgram = rcFile; }

    /// Starts it and waits until it owns its name. False if it doesn't get there. After an end it can be
    /// started again.
    bool start(const QString& rcBusAddress, const QString& rcBoard);

    /// Waits for the end by itself, which is what the mode "die" leads to. False if it doesn't end.
    bool waitForEnd();

    /// Lets it stand still, so that a call of it lasts until it goes on.
    void hold();
    void goOn();

    /// Ends it at once, as a crash does, and waits for that.
    bool kill();

    /// Ends it, whatever it is doing.
    void end();

    QProcess& process() { return m_cProcess; }

    /// For failure messages.
    QByteArray describe();

private:
    void sendSignal(int iSignal);

    CChildProcess m_cProcess;
    QProcessEnvironment m_cEnvironment;
    QString m_cProgram;
    QStringList m_cArguments{QStringLiteral("--no-video")};
    qint64 m_iPid = 0; ///< while it runs, and until end()
};

#endif
