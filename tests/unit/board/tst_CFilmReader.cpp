/* SPDX-License-Identifier: MIT */
/* Films of several kinds, made by ffmpeg, as the board reads them. */
#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"
#include "board/picture/CTestPicture.h"
#include "hw/video_geometry.h"
#include "tests/support/CFilmProbe.h"

#include <QtTest>

#include <sys/stat.h>

namespace
{

const QRgb SEEN = qRgb(0x20, 0x40, 0x80);

bool isSeen(const QImage& rcPicture)
{
    for (const QPoint cPoint : {QPoint(5, 5), QPoint(360, 288), QPoint(714, 570)}) {
        const QRgb uPixel = rcPicture.pixel(cPoint);
        if (qAbs(qRed(uPixel) - qRed(SEEN)) > 6 || qAbs(qGreen(uPixel) - qGreen(SEEN)) > 6 ||
            qAbs(qBlue(uPixel) - qBlue(SEEN)) > 6 || qAlpha(uPixel) != 255)
            return false;
    }
    return true;
}

/// A film of one colour; the options are ffmpeg's, and end with the file.
bool makeFilm(const QString& rcSize, int iRate, const QStringList& rcOptions)
{
    return CFilmProbe::make(
        QStringList{QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                    QStringLiteral("color=c=0x204080:size=%1:rate=%2:duration=1").arg(rcSize).arg(iRate)} +
        rcOptions);
}

} // namespace

class TestCFilmReader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void reads_films_of_several_kinds_data();
    void reads_films_of_several_kinds();
    void tells_each_frames_time();
    void keeps_the_last_frame_at_the_end();
    void begins_again();
    void goes_on_where_time_stamps_leap();
    void fields_are_scaled_apart();
    void what_has_no_video_is_refused_data();
    void what_has_no_video_is_refused();
    void lists_of_other_files_are_refused_data();
    void lists_of_other_files_are_refused();
    void what_is_no_plain_file_is_refused_data();
    void what_is_no_plain_file_is_refused();
    void damage_is_left_out();
    void nothing_is_open_at_first();

private:
    QString path(const QString& rcName) const { return m_cFolder.filePath(rcName); }
    bool put(const QString& rcName, const QByteArray& rcBytes) const;
    static int countFrames(CFilmReader& rcFilm);

    QTemporaryDir m_cFolder;
    QString m_cFilm; ///< 25 frames, as the codec writes them
};

void TestCFilmReader::initTestCase()
{
    m_cFilm = path(QStringLiteral("codec.ts"));
    CFilmWriter cWriter;
    QVERIFY(cWriter.open(m_cFilm));
    for (int i = 0; i < VIDEO_FRAME_RATE; ++i)
        QVERIFY(cWriter.write(CTestPicture::frame(i)));
    QVERIFY(cWriter.close());
}

bool TestCFilmReader::put(const QString& rcName, const QByteArray& rcBytes) const
{
    QFile cFile(path(rcName));
    return cFile.open(QIODevice::WriteOnly) && cFile.write(rcBytes) == rcBytes.size();
}

int TestCFilmReader::countFrames(CFilmReader& rcFilm)
{
    int iFrames = 0;
    while (rcFilm.next())
        ++iFrames;
    return iFrames;
}

void TestCFilmReader::reads_films_of_several_kinds_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("rate");
    QTest::addColumn<QStringList>("options");
    const QStringList cMpeg4{"-c:v", "mpeg4"};
    QTest::newRow("MP4") << "a.mp4"
                         << "320x240" << 10 << cMpeg4;
    QTest::newRow("AVI") << "a.avi"
                         << "320x240" << 10 << cMpeg4;
    QTest::newRow("Matroska") << "a.mkv"
                              << "1280x720" << 5 << cMpeg4;
    QTest::newRow("program stream") << "a.mpg"
                                    << "720x576" << 25 << QStringList{"-c:v", "mpeg2video"};
    QTest::newRow("transport stream, interlaced")
        << "a.ts"
        << "720x576" << 25 << QStringList{"-c:v", "mpeg2video", "-flags", "+ildct+ilme"};
    QTest::newRow("odd size") << "b.avi"
                              << "321x243" << 10 << QStringList{"-c:v", "ffv1", "-pix_fmt", "yuv444p"};
    QTest::newRow("pictures of JPEG")
        << "c.avi"
        << "320x240" << 10 << QStringList{"-c:v", "mjpeg", "-pix_fmt", "yuvj420p"};
    QTest::newRow("in RGB") << "d.avi"
                            << "320x240" << 10 << QStringList{"-c:v", "rawvideo", "-pix_fmt", "bgr24"};
}

