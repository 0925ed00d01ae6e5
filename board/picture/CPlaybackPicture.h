#ifndef HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H
#define HALDEND_BOARD_PICTURE_CPLAYBACKPICTURE_H

#include "board/state/SCodecState.h"

#include <QImage>

/// The picture that the codec stand-in puts out, 720 x 576: colour bars that move 4 pixels to the left a frame,
/// and on a dark band what it plays back, the frame's number and whether it is paused. Not to be taken for the
/// camera's. Black while nothing is played back.
class CPlaybackPicture
{
public:
    static QImage frame(const SCodecState& rsState);
};

#endif
