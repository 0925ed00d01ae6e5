/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TRACE_CTRACEREPLAY_H
#define HALDEND_BOARD_TRACE_CTRACEREPLAY_H

#include "board/state/CMappedFile.h"
#include "board/trace/STraceOperation.h"

#include <QString>

class CBoard;

/// Builds the state of a board from a full trace, line by line.
///
///     CTraceReplay cReplay(cBoard);                 // a new board
///     if (!cReplay.open(cError)) ...
///     for (const QString& rcLine : cLines)
///         if (!cReplay.apply(rcLine, cError)) ...
///
/// The board has what programs wrote, and what devices answered, such as the decoder's status. The camera and the codec
/// are in no trace: the board keeps its own.
class CTraceReplay
{
public:
    /// Keeps a reference to the board, which is open.
    explicit CTraceReplay(CBoard& rcBoard) : m_rcBoard(rcBoard) {}

    /// False if the board's files can't be mapped; rcError says why.
    [[nodiscard]] bool open(QString& rcError);

    /// Carries the operation out. False if the line is none of a trace, or doesn't have all bytes, or reaches behind
    /// the board's end; rcError says which, and the board is as before.
    [[nodiscard]] bool apply(const QString& rcLine, QString& rcError);

private:
    QString applyFpga(const STraceOperation& rsOperation);
    QString applyRegister(const STraceOperation& rsOperation);
    QString applyTransfer(const STraceOperation& rsOperation);
    QString applyLime(const STraceOperation& rsOperation);
    QString applyI2c(const STraceOperation& rsOperation);
    void storeFrame();
    QString writeMemory(qint64 iAddress, const QByteArray& rcBytes);

    CBoard& m_rcBoard;
    CMappedFile m_cFpga;
    CMappedFile m_cI2c;
    qint64 m_iPosition = 0; ///< of the FPGA's file
    quint32 m_u32Chip = 0;  ///< on the I2C bus
};

#endif
