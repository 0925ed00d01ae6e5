/* SPDX-License-Identifier: MIT */
/* The display controller with display and live video on, unscaled, for tests of pictures that have no daemon. */
#ifndef HALDEND_TESTS_LIVEVIDEO_H
#define HALDEND_TESTS_LIVEVIDEO_H

#include "board/state/CBoard.h"

inline void showLiveVideo(CBoard& rcBoard)
{
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x100, 1u << 31 | 1u << 17); // DCM1: display, layer 1
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x124, 0);                   // L1WXY
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x128, 573u << 16 | 688u);   // L1WWH
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x180, 0x00543210);          // DLS
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0);                   // DBGC
    rcBoard.setLimeRegister(CBoard::LIME_CAPTURE, 0x004, 0x08000800);          // CSC
}

#endif
