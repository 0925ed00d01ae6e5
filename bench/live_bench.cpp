/* SPDX-License-Identifier: MIT */
/* live_bench: the time from a call on the bus to the changed picture in a browser. */
#include "tests/support/CBrowser.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CServeProcess.h"
#include "tests/support/CTemporaryBoard.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace
{

const int CALLS = 100;

double now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

/// Notes when the page has drawn each picture.
const QString NOTE = QStringLiteral("(() => { window.drawn = []; new MutationObserver(() => "
                                    "window.drawn.push(performance.timeOrigin + performance.now()))"
                                    ".observe(document.getElementById('picture'), {attributes: true}); })()");

int fail(const char* pszWhat, const QByteArray& rcWhy)
{
    std::fprintf(stderr, "live_bench: %s: %s\n", pszWhat, rcWhy.constData());
    return 1;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication cApplication(argc, argv);
    CPrivateBus cBus;
    CTemporaryBoard cBoard;
    CDaemonProcess cDaemon;
    CServeProcess cServe;
    CBrowser cBrowser;
    if (!cBus.start() || !cBoard.make())
        return fail("bus and board", (cBus.error() + cBoard.error()).toUtf8());
    cDaemon.setBusAddress(cBus.address());
    cDaemon.useBoard(cBoard.board().directory());
    if (!cDaemon.startAndWaitForName())
        return fail("daemon", cDaemon.describe());
    if (!cServe.start(cBus.address(), cBoard.board().directory()))
        return fail("server", cServe.describe());
    if (!cBrowser.start() || !cBrowser.open(cServe.address()) ||
        !cBrowser.waitFor(QStringLiteral("document.getElementById('picture').dataset.pictures > 0")))
        return fail("browser", cBrowser.describe());
    const QString cOverlay = QStringLiteral("/videooverlay");
    cDaemon.send(cOverlay, QStringLiteral("show_overlay"), {});
    const int iHandle = cDaemon.call(cOverlay, QStringLiteral("create_text")).arguments().value(0).toInt();
    cDaemon.send(cOverlay, QStringLiteral("show_text"), {iHandle});
    cDaemon.settle();
    cBrowser.value(NOTE);
    std::vector<double> cTimes;
    for (int i = 0; i < CALLS; ++i) {
        cBrowser.value(QStringLiteral("window.drawn.length = 0"));
        const double dBegin = now();
        cDaemon.send(cOverlay, QStringLiteral("set_text_string"),
                     {iHandle, QStringLiteral("Manhole %1").arg(i)});
        if (!cBrowser.waitFor(QStringLiteral("window.drawn.length > 0")))
            return fail("picture", cBrowser.describe());
        cTimes.push_back(cBrowser.value(QStringLiteral("window.drawn[window.drawn.length - 1]")).toDouble() -
                         dBegin);
    }
    std::sort(cTimes.begin(), cTimes.end());
    std::printf("from the call to the picture in the browser, %d calls: median %.1f ms, worst %.1f ms\n",
                CALLS, cTimes[cTimes.size() / 2], cTimes.back());
    return 0;
}
