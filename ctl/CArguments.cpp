/* SPDX-License-Identifier: MIT */
#include "ctl/CArguments.h"

#include "ctl/CFailure.h"
#include "ctl/Grid.h"
#include "ctl/Letters.h"
#include "ctl/LineOptions.h"
#include "ctl/Suggestion.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>

namespace
{

/// The daemon cuts larger values to these.
const int TIME_LIMITS[] = {100, 60, 60, 100};
const int TIME_PARTS_MIN = 3;
const int TIME_PARTS_MAX = 4;

[[noreturn]] void refuse(const QString& rcText)
{
    throw CFailure(eWrongUse, rcText);
}

int numberFrom(const QString& rcWord, const QString& rcName)
{
    bool bNumber = false;
    const int iNumber = rcWord.toInt(&bNumber);
    if (!bNumber)
        refuse(QStringLiteral("%1 has to be a whole number, not %2").arg(rcName, rcWord));
    return iNumber;
}

int numberWithin(const QString& rcWord, const QString& rcName, int iMin, int iMax, bool bForce)
{
    const int iNumber = numberFrom(rcWord, rcName);
    if (!bForce && (iNumber < iMin || iNumber > iMax))
        refuse(QStringLiteral("%1 has to be from %2 to %3, not %4")
                   .arg(rcName)
                   .arg(iMin)
                   .arg(iMax)
                   .arg(iNumber));
    return iNumber;
}

QPoint positionFrom(const QString& rcWord, bool bForce)
{
    const QStringList cParts = rcWord.split(QLatin1Char(','));
    if (cParts.size() != 2)
        refuse(QStringLiteral("a position is COLUMN,ROW such as 20,12, not %1").arg(rcWord));
    const QPoint cCell(numberFrom(cParts[0], QStringLiteral("the column")),
                       numberFrom(cParts[1], QStringLiteral("the row")));
    if (!bForce && !isInGrid(cCell))
        refuse(QStringLiteral("%1 is outside of the grid: columns are 0 to %2, rows 0 to %3")
                   .arg(rcWord)
                   .arg(GRID_COLUMNS - 1)
                   .arg(GRID_ROWS - 1));
    return cCell;
}

int colorFrom(const QString& rcWord, bool bForce)
{
    const int iColor = colorNumber(rcWord);
    if (iColor != NO_COLOR)
        return iColor;
    bool bNumber = false;
    const int iNumber = rcWord.toInt(&bNumber);
    if (bForce && bNumber)
        return iNumber;
    refuse(QStringLiteral("%1 is no colour%2; haldenctl colors shows all sixteen")
               .arg(rcWord, suggestion(rcWord, colorNames())));
}

SColors colorsFrom(const QString& rcWord, bool bForce)
{
    const QStringList cParts = rcWord.split(QLatin1Char(','));
    if (cParts.size() > 2)
        refuse(QStringLiteral("colours are FG or FG,BG, not %1").arg(rcWord));
    return {colorFrom(cParts[0], bForce), cParts.size() == 2 ? colorFrom(cParts[1], bForce) : NO_COLOR};
}

QVariant timeFrom(const QString& rcWord, bool bForce)
{
    const QStringList cParts = rcWord.split(QLatin1Char(':'));
    if (cParts.size() < TIME_PARTS_MIN || cParts.size() > TIME_PARTS_MAX)
        refuse(QStringLiteral("a time is H:M:S or H:M:S:F, not %1").arg(rcWord));
    static const char* const NAMES[] = {"hours", "minutes", "seconds", "frames"};
    QVariantList cTime;
    for (int i = 0; i < cParts.size(); ++i)
        cTime << numberWithin(cParts[i], QString::fromLatin1(NAMES[i]), 0, TIME_LIMITS[i], bForce);
    while (cTime.size() < TIME_PARTS_MAX)
        cTime << 0;
    return cTime;
}

bool switchFrom(const QString& rcWord)
{
    const QString cWord = rcWord.toLower();
    if (QStringList({QStringLiteral("on"), QStringLiteral("true"), QStringLiteral("1")}).contains(cWord))
        return true;
    if (QStringList({QStringLiteral("off"), QStringLiteral("false"), QStringLiteral("0")}).contains(cWord))
        return false;
    refuse(QStringLiteral("%1 is neither on nor off").arg(rcWord));
}

QString wordFrom(const QString& rcWord, const SArgument& rsArgument)
{
    const QStringList cWords = QString::fromLatin1(rsArgument.pszWords).split(QLatin1Char(' '));
    if (!cWords.contains(rcWord))
        refuse(QStringLiteral("%1 is none of: %2").arg(rcWord, cWords.join(QStringLiteral(", "))));
    return rcWord;
}

QString lettersFrom(const QString& rcWord, bool bForce)
{
    const QString cNowhere = bForce ? QString() : checkLetters(rcWord).cNowhere;
    if (!cNowhere.isEmpty()) {
        QStringList cCodes;
        for (const uint uLetter : cNowhere.toUcs4())
            cCodes << QStringLiteral("U+%1").arg(uLetter, 4, 16, QLatin1Char('0')).toUpper();
        refuse(QStringLiteral("the overlay has no letter for %1 (%2)")
                   .arg(QString(cNowhere).replace(QLatin1Char('\n'), QStringLiteral("\\n")),
                        cCodes.join(QLatin1Char(' '))));
    }
    return rcWord;
}

} // namespace

