/* SPDX-License-Identifier: MIT */
/* Films as the codec writes them, as FFmpeg's own programs see them. Frames are by number, so no time passes. */
#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "hw/video_geometry.h"
#include "tests/support/CFilmProbe.h"
#include "tests/support/CTemporaryBoard.h"
#include "tests/support/LiveVideo.h"
#include "tests/support/Luma.h"

#include <QtTest>

#include <csignal>
#include <memory>

#include <sys/resource.h>

namespace
{

const int TEN_SECONDS = 10 * VIDEO_FRAME_RATE;
const double BYTES_A_MINUTE = 22e6;
const double FAIR_DB = 30;
const int LUMA_BYTES = VIDEO_WIDTH * VIDEO_HEIGHT;
const int CHROMA_BYTES = LUMA_BYTES / 4;

QImage plain(QRgb uColor)
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cImage.fill(uColor);
    return cImage;
}

/// The largest size of a file of this process; more is an error, as on a full disk.
class CSizeLimit
{
public:
    explicit CSizeLimit(rlim_t uBytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_sBefore);
        rlimit sLimit = m_sBefore;
        sLimit.rlim_cur = uBytes;
        ::setrlimit(RLIMIT_FSIZE, &sLimit);
    }
    ~CSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &m_sBefore); }

    CSizeLimit(const CSizeLimit&) = delete;
    CSizeLimit& operator=(const CSizeLimit&) = delete;

private:
    rlimit m_sBefore = {};
};

} // namespace

class TestCFilmWriter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void a_film_is_as_the_codec_writes_it_data();
    void a_film_is_as_the_codec_writes_it();
    void a_decoded_frame_is_the_written_one();
    void fields_keep_their_colours();
    void colours_are_those_of_television_data();
    void colours_are_those_of_television();
    void a_repeated_frame_is_one_more();
    void the_file_is_a_film_at_any_time();
    void a_film_without_frames_is_empty();
    void a_file_that_exists_is_replaced();
    void any_name_is_a_file_data();
    void any_name_is_a_file();
    void a_file_that_can_not_be_made_is_an_error_data();
    void a_file_that_can_not_be_made_is_an_error();
    void what_does_not_fit_is_an_error_and_leaves_a_film();
    void it_goes_on_when_there_is_room_again();
    void closed_it_writes_nothing();

private:
    /// What a board records of the moving camera.
    QImage moving(int iFrame);

    CTemporaryBoard m_cBoard;
    std::unique_ptr<QTemporaryDir> m_pcFolder;
    QString m_cFile;
};

void TestCFilmWriter::initTestCase()
{
    QVERIFY2(m_cBoard.make(), qPrintable(m_cBoard.error()));
    programVideoChips(m_cBoard.board());
}

QImage TestCFilmWriter::moving(int iFrame)
{
    m_cBoard.board().setMovingCamera(iFrame);
    return CBoardPicture::recorded(m_cBoard.board());
}

void TestCFilmWriter::init()
{
    m_pcFolder = std::make_unique<QTemporaryDir>();
    m_cFile = m_pcFolder->filePath(QStringLiteral("film.ts"));
}

void TestCFilmWriter::a_film_is_as_the_codec_writes_it_data()
{
    QTest::addColumn<bool>("moves");
    QTest::newRow("moving") << true;
    QTest::newRow("still") << false;
}

void TestCFilmWriter::a_film_is_as_the_codec_writes_it()
{
    QFETCH(bool, moves);
    QVector<QImage> cPictures;
    for (int i = 0; i < (moves ? VIDEO_FRAME_RATE : 1); ++i)
        cPictures << (moves ? moving(i) : CTestPicture::frame(0));
    CFilmWriter cFilm;
    QVERIFY2(cFilm.open(m_cFile), qPrintable(cFilm.errorString()));
    for (int i = 0; i < TEN_SECONDS; ++i)
        QVERIFY2(cFilm.write(cPictures[i % cPictures.size()]), qPrintable(cFilm.errorString()));
    QCOMPARE(cFilm.frames(), TEN_SECONDS);
    QVERIFY(cFilm.close());

    const double dMinute = static_cast<double>(QFileInfo(m_cFile).size()) * 60 / 10;
    QVERIFY2(qAbs(dMinute / BYTES_A_MINUTE - 1) <= 0.1, qPrintable(QString::number(dMinute)));
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.video(QStringLiteral("codec_name")), QStringLiteral("mpeg2video"));
    QCOMPARE(cProbe.video(QStringLiteral("width")), QStringLiteral("720"));
    QCOMPARE(cProbe.video(QStringLiteral("height")), QStringLiteral("576"));
    QCOMPARE(cProbe.video(QStringLiteral("avg_frame_rate")), QStringLiteral("25/1"));
    QCOMPARE(cProbe.video(QStringLiteral("field_order")), QStringLiteral("tt"));
    QCOMPARE(cProbe.video(QStringLiteral("sample_aspect_ratio")), QStringLiteral("16:15"));
    QCOMPARE(cProbe.video(QStringLiteral("display_aspect_ratio")), QStringLiteral("4:3"));
    QCOMPARE(cProbe.video(QStringLiteral("pix_fmt")), QStringLiteral("yuv420p"));
    QCOMPARE(cProbe.frames(), TEN_SECONDS);
    QCOMPARE(cProbe.gap(), QString());
    QVERIFY2(qAbs(cProbe.duration() - 10) <= 0.04, qPrintable(QString::number(cProbe.duration())));
}

