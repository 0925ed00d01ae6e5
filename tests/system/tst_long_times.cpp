/* SPDX-License-Identifier: MIT */
/* Times of seconds to hours, without waiting: the daemon and the codec stand-in run on other clocks. */
#include "hw/fpga_map.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"
#include "tests/support/FasterClock.h"
#include "tests/support/Timeouts.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFileInfo>
#include <QtTest>

#include <algorithm>

// Fast enough to shorten the daemon's 25 s wait for the codec. Slow enough that on a busy machine the start
// and the other calls, which have the same limit, don't time out.
static const int FACTOR = 25;
static const int CALL_TIMEOUT_MS = 25000 / FACTOR * 95 / 100; // by a timer of Qt's that may be 5 % early

class TestLongTimes : public QObject
{
    Q_OBJECT

public slots:
    void onSignal(const QDBusMessage& rcMessage)
    {
        m_cSignals
            << QStringLiteral("%1 %2").arg(rcMessage.member()).arg(rcMessage.arguments().value(0).toInt());
    }

signals:
    void counterChanged(int, int, int, int); ///< hours, minutes, seconds, frames

private slots:
    void init();
    void cleanup();

    void a_recording_lasts_58_minutes();
    void pauses_are_not_recorded();
    void a_recording_resumed_before_its_end_runs_on();
    void a_recording_resumed_at_its_end_is_stopped();
    void a_recording_whose_file_never_grows_ends_after_5_seconds();
    void a_recording_whose_file_stops_growing_ends_at_the_second_look_data();
    void a_recording_whose_file_stops_growing_ends_at_the_second_look();
    void after_an_error_the_time_of_earlier_sections_stays();
    void the_input_is_looked_at_each_second();

    void a_temporary_text_of_9999_seconds_goes_away();
    void the_counter_counts_more_than_an_hour();
    void the_counter_passes_the_hours_of_a_day();
    void the_counter_goes_on_from_60_and_from_negative_values();

    void all_keep_pace_on_a_faster_clock();
    void a_codec_that_does_not_answer_ends_in_the_error_data();
    void a_codec_that_does_not_answer_ends_in_the_error();
    void a_codec_that_hangs_around_a_still_image_ends_in_the_error_data();
    void a_codec_that_hangs_around_a_still_image_ends_in_the_error();
    void the_daemon_ends_with_a_codec_that_hangs_data();
    void the_daemon_ends_with_a_codec_that_hangs();
    void a_slow_codec_is_waited_for();
    void a_codec_that_was_away_is_found_again();

private:
    bool start(const SClock& rsDaemon, const SClock& rsCodec);
    bool startOnLeapingClocks();
    bool startOnFasterClock(int iFactor = FACTOR);
    bool startCodec();

    bool growFile(int iSeconds);
    bool pass(int iSeconds);
    bool record(int iSeconds, int iStep = 5);
    bool tick(QSignalSpy& rcTicks);
    bool servesOtherCalls();

    int call(const QString& rcMethod);
    bool callAll(const QStringList& rcMethods);
    bool is(const char* pszMethod);
    int recordedSeconds();
    int counter();
    void overlay(const char* pszMethod, const QVariantList& rcArguments);
    QByteArray firstLetters(int iRow);

    QScopedPointer<QTemporaryDir> m_pcFiles;
    QScopedPointer<CScene> m_pcScene;
    QScopedPointer<CCodecProcess> m_pcCodec;
    QScopedPointer<CLeapingClock> m_pcClock;
    QScopedPointer<CLeapingClock> m_pcCodecClock;
    QString m_cFilm;
    QStringList m_cSignals;
};

static const QString PATH = QStringLiteral("/videoprocessing");
static const QString INTERFACE = QStringLiteral("velmar.haldend.videoprocessing");
static const QString OVERLAY = QStringLiteral("/videooverlay");
static const QString OVERLAY_INTERFACE = QStringLiteral("velmar.haldend.videooverlay");

static const QString INPUT_LOOK = QStringLiteral("i2c read 0x1f");

static const int OK = 0;
static const int ERROR = 1;
static const int INVALID_STATE = 2;

static const int MINUTE_S = 60;
static const int HOUR_S = 60 * MINUTE_S;

