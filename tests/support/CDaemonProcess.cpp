/* SPDX-License-Identifier: MIT */
#include "tests/support/CDaemonProcess.h"

#include "tests/support/CTemporaryBoard.h"
#include "tests/support/Preload.h"
#include "tests/support/ServiceStart.h"
#include "tests/support/Timeouts.h"

#include <QDBusMessage>
#include <QFile>
#include <QRegularExpression>
#include <QUuid>

#include <csignal>

namespace
{

const QString SERVICE = QStringLiteral("velmar.haldend");

} // namespace

CDaemonProcess::CDaemonProcess() : m_cClientName(QUuid::createUuid().toString())
{
    const QProcessEnvironment cOwn = QProcessEnvironment::systemEnvironment();
    m_cEnvironment.insert(QStringLiteral("PATH"), cOwn.value(QStringLiteral("PATH")));
    m_cEnvironment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_cEnvironment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
    // The board library has to come before the sanitizers' in the order of loading; whole stacks, because the
    // suppressions name functions of libraries without frame pointers.
    m_cEnvironment.insert(QStringLiteral("ASAN_OPTIONS"),
                          QStringLiteral("verify_asan_link_order=0:fast_unwind_on_malloc=0"));
    m_cEnvironment.insert(QStringLiteral("LSAN_OPTIONS"),
                          QStringLiteral("print_suppressions=0:suppressions=" HALDEND_LSAN_SUPPRESSIONS));
    m_cEnvironment.insert(QStringLiteral("UBSAN_OPTIONS"), QStringLiteral("print_stacktrace=1"));
    // The mutant of scripts/mutants.
    for (const QString& rcName :
         {QStringLiteral("HALDEND_MUTANT"), QStringLiteral("HALDEND_MUTANTS_REACHED")})
        if (cOwn.contains(rcName))
            m_cEnvironment.insert(rcName, cOwn.value(rcName));
}

CDaemonProcess::~CDaemonProcess()
{
    QDBusConnection::disconnectFromBus(m_cClientName);
    if (m_cProcess.state() != QProcess::NotRunning)
        kill();
}

void CDaemonProcess::setVariable(const QString& rcName, const QString& rcValue)
{
    m_cEnvironment.insert(rcName, rcValue);
}

void CDaemonProcess::setBusAddress(const QString& rcAddress)
{
    m_cBusAddress = rcAddress;
    setVariable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), rcAddress);
}

void CDaemonProcess::useBoard(const QString& rcDirectory)
{
    CTemporaryBoard::addTo(m_cEnvironment, rcDirectory);
    setArguments(CTemporaryBoard::deviceOptions(rcDirectory));
}

void CDaemonProcess::useClock(const SClock& rsClock)
{
    preloadLibrary(rsClock.cLibrary, rsClock.cVariables);
}

void CDaemonProcess::useEventLoop(const QMap<QString, QString>& rcVariables)
{
    preloadLibrary(QStringLiteral(HALDEND_EVENT_LOOP), rcVariables);
}

void CDaemonProcess::preloadLibrary(const QString& rcLibrary, const QMap<QString, QString>& rcVariables)
{
    preload(m_cEnvironment, rcLibrary);
    for (auto it = rcVariables.begin(); it != rcVariables.end(); ++it)
        setVariable(it.key(), it.value());
}

void CDaemonProcess::start()
{
    m_cProcess.setProcessEnvironment(m_cEnvironment);
    const QString cProgram = QStringLiteral(HALDEND_EXECUTABLE);
    if (m_cRedirections.isEmpty())
        m_cProcess.start(cProgram, m_cArguments);
    else
        m_cProcess.start(QStringLiteral("/bin/sh"),
                         QStringList{QStringLiteral("-c"),
                                     QStringLiteral("exec \"$0\" \"$@\" ") + m_cRedirections, cProgram} +
                             m_cArguments);
    m_cProcess.waitForStarted(TIMEOUT_PROCESS_MS);
}

bool CDaemonProcess::startAndWaitForName()
{
    // When its event loop starts, Qt lets a call that has just come overtake those that have waited for it.
    return startAndWaitForService([this] { start(); }, m_cProcess, client(), SERVICE) && settle();
}

bool CDaemonProcess::waitForEnd()
{
    if (m_cProcess.state() == QProcess::NotRunning || m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS))
        return true;
    kill();
    return false;
}

void CDaemonProcess::kill()
{
    const qint64 iPid = pid();
    m_cProcess.kill();
    m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
    removeClockOf(iPid);
}

