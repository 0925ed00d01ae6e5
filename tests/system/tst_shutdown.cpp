/* SPDX-License-Identifier: MIT */
/* The end of the real process: SIGTERM and SIGHUP at every moment that a client or an init system can choose,
 * and the loss of the bus. With either of Qt's event dispatchers: they differ in what they still deliver
 * after a quit.
 */
#include "tests/support/CBusMonitor.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QAbstractEventDispatcher>
#include <QDBusConnectionInterface>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

class TestShutdown : public QObject
{
    Q_OBJECT

private slots:
    void its_threads_wait_in_Qts_own_loop_data();
    void its_threads_wait_in_Qts_own_loop();
    void each_signal_ends_it_well_data();
    void each_signal_ends_it_well();
    void a_signal_before_the_event_loop_ends_it_well_data();
    void a_signal_before_the_event_loop_ends_it_well();
    void a_signal_in_a_burst_of_calls_ends_it_well_data();
    void a_signal_in_a_burst_of_calls_ends_it_well();
    void signals_again_and_again_end_it_once_data();
    void signals_again_and_again_end_it_once();
    void what_was_accepted_is_done_before_the_end_data();
    void what_was_accepted_is_done_before_the_end();
    void a_call_that_waits_is_done_whole_or_not_at_all_data();
    void a_call_that_waits_is_done_whole_or_not_at_all();
    void the_loss_of_the_bus_ends_it_well_data();
    void the_loss_of_the_bus_ends_it_well();
    void the_loss_of_the_bus_in_a_call_of_the_codec_ends_it_well_data();
    void the_loss_of_the_bus_in_a_call_of_the_codec_ends_it_well();
    void the_loss_of_the_bus_at_the_start_ends_it_data();
    void the_loss_of_the_bus_at_the_start_ends_it();
};

static const QStringList LIVED_WELL = {QStringLiteral("Starting haldend..."),
                                       QStringLiteral("Terminating haldend...")};

static const QStringList LOST_THE_BUS = {QStringLiteral("Starting haldend..."),
                                         QStringLiteral("Lost the system bus"),
                                         QStringLiteral("Terminating haldend...")};
static const qint64 IMAGE_BYTES = 54 + 4 * 720 * 576;

static void addDispatchers()
{
    QTest::addColumn<bool>("glib");
    QTest::newRow("with GLib") << true;
    QTest::newRow("without GLib") << false;
}

static void addSignals()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<bool>("glib");
    for (const bool bGLib : {true, false}) {
        const char* pszDispatcher = bGLib ? "with GLib" : "without GLib";
        QTest::addRow("SIGTERM, %s", pszDispatcher) << SIGTERM << bGLib;
        QTest::addRow("SIGHUP, %s", pszDispatcher) << SIGHUP << bGLib;
    }
}

// Qt can be built without, as for the target's processor.
static bool hasGLib()
{
    return QAbstractEventDispatcher::instance()->inherits("QEventDispatcherGlib");
}

// The daemon chooses Qt's own; a preloaded library keeps it from that. Behind the board's library.
static bool prepare(CScene& rcScene, bool bGLib)
{
    if (!rcScene.prepare())
        return false;
    if (bGLib)
        rcScene.daemon().useEventLoop({
            {QStringLiteral("EVENT_LOOP_GLIB"), QStringLiteral("1")}
        });
    return true;
}

#define VERIFY_ENDED(cScene, cLog)                                        \
    do {                                                                  \
        QVERIFY2(!(cScene).daemon().crashed(), (cScene).describe());      \
        QVERIFY2((cScene).daemon().exitCode() == 0, (cScene).describe()); \
        QCOMPARE((cScene).daemon().log(), cLog);                          \
        QCOMPARE((cScene).daemon().unexpectedOutput(), QStringList());    \
    } while (false)

#define VERIFY_ENDED_WELL(cScene) VERIFY_ENDED(cScene, LIVED_WELL)

// Waits for a new connection to the bus, and calls back at once.
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

void TestShutdown::its_threads_wait_in_Qts_own_loop_data()
{
    QTest::addColumn<QMap<QString, QString>>("environment");
    QTest::addColumn<QByteArray>("threads");
    const QString cNoGLib = QStringLiteral("QT_NO_GLIB");
    using CEnvironment = QMap<QString, QString>;
    QTest::newRow("by itself") << CEnvironment() << QByteArray();
    QTest::newRow("against the environment") << CEnvironment{{cNoGLib, QString()}} << QByteArray();
    QTest::newRow("kept from it") << CEnvironment{{QStringLiteral("EVENT_LOOP_GLIB"), QStringLiteral("1")}}
                                  << (hasGLib() ? QByteArray("GLib\nGLib\n") : QByteArray());
}