void TestLongTimes::init()
{
    m_cSignals.clear();
    m_pcFiles.reset(new QTemporaryDir);
    m_pcScene.reset(new CScene);
    m_pcCodec.reset(new CCodecProcess);
    m_pcClock.reset(new CLeapingClock);
    m_pcCodecClock.reset(new CLeapingClock);
    QVERIFY(m_pcClock->isValid() && m_pcCodecClock->isValid());
    m_cFilm = m_pcFiles->filePath(QStringLiteral("film.ts"));
    QFile cMade(m_cFilm);
    QVERIFY(cMade.open(QIODevice::WriteOnly));
    QVERIFY2(m_pcScene->prepare(), m_pcScene->describe());
}

void TestLongTimes::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
    m_pcCodec->end();
}

bool TestLongTimes::start(const SClock& rsDaemon, const SClock& rsCodec)
{
    m_pcCodec->useClock(rsCodec);
    m_pcScene->daemon().useClock(rsDaemon);
    const QString cService = QStringLiteral("velmar.haldend");
    return startCodec() && m_pcScene->start() &&
           m_pcScene->daemon().client().connect(cService, PATH, INTERFACE, QString(), this,
                                                SLOT(onSignal(QDBusMessage))) &&
           m_pcScene->daemon().client().connect(cService, OVERLAY, OVERLAY_INTERFACE,
                                                QStringLiteral("videocounter_changed"), this,
                                                SIGNAL(counterChanged(int, int, int, int)));
}

bool TestLongTimes::startOnLeapingClocks()
{
    return start(m_pcClock->clock(), m_pcCodecClock->clock());
}

bool TestLongTimes::startOnFasterClock(int iFactor)
{
    return start(fasterClock(iFactor), fasterClock(iFactor));
}

bool TestLongTimes::startCodec()
{
    return m_pcCodec->start(m_pcScene->bus().address(), m_pcScene->board().directory());
}

// After a leap a program wakes up for the first call, handles its due timers before the second, and the work
// that it queued for the next turn of its event loop before the third.
static const int CALLS_AFTER_LEAP = 3;

