/* SPDX-License-Identifier: MIT */
#include "board/trace/CTraceNames.h"

#include "board/state/CBoard.h"
#include "board/trace/MemoryNames.h"
#include "board/trace/RegisterNames.h"

namespace
{

const QLatin1String UNKNOWN("an unknown place");

QString withError(const QString& rcText, const STraceOperation& rsOperation)
{
    return rsOperation.cError.isEmpty() ? rcText : rcText + QStringLiteral(" ! ") + rsOperation.cError;
}

/// The register's name, and its fields if the operation moved a value. Empty if it has no name.
QString registerOf(const SRegisterPlace& rsPlace, const std::optional<quint32>& ru32Value)
{
    const SRegisterName* psName = registerName(rsPlace);
    if (psName == nullptr)
        return QString();
    return ru32Value.has_value() ? registerText(*psName, *ru32Value) : psName->cName;
}

/// Register or palette; empty if nothing is there.
QString fpgaRegisterText(quint32 u32Address, const std::optional<quint32>& ru32Value)
{
    QString cRegister = registerOf({SRegisterPlace::FPGA, 0, u32Address}, ru32Value);
    if (!cRegister.isEmpty())
        return cRegister;
    QString cPlace = memoryPlace(u32Address);
    if (cPlace.startsWith(QLatin1String("0x")))
        return QString();
    if (!ru32Value.has_value())
        return cPlace;
    return QStringLiteral("%1 0x%2").arg(cPlace).arg(*ru32Value, 8, 16, QLatin1Char('0'));
}

QString namedLime(const STraceOperation& rsOperation)
{
    const quint32 u32Window = limeWindow(rsOperation.cName);
    const std::optional<quint32> u32Offset = rsOperation.argument(0);
    if (u32Window == 0 || !u32Offset.has_value())
        return QString();
    const QString cText = registerOf({SRegisterPlace::LIME, u32Window, *u32Offset}, rsOperation.argument(1));
    return cText.isEmpty() ? cText : QStringLiteral("lime ") + cText;
}

} // namespace

CTraceNames::CTraceNames() : m_cGlyphs(static_cast<int>(FPGA_GLYPH_COUNT * FPGA_GLYPH_BYTES), '\0') {}

void CTraceNames::useGlyphsOf(const CBoard& rcBoard)
{
    const QByteArray cGlyphs = rcBoard.fpgaMemory(FPGA_GLYPHS, m_cGlyphs.size());
    if (!cGlyphs.isEmpty())
        noteGlyphs(FPGA_GLYPHS, cGlyphs);
}

void CTraceNames::noteGlyphs(quint32 u32Address, const QByteArray& rcBytes)
{
    const auto u32Size = static_cast<quint32>(m_cGlyphs.size());
    if (u32Address < FPGA_GLYPHS || u32Address - FPGA_GLYPHS >= u32Size)
        return;
    const int iOffset = static_cast<int>(u32Address - FPGA_GLYPHS);
    const int iBytes = qMin(rcBytes.size(), m_cGlyphs.size() - iOffset);
    m_cGlyphs.replace(iOffset, iBytes, rcBytes.left(iBytes));
    const int iSet = glyphSetOf(m_cGlyphs);
    if (iSet != 0)
        m_iGlyphSet = iSet;
}

QString CTraceNames::namedTransfer(const STraceOperation& rsOperation)
{
    const bool bBytes = rsOperation.cName == QLatin1String("bytes");
    const quint32 u32Bytes = static_cast<quint32>(rsOperation.cBytes.size());
    const quint32 u32Count = bBytes ? u32Bytes : rsOperation.result().value_or(0);
    const qint64 iPlace = rsOperation.u32Place.has_value() ? qint64(*rsOperation.u32Place) : m_iPosition;
    if (!bBytes && iPlace >= 0)
        m_iPosition = iPlace + u32Count;
    if (!rsOperation.cError.isEmpty())
        return QString();
    const QString cIntro = QStringLiteral("fpga %1 ").arg(rsOperation.cName);
    if (iPlace < 0)
        return cIntro + QStringLiteral("%1 bytes at %2").arg(u32Count).arg(UNKNOWN);
    noteGlyphs(static_cast<quint32>(iPlace), rsOperation.cBytes);
    return cIntro + memoryText(static_cast<quint32>(iPlace), rsOperation.cBytes,
                               static_cast<int>(qMin<quint32>(u32Count, 0x7fffffff)), m_iGlyphSet);
}

QString CTraceNames::namedFpga(const STraceOperation& rsOperation)
{
    const QString& rcName = rsOperation.cName;
    if (rsOperation.registerBytes() != 0 && rsOperation.argument(0).has_value()) {
        const std::optional<quint32> u32Value =
            rsOperation.isWrite() ? rsOperation.argument(1) : rsOperation.result();
        const QString cText = fpgaRegisterText(*rsOperation.argument(0), u32Value);
        return cText.isEmpty() ? cText : QStringLiteral("fpga %1 ").arg(rcName) + cText;
    }
    if (rcName == QLatin1String("seek") && rsOperation.argument(0).has_value()) {
        if (rsOperation.cError.isEmpty())
            m_iPosition = *rsOperation.argument(0);
        return QStringLiteral("fpga seek ") + memoryPlace(*rsOperation.argument(0));
    }
    if (rcName == QLatin1String("open"))
        m_iPosition = 0;
    if (rcName == QLatin1String("write") || rcName == QLatin1String("read") ||
        rcName == QLatin1String("bytes"))
        return namedTransfer(rsOperation);
    return QString();
}

QString CTraceNames::namedI2c(const STraceOperation& rsOperation)
{
    const QString& rcName = rsOperation.cName;
    const std::optional<quint32> u32Argument = rsOperation.argument(0);
    if (rcName == QLatin1String("slave") && u32Argument.has_value()) {
        if (rsOperation.cError.isEmpty())
            m_iChip = *u32Argument;
        return QStringLiteral("i2c slave ") + chipName(*u32Argument);
    }
    const qint64 iChip = rsOperation.u32Place.has_value() ? qint64(*rsOperation.u32Place) : m_iChip;
    if (rcName == QLatin1String("bytes") && iChip >= 0)
        return QStringLiteral("i2c bytes %1 bytes from %2 0x00")
            .arg(rsOperation.cBytes.size())
            .arg(chipName(static_cast<quint32>(iChip)));
    if ((rcName != QLatin1String("read") && rcName != QLatin1String("write")) || !u32Argument.has_value() ||
        iChip < 0)
        return QString();
    const QString cText = registerOf({SRegisterPlace::I2C, static_cast<quint32>(iChip), *u32Argument},
                                     rsOperation.isWrite() ? rsOperation.argument(1) : rsOperation.result());
    return cText.isEmpty() ? cText : QStringLiteral("i2c %1 %2").arg(rcName, cText);
}

QString CTraceNames::named(const STraceOperation& rsOperation)
{
    switch (rsOperation.eDevice) {
    case STraceOperation::FPGA:
        return namedFpga(rsOperation);
    case STraceOperation::LIME:
        return namedLime(rsOperation);
    default:
        return namedI2c(rsOperation);
    }
}

QString CTraceNames::named(const QString& rcLine)
{
    const std::optional<STraceOperation> sOperation = STraceOperation::parse(rcLine);
    const QString cNamed = sOperation.has_value() ? named(*sOperation) : QString();
    return cNamed.isEmpty() ? rcLine : withError(cNamed, *sOperation);
}