// The main thread and that of the bus. The last row shows that the notes are taken, and that the other tests here have
// GLib's loop where they ask for it.
void TestShutdown::its_threads_wait_in_Qts_own_loop()
{
    using CEnvironment = QMap<QString, QString>;
    QFETCH(CEnvironment, environment);
    QFETCH(QByteArray, threads);
    const QTemporaryDir cFolder;
    QFile cNotes(cFolder.filePath(QStringLiteral("threads")));
    QVERIFY(cNotes.open(QIODevice::ReadWrite));
    environment.insert(QStringLiteral("EVENT_LOOP_NOTES"), cNotes.fileName());
    CScene cScene;
    QVERIFY2(prepare(cScene, false), cScene.describe());
    cScene.daemon().useEventLoop(environment);
    QVERIFY2(cScene.start(), cScene.describe());
    QVERIFY2(cScene.daemon().endBySignal(SIGTERM), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
    QCOMPARE(cNotes.readAll(), threads);
}

void TestShutdown::each_signal_ends_it_well_data()
{
    addSignals();
}

void TestShutdown::each_signal_ends_it_well()
{
    QFETCH(int, signal);
    QFETCH(bool, glib);
    CScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    QVERIFY2(cScene.daemon().endBySignal(signal), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
}

void TestShutdown::a_signal_before_the_event_loop_ends_it_well_data()
{
    addSignals();
}

// When the daemon connects to the bus, its signal hook is installed; its objects, its name and the event loop
// come later. How far it gets until the signal arrives differs from run to run, as intended.
void TestShutdown::a_signal_before_the_event_loop_ends_it_well()
{
    QFETCH(int, signal);
    QFETCH(bool, glib);
    for (int iRun = 0; iRun < 25; ++iRun) {
        CScene cScene;
        QVERIFY2(prepare(cScene, glib), cScene.describe());
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
    QFETCH(bool, glib);
    CScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    for (int iCall = 0; iCall < 4000; ++iCall) {
        if (iCall == 2000)
            ::kill(static_cast<pid_t>(cScene.daemon().pid()), signal);
        cScene.daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"),
                             {iCall, iCall});
    }
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
    // The calls that were carried out were carried out in order, and completely.
    const quint32 u32Position = cScene.board().limeRegister(CBoard::LIME_DISPLAY, 0x124);
    QCOMPARE(u32Position >> 16, u32Position & 0xffff);
}

void TestShutdown::signals_again_and_again_end_it_once_data()
{
    addDispatchers();
}

void TestShutdown::signals_again_and_again_end_it_once()
{
    QFETCH(bool, glib);
    CScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    for (int iSignal = 0; iSignal < 1000; ++iSignal)
        ::kill(static_cast<pid_t>(cScene.daemon().pid()), iSignal % 2 == 0 ? SIGTERM : SIGHUP);
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
}

void TestShutdown::what_was_accepted_is_done_before_the_end_data()
{
    addDispatchers();
}

// A save that was answered with 0: the signal comes while the codec is asked for the pause that the save
// begins with.
void TestShutdown::what_was_accepted_is_done_before_the_end()
{
    QFETCH(bool, glib);
    CVideoScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    QVERIFY(cScene.enterState(CVideoScene::RECORDING));
    cScene.board().clearCodecCalls();
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(cScene.bus().address()));
    cScene.codec().hold();
    const QDBusPendingCall cSave = cScene.ask("save_video_image", cScene.file("a.bmp"));
    QVERIFY(cMonitor.waitFor("member=pause"));
    QVERIFY(cMonitor.end());
    ::kill(static_cast<pid_t>(cScene.daemon().pid()), SIGTERM);
    cScene.codec().goOn();
    QCOMPARE(CVideoScene::answerTo(cSave), VideoResult::OK);
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
    QCOMPARE(QFileInfo(cScene.file("a.bmp")).size(), IMAGE_BYTES);
    const QStringList cCalls{QStringLiteral("/Record pause interface=-"),
                             QStringLiteral("/Record resume interface=-"),
                             QStringLiteral("/Record stop interface=-")};
    QCOMPARE(cScene.board().codecCalls(), cCalls);
    QTRY_COMPARE(cScene.signalled(), QStringList{QStringLiteral("video_image_saved 0")});
}

void TestShutdown::a_call_that_waits_is_done_whole_or_not_at_all_data()
{
    addDispatchers();
}

// The dispatcher decides whether the loop still delivers it.
void TestShutdown::a_call_that_waits_is_done_whole_or_not_at_all()
{
    QFETCH(bool, glib);
    CVideoScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(cScene.bus().address()));
    cScene.codec().hold();
    const QDBusPendingCall cStart = cScene.ask("start_video_recording", cScene.file("film.ts"));
    const QDBusPendingCall cSave = cScene.ask("save_video_image", cScene.file("a.bmp"));
    QVERIFY(cMonitor.waitFor("member=record"));
    QVERIFY(cMonitor.end());
    QVERIFY(cScene.daemon().receives());
    ::kill(static_cast<pid_t>(cScene.daemon().pid()), SIGTERM);
    cScene.codec().goOn();
    QCOMPARE(CVideoScene::answerTo(cStart), VideoResult::OK);
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED_WELL(cScene);
    const bool bAccepted = CVideoScene::answerTo(cSave) == VideoResult::OK;
    QCOMPARE(QFileInfo(cScene.file("a.bmp")).size(), bAccepted ? IMAGE_BYTES : 0);
    QCOMPARE(cScene.board().codecCalls().last(), QStringLiteral("/Record stop interface=-"));
}

