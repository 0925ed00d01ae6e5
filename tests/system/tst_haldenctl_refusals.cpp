/* SPDX-License-Identifier: MIT */
/* How haldenctl ends when something is in its way: one line on standard error, and a status for scripts. */
#include "board/create/CBoardMaker.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CScene.h"

#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

class TestHaldenctlRefusals : public QObject
{
    Q_OBJECT

private slots:
    void wrong_use_needs_no_bus_data();
    void wrong_use_needs_no_bus();
    void what_needs_no_bus_works_without_one();
    void there_is_no_bus();
    void there_is_no_daemon();
    void a_stranger_may_call_nothing();
    void a_member_of_the_group_may_not_call_debug();
    void a_daemon_that_dies_is_told();
    void a_missing_method_is_told();
};

/// A policy under which the user of the test is no more than the owner of the name, or a member of the group too.
static CPrivateBus::SPolicy policyFor(bool bMember)
{
    CPrivateBus::SPolicy sPolicy;
    sPolicy.cUser = QString::fromLocal8Bit(getpwuid(geteuid())->pw_name);
    sPolicy.cRoot = QStringLiteral("nobody");
    sPolicy.cGroup =
        bMember ? QString::fromLocal8Bit(getgrgid(getegid())->gr_name) : QStringLiteral("nogroup");
    return sPolicy;
}

/// Bus, board and daemon, with a policy.
class CGuardedDaemon
{
public:
    bool start(bool bMember)
    {
        const QString cBoard = m_cFolder.filePath(QStringLiteral("board"));
        QString cError;
        if (!m_cBus.startUnderPolicy(policyFor(bMember)) || !CBoardMaker::create(cBoard, cError))
            return false;
        m_cDaemon.setBusAddress(m_cBus.address());
        m_cDaemon.useBoard(cBoard);
        // Its owner may not call it either, so that it can't be asked whether it is there.
        m_cDaemon.start();
        CHaldenctl cCtl(m_cBus.address());
        return cCtl.run({"wait", "--timeout", "20"}) == 0;
    }

    QString address() const { return m_cBus.address(); }

private:
    QTemporaryDir m_cFolder;
    CPrivateBus m_cBus;
    CDaemonProcess m_cDaemon;
};

void TestHaldenctlRefusals::wrong_use_needs_no_bus_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("text");
    const auto cRow = [](const char* pszName, const QStringList& rcArguments, const char* pszText) {
        QTest::newRow(pszName) << rcArguments << pszText;
    };
    cRow("nothing", {}, "a command is missing; see haldenctl --help");
    cRow("unknown command", {"stauts"}, "there is no command stauts, did you mean status?");
    cRow("half a command", {"counter"},
         "counter takes one of: set, start, pause, resume, stop, get, show, follow");
    cRow("unknown option", {"--loud", "status"}, "Unknown option 'loud'; see haldenctl --help");
    cRow("count", {"display", "size", "1"}, "H is missing; usage: haldenctl display size W H");
    cRow("range", {"display", "size", "0", "1"}, "W has to be from 1 to 4095, not 0");
    cRow("letter", {"text", "new", "\u65e5"}, "the overlay has no letter for \u65e5 (U+65E5)");
    cRow("grid", {"message", "x", "--at", "53,0"},
         "53,0 is outside of the grid: columns are 0 to 52, rows 0 to 25");
    cRow("colour", {"text", "new", "x", "--color", "16"},
         "16 is no colour; haldenctl colors shows all sixteen");
    cRow("seconds", {"message", "x", "--seconds", "0"}, "N has to be from 1 to 9999, not 0");
    cRow("method", {"call", "videodisplay", "set_video_sise", "1"},
         "videodisplay has no method set_video_sise (did you mean set_video_size?)");
    cRow("arguments of a call", {"call", "videodisplay", "set_video_size", "1"},
         "set_video_size takes 2 arguments, not 1: width:i height:i");
    cRow("type", {"call", "videodisplay", "set_video_size", "1", "x"}, "x is no 32-bit number");
    cRow("diff", {"check-registers", "--diff", "/"}, "--diff takes two folders or two files");
}

void TestHaldenctlRefusals::wrong_use_needs_no_bus()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    CHaldenctl cCtl(QStringLiteral("unix:path=/nonexistent/bus"));
    QCOMPARE(cCtl.run(arguments), 2);
    QCOMPARE(cCtl.errors(), QStringLiteral("haldenctl: ") + text);
    QCOMPARE(cCtl.output(), QString());
}

void TestHaldenctlRefusals::what_needs_no_bus_works_without_one()
{
    CHaldenctl cCtl(QStringLiteral("unix:path=/nonexistent/bus"));
    QCOMPARE(cCtl.run({"--help"}), 0);
    QVERIFY(cCtl.output().startsWith("Usage: haldenctl"));
    QCOMPARE(cCtl.run({"text", "new", "--help"}), 0);
    QVERIFY(cCtl.output().contains("text new STRING"));
    QCOMPARE(cCtl.run({"--version"}), 0);
    QVERIFY(cCtl.output().startsWith("haldenctl "));
    QCOMPARE(cCtl.run({"colors"}), 0);
    QCOMPARE(cCtl.output().count(QLatin1Char('\n')), 15);
}

