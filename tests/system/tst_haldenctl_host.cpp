/* SPDX-License-Identifier: MIT */
/* haldenctl --host: the daemon on another machine, through a real sshd. */
#include "tests/support/CHaldenctl.h"
#include "tests/support/CSshServer.h"
#include "tests/support/CVideoScene.h"

#include <QtTest>

class TestHaldenctlHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void commands_reach_the_board();
    void a_file_of_commands_takes_one_connection();
    void doctor_looks_only_over_the_bus();
    void a_host_that_is_not_there();
    void a_host_without_the_daemon();

private:
    QStringList onBoard(const QStringList& rcCommand)
    {
        return QStringList{"--host", "board", "--bus", m_cScene.bus().address()} + rcCommand;
    }

    CVideoScene m_cScene;
    CSshServer m_cServer;
    std::unique_ptr<CHaldenctl> m_pcCtl;
};

void TestHaldenctlHost::initTestCase()
{
    QVERIFY2(m_cServer.start(), qPrintable(m_cServer.error()));
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    // Here is no bus at all.
    m_pcCtl = std::make_unique<CHaldenctl>(QStringLiteral("unix:path=/nonexistent/bus"));
    m_pcCtl->setVariable(QStringLiteral("HALDENCTL_SSH"), m_cServer.client());
}

void TestHaldenctlHost::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

void TestHaldenctlHost::commands_reach_the_board()
{
    QVERIFY2(m_pcCtl->run(onBoard({"display", "size", "360", "288"})) == 0, m_pcCtl->describe());
    QCOMPARE(m_pcCtl->run(onBoard({"status"})), 0);
    QVERIFY2(m_pcCtl->output().contains("\nwindow    360 x 288\n"), m_pcCtl->describe());
    QCOMPARE(m_pcCtl->errors(), QString());
}

void TestHaldenctlHost::a_file_of_commands_takes_one_connection()
{
    QByteArray cCommands = "text new x\n";
    for (int iText = 0; iText < 300; ++iText)
        cCommands += "text set 1 " + QByteArray::number(iText) + "\n";
    QCOMPARE(m_pcCtl->run(onBoard({"-"}), cCommands + "text get 1\n"), 0);
    QCOMPARE(m_pcCtl->output(), QString("1\n    1  shown  at 0,0  white on navy  \"299\""));
}

void TestHaldenctlHost::doctor_looks_only_over_the_bus()
{
    QCOMPARE(m_pcCtl->run(onBoard({"doctor", "board"})), 0);
    QVERIFY2(m_pcCtl->output().contains("run haldenctl doctor board there"), m_pcCtl->describe());
    QCOMPARE(m_pcCtl->run(onBoard({"doctor", "recording", "/film.ts"})), 0);
    QVERIFY2(m_pcCtl->output().contains("run haldenctl doctor recording FILE on the board"),
             m_pcCtl->describe());
}

void TestHaldenctlHost::a_host_that_is_not_there()
{
    QCOMPARE(m_pcCtl->run({"--host", "elsewhere.invalid", "status"}), 3);
    // Before it stands what ssh says.
    QVERIFY2(
        m_pcCtl->errors().endsWith("haldenctl: elsewhere.invalid can't be reached: try ssh elsewhere.invalid "
                                   "systemd-stdio-bridge"),
        m_pcCtl->describe());
}

void TestHaldenctlHost::a_host_without_the_daemon()
{
    CPrivateBus cEmpty;
    QVERIFY(cEmpty.start());
    QCOMPARE(m_pcCtl->run({"--host", "board", "--bus", cEmpty.address(), "status"}), 3);
    QVERIFY2(m_pcCtl->errors().contains("haldend isn't on the bus"), m_pcCtl->describe());
}

QTEST_GUILESS_MAIN(TestHaldenctlHost)

#include "tst_haldenctl_host.moc"
