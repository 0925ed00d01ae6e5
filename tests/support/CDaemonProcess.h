/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CDAEMONPROCESS_H
#define HALDEND_TESTS_CDAEMONPROCESS_H

#include "tests/support/CChildProcess.h"
#include "tests/support/SClock.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QMap>
#include <QString>
#include <QStringList>

/// The shipped daemon as a process under test: own environment, own bus, the virtual board preloaded.
///
/// Everything that the daemon writes to standard error and that isn't one of its log lines counts as a
/// warning nobody expected: tests compare unexpectedOutput() with what they announced.
class CDaemonProcess
{
public:
    CDaemonProcess();
    ~CDaemonProcess();

    /// Options of the next start, the program's name left out.
    void setArguments(const QStringList& rcArguments) { m_cArguments = rcArguments; }
    QStringList arguments() const { return m_cArguments; }

    /// Adds a variable to the environment, which otherwise holds only what every start needs.
    void setVariable(const QString& rcName, const QString& rcValue);

    /// The bus that stands in for the system bus.
    void setBusAddress(const QString& rcAddress);

    /// Starts on the virtual board in rcDirectory, with the three devices of it as options.
    void useBoard(const QString& rcDirectory);

    /// Starts on another clock; after useBoard().
    void useClock(const SClock& rsClock);

    /// Preloads event_loop.c, steered by the variables; after useBoard().
    void useEventLoop(const QMap<QString, QString>& rcVariables);

    /// Preloads one more library, steered by the variables; after useBoard().
    void preloadLibrary(const QString& rcLibrary, const QMap<QString, QString>& rcVariables = {});

    /// Redirections of a shell for the next start, such as "2>&-".
    void setRedirections(const QString& rcRedirections) { m_cRedirections = rcRedirections; }

    /// Starts the process and returns at once.
    void start();

    /// Starts the process and waits until it owns its bus name. False if it ended before that, or never
    /// got there; describe() then says what is known.
    bool startAndWaitForName();

    /// Waits for the end of the process by itself. False if it doesn't end; then it is killed.
    bool waitForEnd();

    /// Sends the signal and waits for the end.
    bool endBySignal(int iSignal);

    /// A connection to the bus of the daemon, of the test's own.
    QDBusConnection client();

    /// A method call without reply, or one whose reply is waited for.
    void send(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments);
    QDBusMessage call(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments = {});

    /// A method call whose reply is fetched later.
    QDBusPendingCall ask(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments);

    /// The introspection data of an object.
    QByteArray introspect(const QString& rcPath);

    /// Waits until everything sent before has been carried out: calls are served in order.
    bool settle();

    /// Waits until everything sent before has come to the daemon, also while its event loop is busy.
    bool receives();

    QProcess& process() { return m_cProcess; }
    qint64 pid() const { return m_cProcess.processId(); }

    /// KiB of a field of /proc/PID/status, such as "VmRSS:"; -1 if it isn't there.
    qint64 kilobytes(const char* pszField) const;

    int exitCode() const { return m_cProcess.exitCode(); }
    bool crashed() const { return m_cProcess.exitStatus() == QProcess::CrashExit; }

    QByteArray standardOutput();
    QByteArray standardError();

    /// The texts of the log lines on standard error, ident and process number taken off.
    QStringList log();

    /// The lines on standard error that are no log lines; the second one leaves none behind.
    QStringList unexpectedOutput();
    QStringList takeUnexpectedOutput();

    /// All that is known, for failure messages.
    QByteArray describe();

private:
    void kill();
    void collect();

    CChildProcess m_cProcess;
    QStringList m_cArguments;
    QString m_cRedirections;
    QProcessEnvironment m_cEnvironment;
    QString m_cBusAddress;
    QString m_cClientName;
    QByteArray m_cStandardOutput;
    QByteArray m_cStandardError;
    int m_iTakenLines = 0; ///< of unexpected output
};

#endif
