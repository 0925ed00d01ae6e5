/* SPDX-License-Identifier: MIT */
/* The program behind ./run, for a working day: one folder, restarts, what it reports, and its end. */
#include "board/state/CBoard.h"
#include "board/tour/CRunFolder.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CMemoryFolder.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QtTest>

#include <csignal>

#include <unistd.h>

class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everything_is_in_one_folder();
    void the_env_file_reaches_bus_and_board();
    void a_second_run_in_the_folder_is_refused();
    void a_restart_of_the_daemon_keeps_the_board();
    void a_codec_that_dies_is_reported_and_restarted();
    void a_daemon_that_ends_is_reported();
    void signals_are_events();
    void a_board_is_there_at_the_next_run();
    void a_killed_run_leaves_nothing_in_the_way();
    void refuses_lines_data();
    void refuses_lines();
    void refuses_folders_of_no_use();
    void there_is_nothing_to_restart_without_a_run();
    void a_folder_without_a_name_goes_at_the_end();
    void a_link_is_no_folder_that_goes_at_the_end();

private:
    void start(const QStringList& rcArguments = {});
    bool says(const QByteArray& rcText);
    int end(int iSignal = SIGTERM);
    int ask(const QString& rcProgram, const QStringList& rcArguments);
    uint daemonProcess();
    QString file(const char* pszName) const { return m_pcFolder->filePath(QLatin1String(pszName)); }

    QScopedPointer<CMemoryFolder> m_pcFolder;
    QScopedPointer<CChildProcess> m_pcRun;
    QByteArray m_cOutput;
    QByteArray m_cAnswer; ///< of ask()
    int m_iClient = 0;
};

void TestRun::init()
{
    m_pcFolder.reset(new CMemoryFolder);
    QVERIFY(m_pcFolder->isValid());
}

void TestRun::cleanup()
{
    m_pcRun.reset();
}

void TestRun::start(const QStringList& rcArguments)
{
    m_cOutput.clear();
    m_pcRun.reset(new CChildProcess);
    m_pcRun->setProcessChannelMode(QProcess::MergedChannels);
    m_pcRun->start(QStringLiteral(HALDEN_TOUR), QStringList({"--at", m_pcFolder->path()}) + rcArguments);
    QVERIFY2(says("What happens:"), m_cOutput);
}

/// Waits until it has said so since the last time.
bool TestRun::says(const QByteArray& rcText)
{
    const QDeadlineTimer cDeadline(TIMEOUT_PROCESS_MS);
    while (!m_cOutput.contains(rcText)) {
        if (cDeadline.hasExpired() || !m_pcRun->waitForReadyRead(static_cast<int>(cDeadline.remainingTime())))
            return false;
        m_cOutput += m_pcRun->readAll();
    }
    m_cOutput = m_cOutput.mid(m_cOutput.indexOf(rcText) + rcText.size());
    return true;
}

/// The status, or -1 if it was ended by the signal.
int TestRun::end(int iSignal)
{
    ::kill(static_cast<pid_t>(m_pcRun->processId()), iSignal);
    if (!m_pcRun->waitForFinished(TIMEOUT_PROCESS_MS))
        return -2;
    m_cOutput += m_pcRun->readAll();
    return m_pcRun->exitStatus() == QProcess::NormalExit ? m_pcRun->exitCode() : -1;
}

/// Another program, whose status it returns.
int TestRun::ask(const QString& rcProgram, const QStringList& rcArguments)
{
    CChildProcess cProcess;
    cProcess.setProcessChannelMode(QProcess::MergedChannels);
    cProcess.start(rcProgram, rcArguments);
    if (!cProcess.waitForFinished(TIMEOUT_PROCESS_MS))
        return -1;
    m_cAnswer = cProcess.readAll();
    return cProcess.exitStatus() == QProcess::NormalExit ? cProcess.exitCode() : -1;
}

/// The daemon's process number, 0 if it isn't on the bus of the folder.
uint TestRun::daemonProcess()
{
    const QString cName = QString::number(++m_iClient);
    const QDBusConnection cConnection =
        QDBusConnection::connectToBus(QStringLiteral("unix:path=") + file("bus"), cName);
    const uint uProcess =
        cConnection.isConnected() ? cConnection.interface()->servicePid("velmar.haldend").value() : 0;
    QDBusConnection::disconnectFromBus(cName);
    return uProcess;
}

