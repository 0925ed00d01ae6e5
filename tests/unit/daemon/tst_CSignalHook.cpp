/* SPDX-License-Identifier: MIT */
/* Signals that reach this process, and the event loop that they end. */
#include "daemon/CSignalHook.h"

#include <QDir>
#include <QTimer>
#include <QtTest>

#include <csignal>

class TestCSignalHook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void a_second_install_returns_false_and_opens_nothing();
    void each_signal_ends_the_loop_once_data();
    void each_signal_ends_the_loop_once();
    void a_signal_before_the_loop_ends_it_as_soon_as_it_starts();
    void both_signals_together_end_the_loop();
    void a_storm_of_signals_while_the_loop_is_busy_does_not_hang();
    void handlers_keep_errno();
    void handlers_restart_interrupted_calls();

private:
    CSignalHook m_cHook;
};

static int openDescriptors()
{
    return static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).count());
}

// Runs the application's loop; events from before are handled first.
static int runLoop()
{
    return QCoreApplication::exec();
}

// The loop has to go on running: a quit in it would end it before the timer does.
static bool loopStaysRunning()
{
    QTimer::singleShot(50, QCoreApplication::instance(), [] { QCoreApplication::exit(77); });
    return runLoop() == 77;
}

void TestCSignalHook::initTestCase()
{
    const int iBefore = openDescriptors();
    QVERIFY(m_cHook.install());
    QCOMPARE(openDescriptors(), iBefore + 4);
}

void TestCSignalHook::a_second_install_returns_false_and_opens_nothing()
{
    const int iBefore = openDescriptors();
    QVERIFY(!m_cHook.install());
    QCOMPARE(openDescriptors(), iBefore);
}

void TestCSignalHook::each_signal_ends_the_loop_once_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGHUP") << SIGHUP;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestCSignalHook::each_signal_ends_the_loop_once()
{
    QFETCH(int, signal);
    QTimer::singleShot(0, QCoreApplication::instance(), [signal] { raise(signal); });
    QCOMPARE(runLoop(), 0);
    QVERIFY(loopStaysRunning());
}

void TestCSignalHook::a_signal_before_the_loop_ends_it_as_soon_as_it_starts()
{
    raise(SIGTERM);
    QCOMPARE(runLoop(), 0);
    QVERIFY(loopStaysRunning());
}

void TestCSignalHook::both_signals_together_end_the_loop()
{
    raise(SIGTERM);
    raise(SIGHUP);
    raise(SIGTERM);
    QCOMPARE(runLoop(), 0);
    // The rest of the signals asks for the same again, at most once for each byte.
    for (int iRound = 0; iRound < 3 && !loopStaysRunning(); ++iRound) {
    }
    QVERIFY(loopStaysRunning());
}

void TestCSignalHook::a_storm_of_signals_while_the_loop_is_busy_does_not_hang()
{
    // More than the socket holds: a handler that waited for room would wait for the loop it interrupts.
    for (int iSignal = 0; iSignal < 100000; ++iSignal)
        raise(SIGTERM);
    QCOMPARE(runLoop(), 0);
    int iRounds = 0;
    while (!loopStaysRunning())
        QVERIFY(++iRounds < 100000);
}

void TestCSignalHook::handlers_keep_errno()
{
    for (int iSignal = 0; iSignal < 10000; ++iSignal) {
        errno = E2BIG;
        raise(SIGHUP);
        QCOMPARE(errno, E2BIG);
    }
    int iRounds = 0;
    while (!loopStaysRunning())
        QVERIFY(++iRounds < 10000);
}

void TestCSignalHook::handlers_restart_interrupted_calls()
{
    for (const int iSignal : {SIGHUP, SIGTERM}) {
        struct sigaction sAction = {};
        QCOMPARE(sigaction(iSignal, nullptr, &sAction), 0);
        QCOMPARE(sAction.sa_flags & SA_RESTART, SA_RESTART);
        QVERIFY(sigismember(&sAction.sa_mask, SIGUSR1) == 0);
    }
}

QTEST_GUILESS_MAIN(TestCSignalHook)

#include "tst_CSignalHook.moc"
