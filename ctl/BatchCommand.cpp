/* SPDX-License-Identifier: MIT */
/* haldenctl -: commands from standard input, over one connection. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CommandHandlers.h"

#include <QFile>
#include <QProcess>

void runBatch(CCommandRun& rcRun)
{
    QFile cInput;
    if (!cInput.open(stdin, QIODevice::ReadOnly))
        throw CFailure(eFailed, QStringLiteral("standard input can't be read"));
    int iLine = 0;
    while (true) {
        const QByteArray cBytes = cInput.readLine();
        if (cBytes.isEmpty())
            break;
        ++iLine;
        const QString cLine = QString::fromUtf8(cBytes).trimmed();
        if (cLine.isEmpty() || cLine.startsWith(QLatin1Char('#')))
            continue;
        const QStringList cWords = QProcess::splitCommand(cLine);
        // One in the other would read the rest of the input.
        if (cWords.value(0) == QLatin1String("-"))
            throw CFailure(eWrongUse,
                           QStringLiteral("line %1: - can't stand in a file of commands").arg(iLine));
        rcRun.session().run(cWords, iLine);
    }
    rcRun.session().drain();
    rcRun.setSilent();
}
