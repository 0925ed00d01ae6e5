/* "/videoprocessing" from a client on the bus to the codec service, the FPGA and the file system. */
#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"
#include "tests/support/Introspection.h"
#include "tests/support/Timeouts.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QtTest>

class TestVideoProcessing : public QObject
{
    Q_OBJECT

public slots:
    void onSignal(const QDBusMessage& rcMessage)
    {
        m_cSignals
            << QStringLiteral("%1 %2").arg(rcMessage.member()).arg(rcMessage.arguments().value(0).toInt());
    }

private slots:
    void init();
    void cleanup();

    void introspection_equals_the_interface_file();
    void a_recording_is_the_codecs();
    void a_playback_is_the_codecs();
    void commands_are_refused_in_other_states_data();
    void commands_are_refused_in_other_states();
    void a_codec_that_fails_ends_in_the_error_data();
    void a_codec_that_fails_ends_in_the_error();
    void a_still_image_of_a_recording_pauses_it();
    void a_missing_image_is_shown_all_the_same();
    void the_camera_is_unplugged_and_plugged();
    void a_file_that_does_not_grow_ends_the_recording();
    void a_running_recording_is_stopped_at_the_end();
    void a_running_playback_is_stopped_at_the_end();

private:
    int call(const char* pszMethod, const QString& rcFile = QString());
    bool is(const char* pszMethod);
    QString file(const char* pszName) const { return m_pcFiles->filePath(QLatin1String(pszName)); }
    void enterState(int iState);

    QScopedPointer<QTemporaryDir> m_pcFiles;
    QScopedPointer<CScene> m_pcScene;
    QScopedPointer<CCodecProcess> m_pcCodec;
    QStringList m_cSignals;
};

static const QString PATH = QStringLiteral("/videoprocessing");
static const QString INTERFACE = QStringLiteral("velmar.haldend.videoprocessing");

static const int OK = 0;
static const int ERROR = 1;
static const int INVALID_STATE = 2;
static const int FILE_OPEN_ERROR = 3;

void TestVideoProcessing::init()
{
    m_cSignals.clear();
    m_pcFiles.reset(new QTemporaryDir);
    m_pcScene.reset(new CScene);
    m_pcCodec.reset(new CCodecProcess);
    QVERIFY2(m_pcScene->prepare(), m_pcScene->describe());
    QVERIFY2(m_pcCodec->start(m_pcScene->bus().address(), m_pcScene->board().directory()),
             m_pcCodec->describe());
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    QVERIFY(m_pcScene->daemon().client().connect(QStringLiteral("velmar.haldend"), PATH, INTERFACE, QString(),
                                                 this, SLOT(onSignal(QDBusMessage))));
}

void TestVideoProcessing::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
    m_pcCodec->end();
}

int TestVideoProcessing::call(const char* pszMethod, const QString& rcFile)
{
    const QVariantList cArguments = rcFile.isNull() ? QVariantList() : QVariantList{rcFile};
    const QDBusMessage cReply = m_pcScene->daemon().call(PATH, QString::fromLatin1(pszMethod), cArguments);
    return cReply.type() == QDBusMessage::ReplyMessage ? cReply.arguments().value(0).toInt() : -1;
}

bool TestVideoProcessing::is(const char* pszMethod)
{
    return m_pcScene->daemon().call(PATH, QString::fromLatin1(pszMethod)).arguments().value(0).toBool();
}

void TestVideoProcessing::introspection_equals_the_interface_file()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.videoprocessing.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QStringList cExpected = describeInterface(cFile.readAll(), INTERFACE);
    QVERIFY(!cExpected.isEmpty());
    QCOMPARE(describeInterface(m_pcScene->daemon().introspect(PATH), INTERFACE), cExpected);
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
             (QStringList{QStringLiteral("/Record record \"%1\" 3 interface=-").arg(cFile),
                          QStringLiteral("/Record pause interface=-"),
                          QStringLiteral("/Record resume interface=-"),
                          QStringLiteral("/Record stop interface=-")}));
    const QDBusMessage cTime = m_pcScene->daemon().call(PATH, QStringLiteral("query_video_recording_time"));
    QCOMPARE(cTime.signature(), QStringLiteral("av"));
    QCOMPARE(qdbus_cast<QVariantList>(cTime.arguments().value(0)), (QVariantList{0U, 0U, 0U}));
    QCOMPARE(call("get_video_recording_average_data_rate"), 22);
    QCOMPARE(m_cSignals, QStringList());
}

