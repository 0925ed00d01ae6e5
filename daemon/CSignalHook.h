#ifndef HALDEND_DAEMON_CSIGNALHOOK_H
#define HALDEND_DAEMON_CSIGNALHOOK_H

#include <QObject>

class QSocketNotifier;

/// Turns SIGHUP and SIGTERM into an orderly end of the event loop.
///
/// The signal handlers do nothing but write one byte to a socket pair each; the event loop watches the
/// other ends and quits the application. SIGHUP reloads nothing. A signal that comes after install() and
/// before the loop runs ends the loop as soon as it starts.
class CSignalHook : public QObject
{
    Q_OBJECT

public:
    /// Opens nothing yet.
    CSignalHook();

    /// Opens the socket pairs and installs both handlers, once: a second call returns false and changes
    /// nothing. Also false if a socket pair can't be opened.
    bool install();

    bool setupSockets();

    /// Only a positive result of sigaction counts as failure, so a handler that can't be installed doesn't
    /// stop the start-up.
    static bool setupUnixSignalHandlers();

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
