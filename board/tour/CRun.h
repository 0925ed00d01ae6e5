/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOUR_CRUN_H
#define HALDEND_BOARD_TOUR_CRUN_H

#include "board/tour/CEventPrinter.h"
#include "board/tour/CRunFolder.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>

#include <functional>

/// A bus, a board, the codec stand-in, the daemon and the picture, for a working day: a program that ends is reported
/// and can be started again while the others go on. What happens is printed.
///
/// On its bus it has the name velmar.haldendrun, and an object "/" with restart(), for ./run restart.
class CRun : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "velmar.haldendrun")

public:
    /// The folder is open, and outlives the run. bVerbose: what the programs say comes out as it is.
    CRun(CRunFolder& rcFolder, bool bVerbose);
    ~CRun() override;

    /// Starts everything. False if that fails; error() says why.
    [[nodiscard]] bool start();

    /// Ends the daemon in order; the others end with the object. False if it doesn't end well.
    [[nodiscard]] bool end();

    QString busAddress() const { return CPrivateBus::addressOf(m_rcFolder.socket()); }
    QString picture() const { return m_rcFolder.file("picture.png"); }
    QString liveView() const { return m_cLiveView; } ///< its address, or that there is none
    CBoard& board() { return m_rcFolder.board(); }
    QString error() const { return m_cError; }

    /// What the client of a run does: asks the run in a folder for a restart. Empty, or what is wrong.
    static QString askForRestart(const CRunFolder& rcFolder, const QString& rcProgram);

public slots:
    /// rcProgram: daemon or codec. Answers when it serves again.
    Q_SCRIPTABLE void restart(const QString& rcProgram);

private slots:
    void onSignal(const QDBusMessage& rcMessage);

private:
    bool startCodec();
    bool startDaemon();
    void startLiveView();
    void restartCodec();
    void restartDaemon();
    void watch(const char* pszWho, QProcess& rcProcess);
    void watchEnd(const char* pszWho, QProcess& rcProcess);
    void reportEnd(const char* pszWho, const QProcess& rcProcess);
    bool fail(const QString& rcError);

    CRunFolder& m_rcFolder;
    bool m_bVerbose;
    CEventPrinter m_cPrinter;
    CPrivateBus m_cBus;
    CCodecProcess m_cCodec;
    CDaemonProcess m_cDaemon;
    CChildProcess m_cFollower;
    CChildProcess m_cServer;
    QString m_cLiveView;
    QString m_cError;
    bool m_bBusy = true; ///< a program is started or ended on purpose
};

#endif
