/* SPDX-License-Identifier: MIT */
/* What the board says of the programs on it, in tests: nothing, or what the test announced. */
#ifndef HALDEND_TESTS_JUDGEMENTS_H
#define HALDEND_TESTS_JUDGEMENTS_H

#include "board/judge/CJudgements.h"
#include "board/state/CBoard.h"

#include <QStringList>
#include <QtTest>

/// What is wrong: a judgement that wasn't announced, or one that was and didn't come; empty if nothing is. What
/// the board has noted is taken from it.
inline QString differenceFromAnnounced(CBoard& rcBoard, const QStringList& rcAnnounced)
{
    QStringList cTexts;
    const QStringList cJudgements = CJudgements::of(rcBoard);
    for (const QString& rcLine : cJudgements)
        if (!rcAnnounced.contains(rcLine))
            cTexts << QStringLiteral("judged: ") + rcLine;
    for (const QString& rcLine : rcAnnounced)
        if (!cJudgements.contains(rcLine))
            cTexts << QStringLiteral("announced, but not judged: ") + rcLine;
    rcBoard.clearJudgements();
    return cTexts.join(QLatin1Char('\n'));
}

/// For destructors: lets the running test fail if the text isn't empty; after the tests, the program.
inline void failUnlessEmpty(const QString& rcText, const char* pszFile, int iLine)
{
    if (rcText.isEmpty())
        return;
    if (QTest::currentTestFunction() == nullptr)
        qFatal("%s", qPrintable(rcText));
    QTest::qFail(qPrintable(rcText), pszFile, iLine);
}

#endif
