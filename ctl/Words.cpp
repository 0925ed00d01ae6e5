/* SPDX-License-Identifier: MIT */
#include "ctl/Words.h"

#include "ctl/Colors.h"

#include <iterator>

namespace
{

const char* const RESTART = "every command is refused from now on: restart haldend";

// The number is the row's.
const SResult RESULTS[] = {
    {0, "done",           "done",                                         ""                              },
    {1, "failed",         "the codec service or the hardware failed",     RESTART                         },
    {2, "not-allowed",    "not allowed now",                              "see haldenctl status"          },
    {3, "open-failed",    "the image file can't be opened",               "see that haldend may reach it" },
    {4, "read-failed",    "the image file can't be read or is too short", "take one that image save wrote"},
    {5, "write-failed",   "the image file can't be written",
     "see that there is space and that haldend may write there"                                           },
    {6, "maximum-length", "stopped at its maximum length",                "start the next one"            },
};
const SResult UNKNOWN = {-1, "unknown", "an answer that this client doesn't know", "update it"};

} // namespace

const SResult& resultOf(int iNumber)
{
    return iNumber >= 0 && iNumber < static_cast<int>(std::size(RESULTS)) ? RESULTS[iNumber] : UNKNOWN;
}

QJsonObject resultObject(int iNumber)
{
    return {
        {QStringLiteral("number"), iNumber                                 },
        {QStringLiteral("word"),   QLatin1String(resultOf(iNumber).pszWord)},
    };
}

QString inputWord(int iType)
{
    return iType == 0 ? QStringLiteral("camera") : QStringLiteral("none");
}

QJsonObject inputObject(int iType)
{
    return {
        {QStringLiteral("number"), iType           },
        {QStringLiteral("word"),   inputWord(iType)},
    };
}

QJsonObject colorObject(int iColor)
{
    return {
        {QStringLiteral("number"), iColor           },
        {QStringLiteral("name"),   colorName(iColor)},
    };
}

QString timeText(int iHours, int iMinutes, int iSeconds)
{
    return QStringLiteral("%1:%2:%3")
        .arg(iHours)
        .arg(iMinutes, 2, 10, QLatin1Char('0'))
        .arg(iSeconds, 2, 10, QLatin1Char('0'));
}

int at(const QList<int>& rcNumbers, int iIndex)
{
    return rcNumbers.value(iIndex);
}