void TestCFilmWriter::a_decoded_frame_is_the_written_one()
{
    const int iFrames = VIDEO_FRAME_RATE;
    QVector<QImage> cPictures;
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    for (int i = 0; i < iFrames; ++i) {
        cPictures << moving(i);
        QVERIFY(cFilm.write(cPictures.last()));
    }
    QVERIFY(cFilm.close());
    const QByteArray cDecoded = CFilmProbe::decoded(m_cFile, 0, iFrames);
    QCOMPARE(cDecoded.size(), iFrames * (LUMA_BYTES + 2 * CHROMA_BYTES));
    CFilmReader cReader;
    QVERIFY2(cReader.open(m_cFile), qPrintable(cReader.errorString()));
    for (int i = 0; i < iFrames; ++i) {
        const QByteArray cLuma = cDecoded.mid(i * (LUMA_BYTES + 2 * CHROMA_BYTES), LUMA_BYTES);
        const double dPsnr = lumaPsnr(cLuma, lumaOf(cPictures[i]));
        QVERIFY2(dPsnr >= FAIR_DB, qPrintable(QStringLiteral("frame %1: %2 dB").arg(i).arg(dPsnr)));
        QVERIFY(cReader.next());
        const double dRead = lumaPsnr(cReader.picture(), cPictures[i]);
        QVERIFY2(dRead >= FAIR_DB, qPrintable(QStringLiteral("frame %1, read: %2 dB").arg(i).arg(dRead)));
    }
}

// A field in red and one in blue: taken as a whole frame, both would turn purple.
void TestCFilmWriter::fields_keep_their_colours()
{
    const QRgb uRed = qRgb(200, 0, 0);
    const QRgb uBlue = qRgb(0, 0, 200);
    QImage cPicture = plain(uRed);
    for (int y = 1; y < VIDEO_HEIGHT; y += 2)
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            cPicture.setPixel(x, y, uBlue);
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile) && cFilm.write(cPicture) && cFilm.write(cPicture) && cFilm.close());

    const auto isLike = [](QRgb uOne, QRgb uOther) {
        return qAbs(qRed(uOne) - qRed(uOther)) < 12 && qAbs(qGreen(uOne) - qGreen(uOther)) < 12 &&
               qAbs(qBlue(uOne) - qBlue(uOther)) < 12;
    };
    CFilmReader cReader;
    QVERIFY(cReader.open(m_cFile) && cReader.next());
    const QImage cRead = cReader.picture();
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        QVERIFY2(isLike(cRead.pixel(360, y), y % 2 == 0 ? uRed : uBlue),
                 qPrintable(QStringLiteral("line %1: %2").arg(y).arg(cRead.pixel(360, y), 8, 16)));
    // The blue-difference plane, by ffmpeg: its lines belong to the fields in turns.
    const QByteArray cChroma = CFilmProbe::decoded(m_cFile, 0, 1).mid(LUMA_BYTES, CHROMA_BYTES);
    QCOMPARE(cChroma.size(), CHROMA_BYTES);
    for (int y = 0; y < VIDEO_HEIGHT / 2; ++y) {
        const int iValue = static_cast<uchar>(cChroma[y * VIDEO_WIDTH / 2 + 180]);
        QVERIFY2(y % 2 == 0 ? iValue < 115 : iValue > 190,
                 qPrintable(QStringLiteral("line %1: %2").arg(y).arg(iValue)));
    }
}

