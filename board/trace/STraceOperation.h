/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TRACE_STRACEOPERATION_H
#define HALDEND_BOARD_TRACE_STRACEOPERATION_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// A line of a trace, taken apart; virtual-board-reference.md has the grammar.
struct STraceOperation {
    enum EDevice { FPGA, LIME, I2C };

    EDevice eDevice = FPGA;
    QString cName;                   ///< of the operation, such as write32
    QStringList cArguments;          ///< as they stand in the line
    std::optional<quint32> u32Place; ///< address in the FPGA, or the chip on the I2C bus; only in full traces
    QString cResult;                 ///< empty if there is none
    QByteArray cBytes;               ///< all that the line has
    bool bCutOff = false;            ///< there were more bytes
    QString cError;                  ///< name of the error; empty if the operation succeeded

    /// None if the line is none of a trace. At most 64 MiB of bytes.
    static std::optional<STraceOperation> parse(const QString& rcLine);

    /// An argument or a result as a number; none if it isn't one.
    static std::optional<quint32> number(const QString& rcText);
    std::optional<quint32> argument(int iIndex) const { return number(cArguments.value(iIndex)); }
    std::optional<quint32> result() const { return number(cResult); }

    /// The width of read8 to write32 in bytes; 0 for other operations.
    int registerBytes() const;
    bool isWrite() const { return cName.startsWith(QLatin1String("write")); }
};

#endif
