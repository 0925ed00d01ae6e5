/* SPDX-License-Identifier: MIT */
/* The command line of the real process: what is printed and logged, and the exit status. */
#include "tests/support/CDaemonProcess.h"

#include <QtTest>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void help_prints_the_usage_and_ends_well_data();
    void help_prints_the_usage_and_ends_well();
    void bad_options_end_with_255_data();
    void bad_options_end_with_255();
    void a_log_that_nobody_reads_does_not_end_it();
};

static const QByteArray USAGE = "Usage: haldend [-i] [-f] [-l] [-d]\n"
                                "       -i <I2C device: device name, e.g. /dev/i2c-1\n"
                                "       -f <FPGA framebuffer device: device name, e.g. /dev/fpgamem\n"
                                "       -l <Lime framebuffer device: device name, e.g. /dev/fb0\n"
                                "       -d: start as daemon\n";

static const QString NO_I2C = QStringLiteral("I2C port not specified.");
static const QString NO_FPGA = QStringLiteral("FPGA framebuffer device not specified.");
static const QString NO_LIME = QStringLiteral("Lime framebuffer device not specified.");
static const QString FAILED = QStringLiteral("Error starting haldend.");

static QStringList words(const char* pszWords)
{
    return QString::fromLatin1(pszWords).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

void TestOptions::help_prints_the_usage_and_ends_well_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("alone") << words("-h");
    QTest::newRow("after a device") << words("-i /dev/i2c-1 -h");
    QTest::newRow("options after it are not looked at") << words("-h -x");
    QTest::newRow("joined with -d nothing is detached") << words("-dh");
}

void TestOptions::help_prints_the_usage_and_ends_well()
{
    QFETCH(QStringList, arguments);
    CDaemonProcess cDaemon;
    cDaemon.setArguments(arguments);
    cDaemon.start();
    QVERIFY2(cDaemon.waitForEnd(), cDaemon.describe());
    QCOMPARE(cDaemon.exitCode(), 0);
    QVERIFY(!cDaemon.crashed());
    QCOMPARE(cDaemon.standardOutput(), USAGE);
    QCOMPARE(cDaemon.standardError(), QByteArray());
}

void TestOptions::bad_options_end_with_255_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<QStringList>("complaint"); // getopt's own, without its program name
    const QStringList cNone;
    QTest::newRow("no options") << cNone << QStringList{NO_I2C, NO_FPGA, NO_LIME, FAILED} << cNone;
    QTest::newRow("no -i") << words("-f x -l y") << QStringList{NO_I2C, FAILED} << cNone;
    QTest::newRow("no -f") << words("-i x -l y") << QStringList{NO_FPGA, FAILED} << cNone;
    QTest::newRow("no -l") << words("-i x -f y") << QStringList{NO_LIME, FAILED} << cNone;
    QTest::newRow("no -i, no -f") << words("-l x") << QStringList{NO_I2C, NO_FPGA, FAILED} << cNone;
    QTest::newRow("no -i, no -l") << words("-f x") << QStringList{NO_I2C, NO_LIME, FAILED} << cNone;
    QTest::newRow("-d alone does not detach")
        << words("-d") << QStringList{NO_I2C, NO_FPGA, NO_LIME, FAILED} << cNone;
    QTest::newRow("arguments that are no options")
        << words("x y z") << QStringList{NO_I2C, NO_FPGA, NO_LIME, FAILED} << cNone;
    QTest::newRow("unknown option, before anything is checked")
        << words("-x -i a") << QStringList{FAILED} << QStringList{QStringLiteral("invalid option -- 'x'")};
    QTest::newRow("missing argument") << words("-f x -l y -i") << QStringList{FAILED}
                                      << QStringList{QStringLiteral("option requires an argument -- 'i'")};
    QTest::newRow("the admitted dash") << words("-i a -f b -l c -d-") << QStringList{FAILED} << cNone;
    QTest::newRow("help after an unknown option")
        << words("-x -h") << QStringList{FAILED} << QStringList{QStringLiteral("invalid option -- 'x'")};
}

void TestOptions::bad_options_end_with_255()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, log);
    QFETCH(QStringList, complaint);
    CDaemonProcess cDaemon;
    cDaemon.setArguments(arguments);
    cDaemon.start();
    QVERIFY2(cDaemon.waitForEnd(), cDaemon.describe());
    QCOMPARE(cDaemon.exitCode(), 255);
    QVERIFY(!cDaemon.crashed());
    QCOMPARE(cDaemon.log(), log);
    QCOMPARE(cDaemon.standardOutput(), QByteArray());
    QStringList cComplaints;
    for (const QString& rcLine : cDaemon.unexpectedOutput())
        cComplaints << rcLine.section(QStringLiteral(": "), 1);
    QCOMPARE(cComplaints, complaint);
}

// Standard error is a pipe without a reader, as after the end of the program that started the daemon.
void TestOptions::a_log_that_nobody_reads_does_not_end_it()
{
    int iPipe[2];
    QCOMPARE(pipe(iPipe), 0);
    close(iPipe[0]);
    posix_spawn_file_actions_t sActions;
    posix_spawn_file_actions_init(&sActions);
    posix_spawn_file_actions_adddup2(&sActions, iPipe[1], 2);
    QByteArray cProgram = QByteArray(HALDEND_EXECUTABLE);
    char* const apszArguments[] = {cProgram.data(), nullptr};
    pid_t iPid = 0;
    QCOMPARE(posix_spawn(&iPid, cProgram.constData(), &sActions, nullptr, apszArguments, environ), 0);
    posix_spawn_file_actions_destroy(&sActions);
    close(iPipe[1]);

    int iStatus = 0;
    QCOMPARE(waitpid(iPid, &iStatus, 0), iPid);
    QVERIFY(WIFEXITED(iStatus));
    QCOMPARE(WEXITSTATUS(iStatus), 255);
}

QTEST_GUILESS_MAIN(TestOptions)

#include "tst_options.moc"
