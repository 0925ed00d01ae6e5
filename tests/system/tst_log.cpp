/* SPDX-License-Identifier: MIT */
/* The log as the system log gets it: ident, options and facility, and the level of each line, which its echo on standard
 * error doesn't show. */
#include "tests/support/CBusMonitor.h"
#include "tests/support/CScene.h"
#include "tests/support/CVideoScene.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void names_itself_and_its_facility();
    void a_start_and_an_end_are_information();
    void the_end_is_logged_before_the_recorder_stops();
    void bad_options_are_errors();
    void a_failed_bring_up_is_an_error_data();
    void a_failed_bring_up_is_an_error();
    void a_second_daemon_is_information_and_its_end_an_error();
    void the_loss_of_the_bus_is_an_error();
    void calls_are_information();
    void a_reader_that_goes_away_does_not_end_it();

private:
    void prepare(CDaemonProcess& rcDaemon);
    QStringList lines() const;

    QScopedPointer<QTemporaryDir> m_pcFolder;
};

static const QString STARTING = QStringLiteral("6 Starting haldend...");
static const QString TERMINATING = QStringLiteral("6 Terminating haldend...");
static const QString FAILED = QStringLiteral("3 Error starting haldend.");

void TestLog::init()
{
    m_pcFolder.reset(new QTemporaryDir);
    QVERIFY(m_pcFolder->isValid());
}

void TestLog::prepare(CDaemonProcess& rcDaemon)
{
    rcDaemon.preloadLibrary(QStringLiteral(CAUGHT_SYSLOG_LIBRARY));
    rcDaemon.setVariable(QStringLiteral("CAUGHT_SYSLOG"), m_pcFolder->filePath(QStringLiteral("log")));
}

/// What the log got, without the line of its opening.
QStringList TestLog::lines() const
{
    QFile cFile(m_pcFolder->filePath(QStringLiteral("log")));
    if (!cFile.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(1);
}

// The options: number of the process, the console if there is no log, at once, and the echo.
void TestLog::names_itself_and_its_facility()
{
    CDaemonProcess cDaemon;
    prepare(cDaemon);
    cDaemon.start();
    QVERIFY2(cDaemon.waitForEnd(), cDaemon.describe());
    QFile cFile(m_pcFolder->filePath(QStringLiteral("log")));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readLine(), QStringLiteral("openlog haldend %1 %2\n")
                                   .arg(LOG_PID | LOG_CONS | LOG_NDELAY | LOG_PERROR)
                                   .arg(LOG_LOCAL2)
                                   .toLatin1());
}

void TestLog::a_start_and_an_end_are_information()
{
    CScene cScene;
    QVERIFY(cScene.prepare());
    prepare(cScene.daemon());
    QVERIFY2(cScene.start(), cScene.describe());
    QCOMPARE(cScene.end(), QString());
    QCOMPARE(lines(), (QStringList{STARTING, TERMINATING}));
}

// A codec service that hangs there leaves the line behind, which says how far the daemon got.
void TestLog::the_end_is_logged_before_the_recorder_stops()
{
    CVideoScene cScene;
    QVERIFY(cScene.prepare());
    prepare(cScene.daemon());
    QVERIFY2(cScene.start(), cScene.describe());
    QVERIFY(cScene.enterState(CVideoScene::RECORDING));
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(cScene.bus().address()));
    cScene.codec().hold();
    ::kill(static_cast<pid_t>(cScene.daemon().pid()), SIGTERM);
    QVERIFY(cMonitor.waitFor("member=stop"));
    QCOMPARE(lines(), (QStringList{STARTING, TERMINATING}));
    QVERIFY(cMonitor.end());
    cScene.codec().goOn();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QCOMPARE(cScene.daemon().exitCode(), 0);
}

void TestLog::bad_options_are_errors()
{
    CDaemonProcess cDaemon;
    prepare(cDaemon);
    cDaemon.start();
    QVERIFY2(cDaemon.waitForEnd(), cDaemon.describe());
    QCOMPARE(lines(), (QStringList{QStringLiteral("3 I2C port not specified."),
                                   QStringLiteral("3 FPGA framebuffer device not specified."),
                                   QStringLiteral("3 Lime framebuffer device not specified."), FAILED}));
}