void TestCFilmReader::reads_films_of_several_kinds()
{
    QFETCH(QString, file);
    QFETCH(QString, size);
    QFETCH(int, rate);
    QFETCH(QStringList, options);
    QVERIFY(makeFilm(size, rate, options + QStringList{path(file)}));
    CFilmReader cFilm;
    QVERIFY2(cFilm.open(path(file)), qPrintable(cFilm.errorString()));
    int iFrames = 0;
    for (; cFilm.next(); ++iFrames) {
        QCOMPARE(cFilm.picture().size(), QSize(VIDEO_WIDTH, VIDEO_HEIGHT));
        QCOMPARE(cFilm.picture().format(), QImage::Format_RGB32);
        QVERIFY2(isSeen(cFilm.picture()), qPrintable(QString::number(cFilm.picture().pixel(360, 288), 16)));
        // Stamps of some kinds are in milliseconds.
        QVERIFY(qAbs(cFilm.time() - iFrames * 1000000LL / rate) <= 1000);
        QVERIFY(qAbs(cFilm.duration() - 1000000 / rate) <= 1000);
    }
    QCOMPARE(iFrames, rate);
}

void TestCFilmReader::tells_each_frames_time()
{
    CFilmReader cFilm;
    QVERIFY(cFilm.open(m_cFilm));
    for (int i = 0; i < VIDEO_FRAME_RATE; ++i) {
        QVERIFY(cFilm.next());
        QCOMPARE(cFilm.time(), i * 40000LL);
        QCOMPARE(cFilm.duration(), 40000LL);
    }
    QVERIFY(!cFilm.next());
}

void TestCFilmReader::keeps_the_last_frame_at_the_end()
{
    CFilmReader cFilm;
    QVERIFY(cFilm.open(m_cFilm));
    QVERIFY(cFilm.picture().isNull());
    QImage cLast;
    while (cFilm.next())
        cLast = cFilm.picture();
    QVERIFY(!cLast.isNull());
    QVERIFY(!cFilm.next());
    QCOMPARE(cFilm.picture(), cLast);
    QCOMPARE(cFilm.time(), 24 * 40000LL);
}

void TestCFilmReader::begins_again()
{
    CFilmReader cFilm;
    QVERIFY(cFilm.open(m_cFilm) && cFilm.next());
    const QImage cFirst = cFilm.picture();
    QCOMPARE(countFrames(cFilm), VIDEO_FRAME_RATE - 1);
    QVERIFY(cFilm.rewind());
    QVERIFY(cFilm.next());
    QCOMPARE(cFilm.time(), 0LL);
    QCOMPARE(cFilm.picture(), cFirst);
    QCOMPARE(countFrames(cFilm), VIDEO_FRAME_RATE - 1);
    QVERIFY(QFile::rename(m_cFilm, m_cFilm + QLatin1Char('x')));
    QVERIFY(!cFilm.rewind());
    QCOMPARE(cFilm.errorString(), m_cFilm + QStringLiteral(": No such file or directory"));
    QVERIFY(!cFilm.isOpen());
    QVERIFY(QFile::rename(m_cFilm + QLatin1Char('x'), m_cFilm));
}

// Two films, one behind the other: the time stamps of the second one begin again.
void TestCFilmReader::goes_on_where_time_stamps_leap()
{
    QFile cFile(m_cFilm);
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QByteArray cBytes = cFile.readAll();
    QVERIFY(put(QStringLiteral("twice.ts"), cBytes + cBytes));
    CFilmReader cFilm;
    QVERIFY(cFilm.open(path(QStringLiteral("twice.ts"))));
    qint64 iBefore = -1;
    int iFrames = 0;
    for (; cFilm.next(); ++iFrames) {
        QVERIFY(cFilm.time() >= iBefore && cFilm.time() <= iBefore + 100000);
        iBefore = cFilm.time();
    }
    QVERIFY(iFrames > VIDEO_FRAME_RATE);
}

// In half the size, lines in turns black and white: as whole frames they would turn grey.
void TestCFilmReader::fields_are_scaled_apart()
{
    const QString cFile = path(QStringLiteral("fields.avi"));
    QVERIFY(CFilmProbe::make({QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                              QStringLiteral("color=c=black:size=360x288:rate=25:duration=0.2,format=yuv420p,"
                                             "geq=lum='if(mod(Y,2),235,16)':cb=128:cr=128,setfield=tff"),
                              QStringLiteral("-c:v"), QStringLiteral("mpeg2video"), QStringLiteral("-flags"),
                              QStringLiteral("+ildct+ilme"), QStringLiteral("-q:v"), QStringLiteral("2"),
                              QStringLiteral("-f"), QStringLiteral("mpegts"), cFile}));
    CFilmReader cFilm;
    QVERIFY(cFilm.open(cFile) && cFilm.next());
    const QImage cPicture = cFilm.picture();
    for (int y = 4; y < VIDEO_HEIGHT - 4; ++y) {
        const int iGreen = qGreen(cPicture.pixel(360, y));
        QVERIFY2(y % 2 == 0 ? iGreen < 40 : iGreen > 215,
                 qPrintable(QStringLiteral("line %1: %2").arg(y).arg(iGreen)));
    }
}

