/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H
#define HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H

#include "board/state/SCodecState.h"

#include <QImage>

class CBoard;

/// The codec stand-in's output, 720 x 576: the frame of the film that it plays back, and black while nothing is played
/// back. A stand-in without video, as of tests, gives a picture that is easy to tell from the camera's: colour bars that
/// move 4 pixels to the left with each frame, and on a dark band the file's name, the frame's number and whether playback
/// is paused.
class CPlaybackPicture
{
public:
    /// What the board's stand-in gives now.
    static QImage frame(const CBoard& rcBoard);

    /// What one without video gives.
    static QImage frame(const SCodecState& rsState);
};

#endif
