/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_REGISTERS_CCHIPREGISTERS_H
#define HALDEND_BOARD_REGISTERS_CCHIPREGISTERS_H

#include "board/state/CBoard.h"
#include "regdb/reg_types.h"

#include <QString>
#include <QVector>

/// The registers of one chip: their values on a board, beside those of the register file in the board's
/// folder.
///
/// The register database supplies tables, composing and splitting, so the file's values are those that the
/// daemon would send. The database is the process's only copy, and holds the values that were read from
/// files.
class CChipRegisters
{
public:
    struct SField {
        QString cName;
        bool bReserved = false;
        quint32 u32Value = 0;
        quint32 u32FileValue = 0;
    };

    struct SRegister {
        QString cName;
        QString cWindow; ///< of the display controller's registers; otherwise the chip's name
        quint32 u32Address = 0;
        int iBits = 32;
        QString cHelp;
        quint32 u32Value = 0;
        quint32 u32FileValue = 0;
        bool bInFile = false; ///< the daemon writes it when it programs the chip from the file
        QVector<SField> cFields;

        bool differs() const { return bInFile && u32Value != u32FileValue; }
    };

    /// The chips by name: fpga, lime, saa7113, saa7129.
    static QStringList chipNames();

    /// rcChip: one of chipNames(). Keeps a reference to the board.
    CChipRegisters(const CBoard& rcBoard, const QString& rcChip);

    /// Reads the chip's register file. False if it is missing or can't be read; rcError says why, in one
    /// line. Before that, no register counts as named in the file.
    [[nodiscard]] bool readFile(QString& rcError);

    /// All registers in the order of the table.
    QVector<SRegister> registers() const;

private:
    struct SChip;
    static const SChip CHIPS[];

    bool isWrittenByDaemon(const reg_bf_group& rcRow) const;
    SRegister lookAt(reg_bf_group& rcRow) const;

    const CBoard& m_rcBoard;
    const SChip& m_rcChip;
    bool m_bFileRead = false;
};

#endif