// Lets the codec's clock leap, and a running recording grow by that.
bool TestLongTimes::growFile(int iSeconds)
{
    const QDBusMessage cCall = QDBusMessage::createMethodCall(
        QStringLiteral("velmar.mobilygen"), QStringLiteral("/Record"),
        QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    bool bDone = m_pcCodecClock->leap(iSeconds);
    for (int i = 0; bDone && i < CALLS_AFTER_LEAP; ++i)
        bDone = m_pcScene->daemon().client().call(cCall, QDBus::Block, TIMEOUT_CALL_MS).type() ==
                QDBusMessage::ReplyMessage;
    return bDone;
}

// Lets the daemon's clock leap.
bool TestLongTimes::pass(int iSeconds)
{
    bool bDone = m_pcClock->leap(iSeconds);
    for (int i = 0; bDone && i < CALLS_AFTER_LEAP; ++i)
        bDone = m_pcScene->daemon().settle();
    // The signals came before the answers, but are still queued in the event loop.
    QCoreApplication::processEvents();
    return bDone;
}

bool TestLongTimes::record(int iSeconds, int iStep)
{
    for (int i = 0; i < iSeconds; i += iStep)
        if (!growFile(iStep) || !pass(iStep))
            return false;
    return true;
}

// Lets one second of the video counter pass. False if no signal announces it.
bool TestLongTimes::tick(QSignalSpy& rcTicks)
{
    // The call does nothing but wake the daemon.
    const bool bLeapt = m_pcClock->leap(1);
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_mode"), {0});
    return bLeapt && rcTicks.wait(TIMEOUT_CALL_MS);
}

bool TestLongTimes::servesOtherCalls()
{
    const QDBusMessage cReply = m_pcScene->daemon().call(OVERLAY, QStringLiteral("get_max_text_line_width"));
    return cReply.arguments().value(0).toInt() == 53;
}

int TestLongTimes::call(const QString& rcMethod)
{
    QVariantList cArguments;
    if (rcMethod.startsWith(QLatin1String("start")))
        cArguments << m_cFilm;
    if (rcMethod.startsWith(QLatin1String("save")))
        cArguments << m_pcFiles->filePath(QStringLiteral("still.bmp"));
    const QDBusMessage cReply = m_pcScene->daemon().call(PATH, rcMethod, cArguments);
    return cReply.type() == QDBusMessage::ReplyMessage ? cReply.arguments().value(0).toInt() : -1;
}

bool TestLongTimes::callAll(const QStringList& rcMethods)
{
    return std::all_of(rcMethods.begin(), rcMethods.end(),
                       [this](const QString& rcMethod) { return call(rcMethod) == OK; });
}

bool TestLongTimes::is(const char* pszMethod)
{
    return m_pcScene->daemon().call(PATH, QString::fromLatin1(pszMethod)).arguments().value(0).toBool();
}

int TestLongTimes::recordedSeconds()
{
    const QDBusMessage cReply = m_pcScene->daemon().call(PATH, QStringLiteral("query_video_recording_time"));
    const QVariantList cTime = qdbus_cast<QVariantList>(cReply.arguments().value(0));
    return cTime.size() == 3 && cTime[1].toInt() < 60 && cTime[2].toInt() < 60
               ? cTime[0].toInt() * HOUR_S + cTime[1].toInt() * MINUTE_S + cTime[2].toInt()
               : -1;
}

int TestLongTimes::counter()
{
    const QDBusMessage cReply = m_pcScene->daemon().call(OVERLAY, QStringLiteral("get_videocounter"));
    const QVariantList cValues = qdbus_cast<QVariantList>(cReply.arguments().value(0));
    return cValues.value(1).toInt() * HOUR_S + cValues.value(2).toInt() * MINUTE_S + cValues.value(3).toInt();
}

void TestLongTimes::overlay(const char* pszMethod, const QVariantList& rcArguments)
{
    m_pcScene->daemon().send(OVERLAY, QString::fromLatin1(pszMethod), rcArguments);
}

// The first three characters of a row of the text page, after all calls before have been carried out.
QByteArray TestLongTimes::firstLetters(int iRow)
{
    if (!m_pcScene->daemon().settle())
        return "the daemon doesn't answer";
    const QByteArray cCells =
        m_pcScene->board().fpgaMemory(FPGA_TEXT_PAGES + static_cast<quint32>(iRow) * 128, 6);
    return QByteArray(1, cCells[0]) + cCells[2] + cCells[4];
}

void TestLongTimes::a_recording_lasts_58_minutes()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    for (int iMinute = 1; iMinute <= 57; ++iMinute) {
        QVERIFY(record(MINUTE_S));
        QCOMPARE(recordedSeconds(), iMinute * MINUTE_S);
        QVERIFY(is("is_video_recording_running"));
    }
    QVERIFY(record(55));
    QVERIFY(growFile(5));
    QVERIFY(pass(4));
    QCOMPARE(recordedSeconds(), 58 * MINUTE_S - 1);
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_cSignals, QStringList());

    QVERIFY(pass(1));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_recording_error 6")});
    QVERIFY(!is("is_video_recording_running"));
    QCOMPARE(recordedSeconds(), 0);
    QCOMPARE(m_pcScene->board().codecCalls().mid(1), QStringList{QStringLiteral("/Record stop interface=-")});
    QCOMPARE(call("start_video_recording"), OK);
}

void TestLongTimes::pauses_are_not_recorded()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    // The file doesn't grow in the pauses, and needn't.
    for (int iRecorded = 10; iRecorded <= 30; iRecorded += 10) {
        QVERIFY(record(10));
        QCOMPARE(recordedSeconds(), iRecorded);
        QVERIFY(is("is_video_recording_running"));
        QCOMPARE(call("pause_video_recording"), OK);
        QVERIFY(pass(3 * HOUR_S));
        QCOMPARE(recordedSeconds(), iRecorded);
        QVERIFY(is("is_video_recording_paused"));
        QCOMPARE(call("resume_video_recording"), OK);
    }
    QCOMPARE(m_cSignals, QStringList());
}

// The length is checked at each sixth check of the file, counted from the resumption.
void TestLongTimes::a_recording_resumed_before_its_end_runs_on()
{
    const int BEFORE_S = 57 * MINUTE_S + 50;
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    QVERIFY(record(BEFORE_S, BEFORE_S));
    QCOMPARE(call("pause_video_recording"), OK);
    QCOMPARE(call("resume_video_recording"), OK);
    QVERIFY(record(25));
    QCOMPARE(recordedSeconds(), BEFORE_S + 25);
    QCOMPARE(m_cSignals, QStringList());
    QVERIFY(record(5));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_recording_error 6")});
}