void TestHaldenctlRefusals::there_is_no_bus()
{
    CHaldenctl cCtl(QStringLiteral("unix:path=/nonexistent/bus"));
    QCOMPARE(cCtl.run({"status"}), 3);
    QVERIFY2(cCtl.errors().startsWith("haldenctl: no bus: "), cCtl.describe());
    QCOMPARE(cCtl.errors().count(QLatin1Char('\n')), 0);
    QCOMPARE(cCtl.run({"--bus", "nonsense", "status"}), 3);
    QCOMPARE(cCtl.errors().count(QLatin1Char('\n')), 0);
}

void TestHaldenctlRefusals::there_is_no_daemon()
{
    CPrivateBus cBus;
    QVERIFY(cBus.start());
    CHaldenctl cCtl(cBus.address());
    for (const QStringList& rcArguments : {
             QStringList{"status"},
             QStringList{ "overlay",       "show"},
             QStringList{   "text",   "new", "x"},
             QStringList{   "call", "debug", "reload_hardware_config"}
    }) {
        QCOMPARE(cCtl.run(rcArguments), 3);
        QCOMPARE(cCtl.errors(),
                 QString("haldenctl: haldend isn't on the bus: start it, and look at its log if it "
                         "doesn't stay"));
    }
    QCOMPARE(cCtl.run({"wait", "--timeout", "1"}), 1);
    CHaldenctl cElsewhere(QStringLiteral("unix:path=/nonexistent/bus"));
    QCOMPARE(cElsewhere.run({"status", "--bus", cBus.address()}), 3);
    QVERIFY(cElsewhere.errors().contains("haldend isn't on the bus"));
}

void TestHaldenctlRefusals::a_stranger_may_call_nothing()
{
    CGuardedDaemon cDaemon;
    QVERIFY(cDaemon.start(false));
    CHaldenctl cCtl(cDaemon.address());
    for (const QStringList& rcArguments : {
             QStringList{"status"},
             QStringList{ "overlay",  "show"}
    }) {
        QVERIFY2(cCtl.run(rcArguments) == 4, cCtl.describe());
        QCOMPARE(cCtl.errors(),
                 QString("haldenctl: not allowed: only root and the group haldend may call the daemon"));
    }
    QCOMPARE(cCtl.run({"doctor", "board"}), 1);
    QVERIFY2(
        cCtl.output().contains("board: you may not call haldend: be root, or a member of the group haldend"),
        cCtl.describe());
}

void TestHaldenctlRefusals::a_member_of_the_group_may_not_call_debug()
{
    CGuardedDaemon cDaemon;
    QVERIFY(cDaemon.start(true));
    CHaldenctl cCtl(cDaemon.address());
    QCOMPARE(cCtl.run({"overlay", "show"}), 0);
    QCOMPARE(cCtl.run({"debug", "reload"}), 4);
    QCOMPARE(cCtl.errors(), QString("haldenctl: not allowed: /debug is root's alone"));
    QCOMPARE(cCtl.run({"doctor", "board"}), 1);
    QVERIFY2(cCtl.output().contains("board: perhaps you want /debug, and may not call it"), cCtl.describe());
}

void TestHaldenctlRefusals::a_daemon_that_dies_is_told()
{
    CScene cScene;
    QVERIFY(cScene.start());
    CHaldenctl cCtl(cScene.bus().address());
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(cScene.bus().address()));
    // Held, so that the call is on its way when the daemon ends.
    ::kill(static_cast<pid_t>(cScene.daemon().pid()), SIGSTOP);
    CChildProcess cProcess;
    cCtl.start(cProcess, {"overlay", "show"});
    QVERIFY(cProcess.waitForStarted());
    QVERIFY(cMonitor.waitFor("member=show_overlay"));
    ::kill(static_cast<pid_t>(cScene.daemon().pid()), SIGKILL);
    QVERIFY(cProcess.waitForFinished());
    QCOMPARE(cProcess.exitCode(), 1);
    QVERIFY(cProcess.readAllStandardError().startsWith("haldenctl: no answer to show_overlay"));
    QVERIFY(cScene.daemon().waitForEnd());
}

/// A daemon of another version: it owns the name and has nothing.
void TestHaldenctlRefusals::a_missing_method_is_told()
{
    CPrivateBus cBus;
    QVERIFY(cBus.start());
    QDBusConnection cService = QDBusConnection::connectToBus(cBus.address(), QStringLiteral("empty"));
    QVERIFY(cService.registerService(QStringLiteral("velmar.haldend")));
    CHaldenctl cCtl(cBus.address());
    CChildProcess cProcess;
    cCtl.start(cProcess, {"overlay", "show"});
    // This process answers from its event loop.
    QTRY_COMPARE(cProcess.state(), QProcess::NotRunning);
    QCOMPARE(cProcess.exitCode(), 1);
    QCOMPARE(cProcess.readAllStandardError(),
             QByteArray("haldenctl: this haldend has no videooverlay show_overlay\n"));
    QDBusConnection::disconnectFromBus(QStringLiteral("empty"));
}

QTEST_GUILESS_MAIN(TestHaldenctlRefusals)

#include "tst_haldenctl_refusals.moc"
