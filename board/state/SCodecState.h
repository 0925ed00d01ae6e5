/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_STATE_SCODECSTATE_H
#define HALDEND_BOARD_STATE_SCODECSTATE_H

#include <QByteArray>
#include <QString>

/// The activity of the codec stand-in.
struct SCodecState {
    enum EActivity { IDLE, RECORDING, RECORDING_PAUSED, PLAYING, PLAYING_PAUSED, ACTIVITIES };

    EActivity eActivity = IDLE;
    int iFrame = 0; ///< recorded or played back so far, 25 a second
    QString cFile;  ///< the name in the call

    bool isRunning() const { return eActivity == RECORDING || eActivity == PLAYING; }

    /// One of idle, recording, recording-paused, playing, playing-paused.
    QString activityName() const;

    /// The text stored on a board: the activity's name, a blank, the frame, the end of the line, then the
    /// file's name in UTF-8. fromText() takes any other text as idle.
    QByteArray toText() const;
    static SCodecState fromText(const QByteArray& rcText);
};

#endif
