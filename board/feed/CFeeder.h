/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FEED_CFEEDER_H
#define HALDEND_BOARD_FEED_CFEEDER_H

#include "board/state/CBoard.h"

#include <QVector>

class IFrameSource;

/// Delivers the frames of a source to a board while somebody looks at them; rests otherwise, and takes no processor
/// time. board/camera/frames.h says how the two sides understand each other.
class CFeeder
{
public:
    /// Both must outlive the feeder; the board is open. u32Choice: the choice of the source that the frames are for.
    CFeeder(CBoard& rcBoard, IFrameSource& rcSource, quint32 u32Choice);

    /// Until another source is chosen, the board's folder goes, or the source fails. False in the last case.
    bool run();

private:
    bool isOver() const;
    bool isWatched();
    void rest();
    bool deliver();

    CBoard& m_rcBoard;
    IFrameSource& m_rcSource;
    quint32 m_u32Choice;
    quint32 m_u32Wanted = 0;   ///< looks, when they were counted last
    quint32 m_u32LastLook = 0; ///< its frame
    QVector<QRgb> m_cPixels;
};

#endif
