/* halden-board: commands that show what a board does. */
#include "board/CBoard.h"
#include "board/CCommandLine.h"
#include "board/RegisterTables.h"
#include "board/ToolCommands.h"

#include <QFile>
#include <QSaveFile>
#include <QThread>

#include <csignal>
#include <cstdio>

namespace
{

const unsigned long PAUSE_MS = 100; // between two looks at something that is followed

volatile std::sig_atomic_t s_iStopped = 0;

void stop(int)
{
    s_iStopped = 1;
}

} // namespace

void repeatUntilStopped(bool (*pfnStep)(void* pvContext), void* pvContext)
{
    struct sigaction sAction = {};
    sAction.sa_handler = stop;
    sigaction(SIGINT, &sAction, nullptr);
    sigaction(SIGTERM, &sAction, nullptr);
    while (s_iStopped == 0 && pfnStep(pvContext))
        QThread::msleep(PAUSE_MS);
}

// Picture

namespace
{

struct SPictureFile {
    CBoard cBoard;
    QString cPath;
    QString cError;
    QImage cLast;
    bool bRecorded = false;
};

/// Writes the picture if it has changed. The file is replaced whole: viewers never see half a picture.
bool updatePicture(void* pvFile)
{
    auto& rcFile = *static_cast<SPictureFile*>(pvFile);
    const QImage cPicture = rcFile.bRecorded ? rcFile.cBoard.recordedPicture() : rcFile.cBoard.picture();
    if (cPicture == rcFile.cLast)
        return true;
    QSaveFile cFile(rcFile.cPath);
    if (!cFile.open(QIODevice::WriteOnly) || !cPicture.save(&cFile, "PNG") || !cFile.commit()) {
        rcFile.cError = QStringLiteral("%1: %2").arg(rcFile.cPath, cFile.errorString());
        return false;
    }
    rcFile.cLast = cPicture;
    return true;
}

} // namespace

int commandPicture(const QStringList& rcArguments)
{
    const QString FOLLOW = QStringLiteral("follow");
    const QString RECORDED = QStringLiteral("recorded");
    CCommandLine cLine(QStringLiteral("picture"),
                       QStringLiteral("Shows what the monitor shows, as a PNG file."));
    cLine.addArgument(QStringLiteral("OUT.png"), QStringLiteral("the file, replaced if it exists"));
    cLine.addFlag(FOLLOW, QStringLiteral("replace the file whenever the picture changes, until Ctrl-C"));
    cLine.addFlag(RECORDED, QStringLiteral("what is recorded instead of what the monitor shows"));
    SPictureFile cFile;
    if (!cLine.parse(rcArguments, 1, 1) || !cLine.openBoard(cFile.cBoard))
        return cLine.exitStatus();
    cFile.cPath = cLine.arguments().first();
    cFile.bRecorded = cLine.isSet(RECORDED);
    if (cLine.isSet(FOLLOW))
        repeatUntilStopped(updatePicture, &cFile);
    else
        updatePicture(&cFile);
    return cFile.cError.isEmpty() ? cLine.exitStatus() : cLine.fail(cFile.cError);
}

// Registers

