/* SPDX-License-Identifier: MIT */
/* Long lives on a leaping clock: counter, texts, messages, recordings of the greatest length, a camera that comes and goes,
 * reloads. Memory, descriptors and ticks stay as they were in the first hour, less what is kept by design, by count.
 *
 * HALDEND_ENDURANCE_HOURS says how long: 3 if it isn't set, 168 for a week.
 */
#include "tests/support/CVideoScene.h"
#include "tests/support/FasterClock.h"
#include "tests/support/Timeouts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QtTest>

#include <climits>
#include <csignal>
#include <functional>

class TestEndurance : public QObject
{
    Q_OBJECT

public slots:
    void onTick() { ++m_iTicks; }

private slots:
    void init();
    void cleanup();

    void hours_leave_what_is_kept_by_design();
    void a_recording_leaves_nothing();
    void a_reload_leaves_two_files_and_a_mapping();
    void a_message_leaves_a_timer();

private:
    /// What the daemon has of the machine.
    struct SUse {
        int iDescriptors;
        int iMappings;  ///< of the display controller
        qint64 iMemory; ///< KiB of its own
    };
    /// What its timers have done in an hour. A timer that is expired runs once after each leap.
    struct STicks {
        int iCounter;
        int iInput; ///< looks at the decoder
    };
    SUse use();
    SUse growth(int iTimes, const char* pszOf, const std::function<bool(int)>& rcCarryOut);
    bool pass(int iSeconds);
    bool step();
    bool hour();
    STicks ticks();
    void overlay(const char* pszMethod, const QVariantList& rcArguments)
    {
        m_pcScene->daemon().send(QStringLiteral("/videooverlay"), QString::fromLatin1(pszMethod),
                                 rcArguments);
    }
    void reload();

    QScopedPointer<CLeapingClock> m_pcClock;
    QScopedPointer<CVideoScene> m_pcScene;
    QString m_cFilm;
    int m_iText = 0;
    int m_iSeconds = 0; ///< since the start
    int m_iReloads = 0;
    int m_iMessages = 0;
    int m_iTicks = 0; ///< of the counter, in this hour
};

static const int STEP_S = 5;
static const int MINUTE_S = 60;
static const int HOUR_S = 60 * MINUTE_S;

// Somewhat more than measured: the settings of four register files, and a timer.
static const qint64 RELOAD_KIB = 96;
static const qint64 MESSAGE_BYTES = 256;
static const qint64 SLACK_KIB = 64;

#if defined(__SANITIZE_ADDRESS__) || defined(HALDEND_EMULATED)
// With the sanitizer freed memory waits before it is used again; the emulator has memory of its own, for each page too.
static const bool MEMORY_COUNTS = false;
#else
static const bool MEMORY_COUNTS = true;
#endif

static int hours()
{
    const int iHours = qEnvironmentVariableIntValue("HALDEND_ENDURANCE_HOURS");
    return iHours > 1 ? iHours : 3;
}

void TestEndurance::init()
{
    m_iSeconds = m_iReloads = m_iMessages = 0;
    m_pcClock.reset(new CLeapingClock);
    QVERIFY(m_pcClock->isValid());
    m_pcScene.reset(new CVideoScene);
    QVERIFY2(m_pcScene->prepare(), m_pcScene->describe());
    m_pcScene->daemon().useClock(m_pcClock->clock());
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    // The film is the test's own.
    m_pcScene->board().setCodecMode(BOARD_CODEC_STALL);
    m_cFilm = m_pcScene->file("film.ts");
    m_iText = m_pcScene->daemon()
                  .call(QStringLiteral("/videooverlay"), QStringLiteral("create_text"))
                  .arguments()
                  .value(0)
                  .toInt();
    overlay("show_text", {m_iText});
    QVERIFY(m_pcScene->daemon().client().connect(
        QStringLiteral("velmar.haldend"), QStringLiteral("/videooverlay"),
        QStringLiteral("velmar.haldend.videooverlay"), QStringLiteral("videocounter_changed"), this,
        SLOT(onTick())));
}

void TestEndurance::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
}