void TestCFilmWriter::colours_are_those_of_television_data()
{
    QTest::addColumn<QRgb>("color");
    QTest::addColumn<int>("luma");
    QTest::addColumn<int>("blue");
    QTest::addColumn<int>("red");
    QTest::newRow("black") << qRgb(0, 0, 0) << 16 << 128 << 128;
    QTest::newRow("white") << qRgb(255, 255, 255) << 235 << 128 << 128;
    QTest::newRow("red") << qRgb(255, 0, 0) << 81 << 90 << 240;
    QTest::newRow("green") << qRgb(0, 255, 0) << 145 << 54 << 34;
    QTest::newRow("blue") << qRgb(0, 0, 255) << 41 << 240 << 110;
}

void TestCFilmWriter::colours_are_those_of_television()
{
    QFETCH(QRgb, color);
    QFETCH(int, luma);
    QFETCH(int, blue);
    QFETCH(int, red);
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile) && cFilm.write(plain(color)) && cFilm.close());
    const QByteArray cFrame = CFilmProbe::decoded(m_cFile, 0, 1);
    QCOMPARE(cFrame.size(), LUMA_BYTES + 2 * CHROMA_BYTES);
    const int iMiddle = VIDEO_WIDTH / 4 * 145;
    QVERIFY(qAbs(static_cast<uchar>(cFrame[LUMA_BYTES / 2]) - luma) <= 2);
    QVERIFY(qAbs(static_cast<uchar>(cFrame[LUMA_BYTES + iMiddle]) - blue) <= 2);
    QVERIFY(qAbs(static_cast<uchar>(cFrame[LUMA_BYTES + CHROMA_BYTES + iMiddle]) - red) <= 2);
    CFilmReader cReader;
    QVERIFY(cReader.open(m_cFile) && cReader.next());
    const QRgb uRead = cReader.picture().pixel(360, 288);
    QVERIFY2(qAbs(qRed(uRead) - qRed(color)) <= 5 && qAbs(qGreen(uRead) - qGreen(color)) <= 5 &&
                 qAbs(qBlue(uRead) - qBlue(color)) <= 5,
             qPrintable(QString::number(uRead, 16)));
    QCOMPARE(qAlpha(uRead), 255);
}

void TestCFilmWriter::a_repeated_frame_is_one_more()
{
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    QVERIFY(!cFilm.repeat()); // there is none yet
    QVERIFY(cFilm.write(plain(qRgb(10, 200, 10))) && cFilm.repeat() && cFilm.repeat());
    QVERIFY(cFilm.write(plain(qRgb(200, 10, 10))));
    QCOMPARE(cFilm.frames(), 4);
    QVERIFY(cFilm.close());
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
    CFilmReader cReader;
    QVERIFY(cReader.open(m_cFile));
    for (const int iGreen : {200, 200, 200, 10}) {
        QVERIFY(cReader.next());
        QVERIFY(qAbs(qGreen(cReader.picture().pixel(300, 300)) - iGreen) < 10);
    }
    QVERIFY(!cReader.next());
}

// As a writer leaves it that is killed.
void TestCFilmWriter::the_file_is_a_film_at_any_time()
{
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    for (int i = 0; i < VIDEO_FRAME_RATE; ++i)
        QVERIFY(cFilm.write(CTestPicture::frame(i)));
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.gap(), QString());
    QVERIFY2(cProbe.frames() >= VIDEO_FRAME_RATE - 1, qPrintable(QString::number(cProbe.frames())));
}

void TestCFilmWriter::a_film_without_frames_is_empty()
{
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    QVERIFY(cFilm.isOpen());
    QVERIFY(cFilm.close());
    QVERIFY(!cFilm.isOpen());
    QVERIFY(QFile::exists(m_cFile));
    QCOMPARE(QFileInfo(m_cFile).size(), 0);
}

void TestCFilmWriter::a_file_that_exists_is_replaced()
{
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::WriteOnly) && cFile.write(QByteArray(1 << 20, 'x')) > 0);
    cFile.close();
    CFilmWriter cFilm;
    for (int iFilm = 0; iFilm < 2; ++iFilm) {
        QVERIFY(cFilm.open(m_cFile));
        QCOMPARE(QFileInfo(m_cFile).size(), 0);
        for (int i = 0; i < 5; ++i)
            QVERIFY(cFilm.write(CTestPicture::frame(i)));
        QVERIFY(cFilm.close());
        const CFilmProbe cProbe(m_cFile);
        QCOMPARE(cProbe.complaints(), QString());
        QCOMPARE(cProbe.frames(), 5);
    }
}

