/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TRACE_CTRACENAMES_H
#define HALDEND_BOARD_TRACE_CTRACENAMES_H

#include "board/trace/STraceOperation.h"

#include <QByteArray>
#include <QString>

class CBoard;

/// Turns lines of a trace into lines with names: registers with their fields, text cells with their letters and
/// colours.
///
///     CTraceNames cNames;
///     cNames.useGlyphsOf(cBoard);
///     for (const QString& rcLine : cBoard.traceLines())
///         puts(qPrintable(cNames.named(rcLine)));
///
/// A line can depend on those before it: a seek says where the next transfer goes, and a glyph set that is loaded what
/// the codes of cells mean. So give it all lines of a trace in their order. If the first ones are missing, some places
/// show as unknown.
class CTraceNames
{
public:
    CTraceNames();

    /// Takes the letters of the glyph set that a board has now. Before that, and before a trace that has a whole set
    /// in it, they are those of set 1.
    void useGlyphsOf(const CBoard& rcBoard);

    /// The line with names; the line itself if it is none of a trace, or has nothing that has a name.
    QString named(const QString& rcLine);

private:
    QString named(const STraceOperation& rsOperation);
    QString namedFpga(const STraceOperation& rsOperation);
    QString namedTransfer(const STraceOperation& rsOperation);
    QString namedI2c(const STraceOperation& rsOperation);
    void noteGlyphs(quint32 u32Address, const QByteArray& rcBytes);

    qint64 m_iPosition = -1; ///< of the FPGA's file; negative if unknown
    qint64 m_iChip = -1;     ///< on the I2C bus; the same
    QByteArray m_cGlyphs;    ///< as far as the trace has them
    int m_iGlyphSet = 1;
};

#endif