TestEndurance::SUse TestEndurance::use()
{
    const QString cProcess = QStringLiteral("/proc/%1/").arg(m_pcScene->daemon().pid());
    SUse sUse = {QDir(cProcess + QStringLiteral("fd")).entryList(QDir::System | QDir::Files).size(), 0, 0};
    QFile cMappings(cProcess + QStringLiteral("maps"));
    if (cMappings.open(QIODevice::ReadOnly))
        sUse.iMappings = cMappings.readAll().count("/" BOARD_LIME "\n");
    sUse.iMemory = m_pcScene->daemon().kilobytes("RssAnon:");
    return sUse;
}

void TestEndurance::reload()
{
    ++m_iReloads;
    m_pcScene->daemon().send(QStringLiteral("/debug"), QStringLiteral("reload_hardware_config"), {});
}

// After a leap the daemon wakes up for the first call, handles its due timers before the second, and the work that it queued
// for the next turn of its event loop before the third.
bool TestEndurance::pass(int iSeconds)
{
    m_iSeconds += iSeconds;
    bool bDone = m_pcClock->leap(iSeconds);
    for (int i = 0; bDone && i < 3; ++i)
        bDone = m_pcScene->daemon().settle();
    QCoreApplication::processEvents();
    return bDone;
}

TestEndurance::STicks TestEndurance::ticks()
{
    return {m_iTicks, m_pcScene->board().traceLines().filter(QStringLiteral("i2c read 0x1f")).size()};
}

bool TestEndurance::step()
{
    QFile cFilm(m_cFilm);
    const bool bGrown = cFilm.open(QIODevice::Append) && cFilm.write("x") == 1;
    cFilm.close();
    overlay("set_text_string", {m_iText, QStringLiteral("%1 m").arg(m_iSeconds % 977)});
    if (m_iSeconds % (10 * MINUTE_S) == 0) {
        ++m_iMessages;
        overlay("draw_temp_text", {QStringLiteral("saved"), 1, 5, 20, 10, 4});
        m_pcScene->board().setCameraPlugged(m_iSeconds / (10 * MINUTE_S) % 2 == 0);
    }
    return bGrown && pass(STEP_S);
}

// A recording as long as it can be, and the rest of the hour.
bool TestEndurance::hour()
{
    QFile::remove(m_cFilm);
    m_pcScene->forgetSignals();
    m_pcScene->board().clearTrace();
    m_iTicks = 0;
    bool bDone = m_pcScene->call("start_video_recording", m_cFilm) == VideoResult::OK;
    for (int iSecond = 0; bDone && iSecond < HOUR_S; iSecond += STEP_S)
        bDone = step();
    reload();
    m_pcScene->board().clearCodecCalls();
    bDone = bDone && m_pcScene->daemon().settle();
    QCoreApplication::processEvents();
    return bDone &&
           m_pcScene->signalled().filter(QStringLiteral("video_recording_error")) ==
               QStringList{QStringLiteral("video_recording_error %1").arg(VideoResult::MAX_LENGTH_REACHED)};
}

void TestEndurance::hours_leave_what_is_kept_by_design()
{
    overlay("set_text_id", {m_iText + 1, 102});
    overlay("videocounter_start", {0});
    m_pcScene->board().setTracing(true);
    QVERIFY2(hour(), m_pcScene->describe());
    const SUse sFirst = use();
    const STicks sFirstTicks = ticks();
    QCOMPARE(sFirstTicks.iCounter, HOUR_S / STEP_S);
    QCOMPARE(sFirstTicks.iInput, HOUR_S / STEP_S);
    const int iFirstMessages = m_iMessages;
    QElapsedTimer cTimer;
    cTimer.start();
    for (int iHour = 1; iHour < hours(); ++iHour)
        QVERIFY2(hour(), m_pcScene->describe());
    const SUse sLast = use();
    const int iReloads = m_iReloads - 1;
    const int iMessages = m_iMessages - iFirstMessages;
    QTextStream(stdout) << QStringLiteral("%1 hours: %2 KiB, then %3 KiB; %4 reloads, %5 messages; %6 s\n")
                               .arg(hours())
                               .arg(sFirst.iMemory)
                               .arg(sLast.iMemory)
                               .arg(iReloads)
                               .arg(iMessages)
                               .arg(cTimer.elapsed() / 1000);
    QCOMPARE(ticks().iCounter, sFirstTicks.iCounter);
    QCOMPARE(ticks().iInput, sFirstTicks.iInput);
    QCOMPARE(sLast.iDescriptors, sFirst.iDescriptors + 2 * iReloads);
    QCOMPARE(sLast.iMappings, sFirst.iMappings + iReloads);
    const qint64 iKept = iReloads * RELOAD_KIB + iMessages * MESSAGE_BYTES / 1024;
    if (MEMORY_COUNTS)
        QVERIFY2(sLast.iMemory <= sFirst.iMemory + iKept + SLACK_KIB,
                 qPrintable(QStringLiteral("%1 KiB, then %2").arg(sFirst.iMemory).arg(sLast.iMemory)));
}