void TestVideoProcessing::a_playback_is_the_codecs()
{
    const QString cFile = file("film.ts");
    QFile cMade(cFile);
    QVERIFY(cMade.open(QIODevice::WriteOnly));
    QCOMPARE(call("start_video_playback", cFile), OK);
    QVERIFY(is("is_video_playback_running"));
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff0000), 0x03000000U);
    QCOMPARE(call("pause_video_playback"), OK);
    QVERIFY(is("is_video_playback_paused"));
    QCOMPARE(call("resume_video_playback"), OK);
    QCOMPARE(call("stop_video_playback"), OK);
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff0000), 0U);
    QCOMPARE(
        m_pcScene->board().codecCalls(),
        (QStringList{QStringLiteral("/Play play \"%1\" interface=-").arg(cFile),
                     QStringLiteral("/Play pause interface=-"), QStringLiteral("/Play resume interface=-"),
                     QStringLiteral("/Play stop interface=-")}));
}

// By the commands that lead there; 9 is the error.
void TestVideoProcessing::enterState(int iState)
{
    const QString cFile = file("film.ts");
    QFile cMade(cFile);
    QVERIFY(cMade.open(QIODevice::WriteOnly));
    if (iState == 1 || iState == 2 || iState == 6)
        QCOMPARE(call("start_video_recording", cFile), OK);
    if (iState == 2 || iState == 6)
        QCOMPARE(call("pause_video_recording"), OK);
    if (iState == 3 || iState == 4)
        QCOMPARE(call("start_video_playback", cFile), OK);
    if (iState == 4)
        QCOMPARE(call("pause_video_playback"), OK);
    if (iState == 5 || iState == 6)
        QCOMPARE(call("display_video_image", file("none.bmp")), FILE_OPEN_ERROR);
    if (iState == 9) {
        m_pcScene->board().setCodecMode(BOARD_CODEC_REFUSE);
        QCOMPARE(call("start_video_recording", cFile), ERROR);
        m_pcScene->board().setCodecMode(BOARD_CODEC_OK);
    }
}

void TestVideoProcessing::commands_are_refused_in_other_states_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("allowed");
    const QString cSave = QStringLiteral("save_video_image");
    const QString cDisplay = QStringLiteral("display_video_image");
    const QString cStop = QStringLiteral("stop_video_recording");
    QTest::newRow("idle") << 0
                          << QStringList{cSave, cDisplay, QStringLiteral("start_video_recording"),
                                         QStringLiteral("start_video_playback")};
    QTest::newRow("recording") << 1 << QStringList{cSave, QStringLiteral("pause_video_recording"), cStop};
    QTest::newRow("recording paused")
        << 2 << QStringList{cSave, cDisplay, QStringLiteral("resume_video_recording"), cStop};
    QTest::newRow("playback") << 3
                              << QStringList{QStringLiteral("pause_video_playback"),
                                             QStringLiteral("stop_video_playback")};
    QTest::newRow("playback paused") << 4
                                     << QStringList{QStringLiteral("resume_video_playback"),
                                                    QStringLiteral("stop_video_playback")};
    // Clearing an image answers 2 also when it was allowed, and so isn't among the refused ones either.
    QTest::newRow("image") << 5 << QStringList{QStringLiteral("clear_video_image")};
    QTest::newRow("image over a paused recording") << 6 << QStringList{QStringLiteral("clear_video_image")};
    QTest::newRow("error") << 9 << QStringList{};
}

// A refused command sends nothing to the codec and touches no device.
void TestVideoProcessing::commands_are_refused_in_other_states()
{
    QFETCH(int, state);
    QFETCH(QStringList, allowed);
    enterState(state);
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.clearCodecCalls();
    const quint32 u32Control = rcBoard.fpgaRegister(0xff0000);
    int iRefused = 0;
    for (const char* pszCommand :
         {"save_video_image", "display_video_image", "clear_video_image", "start_video_recording",
          "pause_video_recording", "resume_video_recording", "stop_video_recording", "start_video_playback",
          "pause_video_playback", "resume_video_playback", "stop_video_playback"}) {
        if (allowed.contains(QLatin1String(pszCommand)))
            continue;
        const QByteArray cCommand = pszCommand;
        const bool bFile = cCommand.startsWith("start") || cCommand.endsWith("e_video_image") ||
                           cCommand.startsWith("display");
        QCOMPARE(call(pszCommand, bFile ? file("other") : QString()), INVALID_STATE);
        ++iRefused;
    }
    QCOMPARE(iRefused, 11 - allowed.size());
    QCOMPARE(rcBoard.codecCalls(), QStringList());
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), u32Control);
    QVERIFY(!QFileInfo::exists(file("other")));
}

