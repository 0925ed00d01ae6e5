/* SPDX-License-Identifier: MIT */
/* The service object and its generated adaptor on a private bus: its registration, the commands that it
 * forwards, and the signals that it sends. The commands themselves are tested with the video processor. */
#include "dbus/CHaldenVideoProcessing.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/support/CFakeCodec.h"
#include "tests/support/CPlatformBoard.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/Introspection.h"
#include "tests/support/hw/skipped_sleep.h"
#include "video/CVideoProcessor.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QFile>
#include <QMetaMethod>
#include <QtTest>

#include <algorithm>
#include <climits>

class TestCHaldenVideoProcessing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void says_how_it_registers_and_does_so_once();
    void a_path_already_taken_fails_and_leaves_no_adaptor();
    void slots_are_in_order();
    void adaptor_slots_and_signals_are_those_of_the_interface();
    void the_interface_lists_its_members_in_order();

    void commands_reach_the_codec_and_return_their_results();
    void questions_answer_for_the_state();
    void an_idle_recording_time_is_three_zeros();
    void clearing_answers_2_in_any_case();
    void a_save_answers_at_once_and_reports_later();
    void input_questions_contradict_each_other_data();
    void input_questions_contradict_each_other();
    void any_number_but_0_enables_the_input_data();
    void any_number_but_0_enables_the_input();
    void its_signals_go_to_the_bus_data();
    void its_signals_go_to_the_bus();

private:
    int call(const char* pszMethod);
    int call(const char* pszMethod, const QString& rcFileName);
    bool ask(const char* pszMethod);

    CPrivateBus m_cBus;
    CFakeCodec m_cCodec;
    QScopedPointer<CPlatformBoard> m_pcBoard;
    QByteArray m_cDevice;
    QScopedPointer<CVideoProcessor> m_pcProcessor;
    QScopedPointer<CHaldenVideoProcessing> m_pcProcessing;
    QObject* m_pcAdaptor = nullptr;
};

static const QString PATH = QStringLiteral("/videoprocessing");
static const QString INTERFACE = QStringLiteral("velmar.haldend.videoprocessing");

static QObject* adaptorOf(QObject& rcService)
{
    return rcService.findChild<QDBusAbstractAdaptor*>();
}

// Registers the object; rcOutput gets its lines on standard output.
static bool setup(CHaldenVideoProcessing& rcProcessing, QByteArray& rcOutput)
{
    CCapturedOutput cOutput(1);
    const bool bRegistered = rcProcessing.setupDBusConnection();
    rcOutput = cOutput.take();
    return bRegistered;
}

void TestCHaldenVideoProcessing::initTestCase()
{
    QVERIFY2(m_cBus.start(), qPrintable(m_cBus.error()));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cBus.address().toLocal8Bit());
    QVERIFY(m_cCodec.start(m_cBus.address()));
}

void TestCHaldenVideoProcessing::init()
{
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
    QCOMPARE(m_pcBoard->initialize(), 1);
    m_cDevice = (*m_pcBoard)->path(BOARD_I2C).toLocal8Bit();
    m_pcProcessor.reset(new CVideoProcessor);
    QVERIFY(m_pcProcessor->initialize(m_cDevice.constData()));
    m_pcProcessing.reset(new CHaldenVideoProcessing(*m_pcProcessor));
    QByteArray cOutput;
    QVERIFY(setup(*m_pcProcessing, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenVideoProcessing::setupDBusConnection() \n"
                                 "CHaldenVideoProcessing::setupDBusConnection(new) \n"
                                 "CHaldenVideoProcessing::setupDBusConnection()=1 \n"));
    m_pcAdaptor = adaptorOf(*m_pcProcessing);
    QVERIFY(m_pcAdaptor != nullptr);
}