void TestLongTimes::a_recording_resumed_at_its_end_is_stopped()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    QVERIFY(record(58 * MINUTE_S, 58 * MINUTE_S));
    QCOMPARE(call("pause_video_recording"), OK);
    QVERIFY(pass(HOUR_S));
    QCOMPARE(recordedSeconds(), 58 * MINUTE_S);
    QCOMPARE(m_cSignals, QStringList());
    QCOMPARE(call("resume_video_recording"), OK);
    QVERIFY(pass(0));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_recording_error 6")});
    QCOMPARE(m_pcScene->board().codecCalls().constLast(), QStringLiteral("/Record stop interface=-"));
    QVERIFY(!is("is_video_recording_running"));
}

void TestLongTimes::a_recording_whose_file_never_grows_ends_after_5_seconds()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    m_pcScene->board().setCodecMode(BOARD_CODEC_STALL);
    QCOMPARE(call("start_video_recording"), OK);
    QVERIFY(growFile(60));
    QVERIFY(pass(4));
    QVERIFY(is("is_video_recording_running"));
    QVERIFY(pass(1));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_recording_error 1")});
}

void TestLongTimes::a_recording_whose_file_stops_growing_ends_at_the_second_look_data()
{
    QTest::addColumn<bool>("ended");
    QTest::newRow("the codec stalls") << false;
    QTest::newRow("the codec ends") << true;
}

void TestLongTimes::a_recording_whose_file_stops_growing_ends_at_the_second_look()
{
    QFETCH(bool, ended);
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    QVERIFY(record(10));
    QVERIFY(growFile(1));
    if (ended)
        m_pcCodec->end();
    else
        m_pcScene->board().setCodecMode(BOARD_CODEC_STALL);
    QVERIFY(ended || growFile(60));
    QVERIFY(pass(5));
    QVERIFY(pass(4));
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_cSignals, QStringList());
    QVERIFY(pass(1));
    QVERIFY(!is("is_video_recording_running"));
    QCOMPARE(call("stop_video_recording"), INVALID_STATE);
    QVERIFY(pass(HOUR_S));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_recording_error 1")});
}

void TestLongTimes::after_an_error_the_time_of_earlier_sections_stays()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QCOMPARE(call("start_video_recording"), OK);
    QVERIFY(record(10));
    QVERIFY(callAll({QStringLiteral("pause_video_recording"), QStringLiteral("resume_video_recording")}));
    QVERIFY(record(5));
    QCOMPARE(recordedSeconds(), 15);
    m_pcScene->board().setCodecMode(BOARD_CODEC_REFUSE);
    QCOMPARE(call("stop_video_recording"), ERROR);
    QCOMPARE(recordedSeconds(), 10);
}

void TestLongTimes::the_input_is_looked_at_each_second()
{
    const int SECONDS = 100;
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.setTracing(true);
    for (int i = 0; i < SECONDS; ++i)
        QVERIFY(pass(1));
    QCOMPARE(rcBoard.traceLines().filter(INPUT_LOOK).size(), SECONDS);

    rcBoard.setCameraPlugged(false);
    QVERIFY(pass(0));
    QCOMPARE(m_cSignals, QStringList());
    QVERIFY(pass(1));
    QCOMPARE(m_cSignals, QStringList{QStringLiteral("video_input_type_changed 1")});
    // Once, and not again each second.
    QVERIFY(pass(1));
    rcBoard.setCameraPlugged(true);
    QVERIFY(pass(1));
    QCOMPARE(m_cSignals.size(), 2);
    QCOMPARE(m_cSignals.constLast(), QStringLiteral("video_input_type_changed 0"));
}

void TestLongTimes::a_temporary_text_of_9999_seconds_goes_away()
{
    const int DURATION_S = 9999;
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    overlay("draw_temp_text", {QStringLiteral("one"), 1, 5, 0, 10, DURATION_S});
    QCOMPARE(firstLetters(10), QByteArray("one"));
    QVERIFY(pass(DURATION_S - 1));
    QCOMPARE(firstLetters(10), QByteArray("one"));
    QVERIFY(pass(1));
    QCOMPARE(firstLetters(10), QByteArray("   "));
    // Kept: its timer goes on, without effect on the text that comes after it.
    QVERIFY(pass(1));
    overlay("draw_temp_text", {QStringLiteral("two"), 1, 5, 0, 10, DURATION_S});
    QCOMPARE(firstLetters(10), QByteArray("two"));
    QVERIFY(pass(DURATION_S - 1));
    QCOMPARE(firstLetters(10), QByteArray("two"));
    QVERIFY(pass(1));
    QCOMPARE(firstLetters(10), QByteArray("   "));
}