void TestVideoProcessing::a_codec_that_fails_ends_in_the_error_data()
{
    QTest::addColumn<int>("mode"); // -1: not on the bus
    QTest::newRow("refuses") << int(BOARD_CODEC_REFUSE);
    QTest::newRow("dies in the middle of the call") << int(BOARD_CODEC_DIE);
    QTest::newRow("isn't there") << -1;
}

void TestVideoProcessing::a_codec_that_fails_ends_in_the_error()
{
    QFETCH(int, mode);
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
    if (mode < 0)
        m_pcCodec->end();
    else
        m_pcScene->board().setCodecMode(static_cast<board_codec_mode>(mode));
    QCOMPARE(call("pause_video_recording"), ERROR);
    // For good: also when the codec is back.
    m_pcScene->board().setCodecMode(BOARD_CODEC_OK);
    QCOMPARE(call("stop_video_recording"), INVALID_STATE);
    QCOMPARE(call("start_video_playback", file("film.ts")), INVALID_STATE);
    QCOMPARE(call("save_video_image", file("a.bmp")), INVALID_STATE);
    QVERIFY(!is("is_video_recording_running"));
}

void TestVideoProcessing::a_still_image_of_a_recording_pauses_it()
{
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
    QCOMPARE(call("save_video_image", file("a.bmp")), OK);
    QTRY_COMPARE(m_cSignals, QStringList{QStringLiteral("video_image_saved 0")});
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_pcScene->board().codecCalls().mid(1),
             (QStringList{QStringLiteral("/Record pause interface=-"),
                          QStringLiteral("/Record resume interface=-")}));
    QCOMPARE(QImage(file("a.bmp")).size(), QSize(720, 576));
    QCOMPARE(call("stop_video_recording"), OK);

    QCOMPARE(call("display_video_image", file("a.bmp")), OK);
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff0000), 0x00100010U);
    QCOMPARE(call("clear_video_image"), INVALID_STATE);
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff0000), 0U);
}

void TestVideoProcessing::a_missing_image_is_shown_all_the_same()
{
    QCOMPARE(call("display_video_image", file("none.bmp")), FILE_OPEN_ERROR);
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff0000), 0x00100010U);
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
    QTRY_COMPARE(m_cSignals, QStringList{QStringLiteral("video_input_type_changed 1")});
    QCOMPARE(call("get_video_input_type"), 1);
    QVERIFY(is("is_video_input_available"));
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0x00800000U);
    rcBoard.setCameraPlugged(true);
    QTRY_COMPARE(m_cSignals.size(), 2);
    QCOMPARE(m_cSignals.constLast(), QStringLiteral("video_input_type_changed 0"));
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0U);
}

void TestVideoProcessing::a_file_that_does_not_grow_ends_the_recording()
{
    m_pcScene->board().setCodecMode(BOARD_CODEC_STALL);
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
    QTRY_COMPARE_WITH_TIMEOUT(m_cSignals, QStringList{QStringLiteral("video_recording_error 1")},
                              TIMEOUT_PROCESS_MS);
    QTRY_COMPARE(m_pcScene->board().codecCalls().value(1),
                 QStringLiteral("/Record stop interface=- no-reply"));
    QCOMPARE(call("stop_video_recording"), INVALID_STATE);
}

void TestVideoProcessing::a_running_recording_is_stopped_at_the_end()
{
    QCOMPARE(call("start_video_recording", file("film.ts")), OK);
    QCOMPARE(m_pcScene->end(), QString());
    QCOMPARE(m_pcScene->board().codecCalls().constLast(), QStringLiteral("/Record stop interface=-"));
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestVideoProcessing::a_running_playback_is_stopped_at_the_end()
{
    enterState(3);
    QCOMPARE(m_pcScene->end(), QString());
    QCOMPARE(m_pcScene->board().codecCalls().constLast(), QStringLiteral("/Play stop interface=-"));
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

QTEST_GUILESS_MAIN(TestVideoProcessing)

#include "tst_videoprocessing.moc"
