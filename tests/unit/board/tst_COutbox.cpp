/* SPDX-License-Identifier: MIT */
/* What waits for a browser: the newest, and never without end. */
#include "board/serve/COutbox.h"

#include <QTest>

class TestCOutbox : public QObject
{
    Q_OBJECT

private slots:
    void is_empty_at_first();
    void gives_a_picture_first_then_states_then_lines();
    void keeps_only_the_newest_picture();
    void keeps_the_newest_state_of_each_topic();
    void gives_the_lines_of_a_topic_together();
    void keeps_the_newest_lines();
};

static QByteArray taken(COutbox& rcOutbox)
{
    return rcOutbox.take().cPayload;
}

void TestCOutbox::is_empty_at_first()
{
    COutbox cOutbox;
    QVERIFY(cOutbox.isEmpty());
    QCOMPARE(taken(cOutbox), QByteArray());
}

void TestCOutbox::gives_a_picture_first_then_states_then_lines()
{
    COutbox cOutbox;
    cOutbox.putLine("log", "1");
    cOutbox.putState("state", "{}");
    cOutbox.putPicture("picture");
    const COutbox::SMessage sPicture = cOutbox.take();
    QVERIFY(sPicture.bBinary);
    QCOMPARE(sPicture.cPayload, QByteArray("picture"));
    const COutbox::SMessage sState = cOutbox.take();
    QVERIFY(!sState.bBinary);
    QCOMPARE(sState.cPayload, QByteArray("{}"));
    QVERIFY(!cOutbox.isEmpty());
    QCOMPARE(taken(cOutbox), QByteArray("{\"type\":\"log\",\"items\":[1]}"));
    QVERIFY(cOutbox.isEmpty());
}

void TestCOutbox::keeps_only_the_newest_picture()
{
    COutbox cOutbox;
    cOutbox.putPicture("old");
    cOutbox.putPicture("new");
    QCOMPARE(taken(cOutbox), QByteArray("new"));
    QVERIFY(cOutbox.isEmpty());
}

void TestCOutbox::keeps_the_newest_state_of_each_topic()
{
    COutbox cOutbox;
    cOutbox.putState("a", "1");
    cOutbox.putState("b", "2");
    cOutbox.putState("a", "3");
    QCOMPARE(taken(cOutbox), QByteArray("3"));
    QCOMPARE(taken(cOutbox), QByteArray("2"));
    QVERIFY(cOutbox.isEmpty());
}

void TestCOutbox::gives_the_lines_of_a_topic_together()
{
    COutbox cOutbox;
    for (const char* pszLine : {"1", "2", "3"})
        cOutbox.putLine("log", pszLine);
    cOutbox.putLine("other", "4");
    QCOMPARE(taken(cOutbox), QByteArray("{\"type\":\"log\",\"items\":[1,2,3]}"));
    QCOMPARE(taken(cOutbox), QByteArray("{\"type\":\"other\",\"items\":[4]}"));
}

void TestCOutbox::keeps_the_newest_lines()
{
    COutbox cOutbox;
    for (int i = 0; i <= COutbox::LINES; ++i)
        cOutbox.putLine("log", QByteArray::number(i));
    const QByteArray cLines = taken(cOutbox);
    QVERIFY(cLines.startsWith("{\"type\":\"log\",\"items\":[1,2,"));
    QVERIFY(cLines.endsWith("," + QByteArray::number(COutbox::LINES) + "]}"));
}

QTEST_GUILESS_MAIN(TestCOutbox)
#include "tst_COutbox.moc"
