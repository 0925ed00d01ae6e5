/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CCODEC_H
#define HALDEND_BOARD_CODEC_CCODEC_H

#include "board/state/SCodecState.h"

#include <QBasicTimer>
#include <QObject>

class CBoard;

/// The stand-in of the video codec: makes a file grow while it records, and counts frames while it plays
/// back.
///
/// It does one of the two at a time, and refuses commands that make no sense in its state. The state is
/// stored on the board, where the picture finds it. This class obeys the board's codec modes that concern
/// files: stall and lose.
class CCodec : public QObject
{
    Q_OBJECT

public:
    enum ECommand {
        RECORD,
        PAUSE_RECORDING,
        RESUME_RECORDING,
        STOP_RECORDING,
        PLAY,
        PAUSE_PLAYBACK,
        RESUME_PLAYBACK,
        STOP_PLAYBACK
    };

    /// Starts idle, without storing that on the board yet. Keeps a reference to the board, which must be
    /// open.
    explicit CCodec(CBoard& rcBoard);
    ~CCodec() override;

    CCodec(const CCodec&) = delete;
    CCodec& operator=(const CCodec&) = delete;

    /// Carries out a command. rcFile is for RECORD, which creates or empties the file, and for PLAY, which
    /// needs a readable one. False if the command is refused or fails; rcError says why.
    [[nodiscard]] bool carryOut(ECommand eCommand, const QString& rcFile, QString& rcError);

protected:
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    bool openFile(ECommand eCommand, const QString& rcFile, QString& rcError);
    void closeFile();
    void grow();

    CBoard& m_rcBoard;
    SCodecState m_sState;
    int m_iFile = -1;
    QBasicTimer m_cTimer; ///< runs while the codec does
};

#endif