void TestCHaldenVideoProcessing::cleanup()
{
    m_pcProcessing.reset();
    m_pcProcessor.reset();
    m_cCodec.takeCalls();
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

// Through the adaptor, like a client's call.
int TestCHaldenVideoProcessing::call(const char* pszMethod)
{
    int iResult = -1;
    QMetaObject::invokeMethod(m_pcAdaptor, pszMethod, Q_RETURN_ARG(int, iResult));
    return iResult;
}

int TestCHaldenVideoProcessing::call(const char* pszMethod, const QString& rcFileName)
{
    int iResult = -1;
    QMetaObject::invokeMethod(m_pcAdaptor, pszMethod, Q_RETURN_ARG(int, iResult), Q_ARG(QString, rcFileName));
    return iResult;
}

bool TestCHaldenVideoProcessing::ask(const char* pszMethod)
{
    bool bResult = false;
    const bool bForwarded = QMetaObject::invokeMethod(m_pcAdaptor, pszMethod, Q_RETURN_ARG(bool, bResult));
    return bForwarded && bResult;
}

void TestCHaldenVideoProcessing::says_how_it_registers_and_does_so_once()
{
    QByteArray cOutput;
    QVERIFY(!setup(*m_pcProcessing, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenVideoProcessing::setupDBusConnection() \n"
                                 "CHaldenVideoProcessing::setupDBusConnection()=0 \n"));
    QCOMPARE(adaptorOf(*m_pcProcessing), m_pcAdaptor);
    QCOMPARE(QDBusConnection::systemBus().objectRegisteredAt(PATH), m_pcProcessing.data());
}

void TestCHaldenVideoProcessing::a_path_already_taken_fails_and_leaves_no_adaptor()
{
    CHaldenVideoProcessing cSecond(*m_pcProcessor);
    QByteArray cOutput;
    QVERIFY(!setup(cSecond, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenVideoProcessing::setupDBusConnection() \n"
                                 "CHaldenVideoProcessing::setupDBusConnection(new) \n"
                                 "CHaldenVideoProcessing::setupDBusConnection(delete) \n"
                                 "CHaldenVideoProcessing::setupDBusConnection()=0 \n"));
    QVERIFY(adaptorOf(cSecond) == nullptr);
}

static QList<QByteArray> methodsOf(const QMetaObject* pcMeta, QMetaMethod::MethodType eType)
{
    QList<QByteArray> cMethods;
    for (int iMethod = pcMeta->methodOffset(); iMethod < pcMeta->methodCount(); ++iMethod)
        if (pcMeta->method(iMethod).methodType() == eType)
            cMethods << pcMeta->method(iMethod).methodSignature();
    return cMethods;
}

static const QList<QByteArray> METHODS = {
    "clear_video_image()",           "display_video_image(QString)",
    "get_video_input_type()",        "get_video_recording_average_data_rate()",
    "is_video_input_available()",    "is_video_playback_paused()",
    "is_video_playback_running()",   "is_video_recording_paused()",
    "is_video_recording_running()",  "pause_video_playback()",
    "pause_video_recording()",       "query_video_recording_time()",
    "resume_video_playback()",       "resume_video_recording()",
    "save_video_image(QString)",     "set_video_input_enabled(int)",
    "start_video_playback(QString)", "start_video_recording(QString)",
    "stop_video_playback()",         "stop_video_recording()"};

void TestCHaldenVideoProcessing::slots_are_in_order()
{
    const QList<QByteArray> cOwn = {
        "onVideoRecordingError(EVideoProcessorResult)", "onVideoPlaybackError(EVideoProcessorResult)",
        "onVideoInputTypeChanged(EVideoInputType)", "onVideoImageSaved(EVideoProcessorResult)"};
    const QMetaObject* pcMeta = m_pcProcessing->metaObject();
    QCOMPARE(methodsOf(pcMeta, QMetaMethod::Slot), cOwn + METHODS);
    QCOMPARE(methodsOf(pcMeta, QMetaMethod::Signal), QList<QByteArray>());
}

// The adaptor forwards by name, which nothing checks at compile time: results have to be the same too.
void TestCHaldenVideoProcessing::adaptor_slots_and_signals_are_those_of_the_interface()
{
    const QMetaObject* pcMeta = m_pcAdaptor->metaObject();
    QCOMPARE(methodsOf(pcMeta, QMetaMethod::Slot), METHODS);
    QList<QByteArray> cSignals = methodsOf(pcMeta, QMetaMethod::Signal);
    std::sort(cSignals.begin(), cSignals.end());
    QCOMPARE(cSignals, (QList<QByteArray>{"video_image_saved(int)", "video_input_type_changed(int)",
                                          "video_playback_error(int)", "video_recording_error(int)"}));
    const QMetaObject* pcService = m_pcProcessing->metaObject();
    for (const QByteArray& rcMethod : METHODS)
        QCOMPARE(pcMeta->method(pcMeta->indexOfSlot(rcMethod)).returnType(),
                 pcService->method(pcService->indexOfSlot(rcMethod)).returnType());
}

void TestCHaldenVideoProcessing::the_interface_lists_its_members_in_order()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.videoprocessing.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const struct {
        const char* pszMember;
        const char* pszIn;
        const char* pszOut;
    } asMembers[] = {
        {"method name=start_video_recording",                 "name=filename type=s",         "name=result type=i"          },
        {"method name=pause_video_recording",                 "",                             "name=result type=i"          },
        {"method name=resume_video_recording",                "",                             "name=result type=i"          },
        {"method name=stop_video_recording",                  "",                             "name=result type=i"          },
        {"signal name=video_recording_error",                 "name=error type=i",            ""                            },
        {"method name=is_video_recording_running",            "",                             "name=result type=b"          },
        {"method name=is_video_recording_paused",             "",                             "name=result type=b"          },
        {"method name=query_video_recording_time",            "",                             "name=time_hms type=av"       },
        {"method name=get_video_recording_average_data_rate", "",                             "name=data_rate type=i"       },
        {"method name=start_video_playback",                  "name=filename type=s",         "name=result type=i"          },
        {"method name=pause_video_playback",                  "",                             "name=result type=i"          },
        {"method name=resume_video_playback",                 "",                             "name=result type=i"          },
        {"method name=stop_video_playback",                   "",                             "name=result type=i"          },
        {"signal name=video_playback_error",                  "name=error type=i",            ""                            },
        {"method name=is_video_playback_running",             "",                             "name=result type=b"          },
        {"method name=is_video_playback_paused",              "",                             "name=result type=b"          },
        {"method name=save_video_image",                      "name=filename type=s",         "name=result type=i"          },
        {"signal name=video_image_saved",                     "name=result type=i",           ""                            },
        {"method name=display_video_image",                   "name=filename type=s",         "name=result type=i"          },
        {"method name=clear_video_image",                     "",                             "name=result type=i"          },
        {"method name=is_video_input_available",              "",                             "name=result type=b"          },
        {"method name=get_video_input_type",                  "",                             "name=video_input_type type=i"},
        {"signal name=video_input_type_changed",              "name=video_input_type type=i", ""                            },
        {"method name=set_video_input_enabled",               "name=value type=i",            ""                            },
    };
    QStringList cExpected;
    for (const auto& rsMember : asMembers) {
        const QString cMember = QString::fromLatin1(rsMember.pszMember);
        cExpected << cMember;
        if (cMember.endsWith(QLatin1String("set_video_input_enabled")))
            cExpected << QStringLiteral("  annotation name=org.freedesktop.DBus.Method.NoReply value=true");
        const bool bSignal = cMember.startsWith(QLatin1String("signal"));
        if (*rsMember.pszIn != '\0')
            cExpected << QLatin1String(bSignal ? "  arg " : "  arg direction=in ") +
                             QLatin1String(rsMember.pszIn);
        if (*rsMember.pszOut != '\0')
            cExpected << QLatin1String("  arg direction=out ") + QLatin1String(rsMember.pszOut);
    }
    QCOMPARE(describeInterface(cFile.readAll(), INTERFACE), cExpected);
}

