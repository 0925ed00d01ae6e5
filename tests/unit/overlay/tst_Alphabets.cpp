/* SPDX-License-Identifier: MIT */
/* The letters of each country. */
#include "overlay/Alphabets.h"

#include <QtTest>

#include <set>

class TestAlphabets : public QObject
{
    Q_OBJECT

private slots:
    void every_country_has_its_letters();
    void a_number_that_is_no_country_has_the_first_letters();
};

// As numbers: the board's other programs were built with the numbers of Qt 4.
static const std::set<int> CYRILLIC = {20, 33, 110, 116, 143, 178, 209, 222};
static const std::set<int> LATIN_10 = {2, 54, 98, 172, 177, 192, 243};

void TestAlphabets::every_country_has_its_letters()
{
    int iListed = 0;
    for (int iCountry = 0; iCountry <= QLocale::LastCountry; ++iCountry) {
        const SAlphabet sAlphabet = alphabetOf(static_cast<QLocale::Country>(iCountry));
        const bool bCyrillic = CYRILLIC.count(iCountry) != 0;
        const bool bLatin10 = LATIN_10.count(iCountry) != 0;
        iListed += bCyrillic || bLatin10 ? 1 : 0;
        QCOMPARE(sAlphabet.iGlyphSet, bCyrillic ? 3 : bLatin10 ? 2 : 1);
        QCOMPARE(sAlphabet.iMib, bCyrillic ? 8 : bLatin10 ? 112 : 111);
    }
    QCOMPARE(iListed, 15);
}

void TestAlphabets::a_number_that_is_no_country_has_the_first_letters()
{
    QCOMPARE(alphabetOf(static_cast<QLocale::Country>(0)).iGlyphSet, 1);
    QCOMPARE(LATIN_9.iGlyphSet, 1);
    QCOMPARE(LATIN_9.iMib, 111);
}

QTEST_GUILESS_MAIN(TestAlphabets)

#include "tst_Alphabets.moc"
