/* SPDX-License-Identifier: MIT */
/* "/videoprocessing" from a client on the bus to the codec service, the FPGA and the file system. */
#include "tests/support/CBusMonitor.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Introspection.h"
#include "tests/support/Timeouts.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QtTest>

#include <csignal>

class TestVideoProcessing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void introspection_equals_the_interface_file();
    void a_recording_is_the_codecs();
    void a_playback_is_the_codecs();
    void switches_take_a_playback_back_to_the_camera_data();
    void switches_take_a_playback_back_to_the_camera();
    void commands_are_refused_in_other_states_data();
    void commands_are_refused_in_other_states();
    void commands_behind_a_save_are_refused_data();
    void commands_behind_a_save_are_refused();
    void commands_that_come_while_an_image_is_written_wait_for_it();
    void each_call_sends_these_messages_data();
    void each_call_sends_these_messages();
    void a_still_image_of_a_recording_pauses_it();
    void a_missing_image_is_shown_all_the_same();
    void the_camera_is_unplugged_and_plugged();
    void the_end_stops_what_runs_data();
    void the_end_stops_what_runs();
    void the_end_without_a_codec_is_as_quiet_data();
    void the_end_without_a_codec_is_as_quiet();
    void the_end_comes_after_a_pending_save();
    void the_end_comes_after_a_running_save();

private:
    int call(const char* pszMethod, const QString& rcFile = QString())
    {
        return m_pcScene->call(pszMethod, rcFile);
    }
    bool is(const char* pszMethod) { return m_pcScene->is(pszMethod); }
    QString file(const char* pszName) const { return m_pcScene->file(pszName); }

    QScopedPointer<CVideoScene> m_pcScene;
};

Q_DECLARE_METATYPE(CVideoScene::EState)

using namespace VideoResult;

static const quint32 CONTROL = 0xff0000; // the FPGA's
static const quint32 FRAME_GENERATOR = 0x00800000;
static const quint32 STORED_PICTURE = 0x00100010;
static const quint32 PLAY_MODE = 0x03000000;

static const QString RECORD_PAUSE = QStringLiteral("/Record pause interface=-");
static const QString RECORD_RESUME = QStringLiteral("/Record resume interface=-");
static const QString RECORD_STOP = QStringLiteral("/Record stop interface=-");
static const QString PLAY_STOP = QStringLiteral("/Play stop interface=-");

// A picture is stored and shown, then read, and the live one is back.
static const QStringList ONE_SAVE = {
    QStringLiteral("fpga write32 0x00ff0008 0x00000001"),
    QStringLiteral("fpga write32 0x00ff0000 0x00100010"),
    QStringLiteral("fpga seek 0x01000000"),
    QStringLiteral("fpga read 1658880 = 1658880 : ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ..."),
    QStringLiteral("fpga write32 0x00ff0000 0x00000000"),
};

// The trace without the polls of the input signal, which come by themselves.
static QStringList deviceOperations(const CBoard& rcBoard)
{
    QStringList cOperations;
    for (const QString& rcLine : rcBoard.traceLines())
        if (!rcLine.startsWith(QLatin1String("i2c")))
            cOperations << rcLine;
    return cOperations;
}

void TestVideoProcessing::init()
{
    m_pcScene.reset(new CVideoScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestVideoProcessing::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
}

void TestVideoProcessing::introspection_equals_the_interface_file()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.videoprocessing.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QStringList cExpected = describeInterface(cFile.readAll(), CVideoScene::INTERFACE);
    QVERIFY(!cExpected.isEmpty());
    QCOMPARE(describeInterface(m_pcScene->daemon().introspect(CVideoScene::PATH), CVideoScene::INTERFACE),
             cExpected);
}