void TestCHaldenVideoProcessing::commands_reach_the_codec_and_return_their_results()
{
    QCOMPARE(call("start_video_recording", QStringLiteral("/a")), 0);
    QCOMPARE(call("start_video_recording", QStringLiteral("/b")), 2);
    QCOMPARE(call("pause_video_recording"), 0);
    QCOMPARE(call("resume_video_recording"), 0);
    QCOMPARE(call("stop_video_recording"), 0);
    QCOMPARE(call("start_video_playback", QStringLiteral("/c")), 0);
    QCOMPARE(call("pause_video_playback"), 0);
    QCOMPARE(call("resume_video_playback"), 0);
    QCOMPARE(call("stop_video_playback"), 0);
    QCOMPARE(m_cCodec.takeCalls(),
             (QStringList{QStringLiteral("/Record record(si) /a, 3"), QStringLiteral("/Record pause()"),
                          QStringLiteral("/Record resume()"), QStringLiteral("/Record stop()"),
                          QStringLiteral("/Play play(s) /c"), QStringLiteral("/Play pause()"),
                          QStringLiteral("/Play resume()"), QStringLiteral("/Play stop()")}));
    QCOMPARE(call("display_video_image", QStringLiteral("/nonexistent/file")), 3);
    m_cCodec.setConfirming(false);
    QCOMPARE(call("clear_video_image"), 2);
    QCOMPARE(call("start_video_recording", QStringLiteral("/d")), 1);
    m_cCodec.setConfirming(true);
    QCOMPARE(call("get_video_recording_average_data_rate"), 22);
}

void TestCHaldenVideoProcessing::questions_answer_for_the_state()
{
    const auto cAnswers = [this] {
        QByteArray cBits;
        for (const char* pszMethod : {"is_video_recording_running", "is_video_recording_paused",
                                      "is_video_playback_running", "is_video_playback_paused"})
            cBits += ask(pszMethod) ? '1' : '0';
        return cBits;
    };
    QCOMPARE(cAnswers(), QByteArray("0000"));
    call("start_video_recording", QStringLiteral("/a"));
    QCOMPARE(cAnswers(), QByteArray("1000"));
    call("pause_video_recording");
    QCOMPARE(cAnswers(), QByteArray("0100"));
    call("stop_video_recording");
    call("start_video_playback", QStringLiteral("/a"));
    QCOMPARE(cAnswers(), QByteArray("0010"));
    call("pause_video_playback");
    QCOMPARE(cAnswers(), QByteArray("0001"));
}