void TestLog::a_failed_bring_up_is_an_error_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QStringList>("failures");
    const QString cSubsystems = QStringLiteral("3 cMultimediaDaemon.initSubsystems()");
    QTest::newRow("the hook") << int(BOARD_OPERATION_SOCKETPAIR)
                              << QStringList{QStringLiteral("3 cMultimediaDaemon.m_pcSignalHook->install()")};
    QTest::newRow("the FPGA") << int(BOARD_OPERATION_FPGA_OPEN)
                              << QStringList{QStringLiteral("3 Error initializing FPGA framebuffer"),
                                             cSubsystems};
    QTest::newRow("the display controller")
        << int(BOARD_OPERATION_LIME_MAP)
        << QStringList{QStringLiteral("3 Error initializing Lime framebuffer"), cSubsystems};
    QTest::newRow("decoder and encoder")
        << int(BOARD_OPERATION_I2C_OPEN)
        << QStringList{QStringLiteral("3 Error initializing SAA7113"),
                       QStringLiteral("3 Error initializing SAA7129"), cSubsystems};
}

void TestLog::a_failed_bring_up_is_an_error()
{
    QFETCH(int, operation);
    QFETCH(QStringList, failures);
    CScene cScene;
    QVERIFY(cScene.prepare());
    prepare(cScene.daemon());
    cScene.board().setFault({static_cast<board_operation>(operation)});
    cScene.daemon().start();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QCOMPARE(cScene.daemon().exitCode(), 255);
    QCOMPARE(lines(), QStringList{STARTING} + failures + QStringList{FAILED});
}

void TestLog::a_second_daemon_is_information_and_its_end_an_error()
{
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    CDaemonProcess cSecond;
    cSecond.setBusAddress(cScene.bus().address());
    cSecond.useBoard(cScene.board().directory());
    prepare(cSecond);
    cSecond.start();
    QVERIFY2(cSecond.waitForEnd(), cSecond.describe());
    QStringList cLines = lines();
    QCOMPARE(cLines.size(), 4);
    QVERIFY2(cLines.takeAt(2).startsWith(QLatin1String("6 ")), cSecond.describe());
    QCOMPARE(cLines,
             (QStringList{STARTING, QStringLiteral("6 cConnection.registerService(DBUS_SERVICE)"), FAILED}));
}

void TestLog::the_loss_of_the_bus_is_an_error()
{
    CScene cScene;
    QVERIFY(cScene.prepare());
    prepare(cScene.daemon());
    QVERIFY2(cScene.start(), cScene.describe());
    cScene.bus().stop();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QCOMPARE(lines(), (QStringList{STARTING, QStringLiteral("3 Lost the system bus"), TERMINATING}));
}

void TestLog::calls_are_information()
{
    CScene cScene;
    QVERIFY(cScene.prepare());
    prepare(cScene.daemon());
    QVERIFY2(cScene.start(), cScene.describe());
    const QString cPath = QStringLiteral("/videooverlay");
    cScene.daemon().send(cPath, QStringLiteral("draw_temp_text"), {QStringLiteral("x"), 1, 5, 0, 10, 1});
    cScene.daemon().send(cPath, QStringLiteral("adjust_character_set_to_locale"), {QStringLiteral("de_DE")});
    QVERIFY(cScene.daemon().settle());
    const QStringList cLines = lines();
    QCOMPARE(cLines.size(), 1 + 6 + 4);
    for (const QString& rcLine : cLines)
        QVERIFY2(rcLine.startsWith(QLatin1String("6 ")), qPrintable(rcLine));
}

// The echo on standard error then has nowhere to go.
void TestLog::a_reader_that_goes_away_does_not_end_it()
{
    const QString cEcho = m_pcFolder->filePath(QStringLiteral("echo"));
    QCOMPARE(mkfifo(qPrintable(cEcho), 0600), 0);
    const int iReader = open(qPrintable(cEcho), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(iReader >= 0);
    CScene cScene;
    QVERIFY(cScene.prepare());
    cScene.daemon().process().setStandardErrorFile(cEcho);
    QVERIFY2(cScene.start(), cScene.describe());
    close(iReader);
    cScene.daemon().send(QStringLiteral("/videooverlay"), QStringLiteral("draw_temp_text"),
                         {QStringLiteral("x"), 1, 5, 0, 10, 1});
    QVERIFY2(cScene.daemon().settle(), cScene.describe());
    QCOMPARE(cScene.end(), QString());
}

QTEST_GUILESS_MAIN(TestLog)

#include "tst_log.moc"
