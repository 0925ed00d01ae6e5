/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H
#define HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H

#include "board/state/SCodecState.h"

#include <QImage>

/// The codec stand-in's output, 720 x 576, easy to tell from the camera's: colour bars that move 4 pixels to
/// the left with each frame, and on a dark band the file's name, the frame's number and whether playback is
/// paused. Black while nothing is played back.
class CPlaybackPicture
{
public:
    static QImage frame(const SCodecState& rsState);
};

#endif