void TestCHaldenVideoProcessing::an_idle_recording_time_is_three_zeros()
{
    QVariantList cTime;
    QVERIFY(QMetaObject::invokeMethod(m_pcAdaptor, "query_video_recording_time",
                                      Q_RETURN_ARG(QVariantList, cTime)));
    QCOMPARE(cTime, (QVariantList{0U, 0U, 0U}));
    for (const QVariant& rcPart : cTime)
        QCOMPARE(rcPart.type(), QVariant::UInt);
}

void TestCHaldenVideoProcessing::clearing_answers_2_in_any_case()
{
    QCOMPARE(call("clear_video_image"), 2);
    QCOMPARE(call("display_video_image", QStringLiteral("/nonexistent/file")), 3);
    QCOMPARE(call("clear_video_image"), 2);
    // It was cleared.
    QCOMPARE(call("display_video_image", QStringLiteral("/nonexistent/file")), 3);
}

void TestCHaldenVideoProcessing::a_save_answers_at_once_and_reports_later()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_cBus.address()));
    int iSlept = 0;
    skipped_sleep_do([&iSlept] { ++iSlept; });
    QCOMPARE(call("save_video_image", QStringLiteral("/nonexistent/a.bmp")), 0);
    QCOMPARE(iSlept, 0);
    QCoreApplication::sendPostedEvents(m_pcProcessor.data());
    QCOMPARE(iSlept, 1);
    QVERIFY2(cMonitor.waitFor("member=video_image_saved\n   int32 3\n"), cMonitor.seen().constData());
    QVERIFY(cMonitor.end());
}

void TestCHaldenVideoProcessing::input_questions_contradict_each_other_data()
{
    QTest::addColumn<bool>("plugged");
    QTest::newRow("camera") << true;
    QTest::newRow("no camera") << false;
}

void TestCHaldenVideoProcessing::input_questions_contradict_each_other()
{
    QFETCH(bool, plugged);
    (*m_pcBoard)->setCameraPlugged(plugged);
    QCOMPARE(call("get_video_input_type"), plugged ? 0 : 1);
    QCOMPARE(ask("is_video_input_available"), !plugged);
}

void TestCHaldenVideoProcessing::any_number_but_0_enables_the_input_data()
{
    QTest::addColumn<int>("value");
    for (const int iValue : {0, 1, -1, 2, 256, 65536, INT_MAX, INT_MIN})
        QTest::addRow("%d", iValue) << iValue;
}

void TestCHaldenVideoProcessing::any_number_but_0_enables_the_input()
{
    QFETCH(int, value);
    const quint32 u32Internal = 0x00800000;
    m_pcProcessor->setVideoInputEnabled(value == 0);
    QVERIFY(QMetaObject::invokeMethod(m_pcAdaptor, "set_video_input_enabled", Q_ARG(int, value)));
    QCOMPARE((*m_pcBoard)->fpgaRegister(0xff0000), value == 0 ? u32Internal : 0U);
}

void TestCHaldenVideoProcessing::its_signals_go_to_the_bus_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("member");
    QTest::newRow("recording") << QByteArray("videoRecordingError")
                               << QByteArray("video_recording_error\n   int32 6\n");
    QTest::newRow("playback") << QByteArray("videoPlaybackError")
                              << QByteArray("video_playback_error\n   int32 6\n");
    QTest::newRow("image") << QByteArray("videoImageSaved") << QByteArray("video_image_saved\n   int32 6\n");
    QTest::newRow("input") << QByteArray("videoInputTypeChanged")
                           << QByteArray("video_input_type_changed\n   int32 1\n");
}

// Once each, with path and interface.
void TestCHaldenVideoProcessing::its_signals_go_to_the_bus()
{
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, member);
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_cBus.address()));
    const auto cEmit = [&] {
        return signal == "videoInputTypeChanged"
                   ? QMetaObject::invokeMethod(m_pcProcessor.data(), signal.constData(),
                                               Q_ARG(EVideoInputType, eVideoInputTypeInternal))
                   : QMetaObject::invokeMethod(
                         m_pcProcessor.data(), signal.constData(),
                         Q_ARG(EVideoProcessorResult, eVideoProcessorResultMaxLengthReached));
    };
    QVERIFY(cEmit());
    QVERIFY2(
        cMonitor.waitFor("path=/videoprocessing; interface=velmar.haldend.videoprocessing; member=" + member),
        cMonitor.seen().constData());
    m_cCodec.takeCalls(); // behind it on the bus
    QVERIFY(cMonitor.waitFor("member=arrived"));
    QCOMPARE(cMonitor.seen().count("interface=velmar.haldend.videoprocessing"), 1);
    QVERIFY(cMonitor.end());
}

QTEST_GUILESS_MAIN(TestCHaldenVideoProcessing)

#include "tst_CHaldenVideoProcessing.moc"
