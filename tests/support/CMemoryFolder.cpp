/* SPDX-License-Identifier: MIT */
#include "tests/support/CMemoryFolder.h"

#include <QDir>
#include <QFileInfo>

static QString place()
{
    const QString cMemory = QStringLiteral("/dev/shm");
    return QFileInfo(cMemory).isWritable() ? cMemory : QDir::tempPath();
}

CMemoryFolder::CMemoryFolder() : QTemporaryDir(place() + QStringLiteral("/haldend.XXXXXX")) {}