void TestRun::everything_is_in_one_folder()
{
    start();
    QVERIFY(daemonProcess() != 0);
    CBoard cBoard;
    QVERIFY(cBoard.open(file("board")));
    QVERIFY(cBoard.codecRuns());
    QVERIFY(QFile::exists(file("env")));
    QTRY_VERIFY_WITH_TIMEOUT(!QImage(file("picture.png")).isNull(), TIMEOUT_PROCESS_MS);
    QCOMPARE(end(), 128 + SIGTERM);
    QVERIFY2(!m_cOutput.contains("ended"), m_cOutput);
    QVERIFY(!cBoard.codecRuns());
    QVERIFY(!QFile::exists(file("bus")));
}

void TestRun::the_env_file_reaches_bus_and_board()
{
    start();
    QCOMPARE(ask("/bin/sh",
                 {"-c", ". \"$0\"; haldenctl overlay show && haldenctl text new A --at 1,1", file("env")}),
             0);
    QCOMPARE(m_cAnswer, QByteArray("1\n"));
    QCOMPARE(ask("/bin/sh", {"-c", ". \"$0\"; halden-board codec", file("env")}), 0);
    QVERIFY2(m_cAnswer.endsWith("halden-codec runs\n"), m_cAnswer);
}

void TestRun::a_second_run_in_the_folder_is_refused()
{
    start();
    const uint uDaemon = daemonProcess();
    QCOMPARE(ask(HALDEN_TOUR, {"--at", m_pcFolder->path()}), 1);
    QCOMPARE(QString(m_cAnswer),
             QString("halden-tour: ./run is at work in %1 already, as process %2; end it, or choose "
                     "another folder: ./run --at DIR\n")
                 .arg(m_pcFolder->path())
                 .arg(m_pcRun->processId()));
    QCOMPARE(daemonProcess(), uDaemon);
}

void TestRun::a_restart_of_the_daemon_keeps_the_board()
{
    start();
    CBoard cBoard;
    QVERIFY(cBoard.open(file("board")));
    cBoard.setCodecDelay(5);
    const uint uDaemon = daemonProcess();
    QCOMPARE(ask(HALDEN_TOUR, {"restart", "daemon", "--at", m_pcFolder->path()}), 0);
    QCOMPARE(m_cAnswer, QByteArray("daemon started again\n"));
    QVERIFY(daemonProcess() != 0 && daemonProcess() != uDaemon);
    QVERIFY(says("daemon  started again\n"));
    QCOMPARE(cBoard.codecDelay(), 5u);
    CBoard cAgain;
    QVERIFY(cAgain.open(file("board")) && cAgain.codecDelay() == 5);
}

void TestRun::a_codec_that_dies_is_reported_and_restarted()
{
    start();
    CBoard cBoard;
    QVERIFY(cBoard.open(file("board")));
    cBoard.setCodecMode(BOARD_CODEC_DIE);
    QVERIFY(ask("/bin/sh", {"-c", ". \"$0\"; haldenctl record start \"$1\"", file("env"), file("film.ts")}) !=
            0);
    QVERIFY(says("codec   ended with status 1; start it again: ./run restart codec --at "));
    QCOMPARE(ask(HALDEND_BOARD_TOOL, {"codec", "--board", file("board")}), 0);
    QVERIFY2(m_cAnswer.endsWith("halden-codec doesn't run\n"), m_cAnswer);
    QCOMPARE(ask(HALDEN_TOUR, {"restart", "codec", "--at", m_pcFolder->path()}), 0);
    QVERIFY(says("codec   started again\n"));
    QVERIFY(cBoard.codecRuns());
}

void TestRun::a_daemon_that_ends_is_reported()
{
    start();
    const uint uDaemon = daemonProcess();
    ::kill(static_cast<pid_t>(uDaemon), SIGKILL);
    QVERIFY(says("daemon  was ended by signal 9; start it again: ./run restart daemon --at "));
    QCOMPARE(daemonProcess(), 0u);
    QCOMPARE(ask(HALDEN_TOUR, {"restart", "daemon", "--at", m_pcFolder->path()}), 0);
    QVERIFY(daemonProcess() != 0);
}

void TestRun::signals_are_events()
{
    start();
    CBoard cBoard;
    QVERIFY(cBoard.open(file("board")));
    cBoard.setCameraPlugged(false);
    QVERIFY(says(" signal  videoprocessing video_input_type_changed 1\n"));
    QVERIFY2(!m_cOutput.contains('\033'), m_cOutput);
}

