/* SPDX-License-Identifier: MIT */
/* halden-board: the command that notes device operations, and shows them. */
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"
#include "board/trace/CTraceNames.h"
#include "board/trace/CTraceSnapshot.h"

#include <QFile>

#include <cstdio>

namespace
{

/// Prints lines as they are, or with names.
class CTracePrinter
{
public:
    CTracePrinter(const CBoard& rcBoard, bool bNames) : m_bNames(bNames) { m_cNames.useGlyphsOf(rcBoard); }

    void print(const QString& rcLine)
    {
        std::puts((m_bNames ? m_cNames.named(rcLine) : rcLine).toUtf8().constData());
    }

private:
    CTraceNames m_cNames;
    bool m_bNames;
};

struct SFollowed {
    QFile cFile;
    QByteArray cPart; ///< the begin of a line whose end hasn't come yet
    CTracePrinter cPrinter;
};

/// Prints the lines added to the trace since the last time; all of them if the trace was cleared.
bool printNewLines(void* pvFollowed)
{
    auto& rsFollowed = *static_cast<SFollowed*>(pvFollowed);
    if (rsFollowed.cFile.size() < rsFollowed.cFile.pos()) {
        rsFollowed.cFile.seek(0);
        rsFollowed.cPart.clear();
    }
    QList<QByteArray> cLines = (rsFollowed.cPart + rsFollowed.cFile.readAll()).split('\n');
    rsFollowed.cPart = cLines.takeLast();
    for (const QByteArray& rcLine : qAsConst(cLines))
        rsFollowed.cPrinter.print(QString::fromUtf8(rcLine));
    return std::fflush(stdout) == 0;
}

int followTrace(CCommandLine& rcLine, const CBoard& rcBoard, bool bNames)
{
    SFollowed sFollowed = {QFile(rcBoard.path(BOARD_TRACE)), QByteArray(), CTracePrinter(rcBoard, bNames)};
    if (!sFollowed.cFile.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return rcLine.fail(
            QStringLiteral("%1: %2").arg(sFollowed.cFile.fileName(), sFollowed.cFile.errorString()));
    repeatUntilStopped(printNewLines, &sFollowed);
    return rcLine.exitStatus();
}

void showTrace(const CBoard& rcBoard, bool bNames)
{
    CTracePrinter cPrinter(rcBoard, bNames);
    for (const QString& rcLine : rcBoard.traceLines())
        cPrinter.print(rcLine);
}

} // namespace

int commandTrace(const QStringList& rcArguments)
{
    const QString NAMES = QStringLiteral("names");
    CCommandLine cLine(QStringLiteral("trace"),
                       QStringLiteral("Notes each device operation as a line, while it is on."));
    cLine.addArgument(
        QStringLiteral("on | full | off | show | clear | follow"),
        QStringLiteral(
            "switch it on, on with all that a replay needs, or off; show or forget the lines; show each "
            "line as it comes, until Ctrl-C"));
    cLine.addFlag(NAMES, QStringLiteral("show registers, fields, cells and colours by name"));
    CBoard cBoard;
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    const bool bShows = cWhat == QLatin1String("show") || cWhat == QLatin1String("follow");
    if (cLine.isSet(NAMES) && !bShows)
        return cLine.refuse(QStringLiteral("--names is for show and follow"));
    if (!cLine.openBoard(cBoard))
        return cLine.exitStatus();
    if (cWhat == QLatin1String("on"))
        cBoard.setTracing(true);
    else if (cWhat == QLatin1String("full") || cWhat == QLatin1String("off")) {
        if (!(cWhat == QLatin1String("full") ? CTraceSnapshot::begin(cBoard) : CTraceSnapshot::end(cBoard)))
            return cLine.fail(QStringLiteral("%1: can't be written").arg(cBoard.path(BOARD_TRACE)));
    } else if (cWhat == QLatin1String("show"))
        showTrace(cBoard, cLine.isSet(NAMES));
    else if (cWhat == QLatin1String("clear")) {
        if (!cBoard.clearTrace())
            return cLine.fail(QStringLiteral("%1: can't be cleared").arg(cBoard.path(BOARD_TRACE)));
    } else if (cWhat == QLatin1String("follow"))
        return followTrace(cLine, cBoard, cLine.isSet(NAMES));
    else
        return cLine.refuse(QStringLiteral("'%1' is none of on, full, off, show, clear, follow").arg(cWhat));
    return cLine.exitStatus();
}
