/* SPDX-License-Identifier: MIT */
/* halden-board: making operations fail. */
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <cstdio>
#include <cstring>

namespace
{

const int HIGHEST_ERROR = 4095; // the kernel has no higher ones

QString errorName(int iError)
{
    const char* pszName = strerrorname_np(iError);
    return pszName != nullptr ? QString::fromLatin1(pszName) : QString::number(iError);
}

/// The number of an error's name, 0 if there is none.
int errorByName(const QString& rcName)
{
    for (int iError = 1; iError <= HIGHEST_ERROR; ++iError)
        if (errorName(iError) == rcName)
            return iError;
    return 0;
}

QString operationNames()
{
    QStringList cNames;
    for (int iOperation = 1; iOperation < BOARD_OPERATION_COUNT; ++iOperation)
        cNames << CBoard::operationName(static_cast<board_operation>(iOperation));
    return cNames.join(QLatin1Char(' '));
}

void printFaults(const CBoard& rcBoard)
{
    for (const CBoard::SFault& rcFault : rcBoard.faults()) {
        const QString cCount = rcFault.u32Count == BOARD_FAULT_FOREVER ? QStringLiteral("all")
                                                                       : QString::number(rcFault.u32Count);
        std::printf("%-16s %u pass, then %s %s %s; so far %u\n",
                    qPrintable(CBoard::operationName(rcFault.eOperation)), rcFault.u32Nth - 1,
                    qPrintable(cCount), rcFault.bShort ? "do" : "fail with",
                    rcFault.bShort ? "half" : qPrintable(errorName(rcFault.iError)), rcFault.u32Hits);
    }
}

bool canBeShort(board_operation eOperation)
{
    return eOperation == BOARD_OPERATION_FPGA_READ || eOperation == BOARD_OPERATION_FPGA_WRITE ||
           eOperation == BOARD_OPERATION_DISK_WRITE;
}

} // namespace

static const QString NTH = QStringLiteral("nth");
static const QString COUNT = QStringLiteral("count");
static const QString ERROR = QStringLiteral("errno");
static const QString SHORT = QStringLiteral("short");

/// Reads the fault from the command line. False, with a message, if it makes no sense.
static bool readFault(CCommandLine& rcLine, CBoard::SFault& rcFault)
{
    const QString cName = rcLine.arguments().first();
    rcFault.eOperation = CBoard::operationByName(cName);
    rcFault.bShort = rcLine.isSet(SHORT);
    if (!rcLine.number(NTH, 1, 1, rcFault.u32Nth) ||
        !rcLine.number(COUNT, 1, BOARD_FAULT_FOREVER, rcFault.u32Count))
        return false;
    if (rcLine.isSet(ERROR))
        rcFault.iError = errorByName(rcLine.value(ERROR));
    if (rcFault.eOperation == BOARD_OPERATION_NONE)
        rcLine.refuse(
            QStringLiteral("unknown operation '%1'; choose one of: %2").arg(cName, operationNames()));
    else if (rcLine.isSet(ERROR) && rcFault.iError == 0)
        rcLine.refuse(QStringLiteral("unknown error '%1'").arg(rcLine.value(ERROR)));
    else if (rcFault.bShort && !canBeShort(rcFault.eOperation))
        rcLine.refuse(QStringLiteral("%1 has no transfer that could be halved").arg(cName));
    return rcLine.exitStatus() == CCommandLine::SUCCESS;
}

int commandFault(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("fault"),
        QStringLiteral("Makes an operation fail from now on, in a running daemon too. A new fault "
                       "of an operation replaces the old one.\n\nOperations: %1")
            .arg(operationNames()));
    cLine.addArgument(QStringLiteral("OPERATION | list | clear"),
                      QStringLiteral("make this operation fail; or show all faults, or remove them"));
    cLine.addValue(NTH, QStringLiteral("N"),
                   QStringLiteral("the first call to fail; default: 1, the next one"));
    cLine.addValue(COUNT, QStringLiteral("N"), QStringLiteral("how many calls fail; default: all"));
    cLine.addValue(ERROR, QStringLiteral("NAME"), QStringLiteral("the error, such as EIO"));
    cLine.addFlag(SHORT, QStringLiteral("transfer half instead of failing"));
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    const bool bList = cWhat == QLatin1String("list");
    const bool bClear = cWhat == QLatin1String("clear");
    CBoard::SFault cFault;
    CBoard cBoard;
    if ((!bList && !bClear && !readFault(cLine, cFault)) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    if (bList)
        printFaults(cBoard);
    else if (bClear)
        cBoard.clearFaults();
    else
        cBoard.setFault(cFault);
    return cLine.exitStatus();
}
