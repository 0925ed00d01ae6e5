/* SPDX-License-Identifier: MIT */
#include "board/tour/CRun.h"

#include "tests/support/Timeouts.h"

#include <csignal>

namespace
{

const QString RUN_SERVICE = QStringLiteral("velmar.haldendrun");
const int TIMEOUT_RESTART_MS = 3 * TIMEOUT_PROCESS_MS;

} // namespace

CRun::CRun(CRunFolder& rcFolder, bool bVerbose) : m_rcFolder(rcFolder), m_bVerbose(bVerbose)
{
    m_cCodec.useVideo();
    watch("codec", m_cCodec.process());
    watch("daemon", m_cDaemon.process());
    watch("picture", m_cFollower);
    watchEnd("live view", m_cServer);
}

CRun::~CRun()
{
    m_bBusy = true;
}

bool CRun::fail(const QString& rcError)
{
    m_cError = rcError;
    return false;
}

void CRun::watch(const char* pszWho, QProcess& rcProcess)
{
    if (m_bVerbose)
        rcProcess.setProcessChannelMode(QProcess::ForwardedChannels);
    else
        m_cPrinter.follow(pszWho, rcProcess);
    watchEnd(pszWho, rcProcess);
}

void CRun::watchEnd(const char* pszWho, QProcess& rcProcess)
{
    connect(&rcProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this, pszWho, &rcProcess] { reportEnd(pszWho, rcProcess); });
}

void CRun::reportEnd(const char* pszWho, const QProcess& rcProcess)
{
    if (m_bBusy)
        return;
    const QString cHow = rcProcess.exitStatus() == QProcess::CrashExit
                             ? QStringLiteral("was ended by signal %1").arg(rcProcess.exitCode())
                             : QStringLiteral("ended with status %1").arg(rcProcess.exitCode());
    const bool bShows = &rcProcess == &m_cFollower || &rcProcess == &m_cServer;
    const QString cRemedy = bShows ? QStringLiteral("it isn't shown any more")
                                   : QStringLiteral("start it again: " HALDEND_RUN " restart %1 --at %2")
                                         .arg(QLatin1String(pszWho), m_rcFolder.path());
    m_cPrinter.print(pszWho, QStringLiteral("%1; %2").arg(cHow, cRemedy), CEventPrinter::BAD);
}

bool CRun::startCodec()
{
    return m_cCodec.start(busAddress(), board().directory()) ||
           fail(QStringLiteral("halden-codec isn't ready; its messages are above"));
}

bool CRun::startDaemon()
{
    return m_cDaemon.startAndWaitForName() ||
           fail(QStringLiteral("haldend isn't ready; its messages are above"));
}

// Its first line is the address. What it says afterwards is for standard error.
void CRun::startLiveView()
{
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), busAddress());
    m_cServer.setProcessEnvironment(cEnvironment);
    m_cServer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_cServer.start(QStringLiteral(HALDEND_BOARD_TOOL),
                    {QStringLiteral("serve"), QStringLiteral("--board"), board().directory()});
    m_cLiveView = QStringLiteral("no live view");
    while (!m_cServer.canReadLine())
        if (!m_cServer.waitForReadyRead())
            return;
    m_cLiveView =
        QString::fromLatin1(m_cServer.readLine()).trimmed() + QStringLiteral("  (open it in a browser)");
}

