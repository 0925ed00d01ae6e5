/* SPDX-License-Identifier: MIT */
/* The codec that Qt lacks, compared with the C library's. */
#include "overlay/CIso8859_16Codec.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/Timeouts.h"

#include <QtTest>

class TestCIso8859_16Codec : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void qt_finds_it_by_number_and_by_name();
    void it_is_provided_once();
    void every_code_is_the_character_that_the_c_library_knows();
    void every_character_has_the_code_that_it_came_from();
    void every_other_code_unit_is_a_question_mark();
    void a_character_of_two_code_units_is_two_question_marks();
    void a_state_asks_for_zeros_and_counts();
    void nothing_becomes_nothing();

private:
    QTextCodec* m_pcCodec = nullptr;
};

/// All codes in order.
static QByteArray codes()
{
    QByteArray cCodes;
    for (int iCode = 0; iCode < 256; ++iCode)
        cCodes.append(static_cast<char>(iCode));
    return cCodes;
}

/// By the program iconv, which is the C library's, and the machine's own in emulated tests too.
static QString decodedByTheCLibrary(const QByteArray& rcCodes)
{
    CChildProcess cIconv;
    cIconv.start(QStringLiteral("iconv"), {"-f", "ISO-8859-16", "-t", "UTF-8"});
    cIconv.write(rcCodes);
    cIconv.closeWriteChannel();
    if (!cIconv.waitForFinished(TIMEOUT_PROCESS_MS))
        return {};
    const QByteArray cUtf8 = cIconv.readAllStandardOutput();
    // With its size, because its first character is 0.
    return QString::fromUtf8(cUtf8.constData(), cUtf8.size());
}

void TestCIso8859_16Codec::initTestCase()
{
    CIso8859_16Codec::provide();
    m_pcCodec = QTextCodec::codecForMib(112);
    QVERIFY(m_pcCodec != nullptr);
}

void TestCIso8859_16Codec::qt_finds_it_by_number_and_by_name()
{
    QCOMPARE(m_pcCodec->name(), QByteArray("ISO-8859-16"));
    QCOMPARE(m_pcCodec->mibEnum(), 112);
    QCOMPARE(QTextCodec::codecForName("ISO-8859-16"), m_pcCodec);
    QCOMPARE(QTextCodec::codecForName("iso-8859-16"), m_pcCodec);
}

void TestCIso8859_16Codec::it_is_provided_once()
{
    CIso8859_16Codec::provide();
    QCOMPARE(QTextCodec::codecForMib(112), m_pcCodec);
    QCOMPARE(QTextCodec::availableCodecs().count("ISO-8859-16"), 1);
}

void TestCIso8859_16Codec::every_code_is_the_character_that_the_c_library_knows()
{
    const QString cText = m_pcCodec->toUnicode(codes());
    QCOMPARE(cText.size(), 256);
    QCOMPARE(cText, decodedByTheCLibrary(codes()));
}

void TestCIso8859_16Codec::every_character_has_the_code_that_it_came_from()
{
    QCOMPARE(m_pcCodec->fromUnicode(m_pcCodec->toUnicode(codes())), codes());
}

void TestCIso8859_16Codec::every_other_code_unit_is_a_question_mark()
{
    const QString cKnown = m_pcCodec->toUnicode(codes());
    int iUnknown = 0;
    for (int iUnit = 0; iUnit < 65536; ++iUnit) {
        const QChar cUnit(iUnit);
        if (cKnown.contains(cUnit))
            continue;
        ++iUnknown;
        QCOMPARE(m_pcCodec->fromUnicode(QString(cUnit)), QByteArray("?"));
        QVERIFY(!m_pcCodec->canEncode(cUnit));
    }
    QCOMPARE(iUnknown, 65536 - 256);
}

void TestCIso8859_16Codec::a_character_of_two_code_units_is_two_question_marks()
{
    QCOMPARE(m_pcCodec->fromUnicode(QString::fromUtf8("a\xf0\x9f\x98\x80z")), QByteArray("a??z"));
}

void TestCIso8859_16Codec::a_state_asks_for_zeros_and_counts()
{
    const QString cText =
        QString::fromUtf8("\xc8\x99\xd0\x96\xe4\xb8\xad"); // s with comma below and two strangers
    QTextCodec::ConverterState sPlain;
    QCOMPARE(m_pcCodec->fromUnicode(cText.constData(), cText.size(), &sPlain), QByteArray("\xba??"));
    QCOMPARE(sPlain.invalidChars, 2);
    m_pcCodec->fromUnicode(cText.constData(), cText.size(), &sPlain);
    QCOMPARE(sPlain.invalidChars, 4);

    QTextCodec::ConverterState sNull(QTextCodec::ConvertInvalidToNull);
    QCOMPARE(m_pcCodec->fromUnicode(cText.constData(), cText.size(), &sNull), QByteArray("\xba\0\0", 3));
    QCOMPARE(sNull.invalidChars, 2);
}

void TestCIso8859_16Codec::nothing_becomes_nothing()
{
    QCOMPARE(m_pcCodec->fromUnicode(QString()), QByteArray());
    QCOMPARE(m_pcCodec->fromUnicode(QString(QLatin1String(""))), QByteArray());
    QCOMPARE(m_pcCodec->toUnicode(QByteArray()), QString());
    QCOMPARE(m_pcCodec->fromUnicode(QString(100000, QChar(0x0105))), QByteArray(100000, '\xa2'));
}

QTEST_GUILESS_MAIN(TestCIso8859_16Codec)

#include "tst_CIso8859_16Codec.moc"
