/* SPDX-License-Identifier: MIT */
/* The codec stand-in with video: what it records is a film, and what it plays back is seen. It runs as a process, on a
 * bus and a board of each test's own. */
#include "board/create/CBoardMaker.h"
#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "board/state/CPlaybackFile.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CFilmProbe.h"
#include "tests/support/CMemoryFolder.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/LiveVideo.h"
#include "tests/support/Luma.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace
{

const QString SERVICE = QStringLiteral("velmar.mobilygen");
const QString FAILED = QStringLiteral("velmar.mobilygen.Failed");
const QString RECORD = QStringLiteral("/Record");
const QString PLAY = QStringLiteral("/Play");
const int FRAME_MS = 40;
const double FAIR_DB = 30;

} // namespace

class TestHaldenCodecFilms : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_recording_is_a_film_as_long_as_its_time();
    void it_shows_what_the_board_records();
    void pauses_are_left_out_without_a_gap();
    void stopped_while_paused_it_is_a_film();
    void two_in_a_row_are_two_films();
    void killed_it_leaves_a_film();
    void ended_with_its_bus_it_leaves_a_film();
    void a_full_disk_is_told_and_survived();
    void stalled_nothing_is_written();
    void losing_it_makes_no_file();
    void a_file_that_can_not_be_made_is_an_error();

    void playback_shows_the_film();
    void a_paused_playback_holds_its_frame();
    void the_last_frame_stays();
    void a_playback_keeps_time();
    void what_is_no_film_is_an_error_data();
    void what_is_no_film_is_an_error();
    void a_killed_playback_is_cleared_away();

    void the_module_is_found_data();
    void the_module_is_found();
    void without_the_module_it_writes_text();
    void what_is_no_module_is_an_error_data();
    void what_is_no_module_is_an_error();

private:
    QDBusMessage call(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments = {});
    bool succeeds(const QString& rcPath, const QString& rcMethod, const QVariantList& rcArguments = {});
    bool startRecording() { return succeeds(RECORD, QStringLiteral("record"), {m_cFile, 3}); }
    bool stopRecording() { return succeeds(RECORD, QStringLiteral("stop")); }
    bool startPlayback() { return succeeds(PLAY, QStringLiteral("play"), {m_cFile}); }
    /// Starts a copy of the stand-in, from DIR/bin, with the module of films where the two are installed to, or elsewhere.
    bool startCopy(const QString& rcModule, const QString& rcPlace);
    bool startCodec() { return m_pcCodec->start(m_pcBus->address(), m_cBoard.directory()); }
    /// Waits until the stand-in has recorded or played so many frames.
    bool waitForFrames(int iFrames);
    /// Makes m_cFile a film whose frames are plain, of a grey that grows by 8.
    bool makeGreys(int iFrames) const;
    /// The number of the frame of such a film that is shown; -1 if none is.
    int shownGrey() const;
    qint64 fileSize() const { return QFileInfo(m_cFile).size(); }

    std::unique_ptr<CMemoryFolder> m_pcFolder;
    std::unique_ptr<CPrivateBus> m_pcBus;
    std::unique_ptr<CCodecProcess> m_pcCodec;
    CBoard m_cBoard;
    QString m_cFile;
};

void TestHaldenCodecFilms::init()
{
    m_pcFolder = std::make_unique<CMemoryFolder>();
    m_pcBus = std::make_unique<CPrivateBus>();
    m_pcCodec = std::make_unique<CCodecProcess>();
    m_pcCodec->useVideo();
    m_cFile = m_pcFolder->filePath(QStringLiteral("a:film.ts"));
    const QString cBoard = m_pcFolder->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cBoard, cError) && m_cBoard.open(cBoard), qPrintable(cError));
    showLiveVideo(m_cBoard);
    programVideoChips(m_cBoard);
    QVERIFY2(m_pcBus->start(), qPrintable(m_pcBus->error()));
    QVERIFY2(startCodec(), m_pcCodec->describe());
    QDBusConnection::connectToBus(m_pcBus->address(), SERVICE);
}

void TestHaldenCodecFilms::cleanup()
{
    QDBusConnection::disconnectFromBus(SERVICE);
    m_pcCodec.reset();
    m_pcBus.reset();
    m_cBoard.close();
}

