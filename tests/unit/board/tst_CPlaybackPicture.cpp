/* SPDX-License-Identifier: MIT */
/* The codec stand-in's picture, and the states in which the monitor shows it. */
#include "board/create/CBoardMaker.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CPlaybackPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "hw/fpga_map.h"
#include "tests/golden.h"
#include "tests/support/LiveVideo.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace
{

const quint32 PLAY_MODE = 3u << 24;
const quint32 FRAME_GENERATOR = 1u << 23;
const quint32 RESTORE = 1u << 4;
const QRgb BLACK = 0xff000000;

SCodecState playing(int iFrame)
{
    SCodecState sState;
    sState.eActivity = SCodecState::PLAYING;
    sState.iFrame = iFrame;
    sState.cFile = QStringLiteral("/data/inspection 7, Stra\u00dfe.ts");
    return sState;
}

QImage plain(QRgb uColor)
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cImage.fill(uColor);
    return cImage;
}

} // namespace

class TestCPlaybackPicture : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void shows_the_name_and_the_frame();
    void shows_that_it_is_paused();
    void moves_from_frame_to_frame();
    void any_frame_and_name_stay_in_bounds_data();
    void any_frame_and_name_stay_in_bounds();
    void is_black_while_nothing_is_played_data();
    void is_black_while_nothing_is_played();

    void the_monitor_shows_it_in_play_mode();
    void one_bit_of_the_two_is_not_play_mode();
    void it_covers_the_frame_generator_and_not_the_stored_frame();
    void recording_mode_shows_and_records_the_camera();

    void the_state_is_kept_as_text();
    void a_text_that_is_no_state_is_idle_data();
    void a_text_that_is_no_state_is_idle();

private:
    QScopedPointer<QTemporaryDir> m_pcDirectory;
    CBoard m_cBoard;
};

void TestCPlaybackPicture::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    const QString cPath = m_pcDirectory->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cPath, cError) && m_cBoard.open(cPath), qPrintable(cError));
    showLiveVideo(m_cBoard);
}

void TestCPlaybackPicture::shows_the_name_and_the_frame()
{
    QCOMPARE(differenceFromGolden(CPlaybackPicture::frame(playing(25)), QStringLiteral("playback")),
             QString());
}

void TestCPlaybackPicture::shows_that_it_is_paused()
{
    SCodecState sState = playing(25);
    sState.eActivity = SCodecState::PLAYING_PAUSED;
    QCOMPARE(differenceFromGolden(CPlaybackPicture::frame(sState), QStringLiteral("playback_paused")),
             QString());
}

void TestCPlaybackPicture::moves_from_frame_to_frame()
{
    const QImage cFirst = CPlaybackPicture::frame(playing(0));
    const QImage cSecond = CPlaybackPicture::frame(playing(1));
    QCOMPARE(cSecond.copy(0, 0, VIDEO_WIDTH - 4, 100), cFirst.copy(4, 0, VIDEO_WIDTH - 4, 100));
    QVERIFY(cFirst.copy(0, 200, VIDEO_WIDTH, 200) != cSecond.copy(0, 200, VIDEO_WIDTH, 200));
}

void TestCPlaybackPicture::any_frame_and_name_stay_in_bounds_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<QString>("file");
    QTest::newRow("negative") << -1 << "a.ts";
    QTest::newRow("last") << std::numeric_limits<int>::max() << "a.ts";
    QTest::newRow("no name") << 0 << "";
    QTest::newRow("long name") << 0 << QString(4096, QLatin1Char('n'));
    QTest::newRow("long path") << 0 << QString(4096, QLatin1Char('/'));
    QTest::newRow("not in the set") << 0 << QStringLiteral("\u65e5\u672c.ts");
}

void TestCPlaybackPicture::any_frame_and_name_stay_in_bounds()
{
    QFETCH(int, frame);
    QFETCH(QString, file);
    SCodecState sState = playing(frame);
    sState.cFile = file;
    const QImage cPicture = CPlaybackPicture::frame(sState);
    QCOMPARE(cPicture.size(), QSize(VIDEO_WIDTH, VIDEO_HEIGHT));
    QVERIFY(cPicture != CPlaybackPicture::frame(playing(1)));
}

