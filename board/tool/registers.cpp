/* SPDX-License-Identifier: MIT */
/* halden-board: the command that lists the registers of the chips. */
#include "board/registers/CChipRegisters.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <cstdio>

namespace
{

/// The names that were asked for, in capitals, and those not found yet; everything if there are none.
struct SWanted {
    QStringList cNames;
    QStringList cUnknown;
    bool bChangedOnly = false;

    bool takes(const QString& rcName)
    {
        const QString cName = rcName.toUpper();
        cUnknown.removeAll(cName);
        return cNames.isEmpty() || cNames.contains(cName);
    }
};

/// As many digits as the register has.
QString hex(const CChipRegisters::SRegister& rcRegister, quint32 u32Value)
{
    return QStringLiteral("0x%1").arg(u32Value, rcRegister.iBits / 4, 16, QLatin1Char('0'));
}

/// The fields, such as "vsci=1 vscf=0(2005)": in brackets the file's value if it differs. Reserved fields
/// only if they aren't 0.
QString fieldsOf(const CChipRegisters::SRegister& rcRegister)
{
    QStringList cTexts;
    for (const CChipRegisters::SField& rcField : rcRegister.cFields) {
        const bool bDiffers = rcRegister.bInFile && rcField.u32Value != rcField.u32FileValue;
        QString cText = QStringLiteral("%1=%2").arg(rcField.cName).arg(rcField.u32Value);
        if (bDiffers)
            cText += QStringLiteral("(%1)").arg(rcField.u32FileValue);
        if (!rcField.bReserved || rcField.u32Value != 0 || bDiffers)
            cTexts << cText;
    }
    return cTexts.join(QLatin1Char(' '));
}

void printRegister(const CChipRegisters::SRegister& rcRegister)
{
    const QString cFile = rcRegister.differs()
                              ? QStringLiteral("  file: ") + hex(rcRegister, rcRegister.u32FileValue)
                              : QString();
    std::printf("%c %-7s %-8s 0x%08x  %-10s  %-36s  %s%s\n", rcRegister.differs() ? '*' : ' ',
                qPrintable(rcRegister.cName), qPrintable(rcRegister.cWindow), rcRegister.u32Address,
                qPrintable(hex(rcRegister, rcRegister.u32Value)), qPrintable(rcRegister.cHelp),
                qPrintable(fieldsOf(rcRegister)), qPrintable(cFile));
}

/// Reads the chip's file only if one of its registers is listed, so that a request for the FPGA doesn't warn
/// about the files of other chips.
void listChip(const CBoard& rcBoard, const QString& rcChip, SWanted& rcWanted, CCommandLine& rcLine)
{
    CChipRegisters cChip(rcBoard, rcChip);
    const bool bAll = rcWanted.takes(rcChip);
    QStringList cNames;
    for (const CChipRegisters::SRegister& rcRegister : cChip.registers())
        if (rcWanted.takes(rcRegister.cName) || bAll)
            cNames << rcRegister.cName;
    QString cError;
    if (!cNames.isEmpty() && !cChip.readFile(cError))
        rcLine.warn(cError);
    for (const CChipRegisters::SRegister& rcRegister : cChip.registers())
        if (cNames.contains(rcRegister.cName) && (rcRegister.differs() || !rcWanted.bChangedOnly))
            printRegister(rcRegister);
}

} // namespace

int commandRegisters(const QStringList& rcArguments)
{
    const QString CHANGED = QStringLiteral("changed");
    CCommandLine cLine(
        QStringLiteral("registers"),
        QStringLiteral(
            "Lists the registers of the chips: name, chip or register window, address, value, "
            "meaning, fields. A star marks a register that differs from the chip's register file on the "
            "board; the file's values stand in parentheses and at the end of the line.\n\nChips: %1")
            .arg(CChipRegisters::chipNames().join(QLatin1Char(' '))));
    cLine.addArgument(QStringLiteral("[NAME...]"), QStringLiteral("only these registers or chips"));
    cLine.addFlag(CHANGED, QStringLiteral("only registers that differ from the register files"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 0, -1) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    SWanted cWanted;
    for (const QString& rcName : cLine.arguments())
        cWanted.cNames << rcName.toUpper();
    cWanted.cUnknown = cWanted.cNames;
    cWanted.bChangedOnly = cLine.isSet(CHANGED);
    for (const QString& rcChip : CChipRegisters::chipNames())
        listChip(cBoard, rcChip, cWanted, cLine);
    return cWanted.cUnknown.isEmpty()
               ? cLine.exitStatus()
               : cLine.refuse(QStringLiteral("unknown register or chip '%1'").arg(cWanted.cUnknown.first()));
}