void TestCFilmWriter::any_name_is_a_file_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("colon") << "a:b.ts";
    QTest::newRow("protocol") << "concat:a.ts|b.ts";
    QTest::newRow("pattern") << "film%03d.ts";
    QTest::newRow("another kind") << "film.mp4";
    QTest::newRow("no kind") << "film";
    QTest::newRow("letters") << QStringLiteral("Stra\u00dfe \u65e5\u672c.ts");
}

void TestCFilmWriter::any_name_is_a_file()
{
    QFETCH(QString, name);
    // A relative one: nothing stands before it.
    const QString cBefore = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_pcFolder->path()));
    CFilmWriter cFilm;
    CFilmReader cReader;
    const bool bWritten = cFilm.open(name) && cFilm.write(CTestPicture::frame(0)) &&
                          cFilm.write(CTestPicture::frame(1)) && cFilm.close();
    const bool bRead = cReader.open(name) && cReader.next() && cReader.next();
    QVERIFY(QDir::setCurrent(cBefore));
    QVERIFY2(bWritten, qPrintable(cFilm.errorString()));
    QVERIFY2(bRead, qPrintable(cReader.errorString()));
    QVERIFY(QFile::exists(m_pcFolder->filePath(name)));
    const CFilmProbe cProbe(m_pcFolder->filePath(name));
    QCOMPARE(cProbe.complaints(), QString());
    QCOMPARE(cProbe.frames(), 2);
}

void TestCFilmWriter::a_file_that_can_not_be_made_is_an_error_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("no folder") << "/nowhere/film.ts"
                               << "/nowhere/film.ts: No such file or directory";
    QTest::newRow("no name") << ""
                             << ": No such file or directory";
    QTest::newRow("folder") << "/"
                            << "/: Is a directory";
}

void TestCFilmWriter::a_file_that_can_not_be_made_is_an_error()
{
    QFETCH(QString, name);
    QFETCH(QString, error);
    CFilmWriter cFilm;
    QVERIFY(!cFilm.open(name));
    QCOMPARE(cFilm.errorString(), error);
    QVERIFY(!cFilm.isOpen());
}

void TestCFilmWriter::what_does_not_fit_is_an_error_and_leaves_a_film()
{
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    const CSizeLimit cLimit(200000);
    int iWritten = 0;
    while (iWritten < TEN_SECONDS && cFilm.write(moving(iWritten)))
        ++iWritten;
    QVERIFY(iWritten > 2 && iWritten < TEN_SECONDS);
    QCOMPARE(cFilm.errorString(), m_cFile + QStringLiteral(": File too large"));
    QVERIFY(QFileInfo(m_cFile).size() <= 200000);
    const CFilmProbe cProbe(m_cFile);
    QCOMPARE(cProbe.complaints(), QString());
    QVERIFY2(cProbe.frames() >= iWritten - 1, qPrintable(QString::number(cProbe.frames())));
    cFilm.close(); // which may still fit, or not
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
}

void TestCFilmWriter::it_goes_on_when_there_is_room_again()
{
    CFilmWriter cFilm;
    QVERIFY(cFilm.open(m_cFile));
    {
        const CSizeLimit cLimit(0);
        QVERIFY(cFilm.write(CTestPicture::frame(0))); // still in the encoder
        QVERIFY(!cFilm.write(CTestPicture::frame(1)));
        QCOMPARE(QFileInfo(m_cFile).size(), 0);
    }
    int iLost = 2;
    while (iLost < VIDEO_FRAME_RATE / 2 + 1 && !cFilm.write(CTestPicture::frame(iLost)))
        ++iLost;
    for (int i = iLost + 1; i < 2 * VIDEO_FRAME_RATE; ++i)
        QVERIFY2(cFilm.write(CTestPicture::frame(i)), qPrintable(cFilm.errorString()));
    QVERIFY(cFilm.close());
    CFilmReader cReader;
    QVERIFY2(cReader.open(m_cFile), qPrintable(cReader.errorString()));
    int iFrames = 0;
    while (cReader.next())
        ++iFrames;
    QVERIFY2(iFrames > VIDEO_FRAME_RATE, qPrintable(QString::number(iFrames)));
    QCOMPARE(CFilmProbe(m_cFile).complaints(), QString());
}

void TestCFilmWriter::closed_it_writes_nothing()
{
    CFilmWriter cFilm;
    QVERIFY(!cFilm.write(CTestPicture::frame(0)));
    QVERIFY(!cFilm.repeat());
    QVERIFY(cFilm.close());
    QCOMPARE(cFilm.frames(), 0);
}

QTEST_GUILESS_MAIN(TestCFilmWriter)
#include "tst_CFilmWriter.moc"
