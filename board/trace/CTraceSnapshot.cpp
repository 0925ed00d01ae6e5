/* SPDX-License-Identifier: MIT */
#include "board/trace/CTraceSnapshot.h"

#include "board/state/CBoard.h"
#include "board/trace/Hex.h"
#include "board/trace/RegisterNames.h"

namespace
{

const quint32 CHUNK = 512; // bytes of the FPGA in a line
const int LEAST_RUN = 4;   // of equal bytes that are counted
const int ATTEMPTS = 100;  // to note a chunk that keeps changing

QString bytesText(const QByteArray& rcBytes)
{
    QString cText = QStringLiteral(" :");
    for (int i = 0; i < rcBytes.size();) {
        int iRun = 1;
        while (i + iRun < rcBytes.size() && rcBytes[i + iRun] == rcBytes[i])
            ++iRun;
        cText += QStringLiteral(" %1").arg(int(static_cast<uchar>(rcBytes[i])), 2, 16, QLatin1Char('0'));
        if (iRun >= LEAST_RUN)
            cText += QStringLiteral("*%1").arg(iRun);
        i += iRun >= LEAST_RUN ? iRun : 1;
    }
    return cText;
}

/// A program may write to the chunk between the look at it and its line: then it is noted once more.
bool noteChunk(CBoard& rcBoard, quint32 u32Address)
{
    QByteArray cNoted(static_cast<int>(qMin(CHUNK, BOARD_FPGA_BYTES - u32Address)), '\0');
    for (int i = 0; i < ATTEMPTS; ++i) {
        const QByteArray cNow = rcBoard.fpgaMemory(u32Address, cNoted.size());
        if (cNow == cNoted)
            return true;
        if (!rcBoard.noteInTrace({QStringLiteral("fpga bytes @ ") + hex(u32Address, 8) + bytesText(cNow)}))
            return false;
        cNoted = cNow;
    }
    return true;
}

/// The same for the display controller.
bool noteLime(CBoard& rcBoard)
{
    QStringList cNoted;
    for (int i = 0; i < ATTEMPTS; ++i) {
        const QStringList cNow = CTraceSnapshot::limeLines(rcBoard);
        if (cNow == cNoted)
            return true;
        if (!rcBoard.noteInTrace(cNow))
            return false;
        cNoted = cNow;
    }
    return true;
}

bool noteChip(CBoard& rcBoard, quint8 u8Chip)
{
    QByteArray cBytes;
    for (int iSub = 0; iSub < 256; ++iSub)
        cBytes.append(static_cast<char>(rcBoard.i2cRegister(u8Chip, static_cast<quint8>(iSub))));
    return rcBoard.noteInTrace({QStringLiteral("i2c bytes @ ") + hex(u8Chip, 2) + bytesText(cBytes)});
}

} // namespace

QStringList CTraceSnapshot::limeLines(const CBoard& rcBoard)
{
    QStringList cLines;
    for (const SRegisterName& rsName : registerNames()) {
        const SRegisterPlace& rsPlace = rsName.sPlace;
        const auto eWindow = static_cast<CBoard::ELimeWindow>(rsPlace.u32Base);
        if (rsPlace.eKind == SRegisterPlace::LIME)
            cLines << QStringLiteral("lime %1 %2 %3")
                          .arg(limeWindowName(rsPlace.u32Base), hex(rsPlace.u32Address, 8),
                               hex(rcBoard.limeRegister(eWindow, rsPlace.u32Address), 8));
    }
    return cLines;
}

bool CTraceSnapshot::begin(CBoard& rcBoard)
{
    rcBoard.setTracingFully();
    bool bNoted = noteChip(rcBoard, SAA7113_SLAVE) && noteChip(rcBoard, SAA7129_SLAVE) && noteLime(rcBoard);
    for (quint32 u32Address = 0; bNoted && u32Address < BOARD_FPGA_BYTES; u32Address += CHUNK)
        bNoted = noteChunk(rcBoard, u32Address);
    return bNoted;
}

bool CTraceSnapshot::end(CBoard& rcBoard)
{
    const bool bFull = rcBoard.isTracingFully();
    rcBoard.setTracing(false);
    return !bFull || rcBoard.noteInTrace(limeLines(rcBoard));
}