// A leap over several seconds would be one tick, so each second is a leap of its own.
void TestLongTimes::the_counter_counts_more_than_an_hour()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QSignalSpy cTicks(this, &TestLongTimes::counterChanged);
    overlay("videocounter_start", {0});
    QVERIFY(pass(0));
    const int SECONDS = HOUR_S + 5 * MINUTE_S;
    for (int iSeconds = 1; iSeconds <= SECONDS; ++iSeconds) {
        QVERIFY(tick(cTicks));
        QCOMPARE(cTicks.takeFirst(),
                 (QVariantList{iSeconds / HOUR_S, iSeconds / MINUTE_S % 60, iSeconds % 60, 0}));
    }
    QCOMPARE(cTicks.size(), 0);
    QCOMPARE(counter(), SECONDS);
}

// The whole day would be too much waiting; between the hours it counts as above.
void TestLongTimes::the_counter_passes_the_hours_of_a_day()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QSignalSpy cTicks(this, &TestLongTimes::counterChanged);
    overlay("videocounter_start", {1});
    QList<int> cHours{99};
    for (int iHour = 0; iHour <= 24; ++iHour)
        cHours << iHour;
    for (const int iHour : qAsConst(cHours)) {
        overlay("set_videocounter", {1, iHour, 59, 58, 7});
        QVERIFY(pass(0));
        for (int i = 0; i < 3; ++i)
            QVERIFY(tick(cTicks));
        QCOMPARE(cTicks.takeFirst(), (QVariantList{iHour, 59, 59, 7}));
        QCOMPARE(cTicks.takeFirst(), (QVariantList{iHour + 1, 0, 0, 7}));
        QCOMPARE(cTicks.takeFirst(), (QVariantList{iHour + 1, 0, 1, 7}));
    }
}

void TestLongTimes::the_counter_goes_on_from_60_and_from_negative_values()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    QSignalSpy cTicks(this, &TestLongTimes::counterChanged);
    overlay("videocounter_start", {1});
    overlay("set_videocounter", {1, -3, 60, -5, -7});
    QVERIFY(pass(0));
    QVERIFY(tick(cTicks));
    QCOMPARE(cTicks.takeFirst(), (QVariantList{-3, 60, -4, -7}));
    overlay("set_videocounter", {1, 0, 60, 60, 0});
    QVERIFY(pass(0));
    QVERIFY(tick(cTicks));
    QCOMPARE(cTicks.takeFirst(), (QVariantList{1, 0, 0, 0}));
}

// A whole minute, with the codec beside the daemon. A busy machine may lose seconds; none is counted twice.
// On a faster clock than this the codec would have to let the file grow within less than half a second, or
// the daemon would end the recording.
void TestLongTimes::all_keep_pace_on_a_faster_clock()
{
    const int PACE = 10;
    QVERIFY2(startOnFasterClock(PACE), m_pcScene->describe());
    QElapsedTimer cElapsed;
    cElapsed.start();
    QCOMPARE(call("start_video_recording"), OK);
    overlay("videocounter_start", {0});
    m_pcScene->board().setTracing(true);
    QTRY_VERIFY_WITH_TIMEOUT(recordedSeconds() >= MINUTE_S, TIMEOUT_PROCESS_MS);
    m_pcScene->board().setTracing(false);
    overlay("videocounter_stop", {0});
    const int iCounted = counter();
    const int iLooks = m_pcScene->board().traceLines().filter(INPUT_LOOK).size();
    const int iRecorded = recordedSeconds();
    const auto iPassed = static_cast<int>(cElapsed.elapsed() * PACE / 1000);
    const QByteArray cAll = QByteArray::number(iCounted) + " counted, " + QByteArray::number(iLooks) +
                            " looks, " + QByteArray::number(iRecorded) + " recorded, " +
                            QByteArray::number(iPassed) + " passed";
    for (const int iSeconds : {iCounted, iLooks})
        QVERIFY2(iSeconds <= iRecorded + 1 && iSeconds >= iRecorded / 2, cAll);
    QVERIFY2(iRecorded <= iPassed + 1 && iRecorded >= iPassed / 2, cAll);
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_cSignals, QStringList());
}

