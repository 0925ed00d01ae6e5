/* SPDX-License-Identifier: MIT */
/* halden-camera: films and video devices as the camera, started by halden-board. */
#include "board/camera/frames.h"
#include "board/film/CFilmWriter.h"
#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "tests/support/CTemporaryBoard.h"
#include "tests/support/LiveVideo.h"
#include "tests/support/Timeouts.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace
{

const QRgb BLACK = 0xff000000;

} // namespace

class TestHaldenCamera : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_film_is_seen_again_and_again();
    void a_film_of_one_frame_stays();
    void it_rests_when_nobody_looks();
    void another_source_ends_it();
    void another_film_takes_its_place();
    void it_ends_with_the_boards_folder();
    void killed_it_leaves_no_signal();
    void an_unplugged_film_is_black();
    void the_tool_tells_the_source();
    void refuses_what_it_can_not_show_data();
    void refuses_what_it_can_not_show();

    void a_device_is_seen();
    void a_device_captures_while_somebody_looks();
    void an_unplugged_device_leaves_no_signal();

private:
    int run(const QStringList& rcArguments);
    QString makeFilm(const QString& rcName, const QList<int>& rcGreys);
    /// What the FPGA would record: a grey, -1 for no picture of one grey.
    int seen() const;
    bool sees(int iGrey) const { return qAbs(seen() - iGrey) <= 3; }
    pid_t helper() const;
    static bool isRunning(pid_t iProcess);
    quint32 state() const { return board_load(&m_pcBoard->board().camera()->helper); }
    int deviceLines(const char* pszLine) const;

    QScopedPointer<CTemporaryBoard> m_pcBoard;
    QTemporaryDir m_cFolder;
    QProcessEnvironment m_cEnvironment;
    QString m_cOutput;
    QString m_cErrors;
};

void TestHaldenCamera::init()
{
    m_pcBoard.reset(new CTemporaryBoard);
    QVERIFY2(m_pcBoard->make(), qPrintable(m_pcBoard->error()));
    showLiveVideo(m_pcBoard->board());
    m_cEnvironment = QProcessEnvironment::systemEnvironment();
    m_cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), m_pcBoard->board().directory());
}

// No program stays.
void TestHaldenCamera::cleanup()
{
    const pid_t iProcess = helper();
    m_pcBoard->board().setMovingCamera();
    QTRY_VERIFY_WITH_TIMEOUT(iProcess == 0 || !isRunning(iProcess), TIMEOUT_PROCESS_MS);
}

int TestHaldenCamera::run(const QStringList& rcArguments)
{
    QProcess cProcess;
    cProcess.setProcessEnvironment(m_cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), QStringList(QStringLiteral("camera")) + rcArguments);
    if (!cProcess.waitForFinished(TIMEOUT_PROCESS_MS))
        return -1;
    m_cOutput = QString::fromUtf8(cProcess.readAllStandardOutput());
    m_cErrors = QString::fromUtf8(cProcess.readAllStandardError());
    return cProcess.exitCode();
}

QString TestHaldenCamera::makeFilm(const QString& rcName, const QList<int>& rcGreys)
{
    CFilmWriter cFilm;
    const QString cPath = m_cFolder.filePath(rcName);
    QImage cPicture(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    if (!cFilm.open(cPath))
        return QString();
    for (const int iGrey : rcGreys) {
        cPicture.fill(qRgb(iGrey, iGrey, iGrey));
        if (!cFilm.write(cPicture))
            return QString();
    }
    return cFilm.close() ? cPath : QString();
}

// The grey of a picture, -1 for one that has others too.
static int greyOf(const QImage& rcPicture)
{
    const int iGrey = qGray(rcPicture.pixel(100, 100));
    return qAbs(qGray(rcPicture.pixel(600, 500)) - iGrey) <= 3 ? iGrey : -1;
}

int TestHaldenCamera::seen() const
{
    return greyOf(CBoardPicture::recorded(m_pcBoard->board()));
}

// One that has ended may wait for the machine's first process to notice.
bool TestHaldenCamera::isRunning(pid_t iProcess)
{
    QFile cStatus(QStringLiteral("/proc/%1/stat").arg(iProcess));
    return cStatus.open(QIODevice::ReadOnly) && !cStatus.readAll().contains(") Z ");
}

pid_t TestHaldenCamera::helper() const
{
    return static_cast<pid_t>(board_load(&m_pcBoard->board().camera()->process));
}

int TestHaldenCamera::deviceLines(const char* pszLine) const
{
    QFile cLog(m_cEnvironment.value(QStringLiteral("FAKE_VIDEO_LOG")));
    return cLog.open(QIODevice::ReadOnly) ? cLog.readAll().split('\n').count(pszLine) : 0;
}

// A second of each grey, and looks at the camera's frames alone: on a busy machine a frame, or with sanitizers the FPGA's
// picture, takes as long as some tenths of a second of film, and each look at a shorter film could meet the same grey.
void TestHaldenCamera::a_film_is_seen_again_and_again()
{
    const auto cShows = [this](int iGrey) {
        return qAbs(greyOf(m_pcBoard->board().cameraImage()) - iGrey) <= 3;
    };
    const QString cFilm =
        makeFilm(QStringLiteral("two.ts"), QVector<int>(25, 40).toList() + QVector<int>(25, 200).toList());
    QVERIFY(!cFilm.isEmpty());
    QCOMPARE(run({QStringLiteral("film"), cFilm}), 0);
    QCOMPARE(m_pcBoard->board().cameraSource(), BOARD_CAMERA_FRAMES);
    for (int iRound = 0; iRound < 3; ++iRound) {
        QTRY_VERIFY_WITH_TIMEOUT(cShows(40), TIMEOUT_PROCESS_MS);
        QTRY_VERIFY_WITH_TIMEOUT(cShows(200), TIMEOUT_PROCESS_MS);
    }
    QTRY_VERIFY_WITH_TIMEOUT(sees(40), TIMEOUT_PROCESS_MS);
    QTRY_VERIFY_WITH_TIMEOUT(sees(200), TIMEOUT_PROCESS_MS);
}

void TestHaldenCamera::a_film_of_one_frame_stays()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    QVERIFY(sees(120));
    QTRY_COMPARE_WITH_TIMEOUT(state(), quint32(FRAMES_RESTING), TIMEOUT_PROCESS_MS);
    QVERIFY(sees(120));
}