/// What the daemon has more of after so many of something. Nothing can be compared with it if one of them fails.
TestEndurance::SUse TestEndurance::growth(int iTimes, const char* pszOf,
                                          const std::function<bool(int)>& rcCarryOut)
{
    const SUse sBefore = use();
    if (!rcCarryOut(iTimes))
        return {-1, -1, LLONG_MAX};
    const SUse sAfter = use();
    QTextStream(stdout) << QStringLiteral("%1 %2: %3 KiB\n")
                               .arg(iTimes)
                               .arg(QLatin1String(pszOf))
                               .arg(sAfter.iMemory - sBefore.iMemory);
    return {sAfter.iDescriptors - sBefore.iDescriptors, sAfter.iMappings - sBefore.iMappings,
            sAfter.iMemory - sBefore.iMemory};
}

// Not even a timer, which is some hundred bytes.
void TestEndurance::a_recording_leaves_nothing()
{
    const int RECORDINGS = 1000;
    const auto cRecord = [this](int iCount) {
        bool bDone = true;
        for (int i = 0; bDone && i < iCount; ++i)
            bDone = m_pcScene->call("start_video_recording", m_cFilm) == VideoResult::OK &&
                    m_pcScene->call("stop_video_recording") == VideoResult::OK;
        return bDone && m_pcScene->board().clearCodecCalls();
    };
    QVERIFY(cRecord(RECORDINGS / 2));
    const SUse sGrowth = growth(RECORDINGS, "recordings", cRecord);
    QCOMPARE(sGrowth.iDescriptors, 0);
    QCOMPARE(sGrowth.iMappings, 0);
    if (MEMORY_COUNTS)
        QVERIFY(sGrowth.iMemory <= SLACK_KIB);
}

void TestEndurance::a_reload_leaves_two_files_and_a_mapping()
{
    const int RELOADS = 100;
    const auto cReload = [this](int iCount) {
        for (int i = 0; i < iCount; ++i)
            reload();
        return m_pcScene->daemon().settle();
    };
    QVERIFY(cReload(20));
    const SUse sGrowth = growth(RELOADS, "reloads", cReload);
    QCOMPARE(sGrowth.iDescriptors, 2 * RELOADS);
    QCOMPARE(sGrowth.iMappings, RELOADS);
    if (MEMORY_COUNTS)
        QVERIFY(sGrowth.iMemory <= RELOADS * RELOAD_KIB);
}

// One that has gone by itself. It fires again after each duration, so their number counts in time too.
void TestEndurance::a_message_leaves_a_timer()
{
    const int MESSAGES = 1000;
    const int AT_ONCE = 100;
    const auto cShow = [this](int iCount) {
        for (int i = 0; i < iCount; i += AT_ONCE) {
            for (int iMessage = 0; iMessage < AT_ONCE; ++iMessage)
                overlay("draw_temp_text", {QStringLiteral("saved"), 1, 5, iMessage % 50, 10, 9000});
            if (!m_pcScene->daemon().settle() || !pass(9001))
                return false;
        }
        return true;
    };
    QVERIFY(cShow(300));
    const SUse sGrowth = growth(MESSAGES, "messages", cShow);
    QCOMPARE(sGrowth.iDescriptors, 0);
    QCOMPARE(
        m_pcScene->daemon().call(QStringLiteral("/videooverlay"), QStringLiteral("create_text")).arguments(),
        QVariantList{m_iText + 1});
    if (MEMORY_COUNTS)
        QVERIFY(sGrowth.iMemory <= MESSAGES * MESSAGE_BYTES / 1024 + SLACK_KIB);
}

QTEST_GUILESS_MAIN(TestEndurance)

#include "tst_endurance.moc"