QDBusMessage TestHaldenCodecFilms::call(const QString& rcPath, const QString& rcMethod,
                                        const QVariantList& rcArguments)
{
    QDBusMessage cCall = QDBusMessage::createMethodCall(SERVICE, rcPath, QString(), rcMethod);
    cCall.setArguments(rcArguments);
    return QDBusConnection(SERVICE).call(cCall, QDBus::Block, TIMEOUT_CALL_MS);
}

bool TestHaldenCodecFilms::succeeds(const QString& rcPath, const QString& rcMethod,
                                    const QVariantList& rcArguments)
{
    const QDBusMessage cAnswer = call(rcPath, rcMethod, rcArguments);
    return cAnswer.type() == QDBusMessage::ReplyMessage && cAnswer.arguments().isEmpty();
}

bool TestHaldenCodecFilms::waitForFrames(int iFrames)
{
    return QTest::qWaitFor([&] { return m_cBoard.codecState().iFrame >= iFrames; }, TIMEOUT_CALL_MS);
}

bool TestHaldenCodecFilms::makeGreys(int iFrames) const
{
    CFilmWriter cWriter;
    bool bDone = cWriter.open(m_cFile);
    for (int i = 0; bDone && i < iFrames; ++i) {
        QImage cPicture(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
        cPicture.fill(qRgb(8 * i, 8 * i, 8 * i));
        bDone = cWriter.write(cPicture);
    }
    return bDone && cWriter.close();
}

int TestHaldenCodecFilms::shownGrey() const
{
    const QImage cFrame = CPlaybackFile::frame(m_cBoard);
    return cFrame.isNull() ? -1 : (qGreen(cFrame.pixel(360, 288)) + 4) / 8;
}

void TestHaldenCodecFilms::a_recording_is_a_film_as_long_as_its_time()
{
    QElapsedTimer cOuter;
    QElapsedTimer cInner;
    cOuter.start();
    QVERIFY(startRecording());
    cInner.start();
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::RECORDING);
    QVERIFY(waitForFrames(50));
    const qint64 iInner = cInner.elapsed();
    QVERIFY(stopRecording());
    const qint64 iOuter = cOuter.elapsed();
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::IDLE);
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.gap(), QString());
    QCOMPARE(cProbe.video(QStringLiteral("codec_name")), QStringLiteral("mpeg2video"));
    QCOMPARE(cProbe.video(QStringLiteral("field_order")), QStringLiteral("tt"));
    QVERIFY2(
        cProbe.frames() * FRAME_MS >= iInner - FRAME_MS && cProbe.frames() * FRAME_MS <= iOuter + FRAME_MS,
        qPrintable(QStringLiteral("%1 frames in %2 to %3 ms").arg(cProbe.frames()).arg(iInner).arg(iOuter)));
    QVERIFY(qAbs(cProbe.duration() - 0.04 * cProbe.frames()) <= 0.04);
}

void TestHaldenCodecFilms::it_shows_what_the_board_records()
{
    const QImage cFirst = CBoardPicture::recorded(m_cBoard);
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(10));
    m_cBoard.setCamera(CTestPicture::frame(40));
    QVERIFY(waitForFrames(m_cBoard.codecState().iFrame + 15));
    QVERIFY(stopRecording());
    CFilmReader cFilm;
    QVERIFY2(cFilm.open(m_cFile) && cFilm.next(), qPrintable(cFilm.errorString()));
    QVERIFY(lumaPsnr(cFilm.picture(), cFirst) >= FAIR_DB);
    while (cFilm.next()) {
    }
    const double dOther = lumaPsnr(cFilm.picture(), CBoardPicture::recorded(m_cBoard));
    QVERIFY2(dOther >= FAIR_DB, qPrintable(QString::number(dOther)));
    QVERIFY(dOther > lumaPsnr(cFilm.picture(), cFirst));
}