void TestCFilmReader::what_has_no_video_is_refused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty") << QByteArray() << "no film that can be read";
    QTest::newRow("text") << QByteArray("halden-codec: frame 0000000000, line 0000\n").repeated(2000)
                          << "no film that can be read";
    QTest::newRow("zeros") << QByteArray(100000, '\0') << "no film that can be read";
    QTest::newRow("sound") << QByteArray() << "has no video";
}

void TestCFilmReader::what_has_no_video_is_refused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, error);
    const QString cFile = path(QStringLiteral("no.mp4"));
    if (QByteArray(QTest::currentDataTag()) == "sound")
        QVERIFY(CFilmProbe::make({QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                                  QStringLiteral("sine=duration=1"), QStringLiteral("-c:a"),
                                  QStringLiteral("aac"), cFile}));
    else
        QVERIFY(put(QStringLiteral("no.mp4"), bytes));
    CFilmReader cFilm;
    QVERIFY(!cFilm.open(cFile));
    QVERIFY2(cFilm.errorString().startsWith(cFile + QStringLiteral(": ") + error),
             qPrintable(cFilm.errorString()));
    QVERIFY(!cFilm.isOpen());
    QVERIFY(!cFilm.next());
    QVERIFY(cFilm.picture().isNull());
}

void TestCFilmReader::lists_of_other_files_are_refused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("m3u8")
        << "list.m3u8"
        << "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:1\n#EXTINF:1.0,\ncodec.ts\n#EXT-X-ENDLIST\n";
    QTest::newRow("concat") << "list.ffconcat"
                            << "ffconcat version 1.0\nfile 'codec.ts'\n";
    QTest::newRow("sdp")
        << "list.sdp"
        << "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video 5004 RTP/AVP 33\n";
}

void TestCFilmReader::lists_of_other_files_are_refused()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QVERIFY(put(name, text.toUtf8()));
    CFilmReader cFilm;
    QVERIFY(!cFilm.open(path(name)));
    QVERIFY2(cFilm.errorString().contains(QLatin1String("no film that can be read")),
             qPrintable(cFilm.errorString()));
}

void TestCFilmReader::what_is_no_plain_file_is_refused_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("error");
    QTest::newRow("not there") << path(QStringLiteral("nothing.ts")) << "No such file or directory";
    QTest::newRow("no name") << QString() << "No such file or directory";
    QTest::newRow("folder") << m_cFolder.path() << "not a plain file";
    QTest::newRow("pipe") << path(QStringLiteral("pipe.ts")) << "not a plain file";
    QTest::newRow("address") << QStringLiteral("concat:%1|%1").arg(m_cFilm) << "No such file or directory";
    QTest::newRow("pattern") << path(QStringLiteral("codec%d.ts")) << "No such file or directory";
}

void TestCFilmReader::what_is_no_plain_file_is_refused()
{
    QFETCH(QString, file);
    QFETCH(QString, error);
    if (file.endsWith(QLatin1String("pipe.ts")))
        QCOMPARE(::mkfifo(qPrintable(file), 0600), 0);
    CFilmReader cFilm;
    QVERIFY(!cFilm.open(file));
    QCOMPARE(cFilm.errorString(), file + QStringLiteral(": ") + error);
}

void TestCFilmReader::damage_is_left_out()
{
    QFile cFile(m_cFilm);
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QByteArray cBytes = cFile.readAll();
    for (int i = cBytes.size() / 2; i < cBytes.size() / 2 + 20000; ++i)
        cBytes[i] = static_cast<char>(i * 7);
    cBytes.chop(1000);
    QVERIFY(put(QStringLiteral("damaged.ts"), cBytes));
    CFilmReader cFilm;
    QVERIFY2(cFilm.open(path(QStringLiteral("damaged.ts"))), qPrintable(cFilm.errorString()));
    const int iFrames = countFrames(cFilm);
    QVERIFY2(iFrames >= VIDEO_FRAME_RATE / 2 && iFrames <= VIDEO_FRAME_RATE,
             qPrintable(QString::number(iFrames)));
    QVERIFY(!cFilm.picture().isNull());
}

void TestCFilmReader::nothing_is_open_at_first()
{
    CFilmReader cFilm;
    QVERIFY(!cFilm.isOpen());
    QVERIFY(!cFilm.next());
    QVERIFY(cFilm.picture().isNull());
    QCOMPARE(cFilm.time(), 0LL);
}

QTEST_GUILESS_MAIN(TestCFilmReader)
#include "tst_CFilmReader.moc"
