/* SPDX-License-Identifier: MIT */
/* haldenctl call: any method, with the types that the interface files give it. */
#include "ctl/CallCommand.h"

#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"
#include "ctl/Suggestion.h"
#include "ctl/Words.h"

#include <QDBusArgument>
#include <QJsonArray>

namespace
{

[[noreturn]] void refuse(const QString& rcWord, const char* pszType)
{
    throw CFailure(eWrongUse, QStringLiteral("%1 is no %2").arg(rcWord, QLatin1String(pszType)));
}

QVariant numberFrom(const QString& rcWord)
{
    bool bNumber = false;
    const int iNumber = rcWord.toInt(&bNumber, 0);
    if (!bNumber)
        refuse(rcWord, "32-bit number");
    return iNumber;
}

QVariant switchValue(const QString& rcWord)
{
    const QString cWord = rcWord.toLower();
    for (const char* pszYes : {"on", "true", "1"})
        if (cWord == QLatin1String(pszYes))
            return true;
    for (const char* pszNo : {"off", "false", "0"})
        if (cWord == QLatin1String(pszNo))
            return false;
    refuse(rcWord, "truth value: on or off");
}

QVariant listFrom(const QString& rcWord)
{
    QVariantList cNumbers;
    for (const QString& rcNumber : rcWord.split(QLatin1Char(','), Qt::SkipEmptyParts))
        cNumbers << numberFrom(rcNumber);
    return cNumbers;
}

const SMember& methodOf(const QList<SMember>& rcMembers, const QString& rcObject, const QString& rcName)
{
    QStringList cNames;
    for (const SMember& rsMember : rcMembers) {
        if (!rsMember.bSignal && rsMember.cName == rcName)
            return rsMember;
        if (!rsMember.bSignal)
            cNames << rsMember.cName;
    }
    throw CFailure(eWrongUse,
                   QStringLiteral("%1 has no method %2%3").arg(rcObject, rcName, suggestion(rcName, cNames)));
}

QString usageOf(const SMember& rsMethod)
{
    QStringList cNames;
    for (int i = 0; i < rsMethod.cInNames.size(); ++i)
        cNames << QStringLiteral("%1:%2").arg(rsMethod.cInNames[i], rsMethod.cInTypes[i]);
    return cNames.isEmpty() ? QStringLiteral("no arguments") : cNames.join(QLatin1Char(' '));
}

QString wordOf(const QVariant& rcValue, const QString& rcType)
{
    if (!rcType.startsWith(QLatin1Char('a')))
        return rcValue.toString();
    QStringList cWords;
    for (const int iNumber : numbersOf(rcValue))
        cWords << QString::number(iNumber);
    return cWords.join(QLatin1Char(','));
}

QJsonValue jsonOf(const QVariant& rcValue, const QString& rcType)
{
    if (!rcType.startsWith(QLatin1Char('a')))
        return QJsonValue::fromVariant(rcValue);
    QJsonArray cNumbers;
    for (const int iNumber : numbersOf(rcValue))
        cNumbers << iNumber;
    return cNumbers;
}

/// Whether the method answers with a result of /videoprocessing.
bool hasResult(const QString& rcObject, const SMember& rsMethod)
{
    return rcObject == QLatin1String("videoprocessing") &&
           rsMethod.cOutNames.value(0) == QLatin1String("result") &&
           rsMethod.cOutTypes.value(0) == QLatin1String("i");
}

} // namespace

QVariant valueFrom(const QString& rcWord, const QString& rcType)
{
    if (rcType == QLatin1String("s"))
        return rcWord;
    if (rcType == QLatin1String("b"))
        return switchValue(rcWord);
    return rcType == QLatin1String("av") ? listFrom(rcWord) : numberFrom(rcWord);
}

void runCall(CCommandRun& rcRun)
{
    const QString cObject = rcRun.arguments().text("OBJECT");
    const QList<SMember> cMembers = membersOf(cObject);
    const SMember& rsMethod = methodOf(cMembers, cObject, rcRun.arguments().text("METHOD"));
    const QStringList cWords = rcRun.arguments().rest();
    if (cWords.size() != rsMethod.cInTypes.size())
        throw CFailure(eWrongUse, QStringLiteral("%1 takes %2 arguments, not %3: %4")
                                      .arg(rsMethod.cName)
                                      .arg(rsMethod.cInTypes.size())
                                      .arg(cWords.size())
                                      .arg(usageOf(rsMethod)));
    QVariantList cValues;
    for (int i = 0; i < cWords.size(); ++i)
        cValues << valueFrom(cWords[i], rsMethod.cInTypes[i]);
    const QVariantList cAnswer =
        rcRun.wait(rcRun.bus().sendCall(cObject, rsMethod.cName, cValues, !rsMethod.cOutTypes.isEmpty()));
    QJsonObject cObjectOut;
    for (int i = 0; i < rsMethod.cOutTypes.size(); ++i) {
        cObjectOut.insert(rsMethod.cOutNames[i], jsonOf(cAnswer.value(i), rsMethod.cOutTypes[i]));
        rcRun.tell(wordOf(cAnswer.value(i), rsMethod.cOutTypes[i]));
    }
    rcRun.set("answer", cObjectOut);
    if (!hasResult(cObject, rsMethod))
        return;
    const int iResult = cAnswer.value(0).toInt();
    rcRun.set("result", resultObject(iResult));
    if (iResult != 0)
        throw CFailure(eFailed, QStringLiteral("%1: %2 (%3)")
                                    .arg(rsMethod.cName, QLatin1String(resultOf(iResult).pszMeaning))
                                    .arg(iResult));
}
