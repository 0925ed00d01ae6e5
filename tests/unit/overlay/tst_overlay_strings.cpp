/* SPDX-License-Identifier: MIT */
/* Strings of every kind as cells, in every alphabet. The FPGA is recorded. */
#include "fpga/font.h"
#include "overlay/COverlayText.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "tests/unit/overlay/RecordedPage.h"

#include <QTextCodec>
#include <QtTest>

class TestOverlayStrings : public QObject
{
    Q_OBJECT

private slots:
    void every_code_unit_is_a_cell_data();
    void every_code_unit_is_a_cell();
    void units_without_a_code_are_question_marks_data();
    void units_without_a_code_are_question_marks();
    void no_text_depends_on_the_one_before();
    void a_string_that_got_shorter_ends_in_blanks();
};

struct SLocaleRow {
    const char* pszLocale;
    int iMib;
};

static const SLocaleRow LOCALES[] = {
    {"de_DE", 111},
    {"ro_RO", 112},
    {"ru_RU", 8  },
};

static const char COLOR = '\xc8';

/// Draws a text from column 0 of row 4 on; the accesses.
static fpga_accesses draw(const char* pszLocale, const QString& rcText)
{
    CVideoOverlayBackEnd cBackEnd;
    cBackEnd.loadCharacterSetForLocale(QString::fromLatin1(pszLocale));
    CRecordedPage::take();
    COverlayText cText;
    cText.setText(rcText);
    cText.setY(4);
    cText.setForegroundColor(EOverlayTextColor{12});
    cText.setBackgroundColor(EOverlayTextColor{8});
    cBackEnd.drawText(cText);
    return CRecordedPage::take();
}

void TestOverlayStrings::every_code_unit_is_a_cell_data()
{
    QTest::addColumn<QString>("string");
    for (const int iLength : {0, 1, 52, 53, 54, 255, 256, 300, 100000})
        QTest::addRow("%d letters", iLength) << QString(iLength, QLatin1Char('m'));
    QTest::newRow("null") << QString();
    QTest::newRow("controls") << QStringLiteral("a\t\r\n\x01\x1b[2J\x7f\u0080\u009f|");
    QTest::newRow("zeros") << QString(5, QChar(0));
    QTest::newRow("no-break space") << QStringLiteral("12\u00a0km");
    QTest::newRow("zero-width spaces") << QStringLiteral("\u200ba\u200b\u200cb\u200d\u2060");
    QTest::newRow("byte order mark") << QStringLiteral("\ufeffabc");
    QTest::newRow("soft hyphen") << QStringLiteral("ab\u00adcd");
    QTest::newRow("combining marks") << QStringLiteral("e\u0301a\u0308s\u0326");
    QTest::newRow("letters of three alphabets") << QStringLiteral("\u00f1\u0219\u0416");
    QTest::newRow("box pieces, which are codes but no characters") << QStringLiteral("\u2500\u2588");
    QTest::newRow("Chinese") << QStringLiteral("\u4e2d\u6587");
    QTest::newRow("emoji") << QStringLiteral("ok \U0001f600\U0001f44d\U0001f3fd!");
    QTest::newRow("right to left") << QStringLiteral("\u202b\u05e9\u05dc\u05d5\u05dd\u202c \u0633");
    QTest::newRow("half a pair") << QString(QChar(0xd83d)) + QLatin1Char('a') + QChar(0xde00);
    QTest::newRow("half a pair at the end") << QStringLiteral("ab") + QChar(0xd83d);
    QTest::newRow("no character") << QStringLiteral("a\uffff\ufffe\ufffdb");
    QTest::newRow("a row of emoji") << QStringLiteral("\U0001f600").repeated(30);
}

/// The code of each code unit alone in an encoding.
static QByteArray codesOf(int iMib, const QString& rcString)
{
    const QTextCodec* pcCodec = QTextCodec::codecForMib(iMib);
    QByteArray cCodes;
    for (const QChar cUnit : rcString)
        cCodes += pcCodec->fromUnicode(QString(cUnit)).leftJustified(1, '?');
    return cCodes;
}

