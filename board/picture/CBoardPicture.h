/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CBOARDPICTURE_H
#define HALDEND_BOARD_PICTURE_CBOARDPICTURE_H

#include <QImage>

class CBoard;

/// The two pictures that leave a board now, 720 x 576, Format_RGB32; null if the board isn't open.
///
///     CBoardPicture::monitor(cBoard).save("monitor.png");
class CBoardPicture
{
public:
    /// The monitor's picture: the FPGA's control set A, scaled and placed by the display controller.
    static QImage monitor(const CBoard& rcBoard);

    /// The recorded picture: the FPGA's control set C.
    static QImage recorded(const CBoard& rcBoard);
};

#endif
