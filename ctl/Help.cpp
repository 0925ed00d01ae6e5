/* SPDX-License-Identifier: MIT */
#include "ctl/Help.h"

#include "ctl/CommandTable.h"

static QString optionLine(const SCommandOption& rsOption)
{
    QString cName = QStringLiteral("--") + QLatin1String(rsOption.pszName);
    if (rsOption.sValue.pszName != nullptr)
        cName += QLatin1Char(' ') + QLatin1String(rsOption.sValue.pszName);
    return QStringLiteral("  %1  %2\n").arg(cName, -20).arg(QLatin1String(rsOption.pszHelp));
}

static QString commandHelp(const SCommand& rsCommand, bool bOptions)
{
    QString cText =
        QStringLiteral("  %1\n      %2\n").arg(synopsisOf(rsCommand), QLatin1String(rsCommand.pszHelp));
    if (bOptions)
        for (const SCommandOption* psOption : optionsOf(rsCommand))
            cText += QStringLiteral("    ") + optionLine(*psOption);
    return cText;
}

static bool beginsWith(const SCommand& rsCommand, const QStringList& rcWords)
{
    return QString::fromLatin1(rsCommand.pszWords).split(QLatin1Char(' ')).mid(0, rcWords.size()) == rcWords;
}

QString helpText(const QStringList& rcWords)
{
    // Behind the words of a command stand its arguments.
    int iWords = 0;
    findCommand(rcWords, iWords);
    const QStringList cWords = iWords > 0 ? rcWords.mid(0, iWords) : rcWords.mid(0, 1);
    QString cCommands;
    for (const SCommand& rsCommand : commandTable())
        if (beginsWith(rsCommand, cWords))
            cCommands += commandHelp(rsCommand, !cWords.isEmpty());
    if (!cWords.isEmpty() && !cCommands.isEmpty())
        return QStringLiteral("Usage: haldenctl [OPTION...] COMMAND\n\n") + cCommands;
    QString cText = QStringLiteral("Usage: haldenctl [OPTION...] COMMAND [ARGUMENT...]\n\n"
                                   "The video board's daemon from the shell.\n\nOptions:\n");
    for (const SCommandOption& rsOption : globalOptions())
        cText += optionLine(rsOption);
    return cText + QStringLiteral("\nCommands:\n") + cCommands +
           QStringLiteral(
               "\nExit status: 0 done; 1 the daemon refused or failed, or something was found; 2 wrong "
               "use, nothing was sent;\n3 no daemon on the bus, or no bus; 4 not allowed.\n");
}