void TestVideoProcessing::a_recording_is_the_codecs()
{
    const QString cFile = file("film äöü.ts");
    QCOMPARE(call("start_video_recording", cFile), OK);
    QVERIFY(is("is_video_recording_running"));
    QTRY_VERIFY(QFileInfo(cFile).size() > 65536);
    QCOMPARE(call("pause_video_recording"), OK);
    QVERIFY(is("is_video_recording_paused"));
    QVERIFY(!is("is_video_recording_running"));
    QCOMPARE(call("resume_video_recording"), OK);
    QCOMPARE(call("stop_video_recording"), OK);
    QVERIFY(!is("is_video_recording_running"));
    // No message has an interface; the 3 is always sent.
    QCOMPARE(m_pcScene->board().codecCalls(),
             (QStringList{QStringLiteral("/Record record \"%1\" 3 interface=-").arg(cFile), RECORD_PAUSE,
                          RECORD_RESUME, RECORD_STOP}));
    const QDBusMessage cTime =
        m_pcScene->daemon().call(CVideoScene::PATH, QStringLiteral("query_video_recording_time"));
    QCOMPARE(cTime.signature(), QStringLiteral("av"));
    QCOMPARE(qdbus_cast<QVariantList>(cTime.arguments().value(0)), (QVariantList{0U, 0U, 0U}));
    QCOMPARE(call("get_video_recording_average_data_rate"), 22);
    QCOMPARE(m_pcScene->signalled(), QStringList());
}

void TestVideoProcessing::a_playback_is_the_codecs()
{
    const QString cFile = file("film.ts");
    QFile cMade(cFile);
    QVERIFY(cMade.open(QIODevice::WriteOnly));
    QCOMPARE(call("start_video_playback", cFile), OK);
    QVERIFY(is("is_video_playback_running"));
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL), PLAY_MODE);
    QCOMPARE(call("pause_video_playback"), OK);
    QVERIFY(is("is_video_playback_paused"));
    QCOMPARE(call("resume_video_playback"), OK);
    QCOMPARE(call("stop_video_playback"), OK);
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL), 0U);
    QCOMPARE(m_pcScene->board().codecCalls(),
             (QStringList{QStringLiteral("/Play play \"%1\" interface=-").arg(cFile),
                          QStringLiteral("/Play pause interface=-"),
                          QStringLiteral("/Play resume interface=-"), PLAY_STOP}));
}

void TestVideoProcessing::switches_take_a_playback_back_to_the_camera_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("method"); // none: the camera is unplugged
    QTest::addColumn<QVariantList>("arguments");
    const QString cOverlay = QStringLiteral("/videooverlay");
    const QString cDebug = QStringLiteral("/debug");
    QTest::newRow("overlay on") << cOverlay << "show_overlay" << QVariantList();
    QTest::newRow("overlay off") << cOverlay << "hide_overlay" << QVariantList();
    QTest::newRow("sync") << CVideoScene::PATH << "set_video_input_enabled" << QVariantList{0};
    QTest::newRow("signal lost") << QString() << QString() << QVariantList();
    QTest::newRow("freeze") << cDebug << "fpga_disable_video_restore" << QVariantList();
    QTest::newRow("generator") << cDebug << "fpga_enable_frame_generator" << QVariantList();
    QTest::newRow("reload") << cDebug << "reload_hardware_config" << QVariantList();
}

// Kept: they write the shadow of the control register, which doesn't follow the mode. Clients that switch the
// overlay during playback see it.
void TestVideoProcessing::switches_take_a_playback_back_to_the_camera()
{
    QFETCH(QString, path);
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    const QString cFile = file("film.ts");
    QFile cMade(cFile);
    QVERIFY(cMade.open(QIODevice::WriteOnly));
    QCOMPARE(call("start_video_playback", cFile), OK);
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL) & PLAY_MODE, PLAY_MODE);
    if (path.isEmpty())
        m_pcScene->board().setCameraPlugged(false);
    else
        m_pcScene->daemon().send(path, method, arguments);
    QTRY_COMPARE_WITH_TIMEOUT(m_pcScene->board().fpgaRegister(CONTROL) & PLAY_MODE, 0U, TIMEOUT_CALL_MS);
    QVERIFY(is("is_video_playback_running"));
}

