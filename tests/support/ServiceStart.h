/* SPDX-License-Identifier: MIT */
/* Starting a program that serves a bus, and waiting until it does. */
#ifndef HALDEND_TESTS_SERVICESTART_H
#define HALDEND_TESTS_SERVICESTART_H

#include <QDBusConnection>
#include <QProcess>
#include <QString>

#include <functional>

/// Calls fnStart, which has to start the process, and waits until somebody gets to own the name. False if the
/// process ended before that, or never got there.
bool startAndWaitForService(const std::function<void()>& fnStart, const QProcess& rcProcess,
                            const QDBusConnection& rcConnection, const QString& rcName);

#endif
