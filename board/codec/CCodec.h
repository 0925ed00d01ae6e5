#ifndef HALDEND_BOARD_CODEC_CCODEC_H
#define HALDEND_BOARD_CODEC_CCODEC_H

#include "board/state/SCodecState.h"

#include <QBasicTimer>
#include <QObject>

class CBoard;

/// The stand-in of the video codec: makes a file grow while it records, and counts frames while it plays back.
///
/// It does one of the two at a time, and refuses what makes no sense in its state. What it is doing is kept on the
/// board, where the picture finds it. The codec's modes on the board that concern files are heeded here.
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

    /// Idle, which it doesn't say on the board yet. Keeps a reference to the board, which has to be open.
    explicit CCodec(CBoard& rcBoard);
    ~CCodec() override;

    CCodec(const CCodec&) = delete;
    CCodec& operator=(const CCodec&) = delete;

    /// rcFile: for RECORD, which makes the file or empties it, and for PLAY, which needs one that can be read. False
    /// if it isn't carried out; rcError says why.
    bool carryOut(ECommand eCommand, const QString& rcFile, QString& rcError);

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
