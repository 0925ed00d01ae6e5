/* SPDX-License-Identifier: MIT */
/* Which requests are meant for this server. */
#include "board/serve/Guard.h"

#include <QTest>

class TestGuard : public QObject
{
    Q_OBJECT

private slots:
    void knows_good_hosts_data();
    void knows_good_hosts();
    void knows_good_origins_data();
    void knows_good_origins();
    void compares_tokens();
    void makes_tokens();
};

void TestGuard::knows_good_hosts_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<bool>("good");
    const auto row = [](const char* pszHost, const char* pszListen, bool bGood) {
        QTest::addRow("%s at %s", pszHost, pszListen)
            << QByteArray(pszHost) << QByteArray(pszListen) << bGood;
    };
    for (const char* pszHost :
         {"127.0.0.1:8088", "localhost:8088", "LocalHost", "[::1]:8088", "127.0.0.2:1"}) {
        row(pszHost, "127.0.0.1", true);
        row(pszHost, "0.0.0.0", true);
    }
    for (const char* pszHost : {"", "evil.example", "evil.example:8088", "127.0.0.1.evil.example",
                                "127.evil.example", "localhost.evil.example", "[::1", "[::1]x", "::1"}) {
        row(pszHost, "127.0.0.1", false);
        row(pszHost, "0.0.0.0", false);
    }
    row("192.0.2.7:8088", "127.0.0.1", false);
    row("192.0.2.7:8088", "192.0.2.7", true);
    row("192.0.2.7:8088", "0.0.0.0", true);
    row("[2001:db8::7]:8088", "::", true);
    row("[2001:db8::7]:8088", "::1", false);
}

void TestGuard::knows_good_hosts()
{
    QFETCH(QByteArray, host);
    QFETCH(QByteArray, address);
    QFETCH(bool, good);
    QCOMPARE(isGoodHost(host, address), good);
}

void TestGuard::knows_good_origins_data()
{
    QTest::addColumn<QByteArray>("origin");
    QTest::addColumn<bool>("good");
    QTest::newRow("the same") << QByteArray("http://127.0.0.1:8088") << true;
    QTest::newRow("none") << QByteArray() << false;
    QTest::newRow("null") << QByteArray("null") << false;
    QTest::newRow("other port") << QByteArray("http://127.0.0.1:80") << false;
    QTest::newRow("other scheme") << QByteArray("https://127.0.0.1:8088") << false;
    QTest::newRow("other host") << QByteArray("http://evil.example") << false;
    QTest::newRow("other host behind it") << QByteArray("http://127.0.0.1:8088.evil.example") << false;
}

void TestGuard::knows_good_origins()
{
    QFETCH(QByteArray, origin);
    QFETCH(bool, good);
    QCOMPARE(isGoodOrigin(origin, "127.0.0.1:8088"), good);
    QVERIFY(!isGoodOrigin("http://", ""));
}

void TestGuard::compares_tokens()
{
    QVERIFY(isSameToken("abcd", "abcd"));
    for (const char* pszOther : {"", "abc", "abcde", "abce", "Abcd"})
        QVERIFY(!isSameToken(pszOther, "abcd"));
}

void TestGuard::makes_tokens()
{
    const QByteArray cToken = randomToken();
    QCOMPARE(cToken.size(), 32);
    QCOMPARE(QByteArray::fromHex(cToken).toHex(), cToken);
    QVERIFY(randomToken() != cToken);
}

QTEST_GUILESS_MAIN(TestGuard)
#include "tst_Guard.moc"