namespace
{

/// The values of the named fields, such as "vsci=1 vscf=0".
QString fieldsOf(const SRegisterRow& rcRow, quint32 u32Value)
{
    QStringList cTexts;
    unsigned uLeft = 32;
    for (const QString& rcField : QString::fromLatin1(rcRow.pszFields).split(QLatin1Char(' '))) {
        const QString cName = rcField.section(QLatin1Char(':'), 0, 0);
        const unsigned uBits = rcField.section(QLatin1Char(':'), 1, 1).toUInt();
        uLeft -= uBits;
        const quint32 u32Field = u32Value >> uLeft & ((1u << uBits) - 1);
        if (!cName.isEmpty())
            cTexts << QStringLiteral("%1=%2").arg(cName).arg(u32Field);
    }
    return cTexts.join(QLatin1Char(' '));
}

quint32 valueOf(const CBoard& rcBoard, const SRegisterRow& rcRow)
{
    switch (rcRow.cWindow) {
    case 'D':
        return rcBoard.limeRegister(CBoard::LIME_DISPLAY, rcRow.u32Address);
    case 'C':
        return rcBoard.limeRegister(CBoard::LIME_CAPTURE, rcRow.u32Address);
    default:
        return rcBoard.fpgaRegister(rcRow.u32Address);
    }
}

const char* windowName(char cWindow)
{
    switch (cWindow) {
    case 'D':
        return "display";
    case 'C':
        return "capture";
    default:
        return "fpga";
    }
}

void printRegister(const CBoard& rcBoard, const SRegisterRow& rcRow)
{
    const quint32 u32Value = valueOf(rcBoard, rcRow);
    std::printf("%-7s %-8s 0x%08x  0x%08x  %-29s  %s\n", rcRow.pszName, windowName(rcRow.cWindow),
                rcRow.u32Address, u32Value, rcRow.pszHelp, qPrintable(fieldsOf(rcRow, u32Value)));
}

} // namespace

int commandRegisters(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("registers"),
        QStringLiteral("Lists the registers of the display controller and the FPGA: name, register window, "
                       "address, value, meaning, fields."));
    cLine.addArgument(QStringLiteral("[NAME...]"), QStringLiteral("only these registers"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 0, -1) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    QStringList cWanted;
    for (const QString& rcName : cLine.arguments())
        cWanted << rcName.toUpper();
    QStringList cUnknown = cWanted;
    for (const SRegisterRow* pcTable : {LIME_REGISTERS, FPGA_REGISTERS})
        for (const SRegisterRow* pcRow = pcTable; pcRow->pszName != nullptr; pcRow++) {
            const QString cName = QString::fromLatin1(pcRow->pszName);
            if (cWanted.isEmpty() || cWanted.contains(cName))
                printRegister(cBoard, *pcRow);
            cUnknown.removeAll(cName);
        }
    return cUnknown.isEmpty() ? cLine.exitStatus()
                              : cLine.refuse(QStringLiteral("unknown register '%1'").arg(cUnknown.first()));
}

// Trace

/// Prints what the trace has got since the last time; a trace that was cleared starts anew.
static bool printNewLines(void* pvFile)
{
    auto& rcFile = *static_cast<QFile*>(pvFile);
    if (rcFile.size() < rcFile.pos())
        rcFile.seek(0);
    const QByteArray cNew = rcFile.readAll();
    std::fwrite(cNew.constData(), 1, static_cast<size_t>(cNew.size()), stdout);
    return std::fflush(stdout) == 0;
}

static int followTrace(CCommandLine& rcLine, const CBoard& rcBoard)
{
    QFile cFile(rcBoard.path(BOARD_TRACE));
    if (!cFile.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return rcLine.fail(QStringLiteral("%1: %2").arg(cFile.fileName(), cFile.errorString()));
    repeatUntilStopped(printNewLines, &cFile);
    return rcLine.exitStatus();
}

int commandTrace(const QStringList& rcArguments)
{
    CCommandLine cLine(QStringLiteral("trace"),
                       QStringLiteral("Notes every device operation in one line, while it is on."));
    cLine.addArgument(
        QStringLiteral("on | off | show | clear | follow"),
        QStringLiteral("switch it; show or forget what was noted; show it as it comes, until Ctrl-C"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 1, 1) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    if (cWhat == QLatin1String("on") || cWhat == QLatin1String("off"))
        cBoard.setTracing(cWhat == QLatin1String("on"));
    else if (cWhat == QLatin1String("show"))
        for (const QString& rcLine : cBoard.traceLines())
            std::puts(qPrintable(rcLine));
    else if (cWhat == QLatin1String("clear")) {
        if (!cBoard.clearTrace())
            return cLine.fail(QStringLiteral("%1: can't be cleared").arg(cBoard.path(BOARD_TRACE)));
    } else if (cWhat == QLatin1String("follow"))
        return followTrace(cLine, cBoard);
    else
        return cLine.refuse(QStringLiteral("'%1' is none of on, off, show, clear, follow").arg(cWhat));
    return cLine.exitStatus();
}
