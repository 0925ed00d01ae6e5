/* SPDX-License-Identifier: MIT */
/* Numbers of the bus in words. */
#ifndef HALDEND_CTL_WORDS_H
#define HALDEND_CTL_WORDS_H

#include <QJsonObject>
#include <QList>
#include <QString>

/// A result of /videoprocessing in words.
struct SResult {
    int iNumber;
    const char* pszWord;    ///< stable: for programs
    const char* pszMeaning; ///< for people
    const char* pszAdvice;  ///< what to do next
};

/// Of a number from 0 to 6; of others one that says so.
const SResult& resultOf(int iNumber);
QJsonObject resultObject(int iNumber);

/// "camera" or "none", by number.
QString inputWord(int iType);
QJsonObject inputObject(int iType);

QJsonObject colorObject(int iColor);

/// "0:12:30" from hours, minutes and seconds.
QString timeText(int iHours, int iMinutes, int iSeconds);

/// A number of a list, 0 where it is too short.
int at(const QList<int>& rcNumbers, int iIndex);

#endif
