/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DAEMON_CSIGNALHOOK_H
#define HALDEND_DAEMON_CSIGNALHOOK_H

#include <QObject>

class QSocketNotifier;

/// Turns SIGHUP and SIGTERM into an orderly end of the event loop.
///
/// Each signal handler only writes one byte to a socket pair of its own; the event loop watches the other
/// ends and quits the application. SIGHUP reloads nothing. A signal between install() and the start of the
/// loop ends the loop as soon as it starts.
class CSignalHook : public QObject
{
    Q_OBJECT

public:
    /// Opens nothing yet.
    CSignalHook();

    /// Opens the socket pairs and installs both handlers, once. Returns false if a socket pair can't be
    /// opened; so does a second call, which changes nothing.
    [[nodiscard]] bool install();

    /// Opens both socket pairs, and watches them from the event loop. False if one can't be opened.
    [[nodiscard]] bool setupSockets();

    /// Installs both handlers. Returns false only on a positive result of sigaction(), which never comes: a
    /// handler that can't be installed doesn't stop the start-up.
    ///
    /// Kept: that test. Boards whose kernel refuses a handler start nevertheless.
    [[nodiscard]] static bool setupUnixSignalHandlers();

    static void hupSignalHandler(int iSignal);
    static void termSignalHandler(int iSignal);

public slots:
    virtual void onSigHup();
    virtual void onSigTerm();

private:
    static int m_iSigHupHandle[2];  ///< [0] written by the handler, [1] watched by the event loop
    static int m_iSigTermHandle[2]; ///< the same for SIGTERM

    QSocketNotifier* m_pcSigHupNotifier;  ///< Qt child
    QSocketNotifier* m_pcSigTermNotifier; ///< Qt child
};

#endif
