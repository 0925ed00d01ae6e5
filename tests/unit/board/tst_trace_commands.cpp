/* SPDX-License-Identifier: MIT */
/* The tool's commands for traces: names, replay, comparison. */
#include "board/create/CBoardMaker.h"
#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/LiveVideo.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

static const int PROCESS_MS = 60000;

class TestTraceCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void shows_names();
    void follows_with_names();
    void begins_and_ends_a_full_trace();
    void replays_the_picture();
    void replays_a_part();
    void replays_into_a_directory();
    void replays_step_by_step();
    void replays_with_a_camera();
    void says_which_line_it_can_not_replay();
    void compares();
    void compares_a_board_with_its_trace();
    void has_trouble_with_what_can_not_be_read();
    void refuses_lines_data();
    void refuses_lines();

private:
    int run(const QStringList& rcArguments, const QByteArray& rcInput = QByteArray());
    QString file(const char* pszName) const { return m_pcDirectory->filePath(QLatin1String(pszName)); }
    bool write(const char* pszName, const QByteArray& rcText);

    QScopedPointer<QTemporaryDir> m_pcDirectory;
    CBoard m_cBoard;
    QString m_cOutput;
    QString m_cErrors;
};

void TestTraceCommands::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    QString cError;
    QVERIFY2(CBoardMaker::create(file("board"), cError) && m_cBoard.open(file("board")), qPrintable(cError));
    showLiveVideo(m_cBoard);
}

int TestTraceCommands::run(const QStringList& rcArguments, const QByteArray& rcInput)
{
    CChildProcess cProcess;
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), rcArguments);
    cProcess.write(rcInput);
    cProcess.closeWriteChannel();
    if (!cProcess.waitForFinished(PROCESS_MS) || cProcess.exitStatus() != QProcess::NormalExit)
        return -1;
    m_cOutput = QString::fromUtf8(cProcess.readAllStandardOutput());
    m_cErrors = QString::fromUtf8(cProcess.readAllStandardError());
    return cProcess.exitCode();
}

bool TestTraceCommands::write(const char* pszName, const QByteArray& rcText)
{
    QFile cFile(file(pszName));
    return cFile.open(QIODevice::WriteOnly | QIODevice::Append) && cFile.write(rcText) == rcText.size();
}

// A picture of the frame generator's colour, with the decoder and the encoder at work.
static const QByteArray TRACE = "lime display 0x00000100 0x80020000\n"
                                "i2c bytes @ 0x25 : 00*10 7d 47 7e\n"
                                "i2c bytes @ 0x44 : 00*97 02\n"
                                "lime display 0x00000180 0x00543201\n"
                                "lime capture 0x00000004 0x08000800\n"
                                "lime display 0x00000128 0x024002d0\n"
                                "fpga write32 0x00ff0004 0x00336699\n"
                                "fpga write32 0x00ff0000 0x00800000\n";

void TestTraceCommands::shows_names()
{
    QVERIFY(write("board/trace", "fpga seek 0x00300298\nfpga write 2 = 2 : 41 15\nnot of a trace\n"));
    QCOMPARE(run({"trace", "show", "--names", "--board", file("board")}), 0);
    QCOMPARE(m_cOutput,
             QString("fpga seek cell 12,5\nfpga write cell \"A\" white on navy at 12,5\nnot of a trace\n"));
}

void TestTraceCommands::follows_with_names()
{
    QVERIFY(write("board/trace", "fpga seek 0x00300298\nfpga write 2 = "));
    CChildProcess cProcess;
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL),
                   {"trace", "follow", "--names", "--board", file("board")});
    QByteArray cSeen;
    const auto seen = [&cProcess, &cSeen]() -> const QByteArray& { return cSeen += cProcess.readAll(); };
    QTRY_COMPARE_WITH_TIMEOUT(seen(), QByteArray("fpga seek cell 12,5\n"), PROCESS_MS);
    QVERIFY(write("board/trace", "2 : 41 15\n"));
    QTRY_COMPARE_WITH_TIMEOUT(
        seen(), QByteArray("fpga seek cell 12,5\nfpga write cell \"A\" white on navy at 12,5\n"), PROCESS_MS);
    cProcess.terminate();
    QVERIFY(cProcess.waitForFinished(PROCESS_MS));
}

void TestTraceCommands::begins_and_ends_a_full_trace()
{
    m_cBoard.setFpgaRegister(0x300000, 0x1541);
    QCOMPARE(run({"trace", "full", "--board", file("board")}), 0);
    QVERIFY(m_cBoard.isTracingFully());
    QVERIFY(m_cBoard.traceLines().contains("fpga bytes @ 0x00300000 : 41 15 00*510"));
    QCOMPARE(run({"trace", "off", "--board", file("board")}), 0);
    QVERIFY(!m_cBoard.isTracing());
    const int iLines = m_cBoard.traceLines().size();
    QCOMPARE(run({"trace", "on", "--board", file("board")}), 0);
    QVERIFY(m_cBoard.isTracing() && !m_cBoard.isTracingFully());
    QCOMPARE(m_cBoard.traceLines().size(), iLines);
}

void TestTraceCommands::replays_the_picture()
{
    QVERIFY(write("trace", TRACE));
    QCOMPARE(run({"replay", file("trace"), "--picture", file("a.png"), "--recorded", file("b.png")}), 0);
    QCOMPARE(m_cOutput, QString("8 of 8 lines\n"));
    QCOMPARE(QImage(file("a.png")).pixel(300, 300), 0xff336699U);
    QCOMPARE(QImage(file("b.png")).pixel(300, 300), 0xff336699U);
}

