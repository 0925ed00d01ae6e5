/* SPDX-License-Identifier: MIT */
#include "ctl/Suggestion.h"

#include <QVector>

#include <algorithm>

/// How many letters have to be put in, taken out or changed.
static int distance(const QString& rcFirst, const QString& rcSecond)
{
    QVector<int> cRow(rcSecond.size() + 1);
    for (int i = 0; i < cRow.size(); ++i)
        cRow[i] = i;
    for (int iFirst = 1; iFirst <= rcFirst.size(); ++iFirst) {
        int iDiagonal = cRow[0];
        cRow[0] = iFirst;
        for (int iSecond = 1; iSecond <= rcSecond.size(); ++iSecond) {
            const int iChange = iDiagonal + (rcFirst[iFirst - 1] == rcSecond[iSecond - 1] ? 0 : 1);
            iDiagonal = cRow[iSecond];
            cRow[iSecond] = std::min({iChange, cRow[iSecond] + 1, cRow[iSecond - 1] + 1});
        }
    }
    return cRow.last();
}

QString nearestName(const QString& rcName, const QStringList& rcNames)
{
    QString cNearest;
    // One letter of three may be wrong.
    int iNearest = std::max(1, rcName.size() / 3) + 1;
    for (const QString& rcCandidate : rcNames) {
        const int iDistance = distance(rcName.toLower(), rcCandidate.toLower());
        if (iDistance < iNearest) {
            iNearest = iDistance;
            cNearest = rcCandidate;
        }
    }
    return cNearest;
}

QString suggestion(const QString& rcName, const QStringList& rcNames)
{
    const QString cNearest = nearestName(rcName, rcNames);
    return cNearest.isEmpty() ? QString() : QStringLiteral(" (did you mean %1?)").arg(cNearest);
}
