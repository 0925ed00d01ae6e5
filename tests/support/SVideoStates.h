/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_SVIDEOSTATES_H
#define HALDEND_TESTS_SVIDEOSTATES_H

/// The daemon's states that decide which command is allowed, for classes that inherit their names.
struct SVideoStates {
    /// The two states of an image save, 7 and 8, are no places to stay in.
    enum EState {
        IDLE,
        RECORDING,
        RECORDING_PAUSED,
        PLAYBACK,
        PLAYBACK_PAUSED,
        IMAGE,
        IMAGE_RECORDING_PAUSED,
        FAILED = 9
    };
};

#endif
