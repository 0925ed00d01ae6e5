/* SPDX-License-Identifier: MIT */
/* The registers of the board by name: those of the chips' tables, and those that are reached by address alone. */
#ifndef HALDEND_BOARD_TRACE_REGISTERNAMES_H
#define HALDEND_BOARD_TRACE_REGISTERNAMES_H

#include <QString>
#include <QVector>

struct reg_bf_group;

/// Where a register is.
struct SRegisterPlace {
    enum EKind { FPGA, LIME, I2C };

    EKind eKind = FPGA;
    quint32 u32Base = 0; ///< of the display controller: the window, as CBoard::ELimeWindow; of I2C: the chip
    quint32 u32Address = 0; ///< in it
};

/// A register that has a name.
struct SRegisterName {
    QString cName; ///< in capitals if it is in a chip's table
    SRegisterPlace sPlace;
    const reg_bf_group* psRow = nullptr; ///< null without a table
};

/// All that have one: FPGA, display controller, decoder, encoder. L5ETC is at its own offset; the table has it at that
/// of L1ETC.
const QVector<SRegisterName>& registerNames();

/// The register's name; null if it has none.
const SRegisterName* registerName(const SRegisterPlace& rsPlace);

/// Fields with their values, such as "fgon=1 cto=1": those that aren't 0. A register without fields, or whose fields
/// are all 0, shows its value.
QString registerFields(const SRegisterName& rsName, quint32 u32Value);

/// Name and fields: "CTRL fgon=1 cto=1".
QString registerText(const SRegisterName& rsName, quint32 u32Value);

/// The windows of the display controller by the name that traces and judgements use, such as display; 0 if there is
/// none.
quint32 limeWindow(const QString& rcName);
QString limeWindowName(quint32 u32Window);

/// The I2C chip by its address, such as saa7113; the address in hexadecimal digits if there is none.
QString chipName(quint32 u32Chip);

#endif