void TestHaldenCodecFilms::pauses_are_left_out_without_a_gap()
{
    QElapsedTimer cOuter;
    cOuter.start();
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(10));
    QVERIFY(succeeds(RECORD, QStringLiteral("pause")));
    const qint64 iPaused = cOuter.elapsed();
    const int iFrames = m_cBoard.codecState().iFrame;
    const qint64 iSize = fileSize();
    m_cBoard.setCodecDelay(600); // the call that fails takes as long as 15 frames
    QCOMPARE(call(RECORD, QStringLiteral("pause")).errorName(), FAILED);
    m_cBoard.setCodecDelay(0);
    QCOMPARE(m_cBoard.codecState().iFrame, iFrames);
    QCOMPARE(fileSize(), iSize);
    cOuter.restart();
    QVERIFY(succeeds(RECORD, QStringLiteral("resume")));
    QVERIFY(waitForFrames(iFrames + 10));
    QVERIFY(stopRecording());
    const qint64 iMost = iPaused + cOuter.elapsed();
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.gap(), QString());
    QVERIFY2(cProbe.frames() >= iFrames + 10 && cProbe.frames() * FRAME_MS <= iMost + FRAME_MS,
             qPrintable(QStringLiteral("%1 frames in %2 ms").arg(cProbe.frames()).arg(iMost)));
}

void TestHaldenCodecFilms::stopped_while_paused_it_is_a_film()
{
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(5));
    QVERIFY(succeeds(RECORD, QStringLiteral("pause")));
    const int iFrames = m_cBoard.codecState().iFrame;
    QVERIFY(stopRecording());
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    // A frame that was due may have been too late for the pause.
    QVERIFY(cProbe.frames() >= iFrames && cProbe.frames() <= iFrames + VIDEO_FRAME_RATE);
}

void TestHaldenCodecFilms::two_in_a_row_are_two_films()
{
    for (int i = 0; i < 2; ++i) {
        QVERIFY(startRecording()); // the second time over the first film
        QVERIFY(waitForFrames(5));
        QVERIFY(stopRecording());
        const CFilmProbe cProbe(m_cFile);
        QCOMPARE(cProbe.complaints(), QString());
        QCOMPARE(cProbe.gap(), QString());
        QVERIFY(cProbe.frames() >= 5);
    }
}

void TestHaldenCodecFilms::killed_it_leaves_a_film()
{
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(25));
    const int iFrames = m_cBoard.codecState().iFrame;
    QVERIFY(m_pcCodec->kill());
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.gap(), QString());
    QVERIFY2(cProbe.frames() >= iFrames - 1, qPrintable(QString::number(cProbe.frames())));
}

void TestHaldenCodecFilms::ended_with_its_bus_it_leaves_a_film()
{
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(5));
    QDBusConnection::disconnectFromBus(SERVICE);
    m_pcBus->stop();
    QVERIFY(m_pcCodec->waitForEnd());
    QCOMPARE(m_pcCodec->process().exitCode(), 0);
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
}

void TestHaldenCodecFilms::a_full_disk_is_told_and_survived()
{
    m_cFile = QStringLiteral("/dev/full");
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(10));
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::RECORDING);
    QVERIFY(stopRecording());
    const QByteArray cSaid = m_pcCodec->describe();
    QVERIFY2(cSaid.count("/dev/full: No space left on device\n") == 1, cSaid);
    m_cFile = m_pcFolder->filePath(QStringLiteral("film.ts"));
    QVERIFY(startRecording() && waitForFrames(5) && stopRecording());
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
}

void TestHaldenCodecFilms::stalled_nothing_is_written()
{
    m_cBoard.setCodecMode(BOARD_CODEC_STALL);
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(10));
    QCOMPARE(fileSize(), 0);
    m_cBoard.setCodecMode(BOARD_CODEC_OK);
    QVERIFY(waitForFrames(m_cBoard.codecState().iFrame + 10));
    QVERIFY(fileSize() > 0);
    QVERIFY(stopRecording());
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.gap(), QString());
}

void TestHaldenCodecFilms::losing_it_makes_no_file()
{
    m_cBoard.setCodecMode(BOARD_CODEC_LOSE);
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(5));
    QVERIFY(!QFile::exists(m_cFile));
    QVERIFY(stopRecording());
}

void TestHaldenCodecFilms::a_file_that_can_not_be_made_is_an_error()
{
    m_cFile = QStringLiteral("/nowhere/film.ts");
    const QDBusMessage cAnswer = call(RECORD, QStringLiteral("record"), {m_cFile, 3});
    QCOMPARE(cAnswer.errorName(), FAILED);
    QCOMPARE(cAnswer.errorMessage(), QStringLiteral("/nowhere/film.ts: No such file or directory"));
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::IDLE);
}

