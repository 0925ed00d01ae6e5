/* SPDX-License-Identifier: MIT */
#include "board/trace/CTraceReplay.h"

#include "board/devices/stored_frame.h"
#include "board/state/CBoard.h"
#include "board/trace/RegisterNames.h"

#include <QRgb>
#include <QVector>
#include <QtEndian>

#include <cstring>

namespace
{

const quint32 CHIPS = 128;

QString noTrace()
{
    return QStringLiteral("not a line of a trace");
}

QString behindTheEnd()
{
    return QStringLiteral("behind the end of the board");
}

} // namespace

bool CTraceReplay::open(QString& rcError)
{
    return m_cFpga.open(m_rcBoard.path(BOARD_FPGA), BOARD_FPGA_BYTES, rcError) &&
           m_cI2c.open(m_rcBoard.path(BOARD_I2C), BOARD_I2C_BYTES, rcError);
}

bool CTraceReplay::apply(const QString& rcLine, QString& rcError)
{
    const std::optional<STraceOperation> sOperation = STraceOperation::parse(rcLine);
    if (!sOperation.has_value())
        rcError = noTrace();
    else if (!sOperation->cError.isEmpty())
        rcError.clear();
    else if (sOperation->eDevice == STraceOperation::FPGA)
        rcError = applyFpga(*sOperation);
    else if (sOperation->eDevice == STraceOperation::LIME)
        rcError = applyLime(*sOperation);
    else
        rcError = applyI2c(*sOperation);
    return rcError.isEmpty();
}

QString CTraceReplay::writeMemory(qint64 iAddress, const QByteArray& rcBytes)
{
    if (iAddress < 0 || iAddress > qint64(BOARD_FPGA_BYTES) - rcBytes.size())
        return behindTheEnd();
    std::memcpy(m_cFpga.data() + iAddress, rcBytes.constData(), static_cast<size_t>(rcBytes.size()));
    return QString();
}

// A read shows what the register has, as a write does.
QString CTraceReplay::applyRegister(const STraceOperation& rsOperation)
{
    const std::optional<quint32> u32Address = rsOperation.argument(0);
    const std::optional<quint32> u32Value =
        rsOperation.isWrite() ? rsOperation.argument(1) : rsOperation.result();
    if (!u32Address.has_value() || !u32Value.has_value())
        return noTrace();
    QByteArray cBytes(4, '\0');
    qToLittleEndian(*u32Value, cBytes.data());
    QString cError = writeMemory(*u32Address, cBytes.left(rsOperation.registerBytes()));
    if (rsOperation.isWrite() && *u32Address == FPGA_STORE_VIDEO && (*u32Value & 1) != 0)
        storeFrame();
    return cError;
}

void CTraceReplay::storeFrame()
{
    QVector<QRgb> cPixels(VIDEO_WIDTH * VIDEO_HEIGHT);
    if (!stored_frame_generate(m_cFpga.data(), cPixels.data()))
        m_rcBoard.takeLivePicture(cPixels.data());
    stored_frame_write(m_cFpga.data(), cPixels.constData());
}

QString CTraceReplay::applyTransfer(const STraceOperation& rsOperation)
{
    const std::optional<quint32> u32Count = rsOperation.result();
    if (!u32Count.has_value())
        return noTrace();
    // Of a full trace the bytes that are left out here come in the next lines.
    const bool bWhole = static_cast<quint32>(rsOperation.cBytes.size()) == *u32Count ||
                        (rsOperation.bCutOff && rsOperation.u32Place.has_value());
    if (!bWhole)
        return QStringLiteral("has not all bytes: switch the trace to full before it is taken");
    const qint64 iPlace = rsOperation.u32Place.has_value() ? qint64(*rsOperation.u32Place) : m_iPosition;
    m_iPosition = iPlace + *u32Count;
    return writeMemory(iPlace, rsOperation.cBytes);
}

QString CTraceReplay::applyFpga(const STraceOperation& rsOperation)
{
    const QString& rcName = rsOperation.cName;
    if (rsOperation.registerBytes() != 0)
        return applyRegister(rsOperation);
    if (rcName == QLatin1String("write") || rcName == QLatin1String("read"))
        return applyTransfer(rsOperation);
    if (rcName == QLatin1String("bytes"))
        return rsOperation.u32Place.has_value() ? writeMemory(*rsOperation.u32Place, rsOperation.cBytes)
                                                : noTrace();
    if (rcName == QLatin1String("seek") && !rsOperation.argument(0).has_value())
        return noTrace();
    if (rcName == QLatin1String("seek") || rcName == QLatin1String("open"))
        m_iPosition = rsOperation.argument(0).value_or(0);
    return QString();
}

QString CTraceReplay::applyLime(const STraceOperation& rsOperation)
{
    const quint32 u32Window = limeWindow(rsOperation.cName);
    if (u32Window == 0)
        return QString();
    const std::optional<quint32> u32Offset = rsOperation.argument(0);
    const std::optional<quint32> u32Value = rsOperation.argument(1);
    if (!u32Offset.has_value() || !u32Value.has_value())
        return noTrace();
    m_rcBoard.setLimeRegister(static_cast<CBoard::ELimeWindow>(u32Window), *u32Offset, *u32Value);
    return QString();
}

QString CTraceReplay::applyI2c(const STraceOperation& rsOperation)
{
    const QString& rcName = rsOperation.cName;
    const quint32 u32Chip = rsOperation.u32Place.value_or(m_u32Chip);
    if (rcName == QLatin1String("slave"))
        m_u32Chip = rsOperation.argument(0).value_or(0);
    const bool bBytes = rcName == QLatin1String("bytes");
    if (!bBytes && rcName != QLatin1String("write") && rcName != QLatin1String("read"))
        return QString();
    const std::optional<quint32> u32Sub = bBytes ? 0 : rsOperation.argument(0);
    const std::optional<quint32> u32Value =
        rsOperation.isWrite() ? rsOperation.argument(1) : rsOperation.result();
    if (!u32Sub.has_value() || (!bBytes && !u32Value.has_value()))
        return noTrace();
    const QByteArray cBytes = bBytes ? rsOperation.cBytes : QByteArray(1, static_cast<char>(*u32Value));
    if (u32Chip >= CHIPS || qint64(*u32Sub) + cBytes.size() > 256)
        return behindTheEnd();
    // A program can't write the decoder's status.
    if (rsOperation.isWrite() && u32Chip == SAA7113_SLAVE && *u32Sub == SAA7113_STATUS)
        return QString();
    std::memcpy(m_cI2c.data() + u32Chip * 256 + *u32Sub, cBytes.constData(),
                static_cast<size_t>(cBytes.size()));
    return QString();
}