void TestVideoProcessing::commands_are_refused_in_other_states_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QStringList>("allowed");
    const QString cSave = QStringLiteral("save_video_image");
    const QString cDisplay = QStringLiteral("display_video_image");
    const QString cStop = QStringLiteral("stop_video_recording");
    QTest::newRow("idle") << CVideoScene::IDLE
                          << QStringList{cSave, cDisplay, QStringLiteral("start_video_recording"),
                                         QStringLiteral("start_video_playback")};
    QTest::newRow("recording") << CVideoScene::RECORDING
                               << QStringList{cSave, QStringLiteral("pause_video_recording"), cStop};
    QTest::newRow("recording paused")
        << CVideoScene::RECORDING_PAUSED
        << QStringList{cSave, cDisplay, QStringLiteral("resume_video_recording"), cStop};
    QTest::newRow("playback") << CVideoScene::PLAYBACK
                              << QStringList{QStringLiteral("pause_video_playback"),
                                             QStringLiteral("stop_video_playback")};
    QTest::newRow("playback paused") << CVideoScene::PLAYBACK_PAUSED
                                     << QStringList{QStringLiteral("resume_video_playback"),
                                                    QStringLiteral("stop_video_playback")};
    // Kept: clearing an image answers 2 even when it was allowed, as clients know it. So it is not among the
    // refused commands either.
    QTest::newRow("image") << CVideoScene::IMAGE << QStringList{QStringLiteral("clear_video_image")};
    QTest::newRow("image over a paused recording")
        << CVideoScene::IMAGE_RECORDING_PAUSED << QStringList{QStringLiteral("clear_video_image")};
    QTest::newRow("error") << CVideoScene::FAILED << QStringList{};
}

// A refused command sends nothing to the codec and touches no device.
void TestVideoProcessing::commands_are_refused_in_other_states()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QStringList, allowed);
    QVERIFY(m_pcScene->enterState(state));
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.clearCodecCalls();
    const quint32 u32Control = rcBoard.fpgaRegister(CONTROL);
    QCOMPARE(m_pcScene->notRefused(allowed), QStringList());
    QCOMPARE(rcBoard.codecCalls(), QStringList());
    QCOMPARE(rcBoard.fpgaRegister(CONTROL), u32Control);
    QVERIFY(!QFileInfo::exists(file("other")));
}

void TestVideoProcessing::commands_behind_a_save_are_refused_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("idle") << CVideoScene::RECORDING << QByteArray("stop_video_recording")
                          << QStringList{RECORD_STOP};
    QTest::newRow("recording") << CVideoScene::RECORDING_PAUSED << QByteArray("resume_video_recording")
                               << QStringList{RECORD_RESUME, RECORD_PAUSE, RECORD_RESUME};
    QTest::newRow("recording paused")
        << CVideoScene::RECORDING << QByteArray("pause_video_recording") << QStringList{RECORD_PAUSE};
}

// The daemon waits for the codec's answer to the command that leads to the state until all calls behind it
// have arrived. So the save finds the others queued, and its image is written after them.
void TestVideoProcessing::commands_behind_a_save_are_refused()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QByteArray, command);
    QFETCH(QStringList, calls);
    CBoard& rcBoard = m_pcScene->board();
    QVERIFY(m_pcScene->enterState(state));
    rcBoard.clearCodecCalls();
    rcBoard.setTracing(true);
    m_pcScene->codec().hold();
    QList<QDBusPendingCall> cAsked{m_pcScene->ask(command),
                                   m_pcScene->ask("save_video_image", file("a.bmp"))};
    QList<int> cExpected{OK, OK};
    for (const CVideoScene::SCommand& rsCommand : CVideoScene::COMMANDS) {
        cAsked << m_pcScene->ask(rsCommand.pszName, rsCommand.bFile ? file("other") : QString());
        cExpected << INVALID_STATE;
    }
    for (const char* pszQuestion : {"is_video_recording_running", "is_video_recording_paused",
                                    "is_video_playback_running", "is_video_playback_paused"}) {
        cAsked << m_pcScene->ask(pszQuestion);
        cExpected << 0;
    }
    QVERIFY(m_pcScene->daemon().receives());
    m_pcScene->codec().goOn();
    QList<int> cAnswers;
    for (const QDBusPendingCall& rcAsked : cAsked)
        cAnswers << CVideoScene::answerTo(rcAsked);
    QCOMPARE(cAnswers, cExpected);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")});

    QCOMPARE(rcBoard.codecCalls(), calls);
    QCOMPARE(deviceOperations(rcBoard), ONE_SAVE);
    QCOMPARE(QImage(file("a.bmp")).size(), QSize(720, 576));
    QVERIFY(!QFileInfo::exists(file("other")));
    QCOMPARE(is("is_video_recording_running"), command.startsWith("resume"));
    QCOMPARE(is("is_video_recording_paused"), command.startsWith("pause"));
}