void TestCPlaybackPicture::is_black_while_nothing_is_played_data()
{
    QTest::addColumn<int>("activity");
    QTest::newRow("idle") << int(SCodecState::IDLE);
    QTest::newRow("recording") << int(SCodecState::RECORDING);
    QTest::newRow("recording paused") << int(SCodecState::RECORDING_PAUSED);
}

void TestCPlaybackPicture::is_black_while_nothing_is_played()
{
    QFETCH(int, activity);
    SCodecState sState = playing(1);
    sState.eActivity = static_cast<SCodecState::EActivity>(activity);
    QCOMPARE(CPlaybackPicture::frame(sState), plain(BLACK));
}

void TestCPlaybackPicture::the_monitor_shows_it_in_play_mode()
{
    m_cBoard.setFpgaRegister(FPGA_CTRL, PLAY_MODE);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
    QVERIFY(m_cBoard.setCodecState(playing(7)));
    QCOMPARE(CBoardPicture::monitor(m_cBoard).copy(0, 0, 688, 573),
             CPlaybackPicture::frame(playing(7)).copy(0, 0, 688, 573));
    m_cBoard.setFpgaRegister(FPGA_CTRL, 0);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).copy(0, 0, 688, 573),
             CTestPicture::frame(0).copy(0, 0, 688, 573));
}

void TestCPlaybackPicture::one_bit_of_the_two_is_not_play_mode()
{
    m_cBoard.setCodecState(playing(7));
    const QImage cLive = CBoardPicture::monitor(m_cBoard);
    for (const quint32 u32Bit : {1u << 24, 1u << 25}) {
        m_cBoard.setFpgaRegister(FPGA_CTRL, u32Bit);
        QCOMPARE(CBoardPicture::monitor(m_cBoard), cLive);
    }
}

void TestCPlaybackPicture::it_covers_the_frame_generator_and_not_the_stored_frame()
{
    m_cBoard.setCodecState(playing(7));
    m_cBoard.setFpgaRegister(FPGA_CTRL, PLAY_MODE);
    const QImage cPlayback = CBoardPicture::monitor(m_cBoard);
    m_cBoard.setFpgaRegister(FPGA_CTRL, PLAY_MODE | FRAME_GENERATOR);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), cPlayback);
    m_cBoard.setFpgaRegister(FPGA_CTRL, PLAY_MODE | RESTORE);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
}

void TestCPlaybackPicture::recording_mode_shows_and_records_the_camera()
{
    const QImage cLive = CBoardPicture::monitor(m_cBoard);
    const QImage cRecorded = CBoardPicture::recorded(m_cBoard);
    QCOMPARE(cRecorded, CTestPicture::frame(0));
    SCodecState sState = playing(7);
    sState.eActivity = SCodecState::RECORDING;
    m_cBoard.setCodecState(sState);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), cLive);
    QCOMPARE(CBoardPicture::recorded(m_cBoard), cRecorded);
}

void TestCPlaybackPicture::the_state_is_kept_as_text()
{
    SCodecState sState = playing(1234);
    sState.cFile = QStringLiteral("two\nlines \u00e9.ts");
    QVERIFY(m_cBoard.setCodecState(sState));
    QFile cFile(m_cBoard.path(BOARD_CODEC_STATE));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readAll(), QByteArray("playing 1234\ntwo\nlines \xc3\xa9.ts"));
    const SCodecState sRead = m_cBoard.codecState();
    QCOMPARE(sRead.eActivity, SCodecState::PLAYING);
    QCOMPARE(sRead.iFrame, 1234);
    QCOMPARE(sRead.cFile, sState.cFile);
}

void TestCPlaybackPicture::a_text_that_is_no_state_is_idle_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a word") << QByteArray("playing");
    QTest::newRow("no end of the line") << QByteArray("playing 1");
    QTest::newRow("no blank") << QByteArray("playing\n");
    QTest::newRow("another word") << QByteArray("dancing 1\na.ts");
    QTest::newRow("the blank in the name") << QByteArray("playing\na b.ts");
}

void TestCPlaybackPicture::a_text_that_is_no_state_is_idle()
{
    QFETCH(QByteArray, text);
    QCOMPARE(SCodecState::fromText(text).eActivity, SCodecState::IDLE);
}

QTEST_GUILESS_MAIN(TestCPlaybackPicture)
#include "tst_CPlaybackPicture.moc"
