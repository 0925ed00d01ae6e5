/* SPDX-License-Identifier: MIT */
#include "tests/support/ServiceStart.h"

#include "tests/support/Timeouts.h"

#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>

bool startAndWaitForService(const std::function<void()>& fnStart, const QProcess& rcProcess,
                            const QDBusConnection& rcConnection, const QString& rcName)
{
    QEventLoop cLoop;
    QDBusServiceWatcher cWatcher(rcName, rcConnection, QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(&cWatcher, &QDBusServiceWatcher::serviceRegistered, &cLoop, [&cLoop] { cLoop.exit(0); });
    QObject::connect(&rcProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &cLoop,
                     [&cLoop] { cLoop.exit(1); });
    QTimer::singleShot(TIMEOUT_PROCESS_MS, &cLoop, [&cLoop] { cLoop.exit(2); });
    fnStart();
    return cLoop.exec() == 0;
}
