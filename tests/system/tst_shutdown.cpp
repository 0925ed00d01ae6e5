/* The end of the real process: SIGTERM and SIGHUP at every moment that a client or an init system can choose. */
#include "tests/support/CScene.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnectionInterface>
#include <QtTest>

#include <csignal>

class TestShutdown : public QObject
{
    Q_OBJECT

private slots:
    void each_signal_ends_it_well_data();
    void each_signal_ends_it_well();
    void a_signal_before_the_event_loop_ends_it_well_data();
    void a_signal_before_the_event_loop_ends_it_well();
    void a_signal_in_a_burst_of_calls_ends_it_well_data();
    void a_signal_in_a_burst_of_calls_ends_it_well();
    void signals_again_and_again_end_it_once();
    void a_bus_that_goes_away_does_not_hang_it();
};

static const QStringList LIVED_WELL = {QStringLiteral("Starting haldend..."),
                                       QStringLiteral("Terminating haldend...")};

static void addSignals()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

#define VERIFY_ENDED_WELL(cScene)                                         \
    do {                                                                  \
        QVERIFY2(!(cScene).daemon().crashed(), (cScene).describe());      \
        QVERIFY2((cScene).daemon().exitCode() == 0, (cScene).describe()); \
        QCOMPARE((cScene).daemon().log(), LIVED_WELL);                    \
        QCOMPARE((cScene).daemon().unexpectedOutput(), QStringList());    \
    } while (false)

// Waits until a connection that wasn't there before comes to the bus, and calls back at once.
class CArrivals : public QObject
{
    Q_OBJECT

public:
    CArrivals(QDBusConnection cConnection, std::function<void()> cArrived) : m_cArrived(std::move(cArrived))
    {
        // The signal of the interface object covers well-known names only.
        cConnection.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
                            SLOT(onNameOwnerChanged(QString, QString, QString)));
    }

public slots:
    void onNameOwnerChanged(const QString& rcName, const QString& rcOld, const QString&)
    {
        if (rcName.startsWith(QLatin1Char(':')) && rcOld.isEmpty())
            m_cArrived();
    }

private:
    std::function<void()> m_cArrived;
};

void TestShutdown::each_signal_ends_it_well_data()
{
    addSignals();
}

void TestShutdown::each_signal_ends_it_well()
{
    QFETCH(int, signal);
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    QVERIFY2(cScene.daemon().endBySignal(signal), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
}

void TestShutdown::a_signal_before_the_event_loop_ends_it_well_data()
{
    addSignals();
}

// When the daemon comes to the bus its signal hook is in, and its objects, its name and the event loop are still
// ahead. How far it gets until the signal arrives differs from run to run: that is the point.
void TestShutdown::a_signal_before_the_event_loop_ends_it_well()
{
    QFETCH(int, signal);
    for (int iRun = 0; iRun < 25; ++iRun) {
        CScene cScene;
        QVERIFY2(cScene.prepare(), cScene.describe());
        CDaemonProcess& rcDaemon = cScene.daemon();
        QEventLoop cLoop;
        CArrivals cArrivals(rcDaemon.client(), [&] {
            ::kill(static_cast<pid_t>(rcDaemon.pid()), signal);
            cLoop.quit();
        });
        QTimer::singleShot(TIMEOUT_PROCESS_MS, &cLoop, [&cLoop] { cLoop.exit(1); });
        rcDaemon.start();
        QCOMPARE(cLoop.exec(), 0);
        QVERIFY2(rcDaemon.waitForEnd(), cScene.describe());
        VERIFY_ENDED_WELL(cScene);
    }
}

void TestShutdown::a_signal_in_a_burst_of_calls_ends_it_well_data()
{
    addSignals();
}

void TestShutdown::a_signal_in_a_burst_of_calls_ends_it_well()
{
    QFETCH(int, signal);
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    for (int iCall = 0; iCall < 4000; ++iCall) {
        if (iCall == 2000)
            ::kill(static_cast<pid_t>(cScene.daemon().pid()), signal);
        cScene.daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"),
                             {iCall, iCall});
    }
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
    // What was carried out was carried out in order, and whole.
    const quint32 u32Position = cScene.board().limeRegister(CBoard::LIME_DISPLAY, 0x124);
    QCOMPARE(u32Position >> 16, u32Position & 0xffff);
}

void TestShutdown::signals_again_and_again_end_it_once()
{
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    for (int iSignal = 0; iSignal < 1000; ++iSignal)
        ::kill(static_cast<pid_t>(cScene.daemon().pid()), iSignal % 2 == 0 ? SIGTERM : SIGHUP);
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
}

void TestShutdown::a_bus_that_goes_away_does_not_hang_it()
{
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    cScene.bus().stop();
    QVERIFY2(cScene.daemon().endBySignal(SIGTERM), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
}

QTEST_GUILESS_MAIN(TestShutdown)

#include "tst_shutdown.moc"
