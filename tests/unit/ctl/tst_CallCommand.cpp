/* SPDX-License-Identifier: MIT */
/* How words become the values of a call. */
#include "ctl/CFailure.h"
#include "ctl/CallCommand.h"

#include <QtTest>

class TestCallCommand : public QObject
{
    Q_OBJECT

private slots:
    void words_get_the_type_of_the_interface_file()
    {
        QCOMPARE(valueFrom("12", "i"), QVariant(12));
        QCOMPARE(valueFrom("-0x10", "i"), QVariant(-16));
        QCOMPARE(valueFrom("12", "s"), QVariant("12"));
        QCOMPARE(valueFrom("On", "b"), QVariant(true));
        QCOMPARE(valueFrom("0", "b"), QVariant(false));
        QCOMPARE(valueFrom("1,2,3", "av"), QVariant(QVariantList{1, 2, 3}));
        QCOMPARE(valueFrom("", "av"), QVariant(QVariantList{}));
    }

    void others_are_refused()
    {
        QVERIFY_EXCEPTION_THROWN(valueFrom("4294967296", "i"), CFailure);
        QVERIFY_EXCEPTION_THROWN(valueFrom("twelve", "i"), CFailure);
        QVERIFY_EXCEPTION_THROWN(valueFrom("2", "b"), CFailure);
        QVERIFY_EXCEPTION_THROWN(valueFrom("1,x", "av"), CFailure);
    }
};

QTEST_GUILESS_MAIN(TestCallCommand)

#include "tst_CallCommand.moc"