void TestTraceCommands::replays_a_part()
{
    QVERIFY(write("trace", TRACE));
    QCOMPARE(run({"replay", file("trace"), "--until", "7", "--picture", file("a.png")}), 0);
    QCOMPARE(m_cOutput, QString("7 of 8 lines\n"));
    QCOMPARE(QImage(file("a.png")).pixel(300, 300), m_cBoard.cameraImage().pixel(300, 300));
    QCOMPARE(run({"replay", file("trace"), "--until", "0"}), 0);
    QCOMPARE(m_cOutput, QString("0 of 8 lines\n"));
}

void TestTraceCommands::replays_into_a_directory()
{
    QVERIFY(write("trace", TRACE));
    QCOMPARE(run({"replay", file("trace"), "--into", file("new")}), 0);
    CBoard cNew;
    QVERIFY(cNew.open(file("new")));
    QCOMPARE(cNew.fpgaRegister(0xff0004), 0x336699U);
    QCOMPARE(run({"replay", file("trace"), "--into", file("new")}), 1);
    QVERIFY2(m_cErrors.contains("exists and isn't empty"), qPrintable(m_cErrors));
}

// Each line end carries a line out; the picture follows.
void TestTraceCommands::replays_step_by_step()
{
    QVERIFY(write("trace", TRACE));
    QCOMPARE(run({"replay", file("trace"), "--step", "--into", file("new")}, "\n\n\n\n\n\n\n"), 0);
    QVERIFY2(m_cOutput.startsWith("1 lime DCM1 den=1 l1e=1\n"), qPrintable(m_cOutput));
    QVERIFY2(m_cOutput.endsWith("8 fpga write32 CTRL fgon=1\n7 of 8 lines\n"), qPrintable(m_cOutput));
    CBoard cNew;
    QVERIFY(cNew.open(file("new")));
    QCOMPARE(cNew.fpgaRegister(0xff0004), 0x336699U);
    QCOMPARE(cNew.fpgaRegister(0xff0000), 0U);
    QCOMPARE(run({"replay", file("trace"), "--step", "--picture", file("a.png")}, "\n\n\n\n\n\n\n\n"), 0);
    QCOMPARE(QImage(file("a.png")).pixel(300, 300), 0xff336699U);
}

void TestTraceCommands::replays_with_a_camera()
{
    QImage cImage(20, 10, QImage::Format_RGB32);
    cImage.fill(0xff123456);
    QVERIFY(cImage.save(file("camera.png")) && write("trace", TRACE));
    QCOMPARE(run({"replay", file("trace"), "--until", "7", "--camera", file("camera.png"), "--picture",
                  file("a.png")}),
             0);
    QCOMPARE(QImage(file("a.png")).pixel(300, 300), 0xff123456U);
}

void TestTraceCommands::says_which_line_it_can_not_replay()
{
    QVERIFY(write("trace", TRACE + "fpga write 20 = 20 : 00 ...\n"));
    QCOMPARE(run({"replay", file("trace")}), 1);
    QCOMPARE(m_cErrors,
             QString("halden-board: %1:9: has not all bytes: switch the trace to full before it is taken\n")
                 .arg(file("trace")));
}

void TestTraceCommands::compares()
{
    QVERIFY(write("trace", TRACE) && write("other", QByteArray(TRACE).replace("0x00800000", "0x00820000")));
    QCOMPARE(run({"compare", file("trace"), file("trace")}), 0);
    QCOMPARE(m_cOutput, QString());
    QCOMPARE(run({"compare", file("trace"), file("other")}), 1);
    QCOMPARE(m_cOutput, QString("register CTRL: fgon=1 | fgon=1 cto=1\n"));
}

// Also with a camera that no trace has.
void TestTraceCommands::compares_a_board_with_its_trace()
{
    QImage cImage(20, 10, QImage::Format_RGB32);
    cImage.fill(0xff123456);
    m_cBoard.setCamera(cImage);
    QCOMPARE(run({"trace", "full", "--board", file("board")}), 0);
    QCOMPARE(run({"compare", file("board"), file("board/trace")}), 0);
    QCOMPARE(run({"compare", file("board/trace"), file("board")}), 0);
    m_cBoard.setLimeRegister(CBoard::LIME_DISPLAY, LIME_DBGC, 0x123456);
    QCOMPARE(run({"compare", file("board/trace"), file("board")}), 1);
    QVERIFY2(m_cOutput.startsWith("register DBGC: "), qPrintable(m_cOutput));
}

void TestTraceCommands::has_trouble_with_what_can_not_be_read()
{
    QVERIFY(write("trace", "Dear reader,\n"));
    QCOMPARE(run({"compare", file("board"), "/nowhere"}), 2);
    QVERIFY2(m_cErrors.contains("/nowhere"), qPrintable(m_cErrors));
    QCOMPARE(run({"compare", m_pcDirectory->path(), file("board")}), 2);
    QCOMPARE(run({"compare", file("board"), file("trace")}), 2);
    QVERIFY2(m_cErrors.contains("trace:1: not a line of a trace"), qPrintable(m_cErrors));
}

void TestTraceCommands::refuses_lines_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("names of on") << QStringList({"trace", "on", "--names"})
                                 << "--names is for show and follow";
    QTest::newRow("replay what") << QStringList("replay") << "an argument is missing";
    QTest::newRow("until when") << QStringList({"replay", "a", "--until", "now"}) << "'now' is not a number";
    QTest::newRow("compare what") << QStringList({"compare", "a"}) << "an argument is missing";
}

void TestTraceCommands::refuses_lines()
{
    QFETCH(QStringList, line);
    QFETCH(QString, message);
    QCOMPARE(run(line), 2);
    QVERIFY2(m_cErrors.contains(message), qPrintable(m_cErrors));
}

QTEST_GUILESS_MAIN(TestTraceCommands)

#include "tst_trace_commands.moc"
