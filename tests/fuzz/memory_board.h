/* SPDX-License-Identifier: MIT */
/* A virtual board in memory, for the life of the object. Its files are changed from outside alone: no program is on it. */
#ifndef HALDEND_TESTS_FUZZ_MEMORY_BOARD_H
#define HALDEND_TESTS_FUZZ_MEMORY_BOARD_H

#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "tests/fuzz/expect.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

class memory_board
{
public:
    memory_board() : folder(parent() + QStringLiteral("/haldend-fuzz.XXXXXX"))
    {
        QString error;
        EXPECT(folder.isValid() && CBoardMaker::create(path(), error) && board.open(path()));
    }

    CBoard& state() { return board; }
    QString path() const { return folder.filePath(QStringLiteral("board")); }

private:
    /* Each input writes to it, and a disk would get to see all of that. */
    static QString parent()
    {
        const QString memory = QStringLiteral("/dev/shm");
        return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    }

    QTemporaryDir folder;
    CBoard board;
};

#endif