void TestLongTimes::a_codec_that_does_not_answer_ends_in_the_error_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("delay"); // ms; 0 if it hangs
    const QString cRecord = QStringLiteral("start_video_recording");
    const QString cPauseRecording = QStringLiteral("pause_video_recording");
    const QString cPlay = QStringLiteral("start_video_playback");
    const QString cPausePlayback = QStringLiteral("pause_video_playback");
    QTest::newRow("record") << QStringList() << cRecord << 0;
    QTest::newRow("pause recording") << QStringList{cRecord} << cPauseRecording << 0;
    QTest::newRow("resume recording")
        << QStringList{cRecord, cPauseRecording} << QStringLiteral("resume_video_recording") << 0;
    QTest::newRow("stop recording") << QStringList{cRecord} << QStringLiteral("stop_video_recording") << 0;
    QTest::newRow("play") << QStringList() << cPlay << 0;
    QTest::newRow("pause playback") << QStringList{cPlay} << cPausePlayback << 0;
    QTest::newRow("resume playback") << QStringList{cPlay, cPausePlayback}
                                     << QStringLiteral("resume_video_playback") << 0;
    QTest::newRow("stop playback") << QStringList{cPlay} << QStringLiteral("stop_video_playback") << 0;
    QTest::newRow("answers too late") << QStringList() << cRecord << 30000;
}

void TestLongTimes::a_codec_that_does_not_answer_ends_in_the_error()
{
    QFETCH(QStringList, before);
    QFETCH(QString, command);
    QFETCH(int, delay);
    QVERIFY2(startOnFasterClock(), m_pcScene->describe());
    CBoard& rcBoard = m_pcScene->board();
    QVERIFY(callAll(before));
    if (delay == 0)
        rcBoard.setCodecMode(BOARD_CODEC_HANG);
    rcBoard.setCodecDelay(static_cast<quint32>(delay));
    QElapsedTimer cElapsed;
    cElapsed.start();
    QCOMPARE(call(command), ERROR);
    QVERIFY2(cElapsed.elapsed() >= CALL_TIMEOUT_MS, QByteArray::number(cElapsed.elapsed()));
    QCOMPARE(rcBoard.codecCalls().size(), before.size() + 1);
    QVERIFY(servesOtherCalls());
    if (delay != 0)
        QTRY_COMPARE(rcBoard.codecState().eActivity, SCodecState::RECORDING);
    // The error is final, even after the codec has recovered.
    rcBoard.setCodecMode(BOARD_CODEC_OK);
    rcBoard.setCodecDelay(0);
    for (const char* pszCommand : {"start_video_recording", "stop_video_recording", "start_video_playback",
                                   "stop_video_playback", "save_video_image"})
        QCOMPARE(call(pszCommand), INVALID_STATE);
    for (const char* pszState : {"is_video_recording_running", "is_video_recording_paused",
                                 "is_video_playback_running", "is_video_playback_paused"})
        QVERIFY2(!is(pszState), pszState);
    QCOMPARE(rcBoard.codecCalls().size(), before.size() + 1);
    QCOMPARE(m_cSignals, QStringList());
}

void TestLongTimes::a_codec_that_hangs_around_a_still_image_ends_in_the_error_data()
{
    QTest::addColumn<bool>("pauses");
    QTest::newRow("already at the pause") << false;
    QTest::newRow("at the resumption") << true;
}

