/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_VIDEO_EVIDEOINPUTTYPE_H
#define HALDEND_VIDEO_EVIDEOINPUTTYPE_H

/// The source of the picture. The values are those on the bus.
enum EVideoInputType {
    eVideoInputTypeExternal = 0, ///< a video signal is present at the decoder's input
    eVideoInputTypeInternal = 1, ///< no input signal
};

#endif