// As many cells as the row has, and none beside them.
void TestOverlayStrings::every_code_unit_is_a_cell()
{
    QFETCH(QString, string);
    for (const SLocaleRow& rsLocale : LOCALES) {
        const CRecordedPage cPage;
        const int iCells = qMin(string.size() % 256, 53);
        QCOMPARE(draw(rsLocale.pszLocale, string), accessesOf({
                                                       {4, 0, iCells}
        }));

        QCOMPARE(cPage.codes(4).left(iCells), codesOf(rsLocale.iMib, string.left(iCells)));
        QCOMPARE(cPage.colors(4), QByteArray(iCells, COLOR).leftJustified(53, '\0'));
        for (const int iRow : {3, 5})
            QCOMPARE(cPage.codes(iRow), QByteArray(53, '\0'));
    }
}

void TestOverlayStrings::units_without_a_code_are_question_marks_data()
{
    QTest::addColumn<QString>("string");
    QTest::addColumn<QByteArray>("codes");
    const QChar cHigh(0xd83d);
    const QChar cLow(0xde00);
    QTest::newRow("emoji") << QStringLiteral("a\U0001f600z") << QByteArray("a??z");
    QTest::newRow("two emoji") << QStringLiteral("\U0001f600\U0001f44dz") << QByteArray("????z");
    QTest::newRow("first half of a pair")
        << QStringLiteral("ab") + cHigh + QLatin1Char('z') << QByteArray("ab?z");
    QTest::newRow("the same at the end") << QStringLiteral("ab") + cHigh << QByteArray("ab?");
    QTest::newRow("second half of a pair")
        << QStringLiteral("ab") + cLow + QLatin1Char('z') << QByteArray("ab?z");
    QTest::newRow("Chinese") << QStringLiteral("a\u4e2dz") << QByteArray("a?z");
    QTest::newRow("zero-width space") << QStringLiteral("a\u200bz") << QByteArray("a?z");
    QTest::newRow("direction marks") << QStringLiteral("\u202ba\u202cz") << QByteArray("?a?z");
    QTest::newRow("byte order mark") << QStringLiteral("\ufeffaz") << QByteArray("?az");
}

// In the same cells in all alphabets: the characters behind it don't move.
void TestOverlayStrings::units_without_a_code_are_question_marks()
{
    QFETCH(QString, string);
    QFETCH(QByteArray, codes);
    for (const SLocaleRow& rsLocale : LOCALES) {
        const CRecordedPage cPage;
        draw(rsLocale.pszLocale, string);
        QCOMPARE(cPage.codes(4).left(codes.size()), codes);
    }
}

// Each code unit, behind each kind of text that an encoder could carry something over from. Of the invisible character
// behind it an encoder makes nothing, which could hide what it carried over.
void TestOverlayStrings::no_text_depends_on_the_one_before()
{
    const QString cBefore[] = {QStringLiteral("m"), QString(QChar(0xd83d)), QStringLiteral("\U0001f600"),
                               QString(QChar(0xde00)), QStringLiteral("\ufeff")};
    for (const SLocaleRow& rsLocale : LOCALES) {
        const CRecordedPage cPage;
        CVideoOverlayBackEnd cBackEnd;
        cBackEnd.loadCharacterSetForLocale(QString::fromLatin1(rsLocale.pszLocale));
        COverlayText cText;
        for (int iUnit = 0; iUnit <= 0xffff; ++iUnit) {
            const QString cString = QChar(static_cast<ushort>(iUnit)) + QStringLiteral("\u200b");
            cText.setText(cBefore[iUnit % 5]);
            cBackEnd.drawText(cText);
            cText.setText(cString);
            cBackEnd.drawText(cText);
            if (cPage.codes(0).left(2) != codesOf(rsLocale.iMib, cString))
                QFAIL(qPrintable(QStringLiteral("%1 in %2").arg(iUnit).arg(rsLocale.pszLocale)));
        }
        CRecordedPage::take();
    }
}

// It keeps its place until it is drawn itself, but a neighbour that leaves has it drawn again.
void TestOverlayStrings::a_string_that_got_shorter_ends_in_blanks()
{
    const CRecordedPage cPage;
    CVideoOverlayBackEnd cBackEnd;
    COverlayText cText;
    cText.setText(QStringLiteral("abcd"));
    const COverlayText cNeighbour;
    cBackEnd.drawText(cText);
    cBackEnd.drawText(cNeighbour);
    cText.setText(QStringLiteral("xy"));
    cBackEnd.clearText(cNeighbour);
    QCOMPARE(cPage.codes(0).left(5), QByteArray("xy  \0", 5));
}

QTEST_GUILESS_MAIN(TestOverlayStrings)

#include "tst_overlay_strings.moc"
