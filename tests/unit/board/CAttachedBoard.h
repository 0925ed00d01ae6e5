#ifndef HALDEND_TESTS_CATTACHEDBOARD_H
#define HALDEND_TESTS_CATTACHEDBOARD_H

#include "board/state/CBoard.h"

#include <QTemporaryDir>

/// A fresh board that this process works on, as the daemon would, for the life of the object; and the class to
/// look at it from outside.
///
/// What the process does that no program for the board may do lets the test fail at the end of the object's life,
/// unless it is announced.
class CAttachedBoard
{
public:
    CAttachedBoard();
    ~CAttachedBoard();

    CAttachedBoard(const CAttachedBoard&) = delete;
    CAttachedBoard& operator=(const CAttachedBoard&) = delete;

    bool isReady() const { return m_bReady; }

    CBoard* operator->() { return &m_cBoard; }
    CBoard& operator*() { return m_cBoard; }

    /// Opens a device, named as in board_layout.h, for reading and writing: a descriptor or -1.
    int openDevice(const char* pszFile);

    /// Announces a judgement; see CJudgements.
    void announceJudgement(const QString& rcLine) { m_cAnnounced << rcLine; }

    /// For tests of the board itself, which do what no program does.
    void dontJudge() { m_bJudging = false; }

    /// What is noted since the last call, by one who must not be noted: descriptors differ from run to run and
    /// read as "N".
    QStringList takeTrace();

private:
    QTemporaryDir m_cDirectory;
    CBoard m_cBoard;
    QStringList m_cAnnounced;
    bool m_bReady = false;
    bool m_bJudging = true;
};

#endif
