#ifndef HALDEND_BOARD_STATE_SCODECSTATE_H
#define HALDEND_BOARD_STATE_SCODECSTATE_H

#include <QByteArray>
#include <QString>

/// What the codec stand-in is doing.
struct SCodecState {
    enum EActivity { IDLE, RECORDING, RECORDING_PAUSED, PLAYING, PLAYING_PAUSED, ACTIVITIES };

    EActivity eActivity = IDLE;
    int iFrame = 0; ///< recorded or played back so far, 25 a second
    QString cFile;  ///< as the call named it

    bool isRunning() const { return eActivity == RECORDING || eActivity == PLAYING; }

    /// One of idle, recording, recording-paused, playing, playing-paused.
    QString activityName() const;

    /// As it is kept on a board: the activity's name, a blank, the frame; the rest, after the end of the line, is
    /// the file's name in UTF-8. What isn't such a text counts as idle.
    QByteArray toText() const;
    static SCodecState fromText(const QByteArray& rcText);
};

#endif
