/* SPDX-License-Identifier: MIT */
/* Which letters the glyph sets have. */
#include "ctl/Letters.h"

#include <QtTest>

class TestLetters : public QObject
{
    Q_OBJECT

private slots:
    void tells_what_is_missing_data();
    void tells_what_is_missing();
};

void TestLetters::tells_what_is_missing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("nowhere");
    QTest::addColumn<QString>("warning");
    const QString cRest = QStringLiteral("; which are in use can't be asked for");
    const QString cWestern = QStringLiteral("western (haldenctl overlay locale de_DE)");
    const QString cEastern = QStringLiteral("south-eastern (haldenctl overlay locale pl_PL)");
    const QString cCyrillic = QStringLiteral("Cyrillic (haldenctl overlay locale ru_RU)");
    QTest::newRow("ASCII") << "Manhole 17 ~!\""
                           << ""
                           << "";
    QTest::newRow("no-break space") << "a\u00a0b"
                                    << ""
                                    << "";
    QTest::newRow("box pieces, by their codes") << QString(QChar(0x80)) << ""
                                                << "";
    QTest::newRow("Latin")
        << "\u00fc"
        << "" << QStringLiteral("\"\u00fc\" needs these letters: %1 or %2").arg(cWestern, cEastern) + cRest;
    QTest::newRow("Polish") << "Sanie \u0142"
                            << ""
                            << QStringLiteral("\"\u0142\" needs these letters: %1").arg(cEastern) + cRest;
    QTest::newRow("Cyrillic") << "\u0416\u0436\u0416"
                              << ""
                              << QStringLiteral("\"\u0416\u0436\" needs these letters: %1").arg(cCyrillic) +
                                     cRest;
    QTest::newRow("mixed") << "\u0416\u00fc"
                           << ""
                           << "no set of letters has all of \"\u0416\u00fc\": some are shown as ?";
    QTest::newRow("Japanese") << "a\u65e5\u65e5"
                              << "\u65e5"
                              << "";
    QTest::newRow("line end") << "a\nb"
                              << "\n"
                              << "";
    QTest::newRow("beyond 16 bits") << QString::fromUcs4(U"\U0001F600", 1)
                                    << QString::fromUcs4(U"\U0001F600", 1) << "";
}

void TestLetters::tells_what_is_missing()
{
    QFETCH(QString, text);
    QFETCH(QString, nowhere);
    QFETCH(QString, warning);
    QCOMPARE(checkLetters(text).cNowhere, nowhere);
    QCOMPARE(checkLetters(text).cWarning, warning);
}

QTEST_GUILESS_MAIN(TestLetters)

#include "tst_Letters.moc"