void TestHaldenCodecFilms::playback_shows_the_film()
{
    QVERIFY(makeGreys(20));
    CFilmReader cFilm;
    QVERIFY(cFilm.open(m_cFile));
    QVector<QImage> cFrames;
    while (cFilm.next())
        cFrames << cFilm.picture();
    m_cBoard.setFpgaRegister(FPGA_CTRL, FPGA_CTRL_POR);
    QVERIFY(startPlayback());
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::PLAYING);
    // From the answer on the film is there, and no frame of it is but a whole one.
    int iLast = 0;
    for (int iSeen = 0; iSeen < 10;) {
        const QImage cShown = CBoardPicture::recorded(m_cBoard);
        const int iFrame = cFrames.indexOf(cShown);
        QVERIFY2(iFrame >= iLast, qPrintable(QStringLiteral("%1 after %2").arg(iFrame).arg(iLast)));
        iSeen += iFrame > iLast || iSeen == 0 || iFrame == 19 ? 1 : 0;
        iLast = iFrame;
        QCoreApplication::processEvents();
    }
    QCOMPARE(CBoardPicture::monitor(m_cBoard).copy(0, 0, 688, 573).format(), QImage::Format_RGB32);
    QVERIFY(succeeds(PLAY, QStringLiteral("stop")));
    QVERIFY(CPlaybackFile::frame(m_cBoard).isNull());
    QCOMPARE(CBoardPicture::recorded(m_cBoard).pixel(360, 288), qRgb(0, 0, 0));
}

void TestHaldenCodecFilms::a_paused_playback_holds_its_frame()
{
    QVERIFY(makeGreys(30));
    QVERIFY(startPlayback());
    QTRY_VERIFY_WITH_TIMEOUT(shownGrey() >= 3, TIMEOUT_CALL_MS);
    QVERIFY(succeeds(PLAY, QStringLiteral("pause")));
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::PLAYING_PAUSED);
    const int iShown = shownGrey();
    m_cBoard.setCodecDelay(400);
    QCOMPARE(call(PLAY, QStringLiteral("pause")).errorName(), FAILED);
    m_cBoard.setCodecDelay(0);
    QCOMPARE(shownGrey(), iShown);
    QVERIFY(succeeds(PLAY, QStringLiteral("resume")));
    QTRY_COMPARE_WITH_TIMEOUT(shownGrey(), 29, TIMEOUT_CALL_MS);
}

void TestHaldenCodecFilms::the_last_frame_stays()
{
    QVERIFY(makeGreys(5));
    QVERIFY(startPlayback());
    QTRY_COMPARE_WITH_TIMEOUT(shownGrey(), 4, TIMEOUT_CALL_MS);
    m_cBoard.setCodecDelay(400);
    QCOMPARE(call(PLAY, QStringLiteral("play"), {m_cFile}).errorName(), FAILED);
    QCOMPARE(shownGrey(), 4);
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::PLAYING);
    QVERIFY(succeeds(PLAY, QStringLiteral("stop")));
    QCOMPARE(shownGrey(), -1);
}

// The 26th frame is shown a second after the first one, and not before.
void TestHaldenCodecFilms::a_playback_keeps_time()
{
    QVERIFY(makeGreys(27));
    QElapsedTimer cTimer;
    cTimer.start();
    QVERIFY(startPlayback());
    QTRY_VERIFY_WITH_TIMEOUT(shownGrey() >= 25, TIMEOUT_CALL_MS);
    QVERIFY2(cTimer.elapsed() >= 1000, qPrintable(QString::number(cTimer.elapsed())));
}

void TestHaldenCodecFilms::what_is_no_film_is_an_error_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("text") << QByteArray("halden-codec: frame 0000000000, line 0000\n").repeated(1000);
    QTest::newRow("list") << QByteArray(
        "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nfilm.ts\n#EXT-X-ENDLIST\n");
    QTest::newRow("nothing") << QByteArray();
}