CArguments::CArguments(const SCommand& rsCommand, const QStringList& rcWords, bool bForce)
    : m_rsCommand(rsCommand), m_bForce(bForce)
{
    QStringList cWords = rcWords;
    readOptions(cWords);
    readArguments(cWords);
}

void CArguments::readOptions(QStringList& rcWords)
{
    const QList<const SCommandOption*> cOptions = optionsOf(m_rsCommand);
    const QList<const SArgument*> cArguments = argumentsOf(m_rsCommand);
    // The arguments of a call may be negative numbers.
    if (!cArguments.isEmpty() && cArguments.last()->eType == eRest && cOptions.isEmpty())
        return;
    // Most lines of a file of commands have none.
    const auto isOption = [](const QString& rcWord) {
        return rcWord.startsWith(QLatin1Char('-')) && rcWord.size() > 1;
    };
    if (std::none_of(rcWords.cbegin(), rcWords.cend(), isOption))
        return;
    QCommandLineParser cParser;
    for (const SCommandOption& rsOption : globalOptions())
        cParser.addOption(lineOption(rsOption));
    for (const SCommandOption* psOption : cOptions)
        cParser.addOption(lineOption(*psOption));
    if (!cParser.parse(QStringList(QStringLiteral("haldenctl")) + rcWords))
        refuse(QStringLiteral("%1; usage: haldenctl %2")
                   .arg(withoutDot(cParser.errorText()), synopsisOf(m_rsCommand)));
    m_bForce = m_bForce || cParser.isSet(QStringLiteral("force"));
    for (const SCommandOption& rsOption : globalOptions())
        take(cParser, rsOption);
    for (const SCommandOption* psOption : cOptions)
        take(cParser, *psOption);
    rcWords = cParser.positionalArguments();
}

void CArguments::take(const QCommandLineParser& rcParser, const SCommandOption& rsOption)
{
    const QString cName = QString::fromLatin1(rsOption.pszName);
    if (!rcParser.isSet(cName))
        return;
    m_cValues.insert(cName, rsOption.sValue.pszName == nullptr
                                ? QVariant(true)
                                : read(rsOption.sValue, rcParser.value(cName)));
}

void CArguments::readArguments(QStringList cWords)
{
    for (const SArgument* psArgument : argumentsOf(m_rsCommand)) {
        if (psArgument->eType == eRest) {
            m_cRest = cWords;
            return;
        }
        if (psArgument->eType == eHandle && has("id"))
            continue;
        if (cWords.isEmpty() && psArgument->bOptional)
            continue;
        if (cWords.isEmpty())
            refuse(QStringLiteral("%1 is missing; usage: haldenctl %2")
                       .arg(QLatin1String(psArgument->pszName), synopsisOf(m_rsCommand)));
        m_cValues.insert(QString::fromLatin1(psArgument->pszName), read(*psArgument, cWords.takeFirst()));
    }
    if (!cWords.isEmpty())
        refuse(QStringLiteral("%1 is too much; usage: haldenctl %2")
                   .arg(cWords.first(), synopsisOf(m_rsCommand)));
}

QVariant CArguments::read(const SArgument& rsArgument, const QString& rcWord) const
{
    const QString cName = QString::fromLatin1(rsArgument.pszName);
    switch (rsArgument.eType) {
    case eNumber:
    case eHandle:
        return numberWithin(rcWord, cName, rsArgument.iMin, rsArgument.iMax, m_bForce);
    case eSwitch:
        return switchFrom(rcWord);
    case eLetters:
        return lettersFrom(rcWord, m_bForce);
    case eFile:
        // The daemon and the codec service stand in other folders.
        return QDir().absoluteFilePath(rcWord);
    case ePosition:
        return positionFrom(rcWord, m_bForce);
    case eColors:
        return QVariant::fromValue(colorsFrom(rcWord, m_bForce));
    case eTime:
        return timeFrom(rcWord, m_bForce);
    case eWord:
        return wordFrom(rcWord, rsArgument);
    case eText:
    case eRest:
        break;
    }
    return rcWord;
}

int CArguments::number(const char* pszName, int iDefault) const
{
    return has(pszName) ? value(pszName).toInt() : iDefault;
}

QList<int> CArguments::numbers(const char* pszName) const
{
    QList<int> cNumbers;
    for (const QVariant& rcNumber : value(pszName).toList())
        cNumbers << rcNumber.toInt();
    return cNumbers;
}

QVariantList CArguments::values() const
{
    QVariantList cValues;
    for (const SArgument* psArgument : argumentsOf(m_rsCommand))
        if (has(psArgument->pszName))
            cValues << value(psArgument->pszName);
    return cValues;
}
