/* SPDX-License-Identifier: MIT */
/* halden-board: the command that shows the board in a browser. */
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#ifdef HALDEND_LIVE
#include "board/serve/CLiveView.h"
#include "board/serve/CWebServer.h"
#include "board/serve/Guard.h"
#include "board/serve/PageFiles.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace
{

const quint32 PORT = 8088;
const quint32 PORTS = 65535;

int s_aiStop[2]; // a pipe: a signal writes into it

void wakeToStop(int)
{
    const ssize_t iWritten = write(s_aiStop[1], "", 1);
    (void)iWritten; // a full pipe says it already
}

/// SIGINT and SIGTERM end the event loop.
bool stopBySignals(QSocketNotifier*& rpcNotifier)
{
    if (pipe2(s_aiStop, O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    rpcNotifier = new QSocketNotifier(s_aiStop[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(rpcNotifier, &QSocketNotifier::activated, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    struct sigaction sAction = {};
    sAction.sa_handler = wakeToStop;
    sigaction(SIGINT, &sAction, nullptr);
    sigaction(SIGTERM, &sAction, nullptr);
    return true;
}

QByteArray urlHost(const QByteArray& rcAddress)
{
    return rcAddress.contains(':') ? '[' + rcAddress + ']' : rcAddress;
}

} // namespace

static int serve(CCommandLine& rcLine, CBoard& rcBoard, const QByteArray& rcAddress, quint32 u32Port,
                 bool bOrFree)
{
    const QByteArray cToken = randomToken();
    CWebServer cServer(pageFiles());
    if (!cServer.listen(rcAddress, static_cast<int>(u32Port)) && (!bOrFree || !cServer.listen(rcAddress, 0)))
        return rcLine.fail(QStringLiteral("%1, port %2: can't listen; another program may")
                               .arg(QString::fromLatin1(rcAddress))
                               .arg(u32Port));
    CLiveView cView(rcBoard, cServer, cToken);
    QObject::connect(&cView, &CLiveView::boardGone, QCoreApplication::instance(), &QCoreApplication::quit);
    QSocketNotifier* pcNotifier = nullptr;
    if (!stopBySignals(pcNotifier))
        return rcLine.fail(QStringLiteral("no descriptor is left"));
    std::printf("http://%s:%d/#%s\n", urlHost(rcAddress).constData(), cServer.port(), cToken.constData());
    std::fflush(stdout);
    QCoreApplication::exec();
    return rcLine.exitStatus();
}
#endif

int commandServe(const QStringList& rcArguments)
{
    const QString PORT_OPTION = QStringLiteral("port");
    const QString LISTEN = QStringLiteral("listen");
    CCommandLine cLine(
        QStringLiteral("serve"),
        QStringLiteral("Shows the board and its daemon in a browser, and lets it change them, until "
                       "Ctrl-C or the end of the board. Prints the address of the page. The part "
                       "behind # is the leave to change something: don't pass it on to those who "
                       "may only look."));
    cLine.addValue(PORT_OPTION, QStringLiteral("N"),
                   QStringLiteral("the port; 0: a free one; default: 8088, or a free one if that is taken"));
    cLine.addValue(LISTEN, QStringLiteral("ADDRESS"),
                   QStringLiteral("the address; default: 127.0.0.1, which only this machine reaches"));
    CBoard cBoard;
    quint32 u32Port = 0;
    if (!cLine.parse(rcArguments, 0, 0))
        return cLine.exitStatus();
#ifdef HALDEND_LIVE
    if (!cLine.number(PORT_OPTION, 0, PORT, u32Port))
        return cLine.exitStatus();
    if (u32Port > PORTS)
        return cLine.refuse(QStringLiteral("--port: there are %1").arg(PORTS));
    if (!cLine.openBoard(cBoard))
        return cLine.exitStatus();
    const QString cAddress = cLine.isSet(LISTEN) ? cLine.value(LISTEN) : QStringLiteral("127.0.0.1");
    return serve(cLine, cBoard, cAddress.toLatin1(), u32Port, !cLine.isSet(PORT_OPTION));
#else
    Q_UNUSED(u32Port)
    return cLine.fail(
        QStringLiteral("built without the live view: libwebsockets or libjpeg-turbo was missing "
                       "(Debian: libwebsockets-dev, libturbojpeg0-dev)"));
#endif
}
