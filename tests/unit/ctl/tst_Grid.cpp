/* SPDX-License-Identifier: MIT */
/* What of a text leaves the grid. */
#include "ctl/Grid.h"

#include <QtTest>

class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void knows_its_edges()
    {
        QVERIFY(isInGrid({0, 0}) && isInGrid({52, 25}));
        QVERIFY(!isInGrid({53, 0}) && !isInGrid({0, 26}) && !isInGrid({-1, 0}) && !isInGrid({0, -1}));
    }

    void tells_what_is_cut()
    {
        QCOMPARE(cutOff("abc", {50, 0}), QString());
        QCOMPARE(cutOff("abcd", {50, 0}), QString("d"));
        QCOMPARE(cutOff("abc", {3, 26}), QString("abc"));
        QCOMPARE(cutOffWarning("abc", {50, 25}), QString());
        QCOMPARE(cutOffWarning("abcd", {50, 0}),
                 QString("\"d\" is cut off: from column 50 on 3 of the 4 letters fit"));
        QCOMPARE(cutOffWarning("abc", {200, 3}),
                 QString("nothing of \"abc\" is seen: 200,3 is outside of the 53 x 26 cells"));
    }
};

QTEST_GUILESS_MAIN(TestGrid)

#include "tst_Grid.moc"
