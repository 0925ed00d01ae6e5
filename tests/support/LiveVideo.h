/* SPDX-License-Identifier: MIT */
/* The display controller with display and live video on, unscaled, and the video decoder and encoder set up, for tests of
 * pictures that have no daemon. */
#ifndef HALDEND_TESTS_LIVEVIDEO_H
#define HALDEND_TESTS_LIVEVIDEO_H

#include "board/state/CBoard.h"

/// As much of both as their pictures depend on, as in the shipped register files.
inline void programVideoChips(CBoard& rcBoard)
{
    rcBoard.setI2cRegister(0x25, 0x0a, 125); // LUBR
    rcBoard.setI2cRegister(0x25, 0x0b, 71);  // LUCON
    rcBoard.setI2cRegister(0x25, 0x0c, 126); // CRSAT
    rcBoard.setI2cRegister(0x44, 0x61, 2);   // standard control: PAL
}

inline void showLiveVideo(CBoard& rcBoard)
{
    programVideoChips(rcBoard);
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x100, 1u << 31 | 1u << 17); // DCM1: display, layer 1
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x124, 0);                   // L1WXY
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x128, 573u << 16 | 688u);   // L1WWH
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x180, 0x00543210);          // DLS
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0);                   // DBGC
    rcBoard.setLimeRegister(CBoard::LIME_CAPTURE, 0x004, 0x08000800);          // CSC
}

#endif
