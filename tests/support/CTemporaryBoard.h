/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CTEMPORARYBOARD_H
#define HALDEND_TESTS_CTEMPORARYBOARD_H

#include "board/state/CBoard.h"
#include "tests/support/CMemoryFolder.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// A fresh virtual board in a folder of its own, and what puts programs onto a board.
class CTemporaryBoard
{
public:
    /// Makes the board. False if that fails; error() says why.
    bool make();

    /// Usable once it is made.
    CBoard& board() { return m_cBoard; }
    const CBoard& board() const { return m_cBoard; }

    QString error() const { return m_cError; }

    /// Adds to an environment what puts a program onto the board in a directory: the board's library preloaded.
    static void addTo(QProcessEnvironment& rcEnvironment, const QString& rcDirectory);

    /// The daemon's options that name the three devices of the board in a directory.
    static QStringList deviceOptions(const QString& rcDirectory);

private:
    CMemoryFolder m_cFolder;
    CBoard m_cBoard;
    QString m_cError;
};

#endif