void TestHaldenCodecFilms::what_is_no_film_is_an_error()
{
    QFETCH(QByteArray, text);
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::WriteOnly) && cFile.write(text) == text.size());
    cFile.close();
    const QDBusMessage cAnswer = call(PLAY, QStringLiteral("play"), {m_cFile});
    QCOMPARE(cAnswer.errorName(), FAILED);
    QVERIFY2(cAnswer.errorMessage().startsWith(m_cFile + QStringLiteral(": no film")),
             qPrintable(cAnswer.errorMessage()));
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::IDLE);
    QVERIFY(!QFile::exists(m_cBoard.path(BOARD_PLAYBACK)));
}

void TestHaldenCodecFilms::a_killed_playback_is_cleared_away()
{
    QVERIFY(makeGreys(5));
    QVERIFY(startPlayback());
    QVERIFY(m_pcCodec->kill());
    QVERIFY(shownGrey() >= 0);
    QVERIFY2(startCodec(), m_pcCodec->describe());
    QTRY_COMPARE_WITH_TIMEOUT(m_cBoard.codecState().eActivity, SCodecState::IDLE, TIMEOUT_CALL_MS);
    QTRY_COMPARE_WITH_TIMEOUT(shownGrey(), -1, TIMEOUT_CALL_MS);
}

bool TestHaldenCodecFilms::startCopy(const QString& rcModule, const QString& rcPlace)
{
    const QDir cFolder(m_pcFolder->path());
    const QString cProgram = cFolder.filePath(QStringLiteral("bin/halden-codec"));
    const QString cModule =
        cFolder.filePath(rcPlace + '/' + QFileInfo(QStringLiteral(HALDEND_FILMS_MODULE)).fileName());
    for (const QString& rcFile : {cProgram, cModule})
        if (!cFolder.mkpath(QFileInfo(rcFile).path()))
            return false;
    m_pcCodec->end();
    m_pcCodec->useProgram(cProgram);
    return QFile::copy(QStringLiteral(HALDEND_CODEC_FILE), cProgram) &&
           (rcModule.isEmpty() || QFile::copy(rcModule, cModule)) && startCodec();
}

void TestHaldenCodecFilms::the_module_is_found_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("beside the program") << "bin";
    QTest::newRow("installed") << HALDEND_BOARD_LIBRARY_DIR;
}

void TestHaldenCodecFilms::the_module_is_found()
{
    QFETCH(QString, place);
    QVERIFY2(startCopy(QStringLiteral(HALDEND_FILMS_MODULE), place), m_pcCodec->describe());
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(3));
    QVERIFY(stopRecording());
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
}

void TestHaldenCodecFilms::without_the_module_it_writes_text()
{
    QVERIFY2(startCopy(QString(), QStringLiteral("bin")), m_pcCodec->describe());
    QVERIFY(startRecording());
    QVERIFY(waitForFrames(5));
    QVERIFY(stopRecording());
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QByteArray cText = cFile.readAll();
    QVERIFY(!cText.isEmpty());
    QVERIFY(std::all_of(cText.begin(), cText.end(),
                        [](char ch) { return ch == '\n' || (ch >= ' ' && ch <= '~'); }));
}

void TestHaldenCodecFilms::what_is_no_module_is_an_error_data()
{
    QTest::addColumn<QString>("module");
    QTest::newRow("no library") << HALDEND_CODEC_FILE;
    QTest::newRow("another library") << HALDEND_BOARD_PRELOAD;
}

void TestHaldenCodecFilms::what_is_no_module_is_an_error()
{
    QFETCH(QString, module);
    QVERIFY2(startCopy(module, QStringLiteral("bin")), m_pcCodec->describe());
    QVERIFY(makeGreys(1));
    for (const QDBusMessage& rcAnswer : {call(RECORD, QStringLiteral("record"), {m_cFile, 3}),
                                         call(PLAY, QStringLiteral("play"), {m_cFile})}) {
        QCOMPARE(rcAnswer.errorName(), FAILED);
        QVERIFY2(rcAnswer.errorMessage().contains(QStringLiteral("libhaldenfilms")),
                 qPrintable(rcAnswer.errorMessage()));
    }
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::IDLE);
}

QTEST_GUILESS_MAIN(TestHaldenCodecFilms)
#include "tst_halden_codec_films.moc"