void TestHaldenCamera::it_rests_when_nobody_looks()
{
    const QString cFilm = makeFilm(QStringLiteral("two.ts"), {40, 90});
    QCOMPARE(run({QStringLiteral("film"), cFilm}), 0);
    QVERIFY(seen() > 20);
    QCOMPARE(state(), quint32(FRAMES_RUNNING));
    QTRY_COMPARE_WITH_TIMEOUT(state(), quint32(FRAMES_RESTING), TIMEOUT_PROCESS_MS);
    const quint32 u32Delivered = board_load(&m_pcBoard->board().camera()->delivered);
    QVERIFY(m_pcBoard->board().hasSignal()); // which is no look
    QCOMPARE(board_load(&m_pcBoard->board().camera()->delivered), u32Delivered);
    QVERIFY(seen() > 20);
    QVERIFY(board_load(&m_pcBoard->board().camera()->delivered) != u32Delivered);
}

void TestHaldenCamera::another_source_ends_it()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    const pid_t iProcess = helper();
    QVERIFY(isRunning(iProcess));
    QCOMPARE(run({QStringLiteral("test")}), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning(iProcess), TIMEOUT_PROCESS_MS);
    QCOMPARE(m_pcBoard->board().cameraSource(), BOARD_CAMERA_STILL);
}

void TestHaldenCamera::another_film_takes_its_place()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    QVERIFY(sees(120));
    const pid_t iFirst = helper();
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("other.ts"), {60})}), 0);
    // A frame that the first one was about to deliver may come once more.
    QTRY_VERIFY_WITH_TIMEOUT(sees(60), TIMEOUT_PROCESS_MS);
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning(iFirst), TIMEOUT_PROCESS_MS);
    QVERIFY(sees(60));
}

void TestHaldenCamera::it_ends_with_the_boards_folder()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    const pid_t iProcess = helper();
    QVERIFY(isRunning(iProcess));
    m_pcBoard.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning(iProcess), TIMEOUT_PROCESS_MS);
    init();
}

void TestHaldenCamera::killed_it_leaves_no_signal()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    QVERIFY(sees(120));
    QCOMPARE(::kill(helper(), SIGKILL), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!m_pcBoard->board().hasSignal(), TIMEOUT_PROCESS_MS);
    QCOMPARE(CBoardPicture::recorded(m_pcBoard->board()).pixel(100, 100), BLACK);
    QVERIFY(m_pcBoard->board().isCameraPlugged());
    QCOMPARE(run({QStringLiteral("show")}), 0);
    QVERIFY2(m_cOutput.contains(QStringLiteral("one.ts, ended")), qPrintable(m_cOutput));
}

void TestHaldenCamera::an_unplugged_film_is_black()
{
    QCOMPARE(run({QStringLiteral("film"), makeFilm(QStringLiteral("one.ts"), {120})}), 0);
    QVERIFY(sees(120));
    QCOMPARE(run({QStringLiteral("unplug")}), 0);
    QVERIFY(!m_pcBoard->board().hasSignal());
    QCOMPARE(CBoardPicture::recorded(m_pcBoard->board()).pixel(100, 100), BLACK);
    QCOMPARE(run({QStringLiteral("plug")}), 0);
    QVERIFY(sees(120));
}

