/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_EOVERLAYTEXTCOLOR_H
#define HALDEND_OVERLAY_EOVERLAYTEXTCOLOR_H

/// Index into the text layer's palette of 16 colours, the same for foreground and background: 0 is fully
/// transparent, 1 white, 5 navy, 15 black; fpga/palettes.cpp has the others. The values have no names:
/// clients send numbers, and any 32-bit number is stored unchanged.
enum EOverlayTextColor : unsigned int {};

#endif
