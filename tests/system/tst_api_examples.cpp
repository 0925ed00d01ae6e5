/* The examples of docs/dbus-api.md, as a reader would try them. */
#include "tests/support/CScene.h"
#include "tests/support/Timeouts.h"

#include <QFile>
#include <QProcess>
#include <QtTest>

class TestApiExamples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void can_be_used_as_they_stand_data();
    void can_be_used_as_they_stand();

private:
    CScene m_cScene;
};

void TestApiExamples::initTestCase()
{
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    // The two methods without a slot.
    m_cScene.announce(QStringLiteral(
        "QMetaObject::invokeMethod: No such method CHaldenVideoDisplay::set_video_restart(int)"));
    m_cScene.announce(QStringLiteral(
        "QMetaObject::invokeMethod: No such method CHaldenVideoOverlay::set_text_format(int,int)"));
}

void TestApiExamples::cleanupTestCase()
{
    // What print_hardware_config prints.
    QCoreApplication::processEvents();
    for (const QString& rcLine : m_cScene.daemon().unexpectedOutput())
        if (rcLine.startsWith(QLatin1String("DEBUG_print")) || rcLine.contains(QLatin1String("=L:(")))
            m_cScene.announce(rcLine);
    QCOMPARE(m_cScene.end(), QString());
}

void TestApiExamples::can_be_used_as_they_stand_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("answers");
    QFile cFile(QStringLiteral(API_DOCUMENT));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    bool bAnswers = false;
    for (const QString& rcLine : QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'))) {
        // The signature of the method stands above its example.
        if (rcLine.startsWith(QLatin1Char('`')))
            bAnswers = rcLine.contains(QStringLiteral("→"));
        if (rcLine.startsWith(QLatin1String("    busctl ")))
            QTest::newRow(qPrintable(rcLine.section(QLatin1Char(' '), 8))) << rcLine.trimmed() << bAnswers;
    }
}

void TestApiExamples::can_be_used_as_they_stand()
{
    QFETCH(QString, line);
    QFETCH(bool, answers);
    QStringList cArguments = QProcess::splitCommand(line);
    const QString cProgram = cArguments.takeFirst();
    QProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_cScene.bus().address());
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(cProgram, cArguments);
    QVERIFY(cProcess.waitForFinished(TIMEOUT_PROCESS_MS));
    QVERIFY2(cProcess.exitCode() == 0, cProcess.readAllStandardError().constData());
    // A method with a result says its type first, one without says nothing.
    QCOMPARE(!cProcess.readAllStandardOutput().isEmpty(), answers);
}

QTEST_GUILESS_MAIN(TestApiExamples)

#include "tst_api_examples.moc"
