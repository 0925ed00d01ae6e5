/* SPDX-License-Identifier: MIT */
/* Makes the generated parts of the manual page and of the bash completion from the command table. */
#include "ctl/Colors.h"
#include "ctl/CommandTable.h"
#include "ctl/Interfaces.h"

#include <QFile>
#include <QMap>

#include <cstdio>

namespace
{

// ---- Manual page

/// Text for a line of the page.
QString manual(QString cText)
{
    cText.replace(QLatin1Char('\\'), QStringLiteral("\\e")).replace(QLatin1Char('-'), QStringLiteral("\\-"));
    return cText;
}

QString manualItem(const QString& rcName, const char* pszHelp)
{
    return QStringLiteral(".It Ic \"%1\"\n%2.\n").arg(manual(rcName), manual(QString::fromUtf8(pszHelp)));
}

QString manualList(const QString& rcItems)
{
    return QStringLiteral(".Bl -tag -width Ds\n%1.El\n").arg(rcItems);
}

QString optionName(const SCommandOption& rsOption)
{
    const QString cName = QStringLiteral("--") + QLatin1String(rsOption.pszName);
    return rsOption.sValue.pszName == nullptr
               ? cName
               : cName + QLatin1Char(' ') + QLatin1String(rsOption.sValue.pszName);
}

QString manualPart()
{
    QString cOptions;
    for (const SCommandOption& rsOption : globalOptions())
        cOptions += manualItem(optionName(rsOption), rsOption.pszHelp);
    QString cCommands;
    for (const SCommand& rsCommand : commandTable()) {
        cCommands += manualItem(synopsisOf(rsCommand), rsCommand.pszHelp);
        QString cOwn;
        for (const SCommandOption* psOption : optionsOf(rsCommand))
            cOwn += manualItem(optionName(*psOption), psOption->pszHelp);
        if (!cOwn.isEmpty())
            cCommands += manualList(cOwn);
    }
    return QStringLiteral(".Ss Options\nThey stand before the command or behind it.\n") +
           manualList(cOptions) + QStringLiteral(".Ss Commands\n") + manualList(cCommands);
}

// ---- Completion

/// How the completion fills in a word: a name that the script knows, or the words to choose from.
QString completionOf(const SArgument& rsArgument)
{
    switch (rsArgument.eType) {
    case eHandle:
        return QStringLiteral("handle");
    case eColors:
        return QStringLiteral("colors");
    case eFile:
        return QStringLiteral("file");
    case eSwitch:
        return QStringLiteral("on,off");
    case eWord:
        return QString::fromLatin1(rsArgument.pszWords).replace(QLatin1Char(' '), QLatin1Char(','));
    case eRest:
        return qstrcmp(rsArgument.pszName, "DIR|FILE") == 0 ? QStringLiteral("file...") : QStringLiteral("-");
    case eText:
        return qstrcmp(rsArgument.pszName, "METHOD") == 0 ? QStringLiteral("method") : QStringLiteral("-");
    case eNumber:
    case eLetters:
    case ePosition:
    case eTime:
        break;
    }
    return QStringLiteral("-");
}

QString row(const QString& rcKey, const QStringList& rcWords)
{
    return QStringLiteral("    [%1]=\"%2\"\n").arg(rcKey, rcWords.join(QLatin1Char(' ')));
}

QString table(const char* pszName, const QString& rcRows)
{
    return QStringLiteral("declare -gA %1=(\n%2)\n").arg(QLatin1String(pszName), rcRows);
}

void addOption(QMap<QString, QString>& rcValues, const SCommandOption& rsOption)
{
    if (rsOption.sValue.pszName != nullptr)
        rcValues.insert(QStringLiteral("--") + QLatin1String(rsOption.pszName),
                        completionOf(rsOption.sValue));
}

QString completionPart()
{
    QString cCommands;
    QString cArguments;
    QString cOptions;
    QStringList cGlobal;
    QMap<QString, QString> cValues;
    for (const SCommandOption& rsOption : globalOptions()) {
        cGlobal << QStringLiteral("--") + QLatin1String(rsOption.pszName);
        addOption(cValues, rsOption);
    }
    for (const SCommand& rsCommand : commandTable()) {
        const QString cKey = QStringLiteral("\"%1\"").arg(QLatin1String(rsCommand.pszWords));
        cCommands += QStringLiteral("    %1\n").arg(cKey);
        QStringList cTypes;
        for (const SArgument* psArgument : argumentsOf(rsCommand))
            cTypes << completionOf(*psArgument);
        cArguments += row(cKey, cTypes);
        QStringList cNames;
        for (const SCommandOption* psOption : optionsOf(rsCommand)) {
            cNames << QStringLiteral("--") + QLatin1String(psOption->pszName);
            addOption(cValues, *psOption);
        }
        if (!cNames.isEmpty())
            cOptions += row(cKey, cNames);
    }
    QString cValueRows;
    for (auto it = cValues.cbegin(); it != cValues.cend(); ++it)
        cValueRows += row(it.key(), {it.value()});
    QString cMethods;
    for (const QString& rcObject : objectNames()) {
        QStringList cNames;
        for (const SMember& rsMember : membersOf(rcObject))
            if (!rsMember.bSignal)
                cNames << rsMember.cName;
        cMethods += row(rcObject, cNames);
    }
    return QStringLiteral("_haldenctl_commands=(\n%1)\n").arg(cCommands) +
           table("_haldenctl_arguments", cArguments) + table("_haldenctl_options", cOptions) +
           table("_haldenctl_option_values", cValueRows) + table("_haldenctl_methods", cMethods) +
           QStringLiteral("_haldenctl_global_options=\"%1\"\n").arg(cGlobal.join(QLatin1Char(' '))) +
           QStringLiteral("_haldenctl_colors=\"%1\"\n").arg(colorNames().join(QLatin1Char(' ')));
}

// ---- Files

struct SPage {
    const char* pszEnding;
    const char* pszBegin;
    const char* pszEnd;
    QString (*pfnPart)();
};

const SPage PAGES[] = {
    {".1",    ".\\\" begin generated\n", ".\\\" end generated\n", manualPart    },
    {".bash", "# begin generated\n",     "# end generated\n",     completionPart},
};

/// The text with the part between the marks made from the table; empty without marks.
QString refreshed(const QString& rcText, const SPage& rsPage)
{
    const QString cBegin = QString::fromLatin1(rsPage.pszBegin);
    const int iBegin = rcText.indexOf(cBegin);
    const int iEnd = rcText.indexOf(QLatin1String(rsPage.pszEnd));
    return iBegin < 0 || iEnd < iBegin
               ? QString()
               : rcText.left(iBegin + cBegin.size()) + rsPage.pfnPart() + rcText.mid(iEnd);
}

bool bringUpToDate(const QString& rcPath, const SPage& rsPage, bool bRefresh)
{
    QFile cFile(rcPath);
    if (!cFile.open(bRefresh ? QIODevice::ReadWrite : QIODevice::ReadOnly))
        return false;
    const QString cText = QString::fromUtf8(cFile.readAll());
    const QString cWanted = refreshed(cText, rsPage);
    if (cWanted.isEmpty() || cWanted == cText)
        return !cWanted.isEmpty();
    return bRefresh && cFile.resize(0) && cFile.seek(0) && cFile.write(cWanted.toUtf8()) > 0;
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    const QByteArray cOption = iCount > 2 ? ppszArguments[1] : "";
    if (cOption != "--check" && cOption != "--refresh") {
        fprintf(stderr, "usage: %s --check|--refresh FILE...\n", ppszArguments[0]);
        return 2;
    }
    int iStatus = 0;
    for (int i = 2; i < iCount; ++i)
        for (const SPage& rsPage : PAGES)
            if (QByteArray(ppszArguments[i]).endsWith(rsPage.pszEnding) &&
                !bringUpToDate(QFile::decodeName(ppszArguments[i]), rsPage, cOption == "--refresh")) {
                fprintf(
                    stderr,
                    "%s: not what the command table says; bring it up to date with\n    %s --refresh %s\n",
                    ppszArguments[i], ppszArguments[0], ppszArguments[i]);
                iStatus = 1;
            }
    return iStatus;
}
