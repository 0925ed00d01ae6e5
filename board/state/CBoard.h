/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_STATE_CBOARD_H
#define HALDEND_BOARD_STATE_CBOARD_H

#include "board/camera/live.h"
#include "board/layout/board_layout.h"
#include "board/state/CMappedFile.h"
#include "board/state/SCodecState.h"

#include <QFile>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>
#include <memory>

/// A virtual board from outside: what a test or a tool can see of it, and how it steers it.
///
/// A board is a directory. CBoardMaker makes one; open() gives access to an existing one, which a daemon may
/// be using: everything here acts at once, and shows what the daemon has just done. CBoardPicture shows the
/// monitor, CJudgements what programs did wrong.
///
///     CBoard cBoard;
///     if (!CBoardMaker::create(cDirectory, cError) || !cBoard.open(cDirectory))
///         ...
///     cBoard.setFault({BOARD_OPERATION_I2C_READ});        // from now on
///
/// Register values and pixels are numbers, whatever the byte order of the board. A register address outside
/// of the board reads as 0, and a store to it is dropped; the same goes for every call on a board that isn't
/// open.
class CBoard
{
public:
    /// The register windows of the display controller.
    enum ELimeWindow {
        LIME_HOST = LIME_HOST_WINDOW,
        LIME_DISPLAY = LIME_DISP_WINDOW,
        LIME_CAPTURE = LIME_CAPT_WINDOW,
        LIME_DRAW = LIME_DRAW_WINDOW,
        LIME_PIO = LIME_PIO_WINDOW
    };

    /// An operation that fails. By default the next call and all after it fail, with the operation's usual
    /// error.
    struct SFault {
        board_operation eOperation = BOARD_OPERATION_NONE;
        quint32 u32Nth = 1;                     ///< the first call to fail, counted from now: 1 is the next
        quint32 u32Count = BOARD_FAULT_FOREVER; ///< number of calls that fail
        int iError = 0;                         ///< error number; 0 for the usual one
        bool bShort = false;                    ///< transfer half instead of failing
        quint32 u32Hits = 0;                    ///< in faults(): calls that have failed
    };

    CBoard() = default;

    CBoard(const CBoard&) = delete;
    CBoard& operator=(const CBoard&) = delete;

    /// Opens the board in the directory. False if there is no usable board; errorString() says why, and the
    /// board is closed.
    [[nodiscard]] bool open(const QString& rcDirectory);
    void close();
    bool isOpen() const { return m_cControl.data() != nullptr; }
    QString errorString() const { return m_cError; }
    QString directory() const { return m_cDirectory; }

    /// Path of one of the files of board_layout.h.
    QString path(const char* pszFile) const;

    /// A count that grows with each change of a device, of the camera or of the codec stand-in. It doesn't grow when a
    /// program stores to the display controller through its mapping.
    quint32 changes() const;
    void noteChange() const; ///< for those who write to a file of the board themselves

    /// \name Display controller
    /// Registers by window and byte offset; the memory that layers show by byte address.
    /// @{
    quint32 limeRegister(ELimeWindow eWindow, quint32 u32Offset) const;
    void setLimeRegister(ELimeWindow eWindow, quint32 u32Offset, quint32 u32Value);
    quint16 limeMemory16(quint32 u32Address) const;
    void limeMemory16(quint32 u32Address, int iCount, quint16* pu16Words) const; ///< so many in a row
    void setLimeMemory16(quint32 u32Address, quint16 u16Value);
    /// The memory itself, in the byte order of the daemon, not a copy: until close(). Cut at the memory's end.
    QByteArray limeMemory(quint32 u32Address, int iBytes) const;
    /// @}

    /// \name FPGA
    /// 32-bit registers and memory share one address space.
    /// @{
    quint32 fpgaRegister(quint32 u32Address) const;
    void setFpgaRegister(quint32 u32Address, quint32 u32Value);
    QByteArray fpgaMemory(quint32 u32Address, int iBytes) const; ///< empty if not all of it exists
    /// @}

    /// \name I2C chips
    /// By 7-bit address and sub-address.
    /// @{
    quint8 i2cRegister(quint8 u8Chip, quint8 u8Sub) const;
    void setI2cRegister(quint8 u8Chip, quint8 u8Sub, quint8 u8Value);
    bool isChipSilent(quint8 u8Chip) const; ///< all its registers are 0, the decoder's status apart
    /// @}

