/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FOLLOW_CBOARDFOLLOWER_H
#define HALDEND_BOARD_FOLLOW_CBOARDFOLLOWER_H

#include <QByteArray>
#include <QVector>

class CBoard;

/// Tells whether a board has changed, at the cost of some hundred loads: cheap enough to ask 25 times a second.
///
/// The board counts every change but two. Stores to the display controller go through a mapping, and nothing sees them: so
/// the follower compares that controller's registers, and, at one look in ten, the memory of layer 0 while that is on. And
/// a camera that moves has a new frame by the clock.
class CBoardFollower
{
public:
    /// Milliseconds between two looks of those who show each change at once: 25 looks a second.
    static const int PAUSE_MS = 40;

    /// Keeps a reference to the board, which must be open.
    explicit CBoardFollower(const CBoard& rcBoard);

    /// True if something has changed since the last call; true at the first one.
    bool look();

private:
    QVector<quint32> words() const;
    bool lookAtGraphic();

    const CBoard& m_rcBoard;
    int m_iLooks = 0;
    QVector<quint32> m_cWords;
    QByteArray m_cGraphic;
};

#endif