void TestVideoProcessing::commands_that_come_while_an_image_is_written_wait_for_it()
{
    QVERIFY(m_pcScene->enterState(CVideoScene::RECORDING));
    QCOMPARE(call("save_video_image", file("a.bmp")), OK);
    QTRY_VERIFY(QFileInfo::exists(file("a.bmp")));
    QCOMPARE(m_pcScene->signalled(), QStringList());
    QCOMPARE(call("resume_video_recording"), INVALID_STATE);
    QCOMPARE(call("pause_video_recording"), OK);
    QCOMPARE(m_pcScene->board().codecCalls().mid(1),
             (QStringList{RECORD_PAUSE, RECORD_RESUME, RECORD_PAUSE}));
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")});
}

static QString codec(const char* pszPath, const char* pszMember, const QString& rcArguments = QString())
{
    return QStringLiteral(
               "method call -> destination=velmar.mobilygen path=%1; interface=(null); member=%2%3")
        .arg(QLatin1String(pszPath), QLatin1String(pszMember), rcArguments);
}

static QString answer(const char* pszValue)
{
    return QStringLiteral("method return -> destination=client, %1").arg(QLatin1String(pszValue));
}

static QString emitted(const char* pszMember, const char* pszValue)
{
    return QStringLiteral("signal -> destination=(null destination) path=/videoprocessing; "
                          "interface=velmar.haldend.videoprocessing; member=%1, %2")
        .arg(QLatin1String(pszMember), QLatin1String(pszValue));
}

void TestVideoProcessing::each_call_sends_these_messages_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("messages");

    using Scene = CVideoScene;
    const QString cFilm = QStringLiteral(", string \"film.ts\"");
    const QString cOk = answer("int32 0");
    const QString cRefused = answer("int32 2");
    const QString cNotFound = answer("int32 3");
    const QString cNo = answer("boolean false");
    const QString cSaved = emitted("video_image_saved", "int32 0");
    const struct {
        Scene::EState eState;
        const char* pszMethod;
        const char* pszFile;
        QStringList cMessages;
    } asRows[] = {
        {Scene::IDLE,                   "save_video_image",           "a.bmp",   {cOk, cSaved}                       },
        {Scene::RECORDING,
         "save_video_image",                                          "a.bmp",
         {codec("/Record", "pause"), cOk, codec("/Record", "resume"), cSaved}                                        },
        {Scene::RECORDING_PAUSED,       "save_video_image",           "a.bmp",   {cOk, cSaved}                       },
        {Scene::IDLE,                   "display_video_image",        "a.bmp",   {cNotFound}                         },
        {Scene::RECORDING_PAUSED,       "display_video_image",        "a.bmp",   {cNotFound}                         },
        {Scene::IMAGE,                  "clear_video_image",          nullptr,   {cRefused}                          },
        {Scene::IMAGE_RECORDING_PAUSED, "clear_video_image",          nullptr,   {cRefused}                          },
        {Scene::IDLE,
         "start_video_recording",                                     "film.ts",
         {codec("/Record", "record", cFilm + QStringLiteral(", int32 3")), cOk}                                      },
        {Scene::RECORDING,              "pause_video_recording",      nullptr,   {codec("/Record", "pause"), cOk}    },
        {Scene::RECORDING_PAUSED,       "resume_video_recording",     nullptr,   {codec("/Record", "resume"), cOk}   },
        {Scene::RECORDING,              "stop_video_recording",       nullptr,   {codec("/Record", "stop"), cOk}     },
        {Scene::RECORDING_PAUSED,       "stop_video_recording",       nullptr,   {codec("/Record", "stop"), cOk}     },
        {Scene::IDLE,                   "start_video_playback",       "film.ts", {codec("/Play", "play", cFilm), cOk}},
        {Scene::PLAYBACK,               "pause_video_playback",       nullptr,   {codec("/Play", "pause"), cOk}      },
        {Scene::PLAYBACK_PAUSED,        "resume_video_playback",      nullptr,   {codec("/Play", "resume"), cOk}     },
        {Scene::PLAYBACK,               "stop_video_playback",        nullptr,   {codec("/Play", "stop"), cOk}       },
        {Scene::PLAYBACK_PAUSED,        "stop_video_playback",        nullptr,   {codec("/Play", "stop"), cOk}       },

        {Scene::RECORDING,              "start_video_recording",      "film.ts", {cRefused}                          },
        {Scene::IDLE,                   "stop_video_playback",        nullptr,   {cRefused}                          },
        {Scene::FAILED,                 "stop_video_recording",       nullptr,   {cRefused}                          },

        {Scene::IDLE,                   "is_video_recording_running", nullptr,   {cNo}                               },
        {Scene::RECORDING_PAUSED,       "is_video_recording_paused",  nullptr,   {answer("boolean true")}            },
        {Scene::PLAYBACK,               "is_video_playback_running",  nullptr,   {answer("boolean true")}            },
        {Scene::PLAYBACK,               "is_video_playback_paused",   nullptr,   {cNo}                               },
        {Scene::IDLE,
         "query_video_recording_time",                                nullptr,
         {answer("array [, variant uint32 0, variant uint32 0, variant uint32 0, ]")}                                },
        {Scene::IDLE,                   "is_video_input_available",   nullptr,   {cNo}                               },
        {Scene::IDLE,                   "get_video_input_type",       nullptr,   {cOk}                               },
    };
    for (const auto& rsRow : asRows)
        QTest::addRow("%s in state %d", rsRow.pszMethod, int(rsRow.eState))
            << rsRow.eState << QByteArray(rsRow.pszMethod) << QByteArray(rsRow.pszFile) << rsRow.cMessages;
}

