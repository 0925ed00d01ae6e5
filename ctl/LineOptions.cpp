/* SPDX-License-Identifier: MIT */
#include "ctl/LineOptions.h"

#include "ctl/CommandTable.h"

QCommandLineOption lineOption(const SCommandOption& rsOption)
{
    const QString cName = QString::fromLatin1(rsOption.pszName);
    return rsOption.sValue.pszName == nullptr
               ? QCommandLineOption(cName)
               : QCommandLineOption(cName, QString(), QString::fromLatin1(rsOption.sValue.pszName));
}

QString withoutDot(QString cText)
{
    if (cText.endsWith(QLatin1Char('.')))
        cText.chop(1);
    return cText;
}