// The image is saved all the same.
void TestLongTimes::a_codec_that_hangs_around_a_still_image_ends_in_the_error()
{
    QFETCH(bool, pauses);
    QVERIFY2(startOnFasterClock(), m_pcScene->describe());
    CBoard& rcBoard = m_pcScene->board();
    QCOMPARE(call("start_video_recording"), OK);
    if (!pauses)
        rcBoard.setCodecMode(BOARD_CODEC_HANG);
    // Time to change the codec's mode between the answer to the pause and the one to the resumption: 15 s,
    // 600 ms here.
    rcBoard.setCodecDelay(15000);
    QCOMPARE(call("save_video_image"), OK);
    rcBoard.setCodecMode(BOARD_CODEC_HANG);
    QTRY_COMPARE_WITH_TIMEOUT(m_cSignals, QStringList{QStringLiteral("video_image_saved 0")},
                              TIMEOUT_CALL_MS);
    QCOMPARE(rcBoard.codecCalls().mid(1), (QStringList{QStringLiteral("/Record pause interface=-"),
                                                       QStringLiteral("/Record resume interface=-")}));
    QVERIFY(servesOtherCalls());
    QVERIFY(QFileInfo(m_pcFiles->filePath(QStringLiteral("still.bmp"))).size() > 0);
    QVERIFY(!is("is_video_recording_running"));
    QVERIFY(!is("is_video_recording_paused"));
    QCOMPARE(call("stop_video_recording"), INVALID_STATE);
}

void TestLongTimes::the_daemon_ends_with_a_codec_that_hangs_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("last");
    QTest::newRow("recording") << "start_video_recording"
                               << "/Record stop interface=-";
    QTest::newRow("playing") << "start_video_playback"
                             << "/Play stop interface=-";
}

void TestLongTimes::the_daemon_ends_with_a_codec_that_hangs()
{
    QFETCH(QString, command);
    QFETCH(QString, last);
    QVERIFY2(startOnFasterClock(), m_pcScene->describe());
    QCOMPARE(call(command), OK);
    m_pcScene->board().setCodecMode(BOARD_CODEC_HANG);
    QElapsedTimer cElapsed;
    cElapsed.start();
    QCOMPARE(m_pcScene->end(), QString());
    QVERIFY2(cElapsed.elapsed() >= CALL_TIMEOUT_MS, QByteArray::number(cElapsed.elapsed()));
    QCOMPARE(m_pcScene->board().codecCalls().constLast(), last);
}

void TestLongTimes::a_slow_codec_is_waited_for()
{
    const int DELAY_MS = 2000;
    QVERIFY2(startOnFasterClock(), m_pcScene->describe());
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.setCodecDelay(DELAY_MS);
    int iRecorded = 0;
    for (const char* pszCommand :
         {"start_video_recording", "pause_video_recording", "resume_video_recording", "stop_video_recording",
          "start_video_playback", "pause_video_playback", "resume_video_playback", "stop_video_playback"}) {
        QElapsedTimer cElapsed;
        cElapsed.start();
        QCOMPARE(call(pszCommand), OK);
        QVERIFY2(cElapsed.elapsed() >= DELAY_MS / FACTOR - 1, pszCommand);
        if (is("is_video_recording_running") || is("is_video_recording_paused")) {
            QVERIFY2(recordedSeconds() >= iRecorded, pszCommand);
            iRecorded = recordedSeconds();
        }
    }
    // The time until the codec has paused counts as recorded.
    QVERIFY2(iRecorded >= DELAY_MS / 1000, QByteArray::number(iRecorded));
    QCOMPARE(call("start_video_recording"), OK);
    QCOMPARE(call("save_video_image"), OK);
    QTRY_COMPARE_WITH_TIMEOUT(m_cSignals, QStringList{QStringLiteral("video_image_saved 0")},
                              TIMEOUT_CALL_MS);
    QVERIFY(is("is_video_recording_running"));
}

void TestLongTimes::a_codec_that_was_away_is_found_again()
{
    QVERIFY2(startOnLeapingClocks(), m_pcScene->describe());
    for (const QStringList& rcCommands : {
             QStringList{QStringLiteral("start_video_recording"), QStringLiteral("stop_video_recording")},
             QStringList{QStringLiteral("start_video_playback"),  QStringLiteral("stop_video_playback") }
    }) {
        m_pcCodec->end();
        QVERIFY(pass(24 * HOUR_S));
        QVERIFY2(startCodec(), m_pcCodec->describe());
        QVERIFY(callAll(rcCommands));
    }
    // It doesn't know of a recording from before, which is an error.
    QCOMPARE(call("start_video_recording"), OK);
    m_pcCodec->end();
    QVERIFY2(startCodec(), m_pcCodec->describe());
    QCOMPARE(call("stop_video_recording"), ERROR);
}

QTEST_GUILESS_MAIN(TestLongTimes)

#include "tst_long_times.moc"
