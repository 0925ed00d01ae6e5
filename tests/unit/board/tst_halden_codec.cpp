/* SPDX-License-Identifier: MIT */
/* The codec stand-in as a process, on a bus and a board of each test's own. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <memory>

namespace
{

const QString SERVICE = QStringLiteral("velmar.mobilygen");
const QString FAILED = QStringLiteral("velmar.mobilygen.Failed");
const QString RECORD = QStringLiteral("/Record");
const QString PLAY = QStringLiteral("/Play");
const qint64 BLOCK = 65536;
const int SHORT_CALL_MS = 200;

} // namespace

class TestHaldenCodec : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_recording_grows_until_it_is_stopped();
    void a_paused_recording_stands_still();
    void a_recording_is_text_that_says_what_it_is();
    void a_recording_replaces_what_was_there();
    void a_file_made_longer_grows_on_from_there();
    void names_are_utf8_whatever_the_environment();
    void a_file_that_can_not_be_made_or_read_is_an_error_data();
    void a_file_that_can_not_be_made_or_read_is_an_error();
    void playback_counts_frames_until_it_is_stopped();
    void a_paused_playback_stands_still();
    void what_makes_no_sense_now_is_an_error_data();
    void what_makes_no_sense_now_is_an_error();

    void each_call_is_noted_with_its_interface();
    void what_it_does_not_have_is_noted_and_an_error_data();
    void what_it_does_not_have_is_noted_and_an_error();
    void a_call_without_reply_gets_none_and_is_carried_out();
    void objects_answer_to_the_bus_itself();

    void refusing_it_answers_with_an_error_and_does_nothing();
    void hanging_it_does_not_answer_and_does_nothing();
    void stalled_the_file_does_not_grow();
    void losing_it_makes_no_file();
    void dying_it_ends_in_the_middle_of_a_call_and_can_come_back();
    void slow_it_takes_its_time_for_each_call();

    void a_second_one_ends_and_leaves_the_first_alone();
    void bad_starts_end_with_a_message_data();
    void bad_starts_end_with_a_message();
    void it_ends_with_its_bus();

private:
    /// As the daemon calls: without the name of an interface.
    QDBusMessage call(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments = {},
                      int iMilliseconds = TIMEOUT_CALL_MS);
    bool succeeds(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments = {});
    bool startRecording() { return succeeds(RECORD, QStringLiteral("record"), {m_cFile, 3}); }
    /// While paused: makes a call that takes several times as long as a block, and changes nothing.
    bool waitOutBlocks(const QString& rcPath);
    bool startCodec() { return m_pcCodec->start(m_pcBus->address(), m_cBoard.directory()); }
    qint64 fileSize() const { return QFileInfo(m_cFile).size(); }
    SCodecState::EActivity activity() const { return m_cBoard.codecState().eActivity; }

    std::unique_ptr<QTemporaryDir> m_pcDirectory;
    std::unique_ptr<CPrivateBus> m_pcBus;
    std::unique_ptr<CCodecProcess> m_pcCodec;
    CBoard m_cBoard;
    QString m_cFile;
};

void TestHaldenCodec::init()
{
    m_pcDirectory = std::make_unique<QTemporaryDir>();
    m_pcBus = std::make_unique<CPrivateBus>();
    m_pcCodec = std::make_unique<CCodecProcess>();
    m_cFile = m_pcDirectory->filePath(QStringLiteral("film.ts"));
    const QString cBoard = m_pcDirectory->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cBoard, cError) && m_cBoard.open(cBoard), qPrintable(cError));
    QVERIFY2(m_pcBus->start(), qPrintable(m_pcBus->error()));
    QVERIFY2(startCodec(), m_pcCodec->describe());
    QDBusConnection::connectToBus(m_pcBus->address(), SERVICE);
}

void TestHaldenCodec::cleanup()
{
    QDBusConnection::disconnectFromBus(SERVICE);
    m_pcCodec.reset();
    m_pcBus.reset();
    m_cBoard.close();
}

QDBusMessage TestHaldenCodec::call(const QString& rcPath, const QString& rcMethod,
                                   const QVariantList& rcArguments, int iMilliseconds)
{
    QDBusMessage cCall = QDBusMessage::createMethodCall(SERVICE, rcPath, QString(), rcMethod);
    cCall.setArguments(rcArguments);
    return QDBusConnection(SERVICE).call(cCall, QDBus::Block, iMilliseconds);
}

bool TestHaldenCodec::succeeds(const QString& rcPath, const QString& rcMethod,
                               const QVariantList& rcArguments)
{
    const QDBusMessage cAnswer = call(rcPath, rcMethod, rcArguments);
    return cAnswer.type() == QDBusMessage::ReplyMessage && cAnswer.arguments().isEmpty();
}

bool TestHaldenCodec::waitOutBlocks(const QString& rcPath)
{
    m_cBoard.setCodecDelay(700);
    const bool bRefused = call(rcPath, QStringLiteral("pause")).errorName() == FAILED;
    m_cBoard.setCodecDelay(0);
    return bRefused;
}

void TestHaldenCodec::a_recording_grows_until_it_is_stopped()
{
    QVERIFY(startRecording());
    QVERIFY(QFile::exists(m_cFile));
    QCOMPARE(activity(), SCodecState::RECORDING);
    QCOMPARE(m_cBoard.codecState().cFile, m_cFile);
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() >= 3 * BLOCK, TIMEOUT_CALL_MS);
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
    QCOMPARE(activity(), SCodecState::IDLE);
    QCOMPARE(m_cBoard.codecState().cFile, QString());
    QCOMPARE(fileSize() % BLOCK, 0);
}

void TestHaldenCodec::a_paused_recording_stands_still()
{
    QVERIFY(startRecording());
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() > 0, TIMEOUT_CALL_MS);
    QVERIFY(succeeds(RECORD, QStringLiteral("pause")));
    QCOMPARE(activity(), SCodecState::RECORDING_PAUSED);
    const qint64 iSize = fileSize();
    const int iFrame = m_cBoard.codecState().iFrame;
    QVERIFY(waitOutBlocks(RECORD));
    QCOMPARE(m_cBoard.codecState().iFrame, iFrame);
    QCOMPARE(fileSize(), iSize);
    QVERIFY(succeeds(RECORD, QStringLiteral("resume")));
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() > iSize, TIMEOUT_CALL_MS);
}

void TestHaldenCodec::a_recording_is_text_that_says_what_it_is()
{
    QVERIFY(startRecording());
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() >= 2 * BLOCK, TIMEOUT_CALL_MS);
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readLine(),
             QByteArray("halden-codec: frame 0000000000, line 0000").leftJustified(63) + '\n');
    cFile.seek(2 * BLOCK - 64);
    QCOMPARE(cFile.readLine(),
             QByteArray("halden-codec: frame 0000000005, line 1023").leftJustified(63) + '\n');
}

void TestHaldenCodec::a_recording_replaces_what_was_there()
{
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::WriteOnly) && cFile.write("old") == 3);
    cFile.close();
    QVERIFY(startRecording());
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
    QCOMPARE(fileSize() % BLOCK, 0);
}

void TestHaldenCodec::a_file_made_longer_grows_on_from_there()
{
    const qint64 iLength = 5LL << 30;
    QVERIFY(startRecording());
    QVERIFY(QFile::resize(m_cFile, iLength));
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() >= iLength + BLOCK, TIMEOUT_CALL_MS);
}

void TestHaldenCodec::names_are_utf8_whatever_the_environment()
{
    m_pcCodec->end();
    m_pcCodec->setVariable(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    QVERIFY2(startCodec(), m_pcCodec->describe());
    m_cFile = m_pcDirectory->filePath(QStringLiteral("Stra\u00dfe \u65e5\u672c.ts"));
    QVERIFY(startRecording());
    QVERIFY(QFile::exists(m_cFile));
    QVERIFY(m_cBoard.codecCalls().last().contains(m_cFile));
}

void TestHaldenCodec::a_file_that_can_not_be_made_or_read_is_an_error_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("file");
    QTest::newRow("no folder") << RECORD << "record"
                               << "/nowhere/film.ts";
    QTest::newRow("no name") << RECORD << "record"
                             << "";
    QTest::newRow("too long") << RECORD << "record" << QString(4096, QLatin1Char('f'));
    QTest::newRow("not there") << PLAY << "play"
                               << "/nowhere/film.ts";
}

void TestHaldenCodec::a_file_that_can_not_be_made_or_read_is_an_error()
{
    QFETCH(QString, path);
    QFETCH(QString, method);
    QFETCH(QString, file);
    const QVariantList cArguments = path == RECORD ? QVariantList{file, 3} : QVariantList{file};
    QCOMPARE(call(path, method, cArguments).errorName(), FAILED);
    QCOMPARE(activity(), SCodecState::IDLE);
    QVERIFY(startRecording());
}

void TestHaldenCodec::playback_counts_frames_until_it_is_stopped()
{
    QVERIFY(startRecording());
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
    QVERIFY(succeeds(PLAY, QStringLiteral("play"), {m_cFile}));
    QCOMPARE(activity(), SCodecState::PLAYING);
    QCOMPARE(m_cBoard.codecState().cFile, m_cFile);
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.codecState().iFrame >= 10, TIMEOUT_CALL_MS);
    QVERIFY(succeeds(PLAY, QStringLiteral("stop")));
    QCOMPARE(activity(), SCodecState::IDLE);
    QCOMPARE(m_cBoard.codecState().iFrame, 0);
}

void TestHaldenCodec::a_paused_playback_stands_still()
{
    QVERIFY(startRecording());
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
    QVERIFY(succeeds(PLAY, QStringLiteral("play"), {m_cFile}));
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.codecState().iFrame > 0, TIMEOUT_CALL_MS);
    QVERIFY(succeeds(PLAY, QStringLiteral("pause")));
    QCOMPARE(activity(), SCodecState::PLAYING_PAUSED);
    const int iFrame = m_cBoard.codecState().iFrame;
    QVERIFY(waitOutBlocks(PLAY));
    QCOMPARE(m_cBoard.codecState().iFrame, iFrame);
    QVERIFY(succeeds(PLAY, QStringLiteral("resume")));
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.codecState().iFrame > iFrame, TIMEOUT_CALL_MS);
}

void TestHaldenCodec::what_makes_no_sense_now_is_an_error_data()
{
    QTest::addColumn<bool>("recording");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("method");
    for (const char* pszMethod : {"pause", "resume", "stop"}) {
        QTest::addRow("idle, %s a recording", pszMethod) << false << RECORD << pszMethod;
        QTest::addRow("idle, %s a playback", pszMethod) << false << PLAY << pszMethod;
        QTest::addRow("recording, %s a playback", pszMethod) << true << PLAY << pszMethod;
    }
    QTest::newRow("recording, record") << true << RECORD << "record";
    QTest::newRow("recording, resume") << true << RECORD << "resume";
    QTest::newRow("recording, play") << true << PLAY << "play";
}

void TestHaldenCodec::what_makes_no_sense_now_is_an_error()
{
    QFETCH(bool, recording);
    QFETCH(QString, path);
    QFETCH(QString, method);
    QVERIFY(!recording || startRecording());
    QVariantList cArguments;
    if (method == QLatin1String("record"))
        cArguments = {m_cFile, 3};
    else if (method == QLatin1String("play"))
        cArguments = {m_cFile};
    const QDBusMessage cAnswer = call(path, method, cArguments);
    QCOMPARE(cAnswer.errorName(), FAILED);
    QVERIFY2(cAnswer.errorMessage().startsWith(QLatin1String("not while")),
             qPrintable(cAnswer.errorMessage()));
    QCOMPARE(activity(), recording ? SCodecState::RECORDING : SCodecState::IDLE);
}

void TestHaldenCodec::each_call_is_noted_with_its_interface()
{
    QVERIFY(startRecording());
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
    QDBusMessage cCall =
        QDBusMessage::createMethodCall(SERVICE, PLAY, QStringLiteral("velmar.codec"), QStringLiteral("play"));
    cCall << QStringLiteral("a \"b\"\\\nc");
    QCOMPARE(QDBusConnection(SERVICE).call(cCall).errorName(), FAILED);
    QCOMPARE(m_cBoard.codecCalls(),
             QStringList({QStringLiteral("/Record record \"%1\" 3 interface=-").arg(m_cFile),
                          QStringLiteral("/Record stop interface=-"),
                          QStringLiteral("/Play play \"a \\\"b\\\"\\\\\\nc\" interface=velmar.codec")}));
    QVERIFY(m_cBoard.clearCodecCalls());
    QCOMPARE(m_cBoard.codecCalls(), QStringList());
}

void TestHaldenCodec::what_it_does_not_have_is_noted_and_an_error_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("line");
    QTest::newRow("method") << RECORD << "dance" << QVariantList() << "/Record dance interface=-";
    QTest::newRow("of the other object")
        << RECORD << "play" << QVariantList{"f"} << "/Record play \"f\" interface=-";
    QTest::newRow("too few") << RECORD << "record" << QVariantList{"f"} << "/Record record \"f\" interface=-";
    QTest::newRow("unsigned") << RECORD << "record" << QVariantList{"f", 3u}
                              << "/Record record \"f\" 3 interface=-";
    QTest::newRow("too many") << PLAY << "stop" << QVariantList{true} << "/Play stop true interface=-";
}

void TestHaldenCodec::what_it_does_not_have_is_noted_and_an_error()
{
    QFETCH(QString, path);
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    QFETCH(QString, line);
    QCOMPARE(call(path, method, arguments).type(), QDBusMessage::ErrorMessage);
    QCOMPARE(m_cBoard.codecCalls(), QStringList(line));
    QCOMPARE(activity(), SCodecState::IDLE);
}

void TestHaldenCodec::a_call_without_reply_gets_none_and_is_carried_out()
{
    QVERIFY(startRecording());
    const QDBusMessage cCall =
        QDBusMessage::createMethodCall(SERVICE, RECORD, QString(), QStringLiteral("stop"));
    QVERIFY(QDBusConnection(SERVICE).send(cCall));
    QTRY_COMPARE_WITH_TIMEOUT(activity(), SCodecState::IDLE, TIMEOUT_CALL_MS);
    QCOMPARE(m_cBoard.codecCalls().last(), QStringLiteral("/Record stop interface=- no-reply"));
}

void TestHaldenCodec::objects_answer_to_the_bus_itself()
{
    const QDBusMessage cCall = QDBusMessage::createMethodCall(
        SERVICE, RECORD, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    QCOMPARE(QDBusConnection(SERVICE).call(cCall).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(m_cBoard.codecCalls(), QStringList());
}

void TestHaldenCodec::refusing_it_answers_with_an_error_and_does_nothing()
{
    m_cBoard.setCodecMode(BOARD_CODEC_REFUSE);
    QCOMPARE(call(RECORD, QStringLiteral("record"), {m_cFile, 3}).errorName(), FAILED);
    QCOMPARE(activity(), SCodecState::IDLE);
    QVERIFY(!QFile::exists(m_cFile));
    QCOMPARE(m_cBoard.codecCalls().size(), 1);
    m_cBoard.setCodecMode(BOARD_CODEC_OK);
    QVERIFY(startRecording());
}

void TestHaldenCodec::hanging_it_does_not_answer_and_does_nothing()
{
    m_cBoard.setCodecMode(BOARD_CODEC_HANG);
    const QDBusMessage cAnswer = call(RECORD, QStringLiteral("record"), {m_cFile, 3}, SHORT_CALL_MS);
    QCOMPARE(cAnswer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
    // On a busy machine the time may be up before the stand-in has seen the call. It carries calls out in
    // their order.
    QTRY_COMPARE_WITH_TIMEOUT(m_cBoard.codecCalls().size(), 1, TIMEOUT_CALL_MS);
    m_cBoard.setCodecMode(BOARD_CODEC_REFUSE);
    QCOMPARE(call(RECORD, QStringLiteral("stop")).errorName(), FAILED);
    m_cBoard.setCodecMode(BOARD_CODEC_OK);
    QVERIFY(!QFile::exists(m_cFile));
    QVERIFY(startRecording());
}

void TestHaldenCodec::stalled_the_file_does_not_grow()
{
    m_cBoard.setCodecMode(BOARD_CODEC_STALL);
    QVERIFY(startRecording());
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.codecState().iFrame >= 15, TIMEOUT_CALL_MS);
    QVERIFY(QFile::exists(m_cFile));
    QCOMPARE(fileSize(), 0);
    m_cBoard.setCodecMode(BOARD_CODEC_OK);
    QTRY_VERIFY_WITH_TIMEOUT(fileSize() > 0, TIMEOUT_CALL_MS);
}

void TestHaldenCodec::losing_it_makes_no_file()
{
    m_cBoard.setCodecMode(BOARD_CODEC_LOSE);
    QVERIFY(startRecording());
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.codecState().iFrame >= 5, TIMEOUT_CALL_MS);
    QVERIFY(!QFile::exists(m_cFile));
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
}

void TestHaldenCodec::dying_it_ends_in_the_middle_of_a_call_and_can_come_back()
{
    QVERIFY(startRecording());
    m_cBoard.setCodecMode(BOARD_CODEC_DIE);
    const QDBusMessage cAnswer = call(RECORD, QStringLiteral("pause"));
    QCOMPARE(cAnswer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.NoReply"));
    QVERIFY(m_pcCodec->waitForEnd());
    QCOMPARE(m_pcCodec->process().exitCode(), 1);
    QCOMPARE(m_cBoard.codecCalls().last(), QStringLiteral("/Record pause interface=-"));
    QCOMPARE(m_cBoard.codecMode(), BOARD_CODEC_OK);
    QVERIFY2(startCodec(), m_pcCodec->describe());
    QTRY_COMPARE_WITH_TIMEOUT(activity(), SCodecState::IDLE, TIMEOUT_CALL_MS);
    QVERIFY(startRecording());
}

void TestHaldenCodec::slow_it_takes_its_time_for_each_call()
{
    const int DELAY_MS = 300;
    m_cBoard.setCodecDelay(DELAY_MS);
    QElapsedTimer cTimer;
    cTimer.start();
    QVERIFY(startRecording());
    QVERIFY(cTimer.elapsed() >= DELAY_MS);
    m_cBoard.setCodecMode(BOARD_CODEC_REFUSE);
    cTimer.start();
    QCOMPARE(call(RECORD, QStringLiteral("stop")).errorName(), FAILED);
    QVERIFY(cTimer.elapsed() >= DELAY_MS);
}

void TestHaldenCodec::a_second_one_ends_and_leaves_the_first_alone()
{
    QVERIFY(startRecording());
    CChildProcess cSecond;
    cSecond.setProcessEnvironment(m_pcCodec->process().processEnvironment());
    cSecond.start(QStringLiteral(HALDEND_CODEC), QStringList());
    QVERIFY(cSecond.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(cSecond.exitCode(), 1);
    QCOMPARE(cSecond.readAllStandardError(),
             QByteArray("halden-codec: velmar.mobilygen: the name has an owner already\n"));
    QCOMPARE(activity(), SCodecState::RECORDING);
    QVERIFY(succeeds(RECORD, QStringLiteral("stop")));
}

void TestHaldenCodec::bad_starts_end_with_a_message_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::newRow("no board") << BOARD_VARIABLE << "/nowhere" << QStringList() << 1 << "/nowhere";
    QTest::newRow("no bus") << "DBUS_SYSTEM_BUS_ADDRESS"
                            << "unix:path=/nowhere" << QStringList() << 1
                            << "halden-codec: velmar.mobilygen: ";
    QTest::newRow("argument") << BOARD_VARIABLE << "/nowhere" << QStringList("--loud") << 2 << "Usage:";
}

void TestHaldenCodec::bad_starts_end_with_a_message()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFETCH(QStringList, arguments);
    QFETCH(int, status);
    QFETCH(QString, message);
    CChildProcess cProcess;
    QProcessEnvironment cEnvironment = m_pcCodec->process().processEnvironment();
    cEnvironment.insert(variable, value);
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_CODEC), arguments);
    QVERIFY(cProcess.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(cProcess.exitCode(), status);
    const QString cError = QString::fromLocal8Bit(cProcess.readAllStandardError());
    QVERIFY2(cError.contains(message), qPrintable(cError));
}

void TestHaldenCodec::it_ends_with_its_bus()
{
    QDBusConnection::disconnectFromBus(SERVICE);
    m_pcBus->stop();
    QVERIFY(m_pcCodec->waitForEnd());
    QCOMPARE(m_pcCodec->process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_pcCodec->process().exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestHaldenCodec)
#include "tst_halden_codec.moc"