// All messages of the daemon, in their order, as a monitor on the bus sees them.
void TestVideoProcessing::each_call_sends_these_messages()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QByteArray, method);
    QFETCH(QByteArray, name);
    QFETCH(QStringList, messages);
    QVERIFY(m_pcScene->enterState(state));
    QDBusConnection cClient = m_pcScene->daemon().client();
    const QString cDaemon = cClient.interface()->serviceOwner(QStringLiteral("velmar.haldend"));
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));

    call(method, name.isNull() ? QString() : file(name));
    QTRY_COMPARE(m_pcScene->signalled().size(), messages.filter(QStringLiteral("signal ->")).size());
    // The answer that ends the list is unlike any other.
    QCOMPARE(call("get_video_recording_average_data_rate"), 22);
    QVERIFY2(cMonitor.waitFor("int32 22"), cMonitor.seen().constData());
    QVERIFY(cMonitor.end());

    QStringList cSent = cMonitor.messagesOf(cDaemon);
    cSent.replaceInStrings(QLatin1Char('=') + cClient.baseService(), QStringLiteral("=client"));
    cSent.replaceInStrings(QFileInfo(file("a")).path() + QLatin1Char('/'), QString());
    QCOMPARE(cSent, messages + QStringList{answer("int32 22")});
    // The effects that the monitor doesn't show.
    QCOMPARE(m_pcScene->board().codecCalls().filter(QStringLiteral("no-reply")), QStringList());
}

void TestVideoProcessing::a_still_image_of_a_recording_pauses_it()
{
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
    QCOMPARE(call("save_video_image", file("a.bmp")), OK);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")});
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_pcScene->board().codecCalls().mid(1), (QStringList{RECORD_PAUSE, RECORD_RESUME}));
    QCOMPARE(QImage(file("a.bmp")).size(), QSize(720, 576));
    QCOMPARE(call("stop_video_recording"), OK);

    QCOMPARE(call("display_video_image", file("a.bmp")), OK);
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL), STORED_PICTURE);
    QCOMPARE(call("clear_video_image"), INVALID_STATE);
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL), 0U);
}

void TestVideoProcessing::a_missing_image_is_shown_all_the_same()
{
    QCOMPARE(call("display_video_image", file("none.bmp")), FILE_OPEN_ERROR);
    QCOMPARE(m_pcScene->board().fpgaRegister(CONTROL), STORED_PICTURE);
    QCOMPARE(call("start_video_recording", file("film.ts")), INVALID_STATE);
    QCOMPARE(call("clear_video_image"), INVALID_STATE);
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
}

