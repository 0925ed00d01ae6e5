#ifndef HALDEND_OVERLAY_EOVERLAYTEXTCOLOR_H
#define HALDEND_OVERLAY_EOVERLAYTEXTCOLOR_H

/// Index into the text layer's palette of 16 colours, the same for foreground and background: 0 is fully
/// transparent, 1 white, 5 navy, 15 black; the others stand in fpga/palettes.cpp. The values have no names:
/// clients send numbers, and any number of 32 bits is kept as it came.
enum EOverlayTextColor : unsigned int {};

#endif
