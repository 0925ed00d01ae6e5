/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CATTACHEDBOARD_H
#define HALDEND_TESTS_CATTACHEDBOARD_H

#include "tests/support/CTemporaryBoard.h"

#include <QString>
#include <QStringList>

/// A fresh board that this process works on, as the daemon would, for the life of the object; and a CBoard
/// for the view from outside.
///
/// The object's end fails the test if the process did something to the devices that no program for the board
/// may do, unless that was announced.
class CAttachedBoard
{
public:
    CAttachedBoard();
    ~CAttachedBoard();

    CAttachedBoard(const CAttachedBoard&) = delete;
    CAttachedBoard& operator=(const CAttachedBoard&) = delete;

    bool isReady() const { return m_bReady; }

    CBoard* operator->() { return &m_cBoard.board(); }
    CBoard& operator*() { return m_cBoard.board(); }

    /// Opens a device, named as in board_layout.h, for reading and writing: a descriptor or -1.
    int openDevice(const char* pszFile);

    /// Announces a judgement; see CJudgements.
    void announceJudgement(const QString& rcLine) { m_cAnnounced << rcLine; }

    /// For tests of the board itself, which do what no program does.
    void dontJudge() { m_bJudging = false; }

    /// The judgements since the last call. Descriptors differ from run to run and read as "N".
    QStringList takeTrace();

private:
    CTemporaryBoard m_cBoard;
    QStringList m_cAnnounced;
    bool m_bReady = false;
    bool m_bJudging = true;
};

#endif