void TestVideoProcessing::the_camera_is_unplugged_and_plugged()
{
    CBoard& rcBoard = m_pcScene->board();
    QCOMPARE(call("get_video_input_type"), 0);
    QVERIFY(!is("is_video_input_available"));
    rcBoard.setCameraPlugged(false);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_input_type_changed 1")});
    QCOMPARE(call("get_video_input_type"), 1);
    QVERIFY(is("is_video_input_available"));
    QCOMPARE(rcBoard.fpgaRegister(CONTROL), FRAME_GENERATOR);
    rcBoard.setCameraPlugged(true);
    QTRY_COMPARE(m_pcScene->signalled().size(), 2);
    QCOMPARE(m_pcScene->signalled().constLast(), QStringLiteral("video_input_type_changed 0"));
    QCOMPARE(rcBoard.fpgaRegister(CONTROL), 0U);
}

void TestVideoProcessing::the_end_stops_what_runs_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QStringList>("calls");
    const QStringList cNothing;
    QTest::newRow("idle") << CVideoScene::IDLE << cNothing;
    QTest::newRow("recording") << CVideoScene::RECORDING << QStringList{RECORD_STOP};
    QTest::newRow("recording paused") << CVideoScene::RECORDING_PAUSED << QStringList{RECORD_STOP};
    QTest::newRow("playback") << CVideoScene::PLAYBACK << QStringList{PLAY_STOP};
    QTest::newRow("playback paused") << CVideoScene::PLAYBACK_PAUSED << QStringList{PLAY_STOP};
    QTest::newRow("image") << CVideoScene::IMAGE << cNothing;
    // Only running actions are stopped.
    QTest::newRow("image over a paused recording") << CVideoScene::IMAGE_RECORDING_PAUSED << cNothing;
    QTest::newRow("error") << CVideoScene::FAILED << cNothing;
}

void TestVideoProcessing::the_end_stops_what_runs()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QStringList, calls);
    QVERIFY(m_pcScene->enterState(state));
    m_pcScene->board().clearCodecCalls();
    QCOMPARE(m_pcScene->end(), QString());
    QCOMPARE(m_pcScene->board().codecCalls(), calls);
    QCOMPARE(m_pcScene->signalled(), QStringList());
}

void TestVideoProcessing::the_end_without_a_codec_is_as_quiet_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::newRow("recording") << CVideoScene::RECORDING;
    QTest::newRow("playback") << CVideoScene::PLAYBACK;
}

void TestVideoProcessing::the_end_without_a_codec_is_as_quiet()
{
    QFETCH(CVideoScene::EState, state);
    QVERIFY(m_pcScene->enterState(state));
    m_pcScene->codec().end();
    QCOMPARE(m_pcScene->end(), QString());
}

// The signal comes while the save waits for the pause of the recording.
void TestVideoProcessing::the_end_comes_after_a_pending_save()
{
    QVERIFY(m_pcScene->enterState(CVideoScene::RECORDING));
    m_pcScene->board().setCodecDelay(500);
    m_pcScene->ask("save_video_image", file("a.bmp"));
    QTRY_COMPARE(m_pcScene->board().codecCalls().value(1), RECORD_PAUSE);
    ::kill(static_cast<pid_t>(m_pcScene->daemon().pid()), SIGTERM);
    QCOMPARE(m_pcScene->end(), QString());
    QCOMPARE(m_pcScene->board().codecCalls().mid(1), (QStringList{RECORD_PAUSE, RECORD_RESUME, RECORD_STOP}));
    QCOMPARE(QImage(file("a.bmp")).size(), QSize(720, 576));
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")});
}

void TestVideoProcessing::the_end_comes_after_a_running_save()
{
    QVERIFY(m_pcScene->enterState(CVideoScene::RECORDING));
    QCOMPARE(call("save_video_image", file("a.bmp")), OK);
    QTRY_VERIFY(QFileInfo::exists(file("a.bmp")));
    QCOMPARE(m_pcScene->end(), QString());
    QCOMPARE(m_pcScene->board().codecCalls().mid(1), (QStringList{RECORD_PAUSE, RECORD_RESUME, RECORD_STOP}));
    QCOMPARE(QFileInfo(file("a.bmp")).size(), 54 + 4 * 720 * 576);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")});
}

QTEST_GUILESS_MAIN(TestVideoProcessing)

#include "tst_videoprocessing.moc"
