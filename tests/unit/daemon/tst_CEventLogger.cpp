/* SPDX-License-Identifier: MIT */
/* The log channel, read from its echo on standard error. */
#include "daemon/CEventLogger.h"
#include "tests/support/CCapturedOutput.h"

#include <QtTest>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include <syslog.h>

class TestCEventLogger : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void the_first_initialize_wins();
    void a_message_at_the_maximum_is_logged_and_one_above_is_not();
    void the_maximum_can_be_moved();
    void switched_off_it_logs_nothing_at_any_level();
    void percent_conversions_are_logged_literally();
    void a_long_message_comes_in_pieces_data();
    void a_long_message_comes_in_pieces();
};

static const QString IDENT = QStringLiteral("ident-of-the-test");

/// The logger's calls of the system log, intercepted.
class CCaughtLines
{
public:
    CCaughtLines() { m_pcCatcher = this; }
    ~CCaughtLines() { m_pcCatcher = nullptr; }

    CCaughtLines(const CCaughtLines&) = delete;
    CCaughtLines& operator=(const CCaughtLines&) = delete;

    QList<QByteArray> m_cTexts;
    QList<int> m_cLevels;

    static CCaughtLines* m_pcCatcher;
};

CCaughtLines* CCaughtLines::m_pcCatcher = nullptr;

// Takes the place of the C library's. The echo doesn't show the level, and without a system log long lines go
// to the console, which is slow.
extern "C" void __wrap_syslog(int iPriority, const char* pszFormat, ...)
{
    va_list cArguments;
    va_start(cArguments, pszFormat);
    CCaughtLines* pcCatcher = CCaughtLines::m_pcCatcher;
    if (pcCatcher == nullptr) {
        vsyslog(iPriority, pszFormat, cArguments);
    } else {
        char* pszText = nullptr;
        const int iLength = vasprintf(&pszText, pszFormat, cArguments);
        pcCatcher->m_cTexts << QByteArray(pszText, iLength);
        pcCatcher->m_cLevels << iPriority;
        free(pszText);
    }
    va_end(cArguments);
}

// The output for one message: the text after ident and process number, or nothing.
static QString logged(int iLevel, const char* pszMessage)
{
    CCapturedOutput cOutput(2);
    CEventLogger::logMessage(static_cast<CEventLogger::ELogLevel>(iLevel), pszMessage);
    QString cLine = QString::fromUtf8(cOutput.take());
    const QString cPrefix = QStringLiteral("%1[%2]: ").arg(IDENT).arg(QCoreApplication::applicationPid());
    return cLine.startsWith(cPrefix) ? cLine.mid(cPrefix.size()) : cLine;
}

void TestCEventLogger::initTestCase()
{
    QCOMPARE(logged(0, "before initialize"), QString());
    // The string has to outlive the logger.
    static const QByteArray cIdent = IDENT.toLatin1();
    CEventLogger::initialize(cIdent.constData(), CEventLogger::eLogLevelInformational);
}

void TestCEventLogger::init()
{
    CEventLogger::setLoggingEnabled(true);
    CEventLogger::setMaximumLogLevel(CEventLogger::eLogLevelInformational);
}

void TestCEventLogger::the_first_initialize_wins()
{
    CEventLogger::initialize("another", CEventLogger::eLogLevelError);
    QCOMPARE(CEventLogger::getMaximumLogLevel(), CEventLogger::eLogLevelInformational);
    QCOMPARE(logged(6, "still here"), QStringLiteral("still here\n"));
}

void TestCEventLogger::a_message_at_the_maximum_is_logged_and_one_above_is_not()
{
    QCOMPARE(logged(6, "at"), QStringLiteral("at\n"));
    QCOMPARE(logged(7, "above"), QString());
    QCOMPARE(logged(0, "below"), QStringLiteral("below\n"));
}