void TestShutdown::the_loss_of_the_bus_ends_it_well_data()
{
    addDispatchers();
}

// While it records: the stop fails at once, because there is no way to the codec any more.
void TestShutdown::the_loss_of_the_bus_ends_it_well()
{
    QFETCH(bool, glib);
    CVideoScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    QVERIFY(cScene.enterState(CVideoScene::RECORDING));
    cScene.bus().stop();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED(cScene, LOST_THE_BUS);
}

void TestShutdown::the_loss_of_the_bus_in_a_call_of_the_codec_ends_it_well_data()
{
    addDispatchers();
}

void TestShutdown::the_loss_of_the_bus_in_a_call_of_the_codec_ends_it_well()
{
    QFETCH(bool, glib);
    CVideoScene cScene;
    QVERIFY2(prepare(cScene, glib) && cScene.start(), cScene.describe());
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(cScene.bus().address()));
    cScene.codec().hold();
    cScene.ask("start_video_recording", cScene.file("film.ts"));
    QVERIFY(cMonitor.waitFor("member=record"));
    QVERIFY(cMonitor.end());
    cScene.bus().stop();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    VERIFY_ENDED(cScene, LOST_THE_BUS);
}

void TestShutdown::the_loss_of_the_bus_at_the_start_ends_it_data()
{
    addDispatchers();
}

// Before it has its name, the start fails; after that, a running daemon ends.
void TestShutdown::the_loss_of_the_bus_at_the_start_ends_it()
{
    QFETCH(bool, glib);
    for (int iRun = 0; iRun < 25; ++iRun) {
        CScene cScene;
        QVERIFY2(prepare(cScene, glib), cScene.describe());
        CDaemonProcess& rcDaemon = cScene.daemon();
        QEventLoop cLoop;
        CArrivals cArrivals(rcDaemon.client(), [&] {
            cScene.bus().stop();
            cLoop.quit();
        });
        QTimer::singleShot(TIMEOUT_PROCESS_MS, &cLoop, [&cLoop] { cLoop.exit(1); });
        rcDaemon.start();
        QCOMPARE(cLoop.exec(), 0);
        QVERIFY2(rcDaemon.waitForEnd(), cScene.describe());
        QVERIFY2(!rcDaemon.crashed(), cScene.describe());
        QCOMPARE(rcDaemon.unexpectedOutput(), QStringList());
        if (rcDaemon.log() == LOST_THE_BUS) {
            QCOMPARE(rcDaemon.exitCode(), 0);
        } else {
            QCOMPARE(rcDaemon.exitCode(), 255);
            QCOMPARE(rcDaemon.log().last(), QStringLiteral("Error starting haldend."));
        }
    }
}

QTEST_GUILESS_MAIN(TestShutdown)

#include "tst_shutdown.moc"
