/* SPDX-License-Identifier: MIT */
/* What a misspelt name may have meant. */
#include "ctl/Suggestion.h"

#include <QtTest>

class TestSuggestion : public QObject
{
    Q_OBJECT

private slots:
    void the_nearest_name_is_meant()
    {
        const QStringList cNames{"LUBR", "LUCON", "CRSAT"};
        QCOMPARE(nearestName("LUBER", cNames), QString("LUBR"));
        QCOMPARE(nearestName("crsta", cNames), QString());
        QCOMPARE(nearestName("lucn", cNames), QString("LUCON"));
        QCOMPARE(nearestName("SOMETHING", cNames), QString());
        QCOMPARE(suggestion("LUBER", cNames), QString(" (did you mean LUBR?)"));
        QCOMPARE(suggestion("SOMETHING", cNames), QString());
    }
};

QTEST_GUILESS_MAIN(TestSuggestion)

#include "tst_Suggestion.moc"