void TestRun::a_board_is_there_at_the_next_run()
{
    start();
    {
        CBoard cBoard;
        QVERIFY(cBoard.open(file("board")));
        cBoard.setCodecDelay(7);
    }
    QCOMPARE(end(SIGINT), 128 + SIGINT);
    start({"--verbose"});
    CBoard cBoard;
    QVERIFY(cBoard.open(file("board")));
    QCOMPARE(cBoard.codecDelay(), 7u);
    QCOMPARE(end(), 128 + SIGTERM);
    QVERIFY2(m_cOutput.contains("haldend["), m_cOutput); // as it is
}

void TestRun::a_killed_run_leaves_nothing_in_the_way()
{
    start();
    const auto iDaemon = static_cast<pid_t>(daemonProcess());
    QCOMPARE(end(SIGKILL), -1);
    // The kernel ends its programs, and the bus's socket stays.
    QTRY_VERIFY_WITH_TIMEOUT(::kill(iDaemon, 0) != 0, TIMEOUT_PROCESS_MS);
    QVERIFY(QFile::exists(file("bus")));
    start();
    QVERIFY(daemonProcess() != 0);
    QCOMPARE(end(), 128 + SIGTERM);
}

void TestRun::refuses_lines_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::newRow("no folder") << QStringList("--at");
    QTest::newRow("unknown option") << QStringList("--loud");
    QTest::newRow("restart what") << QStringList("restart");
    QTest::newRow("restart verbosely") << QStringList({"restart", "daemon", "--verbose"});
    QTest::newRow("too much") << QStringList({"restart", "daemon", "codec"});
}

void TestRun::refuses_lines()
{
    QFETCH(QStringList, line);
    QCOMPARE(ask(HALDEN_TOUR, line), 2);
    QVERIFY(m_cAnswer.startsWith("Usage: "));
}

void TestRun::refuses_folders_of_no_use()
{
    QCOMPARE(ask(HALDEN_TOUR, {"--at", "/dev/null/here"}), 1);
    QCOMPARE(m_cAnswer, QByteArray("halden-tour: /dev/null/here: can't be made\n"));
    const QString cLong = file("x") + QString(120, QLatin1Char('x'));
    QCOMPARE(ask(HALDEN_TOUR, {"--at", cLong}), 1);
    QVERIFY2(m_cAnswer.contains("the name is too long for the bus"), m_cAnswer);
    QVERIFY(QDir(m_pcFolder->path()).mkpath("board"));
    QCOMPARE(ask(HALDEN_TOUR, {"--at", m_pcFolder->path()}), 1);
    QVERIFY2(m_cAnswer.contains("to begin with a new board, remove " + file("board").toUtf8()), m_cAnswer);
}

void TestRun::there_is_nothing_to_restart_without_a_run()
{
    QCOMPARE(ask(HALDEN_TOUR, {"restart", "daemon", "--at", m_pcFolder->path()}), 1);
    QVERIFY2(m_cAnswer.startsWith("halden-tour: nothing runs in "), m_cAnswer);
    start();
    QCOMPARE(ask(HALDEN_TOUR, {"restart", "bus", "--at", m_pcFolder->path()}), 1);
    QCOMPARE(m_cAnswer, QByteArray("halden-tour: 'bus' is none of daemon, codec\n"));
}

void TestRun::a_folder_without_a_name_goes_at_the_end()
{
    {
        CRunFolder cFolder(file("run"), false);
        QVERIFY2(cFolder.open(), qPrintable(cFolder.error()));
        QVERIFY(cFolder.board().isOpen());
        QCOMPARE(QFileInfo(file("run")).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }
    QVERIFY(!QFile::exists(file("run")));
    QVERIFY(CRunFolder::defaultPath().endsWith(QString("/haldend-run-%1").arg(::geteuid())));
}

void TestRun::a_link_is_no_folder_that_goes_at_the_end()
{
    QVERIFY(QDir(m_pcFolder->path()).mkpath("precious") && QFile::link(file("precious"), file("run")));
    {
        CRunFolder cFolder(file("run"), false);
        QVERIFY(!cFolder.open());
        QCOMPARE(cFolder.error(), file("run") + " is a link");
    }
    QVERIFY(QFile::exists(file("precious")));
}

QTEST_GUILESS_MAIN(TestRun)

#include "tst_run.moc"