void TestHaldenCamera::the_tool_tells_the_source()
{
    QCOMPARE(run({QStringLiteral("show")}), 0);
    QCOMPARE(m_cOutput, QStringLiteral("still picture\n"));
    QCOMPARE(run({QStringLiteral("moving"), QStringLiteral("--frame"), QStringLiteral("5")}), 0);
    QCOMPARE(run({QStringLiteral("unplug")}), 0);
    QCOMPARE(run({QStringLiteral("show")}), 0);
    QCOMPARE(m_cOutput, QStringLiteral("moving, frame 5, unplugged\n"));
    const QString cFilm = makeFilm(QStringLiteral("one.ts"), {120});
    QCOMPARE(run({QStringLiteral("film"), cFilm}), 0);
    QCOMPARE(run({QStringLiteral("show")}), 0);
    QVERIFY2(m_cOutput.startsWith(QStringLiteral("film %1, frame ").arg(cFilm)), qPrintable(m_cOutput));
}

void TestHaldenCamera::refuses_what_it_can_not_show_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("no film") << QStringList({"film", "/nowhere/film.ts"}) << "/nowhere/film.ts: ";
    QTest::newRow("not a film") << QStringList({"film", HALDEND_BOARD_TOOL}) << "halden-board: no film";
    QTest::newRow("film where") << QStringList("film") << "an argument is missing";
    QTest::newRow("no device") << QStringList({"device", "/dev/nowhere"}) << "/dev/nowhere: open: ";
    QTest::newRow("not a device") << QStringList({"device", "/dev/null"}) << "/dev/null: no video device: ";
    QTest::newRow("device where") << QStringList("device") << "an argument is missing";
}

void TestHaldenCamera::refuses_what_it_can_not_show()
{
    QFETCH(QStringList, line);
    QFETCH(QString, message);
    QVERIFY(run(line) > 0);
    QVERIFY2(m_cErrors.contains(message), qPrintable(m_cErrors));
    QCOMPARE(m_pcBoard->board().hasSignal(), line.size() == 1);
}

// The library for the fake device goes before the sanitizers', as the board's does.
#define USE_FAKE_DEVICE()                                                                    \
    m_cEnvironment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(HALDEND_FAKE_VIDEO)); \
    m_cEnvironment.insert(QStringLiteral("FAKE_VIDEO_LOG"), m_pcBoard->board().path("fake-log"))

const QStringList FAKE_DEVICE = {QStringLiteral("device"), QStringLiteral("/dev/video-fake")};

void TestHaldenCamera::a_device_is_seen()
{
    USE_FAKE_DEVICE();
    QCOMPARE(run(FAKE_DEVICE), 0);
    const QRgb uFirst = CBoardPicture::recorded(m_pcBoard->board()).pixel(350, 250);
    const int iLuma = (255 * (100 - 16) + 110) / 219;
    QVERIFY2(qRed(uFirst) > iLuma + 40 && qGreen(uFirst) < qRed(uFirst) - 50, // V is 160
             qPrintable(QString::number(uFirst, 16)));
    QVERIFY2(qBlue(uFirst) >= iLuma - 1, qPrintable(QString::number(uFirst, 16)));
    QTRY_VERIFY_WITH_TIMEOUT(CBoardPicture::recorded(m_pcBoard->board()).pixel(350, 250) != uFirst,
                             TIMEOUT_PROCESS_MS);
}

void TestHaldenCamera::a_device_captures_while_somebody_looks()
{
    USE_FAKE_DEVICE();
    QCOMPARE(run(FAKE_DEVICE), 0);
    CBoardPicture::recorded(m_pcBoard->board());
    QVERIFY(deviceLines("on") > 0);
    QTRY_COMPARE_WITH_TIMEOUT(state(), quint32(FRAMES_RESTING), TIMEOUT_PROCESS_MS);
    QCOMPARE(deviceLines("off"), deviceLines("on"));
    const int iBefore = deviceLines("on");
    CBoardPicture::recorded(m_pcBoard->board());
    QCOMPARE(deviceLines("on"), iBefore + 1);
}

void TestHaldenCamera::an_unplugged_device_leaves_no_signal()
{
    USE_FAKE_DEVICE();
    m_cEnvironment.insert(QStringLiteral("FAKE_VIDEO_FRAMES"), QStringLiteral("3"));
    QCOMPARE(run(FAKE_DEVICE), 0);
    const auto look = [this] {
        CBoardPicture::recorded(m_pcBoard->board());
        return m_pcBoard->board().hasSignal();
    };
    QTRY_VERIFY_WITH_TIMEOUT(!look(), TIMEOUT_PROCESS_MS);
    QCOMPARE(run({QStringLiteral("show")}), 0);
    QVERIFY2(m_cOutput.contains(QStringLiteral("ended /dev/video-fake: frame: No such device")),
             qPrintable(m_cOutput));
}

QTEST_GUILESS_MAIN(TestHaldenCamera)

#include "tst_halden_camera.moc"
