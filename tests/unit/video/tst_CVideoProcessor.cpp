/* SPDX-License-Identifier: MIT */
/* The video processor on a virtual board, with a codec service of the test's own. Its ticks are sent, its
 * sleeps take no time, and its wall clock stands still. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "daemon/CEventLogger.h"
#include "hw/fpga_map.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/support/CFakeCodec.h"
#include "tests/support/CPlatformBoard.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/Timeouts.h"
#include "tests/support/hw/skipped_sleep.h"
#include "tests/support/hw/stopped_clock.h"
#include "video/CVideoAsyncResultEvent.h"
#include "video/CVideoProcessor.h"

#include <QAbstractEventDispatcher>
#include <QFile>
#include <QTemporaryDir>
#include <QTimerEvent>
#include <QtTest>

#include <climits>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>

// Makes the protected members public for tests.
class COpenVideoProcessor : public CVideoProcessor
{
public:
    using CVideoProcessor::_pauseVideoPlayback;
    using CVideoProcessor::_pauseVideoRecording;
    using CVideoProcessor::_resumeVideoPlayback;
    using CVideoProcessor::_resumeVideoRecording;
    using CVideoProcessor::_startVideoPlayback;
    using CVideoProcessor::_startVideoRecording;
    using CVideoProcessor::_stopVideoPlayback;
    using CVideoProcessor::_stopVideoRecording;
    using CVideoProcessor::verifyCommand;
};

class TestCVideoProcessor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void each_state_allows_its_commands_data();
    void each_state_allows_its_commands();
    void a_refused_command_does_nothing_data();
    void a_refused_command_does_nothing();
    void says_what_runs_data();
    void says_what_runs();

    void each_command_is_one_call_of_the_codec();
    void calls_that_do_not_block_count_as_success();
    void a_codec_that_does_not_confirm_is_final_data();
    void a_codec_that_does_not_confirm_is_final();
    void playback_switches_the_mode_of_the_platform();
    void the_mode_is_switched_before_the_codec_is_told();
    void a_failed_start_of_playback_leaves_the_playback_mode();
    void a_failed_stop_of_playback_leaves_the_recording_mode();
    void the_destructor_stops_what_runs_data();
    void the_destructor_stops_what_runs();

    void queued_events_find_another_state_data();
    void queued_events_find_another_state();
    void a_result_is_emitted_in_any_state_data();
    void a_result_is_emitted_in_any_state();
    void ticks_find_another_state_data();
    void ticks_find_another_state();

    void recorded_time_excludes_pauses();
    void recorded_time_in_hours_data();
    void recorded_time_in_hours();
    void a_stop_and_a_new_recording_start_at_zero();

    void watches_the_file_every_five_seconds();
    void a_watch_left_on_by_a_failed_pause_ends();
    void a_file_that_changes_is_recorded_on_data();
    void a_file_that_changes_is_recorded_on();
    void a_file_that_does_not_change_stops_the_recording_data();
    void a_file_that_does_not_change_stops_the_recording();
    void a_file_that_can_not_be_looked_at_stops_the_recording_data();
    void a_file_that_can_not_be_looked_at_stops_the_recording();
    void a_file_of_any_date_is_recorded_on_data();
    void a_file_of_any_date_is_recorded_on();
    void a_file_deleted_while_recording_stops_it();
    void a_new_recording_starts_at_size_zero();
    void a_resumed_recording_keeps_its_last_size();
    void a_stalled_file_without_a_codec_is_reported_all_the_same();

    void a_recording_is_stopped_at_58_minutes_data();
    void a_recording_is_stopped_at_58_minutes();
    void the_length_is_looked_at_on_the_sixth_tick();
    void a_recording_resumed_too_long_is_stopped_at_once();
    void a_paused_recording_is_not_stopped_for_its_length();
    void what_waits_is_finished_on_request();
    void a_recording_resumed_at_57_50_runs_on();
    void an_image_save_lets_the_length_be_looked_at();
    void a_stop_at_the_maximum_that_fails_is_reported_at_once();

    void saves_an_image_later_data();
    void saves_an_image_later();
    void a_second_save_is_refused_while_one_is_pending();
    void a_save_that_fails_is_reported_data();
    void a_save_that_fails_is_reported();
    void a_save_is_pending_whatever_the_pause_gave();
    void a_save_whose_resume_fails_ends_in_the_error();
    void a_save_restores_the_picture();
    void destroying_it_drops_a_pending_save();
    void displays_and_clears_an_image_data();
    void displays_and_clears_an_image();
    void a_missing_image_is_displayed_all_the_same_data();
    void a_missing_image_is_displayed_all_the_same();

    void without_a_monitor_there_is_no_input();
    void a_device_that_can_not_be_opened_fails();
    void reports_the_input_type_of_the_moment();
    void passes_on_that_the_input_changed();
    void switches_the_input_off_and_on();

private:
    enum ETarget {
        IDLE,
        RECORDING,
        PAUSED,
        PLAYBACK,
        PLAYBACK_PAUSED,
        IMAGE,
        IMAGE_PAUSED,
        PENDING,
        SAVING,
        ERROR
    };

    static void addStates(int iWithout = -1);
    void enter(int iState);
    void doIn(int iState, const std::function<void()>& rcDeed);
    QList<int> allowed() const;
    int command(int iCommand);
    void tick();
    QString file(const char* pszName) const { return m_pcFolder->filePath(QLatin1String(pszName)); }
    QString recording() const { return file("recording"); }
    bool resize(qint64 iBytes) const;
    bool growAndTick();
    QByteArray time() const;
    void postedEvents() const { QCoreApplication::sendPostedEvents(m_pcProcessor.data()); }

    CPrivateBus m_cBus;
    CFakeCodec m_cCodec;
    QScopedPointer<QTemporaryDir> m_pcFolder;
    QScopedPointer<CPlatformBoard> m_pcBoard;
    QScopedPointer<stopped_clock> m_pcClock;
    QScopedPointer<COpenVideoProcessor> m_pcProcessor;
    QStringList m_cEmitted;
};

static const int OK = eVideoProcessorResultOk;
static const int FAILED = eVideoProcessorResultError;
static const int REFUSED = eVideoProcessorResultInvalidState;

static const quint32 FRAME_GENERATOR = 0x00800000;
static const quint32 RESTORE = 0x00100010;
static const quint32 PLAY_MODE = 0x03000000;

static const QStringList NOTHING;
static const QString STOPPED = QStringLiteral("/Record stop()");
static const QStringList STALLED = {QStringLiteral("recording error 1")};
static const QStringList TOO_LONG = {QStringLiteral("recording error 6")};

// The states that allow each command, a digit a state.
static const char* const ALLOWED[] = {"", "012", "02", "56", "0", "1", "2", "12", "0", "3", "4", "34"};
static const int COMMANDS = 12;

static bool isAllowed(int iCommand, int iState)
{
    return QByteArray(ALLOWED[iCommand]).contains(static_cast<char>('0' + iState));
}

static QList<int> allowedIn(int iState)
{
    QList<int> cCommands;
    for (int iCommand = 0; iCommand < COMMANDS; ++iCommand)
        if (isAllowed(iCommand, iState))
            cCommands << iCommand;
    return cCommands;
}

void TestCVideoProcessor::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
    QVERIFY2(m_cBus.start(), qPrintable(m_cBus.error()));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cBus.address().toLocal8Bit());
    QVERIFY(m_cCodec.start(m_cBus.address()));
}

void TestCVideoProcessor::init()
{
    m_pcFolder.reset(new QTemporaryDir);
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
    QCOMPARE(m_pcBoard->initialize(), 1);
    m_cCodec.setConfirming(true);
    m_pcClock.reset(new stopped_clock);
    m_pcProcessor.reset(new COpenVideoProcessor);
    const auto cNote = [this](const char* pszSignal) {
        return [this, pszSignal](int iValue) {
            m_cEmitted << QStringLiteral("%1 %2").arg(QLatin1String(pszSignal)).arg(iValue);
        };
    };
    connect(m_pcProcessor.data(), &CVideoProcessor::videoRecordingError, this, cNote("recording error"));
    connect(m_pcProcessor.data(), &CVideoProcessor::videoPlaybackError, this, cNote("playback error"));
    connect(m_pcProcessor.data(), &CVideoProcessor::videoInputTypeChanged, this, cNote("input"));
    connect(m_pcProcessor.data(), &CVideoProcessor::videoImageSaved, this, cNote("saved"));
    m_cEmitted.clear();
}

void TestCVideoProcessor::cleanup()
{
    m_pcProcessor.reset();
    m_cCodec.takeCalls();
    m_pcClock.reset();
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

void TestCVideoProcessor::addStates(int iWithout)
{
    QTest::addColumn<int>("state");
    const char* const apszNames[] = {"idle",
                                     "recording",
                                     "recording paused",
                                     "playback",
                                     "playback paused",
                                     "image displayed",
                                     "image displayed, recording paused",
                                     "image save pending",
                                     "image saving",
                                     "error"};
    for (int iState = IDLE; iState <= ERROR; ++iState)
        if (iState != iWithout)
            QTest::newRow(apszNames[iState]) << iState;
}

// Reaches the state by commands, from idle; for saving only as far as pending.
void TestCVideoProcessor::enter(int iState)
{
    static const char* const apszPaths[] = {"", "4", "45", "8", "89", "2", "452", "1", "1", ""};
    for (const char cCommand : QByteArray(apszPaths[iState]))
        command(cCommand - '0');
    if (iState == ERROR) {
        m_cCodec.setConfirming(false);
        command(CVideoProcessor::eCommandStartVideoRecording);
        m_cCodec.setConfirming(true);
    }
    m_cCodec.takeCalls();
}

// In the state; in that of saving, while the processor sleeps.
void TestCVideoProcessor::doIn(int iState, const std::function<void()>& rcDeed)
{
    enter(iState);
    if (iState == SAVING) {
        skipped_sleep_do(rcDeed);
        postedEvents();
    } else {
        rcDeed();
    }
}

// The commands allowed now, which tell the states apart, those of images and errors among themselves aside.
QList<int> TestCVideoProcessor::allowed() const
{
    QList<int> cCommands;
    for (int iCommand = 0; iCommand < COMMANDS; ++iCommand)
        if (m_pcProcessor->verifyCommand(static_cast<CVideoProcessor::ECommand>(iCommand)))
            cCommands << iCommand;
    return cCommands;
}

int TestCVideoProcessor::command(int iCommand)
{
    switch (iCommand) {
    case CVideoProcessor::eCommandSaveVideoImage:
        return m_pcProcessor->saveVideoImage(file("saved.bmp"));
    case CVideoProcessor::eCommandDisplayVideoImage:
        return m_pcProcessor->displayVideoImage(file("missing.bmp"));
    case CVideoProcessor::eCommandClearVideoImage:
        return m_pcProcessor->clearVideoImage();
    case CVideoProcessor::eCommandStartVideoRecording:
        return m_pcProcessor->startVideoRecording(recording());
    case CVideoProcessor::eCommandPauseVideoRecording:
        return m_pcProcessor->pauseVideoRecording();
    case CVideoProcessor::eCommandResumeVideoRecording:
        return m_pcProcessor->resumeVideoRecording();
    case CVideoProcessor::eCommandStopVideoRecording:
        return m_pcProcessor->stopVideoRecording();
    case CVideoProcessor::eCommandStartVideoPlayback:
        return m_pcProcessor->startVideoPlayback(QStringLiteral("/film"));
    case CVideoProcessor::eCommandPauseVideoPlayback:
        return m_pcProcessor->pauseVideoPlayback();
    case CVideoProcessor::eCommandResumeVideoPlayback:
        return m_pcProcessor->resumeVideoPlayback();
    case CVideoProcessor::eCommandStopVideoPlayback:
        return m_pcProcessor->stopVideoPlayback();
    default:
        return -1;
    }
}

void TestCVideoProcessor::tick()
{
    QTimerEvent cTick(0);
    QCoreApplication::sendEvent(m_pcProcessor.data(), &cTick);
}

// The recording's file, sparse.
bool TestCVideoProcessor::resize(qint64 iBytes) const
{
    QFile cFile(recording());
    return cFile.open(QIODevice::ReadWrite) && cFile.resize(iBytes);
}

bool TestCVideoProcessor::growAndTick()
{
    const bool bGrown = resize(QFileInfo(recording()).size() + 1);
    tick();
    return bGrown && m_pcProcessor->isVideoRecordingRunning();
}

QByteArray TestCVideoProcessor::time() const
{
    unsigned int uiHours = 99;
    unsigned int uiMinutes = 99;
    unsigned int uiSeconds = 99;
    m_pcProcessor->queryVideoRecordingTime(uiHours, uiMinutes, uiSeconds);
    return QByteArray::number(uiHours) + ":" + QByteArray::number(uiMinutes) + ":" +
           QByteArray::number(uiSeconds);
}

void TestCVideoProcessor::each_state_allows_its_commands_data()
{
    addStates();
}

// Also for numbers that are no commands.
void TestCVideoProcessor::each_state_allows_its_commands()
{
    QFETCH(int, state);
    int iLooked = 0;
    const auto cLook = [&] {
        for (int iCommand = 0; iCommand < COMMANDS; ++iCommand)
            QCOMPARE(m_pcProcessor->verifyCommand(static_cast<CVideoProcessor::ECommand>(iCommand)),
                     isAllowed(iCommand, state));
        for (const int iNone : {-1, COMMANDS, 13, 16, 32, 33, 64, 256, 260, INT_MAX, INT_MIN})
            QVERIFY(!m_pcProcessor->verifyCommand(static_cast<CVideoProcessor::ECommand>(iNone)));
        ++iLooked;
    };
    doIn(state, cLook);
    QCOMPARE(iLooked, 1);
}

void TestCVideoProcessor::a_refused_command_does_nothing_data()
{
    addStates();
}

void TestCVideoProcessor::a_refused_command_does_nothing()
{
    QFETCH(int, state);
    int iRefused = 0;
    const auto cTry = [&] {
        (*m_pcBoard)->setTracing(true);
        m_pcBoard->takeTrace();
        for (int iCommand = 1; iCommand < COMMANDS; ++iCommand) {
            if (isAllowed(iCommand, state))
                continue;
            QCOMPARE(command(iCommand), REFUSED);
            ++iRefused;
        }
        QCOMPARE(m_pcBoard->takeTrace(), NOTHING);
        QCOMPARE(m_cCodec.takeCalls(), NOTHING);
        QCOMPARE(m_cEmitted, NOTHING);
        QCOMPARE(allowed(), allowedIn(state));
    };
    doIn(state, cTry);
    QCOMPARE(iRefused, COMMANDS - 1 - allowedIn(state).size());
}

void TestCVideoProcessor::says_what_runs_data()
{
    addStates();
}

void TestCVideoProcessor::says_what_runs()
{
    QFETCH(int, state);
    enter(state);
    QCOMPARE(m_pcProcessor->isVideoRecordingRunning(), state == RECORDING);
    QCOMPARE(m_pcProcessor->isVideoRecordingPaused(), state == PAUSED);
    QCOMPARE(m_pcProcessor->isVideoPlaybackRunning(), state == PLAYBACK);
    QCOMPARE(m_pcProcessor->isVideoPlaybackPaused(), state == PLAYBACK_PAUSED);
}

// The file name in UTF-8, the parameter a number, no interface, and each refusal in between sends nothing.
void TestCVideoProcessor::each_command_is_one_call_of_the_codec()
{
    const QString cName = QString::fromUtf8("/video/Aufnahme \xc3\xa4 \xf0\x9f\x93\xb9");
    QCOMPARE(int(m_pcProcessor->startVideoRecording(cName)), OK);
    QCOMPARE(m_cCodec.takeCalls(), QStringList{QStringLiteral("/Record record(si) %1, 3").arg(cName)});
    QCOMPARE(int(m_pcProcessor->startVideoRecording(cName)), REFUSED);
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
    const struct {
        int iCommand;
        const char* pszCall;
    } asSteps[] = {
        {CVideoProcessor::eCommandPauseVideoRecording,  "/Record pause()"    },
        {CVideoProcessor::eCommandResumeVideoRecording, "/Record resume()"   },
        {CVideoProcessor::eCommandStopVideoRecording,   "/Record stop()"     },
        {CVideoProcessor::eCommandStartVideoPlayback,   "/Play play(s) /film"},
        {CVideoProcessor::eCommandPauseVideoPlayback,   "/Play pause()"      },
        {CVideoProcessor::eCommandResumeVideoPlayback,  "/Play resume()"     },
        {CVideoProcessor::eCommandStopVideoPlayback,    "/Play stop()"       },
    };
    for (const auto& rsStep : asSteps) {
        QCOMPARE(command(rsStep.iCommand), OK);
        QCOMPARE(m_cCodec.takeCalls(), QStringList{QString::fromLatin1(rsStep.pszCall)});
        QCOMPARE(command(rsStep.iCommand), REFUSED);
        QCOMPARE(m_cCodec.takeCalls(), NOTHING);
    }
    QCOMPARE(allowed(), allowedIn(IDLE));
    QCOMPARE(m_cEmitted, NOTHING);
}

void TestCVideoProcessor::calls_that_do_not_block_count_as_success()
{
    m_cCodec.setConfirming(false);
    COpenVideoProcessor& rcProcessor = *m_pcProcessor;
    for (const bool bBlocking : {false, true}) {
        QCOMPARE(rcProcessor._startVideoRecording(QStringLiteral("/a"), bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._pauseVideoRecording(bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._resumeVideoRecording(bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._stopVideoRecording(bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._startVideoPlayback(QStringLiteral("/b"), bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._pauseVideoPlayback(bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._resumeVideoPlayback(bBlocking), !bBlocking);
        QCOMPARE(rcProcessor._stopVideoPlayback(bBlocking), !bBlocking);
        QCOMPARE(m_cCodec.takeCalls(),
                 (QStringList{QStringLiteral("/Record record(si) /a, 3"), QStringLiteral("/Record pause()"),
                              QStringLiteral("/Record resume()"), QStringLiteral("/Record stop()"),
                              QStringLiteral("/Play play(s) /b"), QStringLiteral("/Play pause()"),
                              QStringLiteral("/Play resume()"), QStringLiteral("/Play stop()")}));
    }
}

void TestCVideoProcessor::a_codec_that_does_not_confirm_is_final_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("command");
    QTest::addColumn<bool>("present");
    const struct {
        const char* pszName;
        int iState;
        int iCommand;
    } asRows[] = {
        {"start recording",       IDLE,            CVideoProcessor::eCommandStartVideoRecording },
        {"pause recording",       RECORDING,       CVideoProcessor::eCommandPauseVideoRecording },
        {"resume recording",      PAUSED,          CVideoProcessor::eCommandResumeVideoRecording},
        {"stop recording",        RECORDING,       CVideoProcessor::eCommandStopVideoRecording  },
        {"stop paused recording", PAUSED,          CVideoProcessor::eCommandStopVideoRecording  },
        {"start playback",        IDLE,            CVideoProcessor::eCommandStartVideoPlayback  },
        {"pause playback",        PLAYBACK,        CVideoProcessor::eCommandPauseVideoPlayback  },
        {"resume playback",       PLAYBACK_PAUSED, CVideoProcessor::eCommandResumeVideoPlayback },
        {"stop playback",         PLAYBACK,        CVideoProcessor::eCommandStopVideoPlayback   },
        {"stop paused playback",  PLAYBACK_PAUSED, CVideoProcessor::eCommandStopVideoPlayback   },
    };
    for (const auto& rsRow : asRows) {
        QTest::addRow("%s, an error", rsRow.pszName) << rsRow.iState << rsRow.iCommand << true;
        QTest::addRow("%s, nobody there", rsRow.pszName) << rsRow.iState << rsRow.iCommand << false;
    }
}

void TestCVideoProcessor::a_codec_that_does_not_confirm_is_final()
{
    QFETCH(int, state);
    QFETCH(int, command);
    QFETCH(bool, present);
    enter(state);
    m_cCodec.setConfirming(false);
    m_cCodec.setPresent(present);
    const int iResult = this->command(command);
    m_cCodec.setPresent(true);
    m_cCodec.setConfirming(true);
    QCOMPARE(iResult, FAILED);
    QCOMPARE(m_cCodec.takeCalls().size(), present ? 1 : 0);
    // The codec is well again, and is not asked any more.
    for (int iCommand = 1; iCommand < COMMANDS; ++iCommand)
        QCOMPARE(this->command(iCommand), REFUSED);
    tick();
    postedEvents();
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
    QCOMPARE(m_cEmitted, NOTHING);
    QVERIFY(!m_pcProcessor->isVideoRecordingRunning() && !m_pcProcessor->isVideoPlaybackRunning());
}

void TestCVideoProcessor::playback_switches_the_mode_of_the_platform()
{
    enter(PLAYBACK);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), PLAY_MODE);
    QCOMPARE(int(m_pcProcessor->pauseVideoPlayback()), OK);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), PLAY_MODE);
    QCOMPARE(int(m_pcProcessor->stopVideoPlayback()), OK);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    enter(RECORDING);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
}

// Otherwise the first pictures, or the last ones, would go the wrong way.
void TestCVideoProcessor::the_mode_is_switched_before_the_codec_is_told()
{
    QList<quint32> cAtCalls;
    m_cCodec.setAtCall([&] { cAtCalls << (*m_pcBoard)->fpgaRegister(FPGA_CTRL); });
    QCOMPARE(int(m_pcProcessor->startVideoPlayback(file("film"))), OK);
    QCOMPARE(int(m_pcProcessor->stopVideoPlayback()), OK);
    m_cCodec.setAtCall(nullptr);
    QCOMPARE(cAtCalls, (QList<quint32>{PLAY_MODE, 0}));
}

void TestCVideoProcessor::a_failed_start_of_playback_leaves_the_playback_mode()
{
    m_cCodec.setConfirming(false);
    QCOMPARE(command(CVideoProcessor::eCommandStartVideoPlayback), FAILED);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), PLAY_MODE);
}

void TestCVideoProcessor::a_failed_stop_of_playback_leaves_the_recording_mode()
{
    enter(PLAYBACK);
    m_cCodec.setConfirming(false);
    QCOMPARE(command(CVideoProcessor::eCommandStopVideoPlayback), FAILED);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
}

void TestCVideoProcessor::the_destructor_stops_what_runs_data()
{
    addStates();
}

void TestCVideoProcessor::the_destructor_stops_what_runs()
{
    QFETCH(int, state);
    enter(state);
    m_pcProcessor.reset();
    QStringList cExpected;
    if (state == RECORDING || state == PAUSED)
        cExpected << STOPPED;
    if (state == PLAYBACK || state == PLAYBACK_PAUSED)
        cExpected << QStringLiteral("/Play stop()");
    QCOMPARE(m_cCodec.takeCalls(), cExpected);
}

void TestCVideoProcessor::queued_events_find_another_state_data()
{
    addStates();
}

// Image save, length check, and what isn't the processor's own.
void TestCVideoProcessor::queued_events_find_another_state()
{
    QFETCH(int, state);
    int iLooked = 0;
    const auto cSend = [&] {
        (*m_pcBoard)->setTracing(true);
        m_pcBoard->takeTrace();
        stopped_clock::advance(3600);
        for (const int iType : {1000, 1002, 1003, 1004, 65535}) {
            if ((iType == 1000 && state == PENDING) || (iType == 1002 && state == RECORDING))
                continue;
            QEvent cEvent(static_cast<QEvent::Type>(iType));
            QCoreApplication::sendEvent(m_pcProcessor.data(), &cEvent);
        }
        QCOMPARE(m_pcBoard->takeTrace(), NOTHING);
        QCOMPARE(m_cCodec.takeCalls(), NOTHING);
        QCOMPARE(m_cEmitted, NOTHING);
        QCOMPARE(allowed(), allowedIn(state));
        ++iLooked;
    };
    doIn(state, cSend);
    QCOMPARE(iLooked, 1);
}

void TestCVideoProcessor::a_result_is_emitted_in_any_state_data()
{
    addStates();
}

void TestCVideoProcessor::a_result_is_emitted_in_any_state()
{
    QFETCH(int, state);
    int iEmitted = 0;
    const auto cSend = [&] {
        stopped_clock::advance(3600);
        for (int iResult = 0; iResult <= 6; ++iResult) {
            CVideoAsyncResultEvent cEvent(static_cast<EVideoProcessorResult>(iResult));
            QCOMPARE(int(cEvent.type()), 1001);
            QCoreApplication::sendEvent(m_pcProcessor.data(), &cEvent);
            QCOMPARE(m_cEmitted, QStringList{QStringLiteral("recording error %1").arg(iResult)});
            m_cEmitted.clear();
            ++iEmitted;
        }
        QCOMPARE(m_cCodec.takeCalls(), NOTHING);
        QCOMPARE(allowed(), allowedIn(state));
    };
    doIn(state, cSend);
    QCOMPARE(iEmitted, 7);
}

void TestCVideoProcessor::ticks_find_another_state_data()
{
    addStates(RECORDING);
}

void TestCVideoProcessor::ticks_find_another_state()
{
    QFETCH(int, state);
    int iLooked = 0;
    const auto cTick = [&] {
        stopped_clock::advance(3600);
        for (int iTick = 0; iTick < 13; ++iTick)
            tick();
        QCOMPARE(m_cCodec.takeCalls(), NOTHING);
        QCOMPARE(m_cEmitted, NOTHING);
        QCOMPARE(allowed(), allowedIn(state));
        ++iLooked;
    };
    doIn(state, cTick);
    QCOMPARE(iLooked, 1);
}

void TestCVideoProcessor::recorded_time_excludes_pauses()
{
    QCOMPARE(time(), QByteArray("0:0:0"));
    enter(RECORDING);
    QCOMPARE(time(), QByteArray("0:0:0"));
    stopped_clock::advance(10);
    QCOMPARE(time(), QByteArray("0:0:10"));
    QCOMPARE(int(m_pcProcessor->pauseVideoRecording()), OK);
    stopped_clock::advance(60);
    QCOMPARE(time(), QByteArray("0:0:10"));
    QCOMPARE(int(m_pcProcessor->resumeVideoRecording()), OK);
    stopped_clock::advance(5);
    QCOMPARE(time(), QByteArray("0:0:15"));
    QCOMPARE(int(m_pcProcessor->pauseVideoRecording()), OK);
    QCOMPARE(time(), QByteArray("0:0:15"));
    // A still image over it changes nothing.
    QCOMPARE(int(m_pcProcessor->displayVideoImage(file("missing.bmp"))),
             int(eVideoProcessorResultFileOpenError));
    stopped_clock::advance(60);
    QCOMPARE(time(), QByteArray("0:0:15"));
}

void TestCVideoProcessor::recorded_time_in_hours_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QByteArray>("time");
    QTest::newRow("59") << 59 << QByteArray("0:0:59");
    QTest::newRow("60") << 60 << QByteArray("0:1:0");
    QTest::newRow("3599") << 3599 << QByteArray("0:59:59");
    QTest::newRow("3600") << 3600 << QByteArray("1:0:0");
    QTest::newRow("a day") << 86400 << QByteArray("24:0:0");
    QTest::newRow("a hundred hours") << 360000 + 61 << QByteArray("100:1:1");
}

void TestCVideoProcessor::recorded_time_in_hours()
{
    QFETCH(int, seconds);
    QFETCH(QByteArray, time);
    enter(RECORDING);
    stopped_clock::advance(seconds);
    QCOMPARE(this->time(), time);
    QCOMPARE(int(m_pcProcessor->pauseVideoRecording()), OK);
    QCOMPARE(this->time(), time);
}

void TestCVideoProcessor::a_stop_and_a_new_recording_start_at_zero()
{
    enter(RECORDING);
    stopped_clock::advance(10);
    QCOMPARE(int(m_pcProcessor->pauseVideoRecording()), OK);
    QCOMPARE(command(CVideoProcessor::eCommandStopVideoRecording), OK);
    QCOMPARE(time(), QByteArray("0:0:0"));
    stopped_clock::advance(10);
    enter(RECORDING);
    QCOMPARE(time(), QByteArray("0:0:0"));
    stopped_clock::advance(3);
    QCOMPARE(time(), QByteArray("0:0:3"));
}

static QList<QAbstractEventDispatcher::TimerInfo> timersOf(QObject* pcObject)
{
    return QAbstractEventDispatcher::instance()->registeredTimers(pcObject);
}

void TestCVideoProcessor::watches_the_file_every_five_seconds()
{
    CVideoProcessor* pcProcessor = m_pcProcessor.data();
    QVERIFY(timersOf(pcProcessor).isEmpty());
    for (const int iCommand : {4, 6}) {
        QCOMPARE(command(iCommand), OK);
        QCOMPARE(timersOf(pcProcessor).size(), 1);
        QCOMPARE(timersOf(pcProcessor)[0].interval, 5000);
        QCOMPARE(timersOf(pcProcessor)[0].timerType, Qt::PreciseTimer);
        QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
        QVERIFY(timersOf(pcProcessor).isEmpty());
    }
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
    QCOMPARE(command(CVideoProcessor::eCommandStopVideoRecording), OK);
    QVERIFY(timersOf(pcProcessor).isEmpty());
}

void TestCVideoProcessor::a_watch_left_on_by_a_failed_pause_ends()
{
    enter(RECORDING);
    m_cCodec.setConfirming(false);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    m_cCodec.setConfirming(true);
    postedEvents();
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    QCOMPARE(timersOf(m_pcProcessor.data()).size(), 1);
}

static const qint64 GIB = 1024LL * 1024 * 1024;

void TestCVideoProcessor::a_file_that_changes_is_recorded_on_data()
{
    QTest::addColumn<qint64>("before");
    QTest::addColumn<qint64>("after");
    QTest::newRow("grows") << qint64(1) << qint64(2);
    QTest::newRow("shrinks") << qint64(2000) << qint64(1000);
    QTest::newRow("shrinks to nothing") << qint64(2000) << qint64(0);
    QTest::newRow("past 2 GiB") << 2 * GIB - 1 << 2 * GIB;
    QTest::newRow("past 4 GiB") << 4 * GIB - 1 << 4 * GIB;
    QTest::newRow("beyond 4 GiB") << 5 * GIB << 5 * GIB + 1;
    QTest::newRow("by exactly 4 GiB") << qint64(1000) << 4 * GIB + 1000;
    QTest::newRow("from one byte to 4 GiB and one") << qint64(1) << 4 * GIB + 1;
}

void TestCVideoProcessor::a_file_that_changes_is_recorded_on()
{
    QFETCH(qint64, before);
    QFETCH(qint64, after);
    enter(RECORDING);
    for (const qint64 iSize : {before, after, before, after}) {
        QVERIFY(resize(iSize));
        tick();
    }
    postedEvents();
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    QCOMPARE(m_cEmitted, NOTHING);
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
}

void TestCVideoProcessor::a_file_that_does_not_change_stops_the_recording_data()
{
    QTest::addColumn<qint64>("size");
    for (const qint64 iSize :
         {qint64(1), qint64(1000), 2 * GIB - 1, 2 * GIB, 4 * GIB - 1, 4 * GIB, 4 * GIB + 1, 9 * GIB})
        QTest::addRow("%lld", static_cast<long long>(iSize)) << iSize;
}

// For one tick.
void TestCVideoProcessor::a_file_that_does_not_change_stops_the_recording()
{
    QFETCH(qint64, size);
    enter(RECORDING);
    QVERIFY(resize(size));
    tick();
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    tick();
    QVERIFY(!m_pcProcessor->isVideoRecordingRunning());
    QVERIFY(timersOf(m_pcProcessor.data()).isEmpty());
    QCOMPARE(m_cCodec.takeCalls(), QStringList{STOPPED});
    // Signalled later, once.
    QCOMPARE(m_cEmitted, NOTHING);
    postedEvents();
    QCOMPARE(m_cEmitted, STALLED);
    for (int iCommand = 1; iCommand < COMMANDS; ++iCommand)
        QCOMPARE(command(iCommand), REFUSED);
    tick();
    postedEvents();
    QCOMPARE(m_cEmitted, STALLED);
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
}

void TestCVideoProcessor::a_file_that_can_not_be_looked_at_stops_the_recording_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("never created") << QStringLiteral("/nonexistent/recording");
    QTest::newRow("empty name") << QString();
    QTest::newRow("4,096 characters") << QString(4096, QLatin1Char('x'));
    QTest::newRow("a path of 4,096 characters") << QStringLiteral("/tmp/").repeated(820).left(4096);
    QTest::newRow("below a file") << QStringLiteral("/dev/null/recording");
    QTest::newRow("ends with a zero") << QStringLiteral("/nonexistent/file") + QChar(0);
    QTest::newRow("starts with a zero") << QChar(0) + QStringLiteral("/tmp");
    QTest::newRow("half a surrogate pair") << QStringLiteral("/") + QChar(0xd83d);
}

void TestCVideoProcessor::a_file_that_can_not_be_looked_at_stops_the_recording()
{
    QFETCH(QString, name);
    QCOMPARE(int(m_pcProcessor->startVideoRecording(name)), OK);
    m_cCodec.takeCalls();
    tick();
    QCOMPARE(m_cCodec.takeCalls(), QStringList{STOPPED});
    postedEvents();
    QCOMPARE(m_cEmitted, STALLED);
    QCOMPARE(allowed(), allowedIn(ERROR));
}

void TestCVideoProcessor::a_file_of_any_date_is_recorded_on_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::newRow("1970") << qint64(0);
    QTest::newRow("the last second of 31 bits") << (qint64(1) << 31) - 1;
    QTest::newRow("the next one, in January 2038") << (qint64(1) << 31);
    QTest::newRow("2100") << qint64(4102444800);
}

// The codec service's clock dates it.
void TestCVideoProcessor::a_file_of_any_date_is_recorded_on()
{
    QFETCH(qint64, seconds);
    enter(RECORDING);
    const timespec sDate = {static_cast<time_t>(seconds), 0};
    const timespec asDates[] = {sDate, sDate};
    for (const qint64 iSize : {1000, 2000, 3000}) {
        QVERIFY(resize(iSize));
        QCOMPARE(utimensat(AT_FDCWD, qPrintable(recording()), asDates, 0), 0);
        tick();
    }
    postedEvents();
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    QCOMPARE(m_cEmitted, NOTHING);
}

void TestCVideoProcessor::a_file_deleted_while_recording_stops_it()
{
    enter(RECORDING);
    QVERIFY(growAndTick());
    QVERIFY(growAndTick());
    QVERIFY(QFile::remove(recording()));
    tick();
    postedEvents();
    QCOMPARE(m_cEmitted, STALLED);
}

void TestCVideoProcessor::a_new_recording_starts_at_size_zero()
{
    enter(RECORDING);
    QVERIFY(resize(1000));
    tick();
    QCOMPARE(command(CVideoProcessor::eCommandStopVideoRecording), OK);
    // The same size as before is growth for a new one ...
    enter(RECORDING);
    tick();
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    QCOMPARE(command(CVideoProcessor::eCommandStopVideoRecording), OK);
    // ... and nothing is none.
    enter(RECORDING);
    QVERIFY(resize(0));
    tick();
    QVERIFY(!m_pcProcessor->isVideoRecordingRunning());
}

void TestCVideoProcessor::a_resumed_recording_keeps_its_last_size()
{
    enter(RECORDING);
    QVERIFY(resize(1000));
    tick();
    QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
    QVERIFY(growAndTick());
    QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
    tick();
    QVERIFY(!m_pcProcessor->isVideoRecordingRunning());
}

void TestCVideoProcessor::a_stalled_file_without_a_codec_is_reported_all_the_same()
{
    enter(RECORDING);
    m_cCodec.setPresent(false);
    tick();
    postedEvents();
    m_cCodec.setPresent(true);
    QCOMPARE(m_cEmitted, STALLED);
}

void TestCVideoProcessor::a_recording_is_stopped_at_58_minutes_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<bool>("stopped");
    QTest::newRow("57:59") << 58 * 60 - 1 << false;
    QTest::newRow("58:00") << 58 * 60 << true;
    QTest::newRow("59:59") << 3599 << true;
    QTest::newRow("1:00:00") << 3600 << true;
    QTest::newRow("1:57:59") << 3600 + 58 * 60 - 1 << true;
    QTest::newRow("a day") << 86400 << true;
}

void TestCVideoProcessor::a_recording_is_stopped_at_58_minutes()
{
    QFETCH(int, seconds);
    QFETCH(bool, stopped);
    enter(RECORDING);
    stopped_clock::advance(seconds);
    for (int iTick = 1; iTick < 6; ++iTick)
        QVERIFY(growAndTick());
    QCOMPARE(growAndTick(), !stopped);
    QCOMPARE(m_cEmitted, NOTHING);
    QCOMPARE(m_cCodec.takeCalls(), stopped ? QStringList{STOPPED} : NOTHING);
    postedEvents();
    QCOMPARE(m_cEmitted, stopped ? TOO_LONG : NOTHING);
    // It may be recorded again.
    QCOMPARE(allowed(), allowedIn(stopped ? IDLE : RECORDING));
    QCOMPARE(timersOf(m_pcProcessor.data()).isEmpty(), stopped);
}

void TestCVideoProcessor::the_length_is_looked_at_on_the_sixth_tick()
{
    enter(RECORDING);
    for (int iTick = 1; iTick <= 6; ++iTick)
        QVERIFY(growAndTick());
    stopped_clock::advance(58 * 60);
    for (int iTick = 7; iTick <= 11; ++iTick)
        QVERIFY(growAndTick());
    QVERIFY(!growAndTick());
}

void TestCVideoProcessor::a_recording_resumed_too_long_is_stopped_at_once()
{
    enter(RECORDING);
    stopped_clock::advance(58 * 60);
    QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
    m_cCodec.takeCalls();
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
    QCOMPARE(m_cCodec.takeCalls(), QStringList{QStringLiteral("/Record resume()")});
    postedEvents();
    QCOMPARE(m_cCodec.takeCalls(), QStringList{STOPPED});
    QCOMPARE(allowed(), allowedIn(IDLE));
    QCOMPARE(m_cEmitted, NOTHING);
    postedEvents();
    QCOMPARE(m_cEmitted, TOO_LONG);
}

// The look at its length was queued when it was resumed, and finds it paused again.
void TestCVideoProcessor::a_paused_recording_is_not_stopped_for_its_length()
{
    enter(RECORDING);
    stopped_clock::advance(59 * 60);
    QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
    m_cCodec.takeCalls();
    QEvent cLook(static_cast<QEvent::Type>(1002));
    QCoreApplication::sendEvent(m_pcProcessor.data(), &cLook);
    postedEvents();
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
    QCOMPARE(m_cEmitted, NOTHING);
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
}

// The save that resumes a recording, the look at its length, which finds it too long, and the result.
void TestCVideoProcessor::what_waits_is_finished_on_request()
{
    enter(RECORDING);
    stopped_clock::advance(58 * 60);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    m_cCodec.takeCalls();
    m_pcProcessor->finishAccepted();
    const QStringList cCalls{QStringLiteral("/Record resume()"), STOPPED};
    QCOMPARE(m_cCodec.takeCalls(), cCalls);
    QCOMPARE(m_cEmitted.size(), 2);
    QCOMPARE(m_cEmitted.last(), TOO_LONG.first());
    QCOMPARE(allowed(), allowedIn(IDLE));
}

void TestCVideoProcessor::a_recording_resumed_at_57_50_runs_on()
{
    enter(RECORDING);
    stopped_clock::advance(57 * 60 + 50);
    QCOMPARE(command(CVideoProcessor::eCommandPauseVideoRecording), OK);
    QCOMPARE(command(CVideoProcessor::eCommandResumeVideoRecording), OK);
    postedEvents();
    for (int iTick = 1; iTick < 6; ++iTick) {
        stopped_clock::advance(5);
        QVERIFY(growAndTick());
    }
    QVERIFY(!growAndTick());
    postedEvents();
    QCOMPARE(m_cEmitted, TOO_LONG);
}

// The resume behind it is one like any other.
void TestCVideoProcessor::an_image_save_lets_the_length_be_looked_at()
{
    enter(RECORDING);
    stopped_clock::advance(58 * 60);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    for (int iTurn = 0; iTurn < 3; ++iTurn) // save, look at the length, report
        postedEvents();
    QCOMPARE(m_cEmitted, QStringList{QStringLiteral("saved 0")} + TOO_LONG);
    QCOMPARE(m_cCodec.takeCalls(),
             (QStringList{QStringLiteral("/Record pause()"), QStringLiteral("/Record resume()"), STOPPED}));
}

void TestCVideoProcessor::a_stop_at_the_maximum_that_fails_is_reported_at_once()
{
    enter(RECORDING);
    stopped_clock::advance(58 * 60);
    for (int iTick = 1; iTick < 6; ++iTick)
        QVERIFY(growAndTick());
    m_cCodec.setConfirming(false);
    QVERIFY(!growAndTick());
    QCOMPARE(m_cEmitted, STALLED);
    postedEvents();
    QCOMPARE(m_cEmitted, STALLED);
    QCOMPARE(allowed(), allowedIn(ERROR));
}

void TestCVideoProcessor::saves_an_image_later_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("idle") << int(IDLE) << NOTHING << NOTHING;
    QTest::newRow("recording") << int(RECORDING) << QStringList{QStringLiteral("/Record pause()")}
                               << QStringList{QStringLiteral("/Record resume()")};
    QTest::newRow("paused") << int(PAUSED) << NOTHING << NOTHING;
}

void TestCVideoProcessor::saves_an_image_later()
{
    QFETCH(int, state);
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    enter(state);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    QCOMPARE(m_cCodec.takeCalls(), before);
    QCOMPARE(allowed(), allowedIn(PENDING));
    QVERIFY(!QFile::exists(file("saved.bmp")));

    // At the signal, everything is as before.
    int iSaid = 0;
    connect(m_pcProcessor.data(), &CVideoProcessor::videoImageSaved, this, [&] {
        QCOMPARE(m_cCodec.takeCalls(), after);
        QCOMPARE(allowed(), allowedIn(state));
        ++iSaid;
    });
    postedEvents();
    QCOMPARE(iSaid, 1);
    QCOMPARE(m_cEmitted, QStringList{QStringLiteral("saved 0")});
    QCOMPARE(QFileInfo(file("saved.bmp")).size(), qint64(1658934));
    disconnect(m_pcProcessor.data(), &CVideoProcessor::videoImageSaved, this, nullptr);
}

void TestCVideoProcessor::a_second_save_is_refused_while_one_is_pending()
{
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    QCOMPARE(int(m_pcProcessor->saveVideoImage(file("second.bmp"))), REFUSED);
    postedEvents();
    QCOMPARE(m_cEmitted, QStringList{QStringLiteral("saved 0")});
    QVERIFY(QFile::exists(file("saved.bmp")));
    QVERIFY(!QFile::exists(file("second.bmp")));
}

void TestCVideoProcessor::a_save_that_fails_is_reported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("emitted");
    QTest::newRow("no such folder") << QStringLiteral("/nonexistent/a.bmp") << QStringLiteral("saved 3");
    QTest::newRow("a folder") << QStringLiteral("/tmp") << QStringLiteral("saved 3");
    QTest::newRow("empty name") << QString() << QStringLiteral("saved 3");
    QTest::newRow("4,096 characters") << QString(4096, QLatin1Char('x')) << QStringLiteral("saved 3");
    QTest::newRow("full disk") << QStringLiteral("/dev/full") << QStringLiteral("saved 5");
}

// Over each state, which is back afterwards.
void TestCVideoProcessor::a_save_that_fails_is_reported()
{
    QFETCH(QString, name);
    QFETCH(QString, emitted);
    for (const int iState : {IDLE, RECORDING, PAUSED}) {
        // Refused before the first state: none runs yet.
        (void)m_pcProcessor->stopVideoRecording();
        enter(iState);
        QCOMPARE(int(m_pcProcessor->saveVideoImage(name)), OK);
        postedEvents();
        QCOMPARE(m_cEmitted, QStringList{emitted});
        QCOMPARE(allowed(), allowedIn(iState));
        QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
        m_cEmitted.clear();
    }
}

void TestCVideoProcessor::a_save_is_pending_whatever_the_pause_gave()
{
    enter(RECORDING);
    m_cCodec.setConfirming(false);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    m_cCodec.setConfirming(true);
    QCOMPARE(m_cCodec.takeCalls(), QStringList{QStringLiteral("/Record pause()")});
    postedEvents();
    QCOMPARE(m_cEmitted, QStringList{QStringLiteral("saved 0")});
    QCOMPARE(m_cCodec.takeCalls(), QStringList{QStringLiteral("/Record resume()")});
    QVERIFY(m_pcProcessor->isVideoRecordingRunning());
}

void TestCVideoProcessor::a_save_whose_resume_fails_ends_in_the_error()
{
    enter(RECORDING);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    m_cCodec.setConfirming(false);
    postedEvents();
    QCOMPARE(m_cEmitted, QStringList{QStringLiteral("saved 0")});
    QCOMPARE(allowed(), allowedIn(ERROR));
}

// The current picture is stored and shown while it is saved; then the live one is back.
void TestCVideoProcessor::a_save_restores_the_picture()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    const QImage cLive = CBoardPicture::monitor(*rcBoard);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    (*m_pcBoard)->setTracing(true);
    m_pcBoard->takeTrace();
    postedEvents();
    const QStringList cSwitches = m_pcBoard->takeTrace().filter(QStringLiteral("fpga write32 0x00ff00"));
    QCOMPARE(cSwitches, (QStringList{QStringLiteral("fpga write32 0x00ff0008 0x00000001"),
                                     QStringLiteral("fpga write32 0x00ff0000 0x00100010"),
                                     QStringLiteral("fpga write32 0x00ff0000 0x00000000")}));
    QCOMPARE(CBoardPicture::monitor(*rcBoard), cLive);
}

void TestCVideoProcessor::destroying_it_drops_a_pending_save()
{
    enter(RECORDING);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    m_cCodec.takeCalls();
    m_pcProcessor.reset();
    QCoreApplication::sendPostedEvents();
    QVERIFY(!QFile::exists(file("saved.bmp")));
    QCOMPARE(m_cEmitted, NOTHING);
    QCOMPARE(m_cCodec.takeCalls(), NOTHING);
}

void TestCVideoProcessor::displays_and_clears_an_image_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("displayed");
    QTest::newRow("idle") << int(IDLE) << int(IMAGE);
    QTest::newRow("recording paused") << int(PAUSED) << int(IMAGE_PAUSED);
}

void TestCVideoProcessor::displays_and_clears_an_image()
{
    QFETCH(int, state);
    QFETCH(int, displayed);
    CPlatformBoard& rcBoard = *m_pcBoard;
    enter(state);
    QCOMPARE(command(CVideoProcessor::eCommandSaveVideoImage), OK);
    postedEvents();
    const QImage cSaved = CBoardPicture::monitor(*rcBoard);
    rcBoard->setCamera(CTestPicture::frame(40));
    const QImage cLive = CBoardPicture::monitor(*rcBoard);

    QCOMPARE(int(m_pcProcessor->displayVideoImage(file("saved.bmp"))), OK);
    QCOMPARE(allowed(), allowedIn(displayed));
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), RESTORE);
    QCOMPARE(CBoardPicture::monitor(*rcBoard).copy(0, 1, 688, 572), cSaved.copy(0, 1, 688, 572));

    QCOMPARE(int(m_pcProcessor->clearVideoImage()), REFUSED);
    QCOMPARE(allowed(), allowedIn(state));
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), 0U);
    QCOMPARE(CBoardPicture::monitor(*rcBoard), cLive);
    QCOMPARE(int(m_pcProcessor->clearVideoImage()), REFUSED);
}

void TestCVideoProcessor::a_missing_image_is_displayed_all_the_same_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<int>("result");
    QTest::newRow("missing") << false << int(eVideoProcessorResultFileOpenError);
    QTest::newRow("too short") << true << int(eVideoProcessorResultFileReadError);
}

void TestCVideoProcessor::a_missing_image_is_displayed_all_the_same()
{
    QFETCH(bool, exists);
    QFETCH(int, result);
    QVERIFY(!exists || resize(1000));
    for (const int iState : {IDLE, PAUSED}) {
        enter(iState);
        QCOMPARE(int(m_pcProcessor->displayVideoImage(recording())), result);
        QCOMPARE(allowed(), allowedIn(IMAGE));
        QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), RESTORE);
        QCOMPARE(int(m_pcProcessor->clearVideoImage()), REFUSED);
        QCOMPARE(allowed(), allowedIn(iState));
    }
}

void TestCVideoProcessor::without_a_monitor_there_is_no_input()
{
    QCOMPARE(m_pcProcessor->getVideoInputType(), eVideoInputTypeInternal);
    m_pcProcessor->setVideoInputEnabled(true);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    m_pcProcessor->setVideoInputEnabled(false);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), FRAME_GENERATOR);
}

void TestCVideoProcessor::a_device_that_can_not_be_opened_fails()
{
    CCapturedOutput cErrors(2);
    QVERIFY(!m_pcProcessor->initialize("/nonexistent/i2c-1"));
    QCOMPARE(cErrors.take(), QByteArray("Cannot open saa7113-device\n"));
    QCOMPARE(m_pcProcessor->getVideoInputType(), eVideoInputTypeInternal);
}

void TestCVideoProcessor::reports_the_input_type_of_the_moment()
{
    QVERIFY(m_pcProcessor->initialize(qPrintable((*m_pcBoard)->path(BOARD_I2C))));
    QCOMPARE(m_pcProcessor->getVideoInputType(), eVideoInputTypeExternal);
    (*m_pcBoard)->setCameraPlugged(false);
    QCOMPARE(m_pcProcessor->getVideoInputType(), eVideoInputTypeInternal);
    QCOMPARE(m_cEmitted, NOTHING);
}

void TestCVideoProcessor::passes_on_that_the_input_changed()
{
    QVERIFY(m_pcProcessor->initialize(qPrintable((*m_pcBoard)->path(BOARD_I2C))));
    (*m_pcBoard)->setCameraPlugged(false);
    QTRY_COMPARE_WITH_TIMEOUT(m_cEmitted, QStringList{QStringLiteral("input 1")}, TIMEOUT_CALL_MS);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), FRAME_GENERATOR);
}

void TestCVideoProcessor::switches_the_input_off_and_on()
{
    QVERIFY(m_pcProcessor->initialize(qPrintable((*m_pcBoard)->path(BOARD_I2C))));
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    m_pcProcessor->setVideoInputEnabled(false);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), FRAME_GENERATOR);
    m_pcProcessor->setVideoInputEnabled(true);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    // Without a camera it is internal all the same.
    m_pcProcessor->setVideoInputEnabled(false);
    (*m_pcBoard)->setCameraPlugged(false);
    m_pcProcessor->setVideoInputEnabled(true);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), FRAME_GENERATOR);
}

QTEST_GUILESS_MAIN(TestCVideoProcessor)

#include "tst_CVideoProcessor.moc"
