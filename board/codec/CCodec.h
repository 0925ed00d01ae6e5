/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CCODEC_H
#define HALDEND_BOARD_CODEC_CCODEC_H

#include "board/codec/IFilm.h"
#include "board/state/SCodecState.h"

#include <QBasicTimer>
#include <QObject>

#include <memory>

class CBoard;

/// The stand-in of the video codec: records the board's picture as a film, and plays films back. Without video it makes a
/// file of text grow while it records, and counts frames while it plays back.
///
/// It does one of the two at a time, and refuses commands that make no sense in its state. The state is
/// stored on the board, where the picture finds it. This class and its films obey the board's codec modes that concern
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
    CCodec(CBoard& rcBoard, bool bVideo);
    ~CCodec() override;

    CCodec(const CCodec&) = delete;
    CCodec& operator=(const CCodec&) = delete;

    /// Carries out a command. rcFile is for RECORD, which creates or empties the file, and for PLAY, which
    /// needs a film, or, without video, a readable file. False if the command is refused or fails; rcError says why.
    [[nodiscard]] bool carryOut(ECommand eCommand, const QString& rcFile, QString& rcError);

protected:
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    std::unique_ptr<IFilm> startRecording(const QString& rcFile, QString& rcError);
    std::unique_ptr<IFilm> startPlayback(const QString& rcFile, QString& rcError);
    void changeTo(SCodecState::EActivity eActivity);

    CBoard& m_rcBoard;
    bool m_bVideo;
    SCodecState m_sState;
    std::unique_ptr<IFilm> m_pcFilm; ///< null while idle
    QBasicTimer m_cTimer;            ///< runs while the codec does
};

#endif