bool CRun::start()
{
    m_cBus.setSocket(m_rcFolder.socket());
    if (!m_cBus.start())
        return fail(m_cBus.error());
    m_cDaemon.setBusAddress(busAddress());
    m_cDaemon.useBoard(board().directory());
    if (!startCodec() || !startDaemon())
        return false;
    QDBusConnection cClient = m_cDaemon.client();
    for (const char* pszObject : {"videodisplay", "videooverlay", "videoprocessing", "debug"})
        cClient.connect(QStringLiteral("velmar.haldend"), QStringLiteral("/%1").arg(QLatin1String(pszObject)),
                        QStringLiteral("velmar.haldend.%1").arg(QLatin1String(pszObject)), QString(), this,
                        SLOT(onSignal(QDBusMessage)));
    if (!cClient.registerObject(QStringLiteral("/"), this, QDBusConnection::ExportScriptableSlots) ||
        !cClient.registerService(RUN_SERVICE))
        return fail(QStringLiteral("%1: %2").arg(RUN_SERVICE, cClient.lastError().message()));
    m_cFollower.start(QStringLiteral(HALDEND_BOARD_TOOL),
                      {QStringLiteral("picture"), QStringLiteral("--board"), board().directory(), picture(),
                       QStringLiteral("--follow")});
    startLiveView();
    m_bBusy = false;
    return true;
}

bool CRun::end()
{
    m_bBusy = true;
    const bool bRan = m_cDaemon.process().state() != QProcess::NotRunning;
    const bool bEnded = m_cDaemon.endBySignal(SIGTERM) && !m_cDaemon.crashed() && m_cDaemon.exitCode() == 0;
    return !bRan || bEnded || fail(QStringLiteral("haldend didn't end well; its messages are above"));
}

void CRun::restartCodec()
{
    m_cCodec.end();
    if (startCodec())
        m_cPrinter.print("codec", QStringLiteral("started again"), CEventPrinter::GOOD);
}

void CRun::restartDaemon()
{
    if (!m_cDaemon.endBySignal(SIGTERM))
        m_cPrinter.print("daemon", QStringLiteral("didn't end on SIGTERM, and was killed"),
                         CEventPrinter::BAD);
    if (startDaemon())
        m_cPrinter.print("daemon", QStringLiteral("started again"), CEventPrinter::GOOD);
}

void CRun::restart(const QString& rcProgram)
{
    const bool bDaemon = rcProgram == QLatin1String("daemon");
    if (!bDaemon && rcProgram != QLatin1String("codec")) {
        sendErrorReply(QDBusError::InvalidArgs,
                       QStringLiteral("'%1' is none of daemon, codec").arg(rcProgram));
        return;
    }
    if (m_bBusy) {
        sendErrorReply(QDBusError::LimitsExceeded, QStringLiteral("a restart is under way"));
        return;
    }
    m_bBusy = true;
    m_cError.clear();
    const QDBusMessage cCall = message();
    setDelayedReply(true);
    bDaemon ? restartDaemon() : restartCodec();
    m_bBusy = false;
    if (!m_cError.isEmpty())
        m_cPrinter.print("run", m_cError, CEventPrinter::BAD);
    m_cDaemon.client().send(m_cError.isEmpty() ? cCall.createReply()
                                               : cCall.createErrorReply(QDBusError::Failed, m_cError));
}

void CRun::onSignal(const QDBusMessage& rcMessage)
{
    QStringList cWords = {rcMessage.path().mid(1), rcMessage.member()};
    for (const QVariant& rcArgument : rcMessage.arguments())
        cWords << rcArgument.toString();
    m_cPrinter.print("signal", cWords.join(QLatin1Char(' ')));
}

QString CRun::askForRestart(const CRunFolder& rcFolder, const QString& rcProgram)
{
    const QDBusConnection cConnection =
        QDBusConnection::connectToBus(CPrivateBus::addressOf(rcFolder.socket()), QStringLiteral("restart"));
    QDBusMessage cCall = QDBusMessage::createMethodCall(RUN_SERVICE, QStringLiteral("/"), RUN_SERVICE,
                                                        QStringLiteral("restart"));
    cCall << rcProgram;
    const QDBusMessage cReply = cConnection.call(cCall, QDBus::Block, TIMEOUT_RESTART_MS);
    if (!cConnection.isConnected() ||
        cReply.errorName() == QDBusError::errorString(QDBusError::ServiceUnknown))
        return QStringLiteral("nothing runs in %1; start it: " HALDEND_RUN " --at DIR").arg(rcFolder.path());
    return cReply.type() == QDBusMessage::ErrorMessage ? cReply.errorMessage() : QString();
}
