/* The log channel, read from its echo on standard error. */
#include "daemon/CEventLogger.h"
#include "tests/support/CCapturedOutput.h"

#include <QtTest>

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
};

static const QString IDENT = QStringLiteral("ident-of-the-test");

// What comes out for one message: the text after ident and process number, or nothing.
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

QTEST_GUILESS_MAIN(TestCEventLogger)

#include "tst_CEventLogger.moc"