void TestCEventLogger::the_maximum_can_be_moved()
{
    CEventLogger::setMaximumLogLevel(CEventLogger::eLogLevelError);
    QCOMPARE(CEventLogger::getMaximumLogLevel(), CEventLogger::eLogLevelError);
    QCOMPARE(logged(4, "above"), QString());
    QCOMPARE(logged(3, "at"), QStringLiteral("at\n"));
    CEventLogger::setMaximumLogLevel(CEventLogger::eLogLevelDebug);
    QCOMPARE(logged(7, "at"), QStringLiteral("at\n"));
}

void TestCEventLogger::switched_off_it_logs_nothing_at_any_level()
{
    QVERIFY(CEventLogger::isLoggingEnabled());
    CEventLogger::setLoggingEnabled(false);
    QVERIFY(!CEventLogger::isLoggingEnabled());
    for (int iLevel = 0; iLevel <= 7; ++iLevel)
        QCOMPARE(logged(iLevel, "quiet"), QString());
    CEventLogger::setLoggingEnabled(true);
    QCOMPARE(logged(3, "loud"), QStringLiteral("loud\n"));
}

void TestCEventLogger::percent_conversions_are_logged_literally()
{
    QCOMPARE(logged(6, "100%s %n %d %% %"), QStringLiteral("100%s %n %d %% %\n"));
}

void TestCEventLogger::a_long_message_comes_in_pieces_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QList<int>>("lengths");
    const auto cRow = [](const char* pszName, const QByteArray& rcMessage, const QList<int>& rcLengths) {
        QTest::newRow(pszName) << rcMessage << rcLengths;
    };
    const int PIECE = 65536;
    const QByteArray cTwo = "\xc3\xa4";
    const QByteArray cThree = "\xe2\x82\xac";
    const QByteArray cFour = "\xf0\x9f\x98\x80";
    cRow("empty", "", {0});
    cRow("short", "short", {5});
    cRow("as long as a piece", QByteArray(PIECE, 'x'), {PIECE});
    cRow("one more", QByteArray(PIECE + 1, 'x'), {PIECE, 1});
    cRow("three pieces", QByteArray(3 * PIECE, 'x'), {PIECE, PIECE, PIECE});
    cRow("percent signs", QByteArray(PIECE + 2, '%'), {PIECE, 2});
    cRow("ends with a letter of two bytes", QByteArray(PIECE - 2, 'x') + cTwo, {PIECE});
    cRow("cut behind one", QByteArray(PIECE - 2, 'x') + cTwo + 'y', {PIECE, 1});
    cRow("cut before one", QByteArray(PIECE - 1, 'x') + cTwo, {PIECE - 1, 2});
    cRow("letters of two bytes", 'x' + cTwo.repeated(PIECE), {PIECE - 1, PIECE, 2});
    cRow("letters of three bytes", cThree.repeated(PIECE), {PIECE - 1, PIECE - 1, PIECE - 1, 3});
    for (int iBytes = 1; iBytes <= 3; ++iBytes)
        cRow(qPrintable(QStringLiteral("%1 of four bytes behind the cut").arg(4 - iBytes)),
             QByteArray(PIECE - iBytes, 'x') + cFour, {PIECE - iBytes, 4});
    cRow("no letters at all", QByteArray(PIECE + 10, '\x80'), {PIECE, 10});
}

void TestCEventLogger::a_long_message_comes_in_pieces()
{
    QFETCH(QByteArray, message);
    QFETCH(QList<int>, lengths);
    CCaughtLines cCaught;
    CEventLogger::logMessage(CEventLogger::eLogLevelError, message.constData());
    QList<int> cLengths;
    for (const QByteArray& rcText : cCaught.m_cTexts)
        cLengths << rcText.size();
    QCOMPARE(cLengths, lengths);
    QVERIFY(cCaught.m_cTexts.join() == message);
    QCOMPARE(cCaught.m_cLevels, QVector<int>(lengths.size(), CEventLogger::eLogLevelError).toList());
}

QTEST_GUILESS_MAIN(TestCEventLogger)

#include "tst_CEventLogger.moc"