bool CDaemonProcess::endBySignal(int iSignal)
{
    // Without a process it would go to the whole group.
    if (pid() > 0)
        ::kill(static_cast<pid_t>(pid()), iSignal);
    return waitForEnd();
}

QDBusConnection CDaemonProcess::client()
{
    QDBusConnection cConnection(m_cClientName);
    if (!cConnection.isConnected())
        cConnection = QDBusConnection::connectToBus(m_cBusAddress, m_cClientName);
    return cConnection;
}

static QDBusMessage methodCall(const QString& rcPath, const QString& rcMethod,
                               const QVariantList& rcArguments)
{
    const QString cInterface = SERVICE + QString(rcPath).replace(QLatin1Char('/'), QLatin1Char('.'));
    QDBusMessage cMessage = QDBusMessage::createMethodCall(SERVICE, rcPath, cInterface, rcMethod);
    cMessage.setArguments(rcArguments);
    return cMessage;
}

void CDaemonProcess::send(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments)
{
    client().send(methodCall(rcPath, rcMethod, rcArguments));
}

QDBusMessage CDaemonProcess::call(const QString& rcPath, const QString& rcMethod,
                                  const QVariantList& rcArguments)
{
    return client().call(methodCall(rcPath, rcMethod, rcArguments), QDBus::Block, TIMEOUT_CALL_MS);
}

QDBusPendingCall CDaemonProcess::ask(const QString& rcPath, const QString& rcMethod,
                                     const QVariantList& rcArguments)
{
    return client().asyncCall(methodCall(rcPath, rcMethod, rcArguments), TIMEOUT_CALL_MS);
}

QByteArray CDaemonProcess::introspect(const QString& rcPath)
{
    const QDBusMessage cMessage = QDBusMessage::createMethodCall(
        SERVICE, rcPath, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    return client().call(cMessage, QDBus::Block, TIMEOUT_CALL_MS).arguments().value(0).toByteArray();
}

bool CDaemonProcess::settle()
{
    // Introspection is answered in the daemon's event loop, behind the calls sent before; a ping would be
    // answered by the bus library at once.
    return !introspect(QStringLiteral("/videodisplay")).isEmpty();
}

bool CDaemonProcess::receives()
{
    // The bus library of the daemon answers it, in a thread of its own.
    const QDBusMessage cPing = QDBusMessage::createMethodCall(
        SERVICE, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    return client().call(cPing, QDBus::Block, TIMEOUT_CALL_MS).type() == QDBusMessage::ReplyMessage;
}

void CDaemonProcess::collect()
{
    // Closed before the first start and after a read that followed the end.
    if (!m_cProcess.isOpen())
        return;
    m_cStandardOutput += m_cProcess.readAllStandardOutput();
    m_cStandardError += m_cProcess.readAllStandardError();
}

QByteArray CDaemonProcess::standardOutput()
{
    collect();
    return m_cStandardOutput;
}

QByteArray CDaemonProcess::standardError()
{
    collect();
    return m_cStandardError;
}

static const QRegularExpression& logLine()
{
    static const QRegularExpression cExpression(QStringLiteral("^haldend\\[\\d+\\]: (.*)$"));
    return cExpression;
}

QStringList CDaemonProcess::log()
{
    QStringList cTexts;
    for (const QString& rcLine : QString::fromUtf8(standardError()).split(QLatin1Char('\n'))) {
        const QRegularExpressionMatch cMatch = logLine().match(rcLine);
        if (cMatch.hasMatch())
            cTexts << cMatch.captured(1);
    }
    return cTexts;
}

QStringList CDaemonProcess::unexpectedOutput()
{
    QStringList cLines;
    for (const QString& rcLine :
         QString::fromUtf8(standardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        if (!logLine().match(rcLine).hasMatch())
            cLines << rcLine;
    return cLines.mid(m_iTakenLines);
}

QStringList CDaemonProcess::takeUnexpectedOutput()
{
    QStringList cLines = unexpectedOutput();
    m_iTakenLines += cLines.size();
    return cLines;
}

QByteArray CDaemonProcess::describe()
{
    return "\n--- exit code " + QByteArray::number(exitCode()) + (crashed() ? ", crashed" : "") +
           "\n--- standard output\n" + standardOutput() + "--- standard error\n" + standardError();
}

qint64 CDaemonProcess::kilobytes(const char* pszField) const
{
    QFile cStatus(QStringLiteral("/proc/%1/status").arg(pid()));
    if (!cStatus.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& rcLine : cStatus.readAll().split('\n'))
        if (rcLine.startsWith(pszField))
            return rcLine.simplified().split(' ').value(1).toLongLong();
    return -1;
}
