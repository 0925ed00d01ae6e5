/* SPDX-License-Identifier: MIT */
#include "board/picture/CBoardPicture.h"

#include "board/picture/CFpgaMixer.h"
#include "board/picture/CPictureRenderer.h"
#include "board/state/CBoard.h"

QImage CBoardPicture::monitor(const CBoard& rcBoard)
{
    if (!rcBoard.isOpen())
        return QImage();
    return CPictureRenderer(rcBoard, CFpgaMixer(rcBoard).mix(CFpgaMixer::CONTROL_A)).render();
}

QImage CBoardPicture::recorded(const CBoard& rcBoard)
{
    return rcBoard.isOpen() ? CFpgaMixer(rcBoard).mix(CFpgaMixer::CONTROL_C) : QImage();
}
