/* SPDX-License-Identifier: MIT */
#include "tests/support/SClock.h"

#include <QFile>

void removeClockOf(qint64 iPid)
{
    QFile::remove(QStringLiteral("/dev/shm/faketime_shm_%1").arg(iPid));
    QFile::remove(QStringLiteral("/dev/shm/sem.faketime_sem_%1").arg(iPid));
}