    /// \name Camera
    /// The source is a still picture, the moving camera, or frames that halden-camera delivers. Each set...() chooses
    /// one, and counts its frames from now, 25 a second.
    /// @{
    static const int RUNNING = -1; ///< for setMovingCamera(): the frame is what the clock says

    /// A picture of another size is scaled to 720 x 576.
    void setCamera(const QImage& rcImage);
    void setMovingCamera(int iFrame = RUNNING);

    /// For the starter of halden-camera. Returns the number of the choice.
    quint32 setCameraFrames();
    bool isCameraChosen(quint32 u32Choice) const; ///< no other source was chosen since

    board_camera_source cameraSource() const;
    quint32 cameraFrame() const; ///< the number of its frame now

    /// The camera's picture now, before the decoder: 720 x 576, Format_RGB32, black without a source.
    QImage cameraImage() const;

    /// What the FPGA gets of it now: black without a signal. Null pixels, 720 x 576, are an error.
    void takeLivePicture(QRgb* puPixels) const;

    /// Unplugged, the decoder reports no lock.
    void setCameraPlugged(bool bPlugged);
    bool isCameraPlugged() const;

    /// Whether the source gives pictures: one that halden-camera delivers does while that lives.
    bool isCameraAlive() const;

    /// Whether the decoder gets a signal: the camera is plugged in, and its source lives.
    bool hasSignal() const;

    /// For halden-camera: the control words, and the places for its frames; null if the board isn't open.
    board_camera* camera() const;
    uchar* cameraFrames() const { return m_cFrames.data(); }
    /// @}

    /// \name Trace
    /// One line a device operation; virtual-board-reference.md has the grammar. A full trace has all bytes, and can
    /// be replayed; CTraceSnapshot notes what was there before it.
    /// @{
    void setTracing(bool bOn);
    void setTracingFully();
    bool isTracing() const;
    bool isTracingFully() const;
    bool noteInTrace(const QStringList& rcLines);
    QStringList traceLines() const;
    bool clearTrace();
    /// @}

    /// \name Judgements
    /// The notes of the preloaded library; CJudgements has all judgements.
    /// @{
    QStringList notedJudgements() const;
    bool clearJudgements();
    /// @}

    /// \name Faults
    /// One for each operation; a new one replaces the old one.
    /// @{
    void setFault(const SFault& rcFault);
    void clearFault(board_operation eOperation);
    void clearFaults();
    QVector<SFault> faults() const; ///< all that are set, used up or not
    /// @}

    /// \name Codec
    /// The codec service's stand-in, halden-codec, obeys the modes while it runs, and stores its state and the
    /// calls that it got on the board; virtual-board-reference.md has the grammar of the calls.
    /// @{
    void setCodecMode(board_codec_mode eMode);
    board_codec_mode codecMode() const;
    void setCodecDelay(quint32 u32Milliseconds); ///< time that each call takes; 0 by default
    quint32 codecDelay() const;
    bool setCodecState(const SCodecState& rsState); ///< for the stand-in, and tests of its picture
    SCodecState codecState() const;
    bool noteCodecCall(const QString& rcLine);
    QStringList codecCalls() const;
    bool clearCodecCalls();

    /// Marks this process as a codec stand-in of the board, until it ends or closes the board. codecRuns() says whether
    /// there is one, however the last one ended.
    bool claimCodec();
    bool codecRuns() const;
    /// @}

    /// The name of a mode, and the mode of a name: BOARD_CODEC_MODE_COUNT if there is none.
    static QString codecModeName(board_codec_mode eMode);
    static board_codec_mode codecModeByName(const QString& rcName);

    /// The name of an operation, and the operation of a name: BOARD_OPERATION_NONE if there is none.
    static QString operationName(board_operation eOperation);
    static board_operation operationByName(const QString& rcName);

private:
    QStringList linesOf(const char* pszFile) const;
    bool map(CMappedFile& rcFile, const char* pszFile, qint64 iBytes);
    board_control* control() const;
    bool limeSwapped() const;
    live liveFiles() const;
    const moving* movingTables() const;

    QString m_cDirectory;
    QString m_cError;
    CMappedFile m_cControl;
    CMappedFile m_cFpga;
    CMappedFile m_cLime;
    CMappedFile m_cI2c;
    CMappedFile m_cCamera;
    QFile m_cCodecClaim; ///< locked while it is open
    CMappedFile m_cFrames;
    QByteArray m_cEncodedDirectory;                         ///< for the C layer, which points to it
    mutable std::unique_ptr<std::max_align_t[]> m_pcMoving; ///< made when it is needed first
};

#endif
