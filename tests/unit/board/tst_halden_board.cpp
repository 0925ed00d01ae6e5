/* SPDX-License-Identifier: MIT */
/* The tool as a process: its output, its changes, and its exit status. */
#include "board/create/CBoardMaker.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/LiveVideo.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

static const int PROCESS_MS = 60000;

class TestHaldenBoard : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void refuses_bad_lines_data();
    void refuses_bad_lines();
    void fails_with_a_message_data();
    void fails_with_a_message();
    void helps_data();
    void helps();
    void creates_a_board();
    void takes_the_board_from_option_or_variable();
    void writes_the_picture();
    void follows_the_picture();
    void writes_the_recorded_picture();
    void draws_glyph_sets_without_a_board();
    void lists_registers();
    void lists_named_registers();
    void lists_named_chips_data();
    void lists_named_chips();
    void shows_reserved_fields_that_are_set();
    void marks_what_differs_from_the_register_files();
    void marks_bytes_as_the_daemon_composes_them();
    void lists_only_what_differs();
    void lists_without_marks_when_a_register_file_is_of_no_use_data();
    void lists_without_marks_when_a_register_file_is_of_no_use();
    void switches_and_shows_the_trace();
    void follows_the_trace();
    void chooses_the_camera_picture();
    void lets_the_camera_move();
    void plugs_the_camera();
    void switches_the_signal();
    void shows_and_clears_judgements();
    void steers_the_codec();
    void shows_and_clears_the_codec_calls();
    void sets_faults();
    void fills_the_disk();
    void lists_and_clears_faults();

private:
    int run(const QStringList& rcArguments);
    QStringList outputLines() const { return m_cOutput.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
    void removeRegisterFiles();
    void clearVideoChips();
    bool writeRegisterFile(const char* pszChip, const QByteArray& rcText);
    QString file(const char* pszName) const { return m_pcDirectory->filePath(QLatin1String(pszName)); }

    QScopedPointer<QTemporaryDir> m_pcDirectory;
    QProcessEnvironment m_cEnvironment;
    CBoard m_cBoard;
    QString m_cOutput;
    QString m_cErrors;
};

void TestHaldenBoard::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    QString cError;
    QVERIFY2(CBoardMaker::create(file("board"), cError) && m_cBoard.open(file("board")), qPrintable(cError));
    showLiveVideo(m_cBoard);
    m_cEnvironment = QProcessEnvironment::systemEnvironment();
    m_cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), file("board"));
    m_cEnvironment.remove(QStringLiteral("DISPLAY"));
}

/// The exit status, -1 if the tool crashed or hung.
int TestHaldenBoard::run(const QStringList& rcArguments)
{
    CChildProcess cProcess;
    cProcess.setProcessEnvironment(m_cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), rcArguments);
    if (!cProcess.waitForFinished(PROCESS_MS) || cProcess.exitStatus() != QProcess::NormalExit)
        return -1;
    m_cOutput = QString::fromLocal8Bit(cProcess.readAllStandardOutput());
    m_cErrors = QString::fromLocal8Bit(cProcess.readAllStandardError());
    return cProcess.exitCode();
}

bool TestHaldenBoard::writeRegisterFile(const char* pszChip, const QByteArray& rcText)
{
    QFile cFile(QStringLiteral("%1/%2.cnf").arg(m_cBoard.path(BOARD_CNFS), QLatin1String(pszChip)));
    return cFile.open(QIODevice::WriteOnly) && cFile.write(rcText) == rcText.size();
}

void TestHaldenBoard::clearVideoChips()
{
    for (const int iChip : {SAA7113_SLAVE, SAA7129_SLAVE})
        for (int iSub = 0; iSub < 256; ++iSub)
            m_cBoard.setI2cRegister(static_cast<quint8>(iChip), static_cast<quint8>(iSub), 0);
}

void TestHaldenBoard::refuses_bad_lines_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QStringList() << "Usage";
    QTest::newRow("unknown command") << QStringList("dance") << "unknown command 'dance'";
    QTest::newRow("create what") << QStringList("create") << "an argument is missing";
    QTest::newRow("create too much") << QStringList({"create", "a", "b"}) << "unexpected argument 'b'";
    QTest::newRow("unknown option") << QStringList({"picture", "--loud", "a.png"}) << "loud";
    QTest::newRow("picture where") << QStringList("picture") << "an argument is missing";
    QTest::newRow("trace how") << QStringList({"trace", "maybe"}) << "'maybe' is none of";
    QTest::newRow("unknown register")
        << QStringList({"registers", "NONE"}) << "unknown register or chip 'NONE'";
    QTest::newRow("frame of a file") << QStringList({"camera", "a.png", "--frame", "1"}) << "--frame";
    QTest::newRow("frame of a plug") << QStringList({"camera", "plug", "--frame", "1"}) << "--frame";
    QTest::newRow("frame too large") << QStringList({"camera", "moving", "--frame", "2147483647"})
                                     << "too large";
    QTest::newRow("camera too much") << QStringList({"camera", "test", "test"}) << "unexpected argument";
    QTest::newRow("frame") << QStringList({"camera", "test", "--frame", "one"}) << "'one' is not a number";
    QTest::newRow("frame large") << QStringList({"camera", "test", "--frame", "3000000000"}) << "too large";
    QTest::newRow("signal how") << QStringList({"signal", "maybe"}) << "'maybe' is none of on, off";
    QTest::newRow("signal") << QStringList("signal") << "an argument is missing";
    QTest::newRow("judgements how") << QStringList({"judgements", "hide"}) << "'hide' is none of show, clear";
    QTest::newRow("codec how") << QStringList({"codec", "dance"})
                               << "'dance' is none of show, log, clear, slow, ok";
    QTest::newRow("codec slow") << QStringList({"codec", "slow"}) << "'' is not a number of milliseconds";
    QTest::newRow("codec slow how") << QStringList({"codec", "slow", "-1"}) << "1";
    QTest::newRow("codec slower") << QStringList({"codec", "slow", "9999999999"}) << "is not a number";
    QTest::newRow("codec too much") << QStringList({"codec", "ok", "5"}) << "unexpected argument '5'";
    QTest::newRow("operation") << QStringList({"fault", "lunch"}) << "unknown operation 'lunch'";
    QTest::newRow("error") << QStringList({"fault", "fork", "--errno", "EMINE"}) << "unknown error 'EMINE'";
    QTest::newRow("nth") << QStringList({"fault", "fork", "--nth", "0"}) << "at least 1";
    QTest::newRow("count") << QStringList({"fault", "fork", "--count", "-1"}) << "at least 1";
    QTest::newRow("short") << QStringList({"fault", "fork", "--short"}) << "halved";
    QTest::newRow("glyphs of what") << QStringList({"glyphs", "4", "a.png"}) << "no glyph set '4'";
    QTest::newRow("glyphs where") << QStringList({"glyphs", "1"}) << "an argument is missing";
}

void TestHaldenBoard::refuses_bad_lines()
{
    QFETCH(QStringList, line);
    QFETCH(QString, message);
    QCOMPARE(run(line), 2);
    QVERIFY2(m_cErrors.contains(message), qPrintable(m_cErrors));
    QCOMPARE(m_cOutput, QString());
    QVERIFY(m_cBoard.faults().isEmpty());
}

void TestHaldenBoard::fails_with_a_message_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("no board") << QStringList({"trace", "show", "--board", "/nowhere"}) << "/nowhere/control";
    QTest::newRow("create on a board") << QStringList({"create", "/usr"}) << "/usr: exists and isn't empty";
    QTest::newRow("no picture folder") << QStringList({"picture", "/nowhere/a.png"}) << "/nowhere/a.png";
    QTest::newRow("no glyph folder") << QStringList({"glyphs", "1", "/nowhere/a.png"}) << "/nowhere/a.png";
    QTest::newRow("no camera file") << QStringList({"camera", "/nowhere/a.png"}) << "/nowhere/a.png";
}

void TestHaldenBoard::fails_with_a_message()
{
    QFETCH(QStringList, line);
    QFETCH(QString, message);
    QCOMPARE(run(line), 1);
    QVERIFY2(m_cErrors.contains(message), qPrintable(m_cErrors));
    QCOMPARE(m_cOutput, QString());
}

void TestHaldenBoard::helps_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("part");
    QTest::newRow("tool") << QStringList("--help") << "registers";
    QTest::newRow("tool, short") << QStringList("-h") << "HALDEN_BOARD";
    for (const char* pszCommand : {"create", "picture", "registers", "trace", "camera", "fault", "glyphs",
                                   "signal", "judgements", "codec", "replay", "compare"})
        QTest::newRow(pszCommand) << QStringList({pszCommand, "--help"}) << "--board <DIR>";
    QTest::newRow("operations") << QStringList({"fault", "-h"}) << "fpga-ioctl-write";
}

void TestHaldenBoard::helps()
{
    QFETCH(QStringList, line);
    QFETCH(QString, part);
    QCOMPARE(run(line), 0);
    QVERIFY2(m_cOutput.contains(part), qPrintable(m_cOutput));
    QCOMPARE(m_cErrors, QString());
}

void TestHaldenBoard::creates_a_board()
{
    QCOMPARE(run({QStringLiteral("create"), file("new")}), 0);
    CBoard cNew;
    QVERIFY2(cNew.open(file("new")), qPrintable(cNew.errorString()));
    QVERIFY(cNew.isCameraPlugged());
    QCOMPARE(run({QStringLiteral("create"), file("new")}), 1);
}

void TestHaldenBoard::takes_the_board_from_option_or_variable()
{
    m_cEnvironment.remove(QStringLiteral(BOARD_VARIABLE));
    QCOMPARE(run({"trace", "on"}), 2);
    QVERIFY2(m_cErrors.contains(QStringLiteral("which board?")), qPrintable(m_cErrors));
    const QString cBoard = file("board");
    const QVector<QStringList> cLines = {
        {"--board",           cBoard,    "trace", "on"},
        {"--board=" + cBoard, "trace",   "on"   },
        {"trace",          "--board",    cBoard,    "on"    },
        {"trace",               "on", "--board",  cBoard}
    };
    for (const QStringList& rcLine : cLines) {
        m_cBoard.setTracing(false);
        QCOMPARE(run(rcLine), 0);
        QVERIFY(m_cBoard.isTracing());
    }
    m_cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), QStringLiteral("/nowhere"));
    QCOMPARE(run(cLines.first()), 0);
}

void TestHaldenBoard::writes_the_picture()
{
    QCOMPARE(run({"picture", file("out.png")}), 0);
    QImage cImage;
    QVERIFY(cImage.load(file("out.png"), "PNG"));
    QCOMPARE(cImage.convertToFormat(QImage::Format_RGB32), CBoardPicture::monitor(m_cBoard));
}

void TestHaldenBoard::follows_the_picture()
{
    CChildProcess cProcess;
    cProcess.setProcessEnvironment(m_cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), {"picture", file("out.png"), "--follow"});
    const auto shows = [this](QRgb uColor) {
        QImage cImage;
        return cImage.load(file("out.png"), "PNG") && cImage.pixel(719, 575) == uColor;
    };
    QTRY_VERIFY_WITH_TIMEOUT(shows(0xff000000), PROCESS_MS);
    m_cBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x112233);
    QTRY_VERIFY_WITH_TIMEOUT(shows(0xff112233), PROCESS_MS);
    cProcess.terminate();
    QVERIFY(cProcess.waitForFinished(PROCESS_MS));
    QCOMPARE(cProcess.exitStatus(), QProcess::NormalExit);
    QCOMPARE(cProcess.exitCode(), 0);
}

void TestHaldenBoard::writes_the_recorded_picture()
{
    // The monitor's window is cut; the recorded picture is whole.
    const QString cPath = file("recorded.png");
    QCOMPARE(run({QStringLiteral("picture"), QStringLiteral("--recorded"), cPath}), 0);
    QVERIFY(QImage(cPath).convertToFormat(QImage::Format_RGB32) == CBoardPicture::recorded(m_cBoard));
    QVERIFY(CBoardPicture::recorded(m_cBoard) != CBoardPicture::monitor(m_cBoard));
}

void TestHaldenBoard::draws_glyph_sets_without_a_board()
{
    m_cEnvironment.remove(QStringLiteral("HALDEN_BOARD"));
    QImage cLast;
    for (const char* pszSet : {"1", "2", "3"}) {
        const QString cPath = file("glyphs.png");
        QCOMPARE(run({QStringLiteral("glyphs"), QLatin1String(pszSet), cPath}), 0);
        const QImage cSheet(cPath);
        QVERIFY(!cSheet.isNull());
        QVERIFY(cSheet != cLast);
        cLast = cSheet;
    }
}

// Without files there is nothing to mark.
void TestHaldenBoard::removeRegisterFiles()
{
    for (const char* pszChip : {"fpga", "lime", "saa7113", "saa7129"})
        QVERIFY(
            QFile::remove(m_cBoard.path(BOARD_CNFS) + QStringLiteral("/%1.cnf").arg(QLatin1String(pszChip))));
}

void TestHaldenBoard::lists_registers()
{
    removeRegisterFiles();
    m_cBoard.setFpgaRegister(0x00ff1a0c, 0x1234);
    m_cBoard.setI2cRegister(0x25, 0x1f, 0x40);
    m_cBoard.setI2cRegister(0x44, 0x7f, 0xa5);
    QCOMPARE(run({"registers"}), 0);
    QCOMPARE(m_cOutput.count(QLatin1Char('\n')), 7 + 41 + 31 + 73);
    for (const char* pszLine :
         {"  CSC     capture  0x00000004  0x08000800  Capture-Scale                         vsci=1 vscf=0 "
          "hsci=1 hscf=0\n",
          "  TEMO    fpga     0x00ff1a0c  0x00001234  Text memory byte offset               tebo=4660\n",
          "  SBVD    saa7113  0x0000001f  0x40        Status Byte Video Decoder             intl=0 "
          "hlvln_hlck=1 fidt=0 glimt=0 glimb=0 wipa=0 copro_sltca=0 rdcap_code=0\n",
          "  RN_0x7f saa7129  0x0000007f  0xa5        "})
        QVERIFY2(m_cOutput.contains(QLatin1String(pszLine)), qPrintable(m_cOutput));
}

void TestHaldenBoard::lists_named_registers()
{
    removeRegisterFiles();
    m_cBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x124, 50u << 16 | 100u);
    QCOMPARE(run({"registers", "L1WXY", "dbgc"}), 0);
    const QStringList cLines = outputLines();
    QCOMPARE(cLines.size(), 2);
    QVERIFY(cLines[0].startsWith(QLatin1String("  DBGC ")));
    QVERIFY2(cLines[1].startsWith(QLatin1String("  L1WXY ")), qPrintable(cLines[1]));
    QVERIFY2(cLines[1].contains(QLatin1String("=50 ")) && cLines[1].endsWith(QLatin1String("=100")),
             qPrintable(cLines[1]));
}

void TestHaldenBoard::lists_named_chips_data()
{
    QTest::addColumn<QString>("chip");
    QTest::addColumn<int>("registers");
    QTest::newRow("fpga") << "fpga" << 7;
    QTest::newRow("lime") << "Lime" << 41;
    QTest::newRow("saa7113") << "SAA7113" << 31;
    QTest::newRow("saa7129") << "saa7129" << 73;
}

void TestHaldenBoard::lists_named_chips()
{
    QFETCH(QString, chip);
    QFETCH(int, registers);
    QCOMPARE(run({"registers", chip}), 0);
    QCOMPARE(outputLines().size(), registers);
    QCOMPARE(run({"registers", chip, "CTRL"}), 0);
    QCOMPARE(outputLines().size(), chip == QLatin1String("fpga") ? registers : registers + 1);
}

/// Reserved fields have no meaning, but their contents have to be visible.
void TestHaldenBoard::shows_reserved_fields_that_are_set()
{
    removeRegisterFiles();
    m_cBoard.setFpgaRegister(0x00ff1a04, 0xff);
    QCOMPARE(run({"registers", "TSYP"}), 0);
    QVERIFY2(m_cOutput.endsWith(QLatin1String(" tsy=255\n")), qPrintable(m_cOutput));
    m_cBoard.setFpgaRegister(0x00ff1a04, 0x4ff);
    QCOMPARE(run({"registers", "TSYP"}), 0);
    QVERIFY2(m_cOutput.endsWith(QLatin1String(" res1=2 tsy=255\n")), qPrintable(m_cOutput));
}

void TestHaldenBoard::marks_what_differs_from_the_register_files()
{
    QVERIFY(writeRegisterFile("fpga", "TSXP: { tsx = 40; }; TSYP: { tsy = 7; };"));
    QVERIFY(writeRegisterFile("lime", "CSC: { vsci = 1; hscf = 3; }; dcm3: { dckinv = 1; };"));
    m_cBoard.setFpgaRegister(0x00ff1a00, 40);
    m_cBoard.setFpgaRegister(0x00ff1a04, 8);
    m_cBoard.setFpgaRegister(0x00ff1a08, 0x1234);
    QCOMPARE(run({"registers", "fpga", "csc", "dcm3"}), 0);
    QCOMPARE(m_cErrors, QString());
    for (const char* pszLine :
         {"  TSXP    fpga     0x00ff1a00  0x00000028  Text start x position                 tsx=40\n",
          "* TSYP    fpga     0x00ff1a04  0x00000008  Text start y position                 tsy=8(7)  "
          "file: 0x00000007\n",
          // Not named in the file, so the daemon leaves it alone.
          "  TESZ    fpga     0x00ff1a08  0x00001234  ",
          "* CSC     capture  0x00000004  0x08000800  Capture-Scale                         vsci=1 vscf=0 "
          "hsci=1(0) hscf=0(3)  file: 0x08000003\n",
          // Fields that the file leaves out of a register that it names come from the table.
          "dckinv=0(1) dckd=0(16)  file: 0x00000110\n"})
        QVERIFY2(m_cOutput.contains(QLatin1String(pszLine)), qPrintable(m_cOutput));
}

/// Fields of the bytes chips that the file doesn't name are sent as 0, whatever initial value the table has.
void TestHaldenBoard::marks_bytes_as_the_daemon_composes_them()
{
    clearVideoChips();
    QVERIFY(writeRegisterFile("saa7113", "AIN1: { ainc1 = 0xc0; };"));
    m_cBoard.setI2cRegister(0x25, 0x02, 0xc1);
    m_cBoard.setI2cRegister(0x25, 0x03, 0x23);
    m_cBoard.setI2cRegister(0x25, 0x00, 0x11); // the version: never written
    m_cBoard.setCameraPlugged(false);          // the status: the decoder's own
    QCOMPARE(run({"registers", "saa7113", "--changed"}), 0);
    QCOMPARE(outputLines(),
             QStringList({"* AIN1    saa7113  0x00000002  0xc1        Analog input control 1                "
                          "ainc1=193(192)  file: 0xc0",
                          "* AIN2    saa7113  0x00000003  0x23        Analog input control 2                "
                          "ainc2=35(0)  file: 0x00"}));
}

void TestHaldenBoard::lists_only_what_differs()
{
    clearVideoChips();
    for (const char* pszChip : {"fpga", "lime", "saa7113", "saa7129"})
        QVERIFY(writeRegisterFile(pszChip, ""));
    QCOMPARE(run({"registers", "--changed"}), 0);
    QCOMPARE(m_cOutput, QString());
    QCOMPARE(m_cErrors, QString());
    QVERIFY(writeRegisterFile("saa7129", "RN_0x3a: { bf_0x3a = 0x13; };"));
    QCOMPARE(run({"registers", "--changed"}), 0);
    QCOMPARE(outputLines().size(), 1);
    QVERIFY2(m_cOutput.startsWith(QLatin1String("* RN_0x3a ")), qPrintable(m_cOutput));
    QVERIFY2(m_cOutput.endsWith(QLatin1String("  bf_0x3a=0(19)  file: 0x13\n")), qPrintable(m_cOutput));
}

void TestHaldenBoard::lists_without_marks_when_a_register_file_is_of_no_use_data()
{
    QTest::addColumn<QString>("text"); // null: no file
    QTest::addColumn<QString>("message");
    QTest::newRow("missing") << QString() << ": missing";
    QTest::newRow("syntax") << "CTRL: { fgon = 1; };\nnonsense"
                            << ":2: syntax error";
    QTest::newRow("long line") << "\n#" + QString(131072, QLatin1Char('x')) << ":2: line longer than 128 KiB";
    QTest::newRow("includes a folder") << "@include \"/usr\"\n"
                                       << "not a regular file";
}

void TestHaldenBoard::lists_without_marks_when_a_register_file_is_of_no_use()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    removeRegisterFiles();
    if (!text.isNull())
        QVERIFY(writeRegisterFile("fpga", text.toUtf8()));
    m_cBoard.setFpgaRegister(0x00ff0004, 77);
    QCOMPARE(run({"registers", "CTRL", "FGCC"}), 0);
    QCOMPARE(outputLines().size(), 2);
    QVERIFY2(!m_cOutput.contains(QLatin1Char('*')), qPrintable(m_cOutput));
    QVERIFY2(m_cErrors.contains(QLatin1String("cnfs/fpga.cnf")) && m_cErrors.contains(message),
             qPrintable(m_cErrors));
    QCOMPARE(m_cErrors.count(QLatin1Char('\n')), 1);
}

static bool writeTrace(const CBoard& rcBoard, const char* pszText)
{
    QFile cFile(rcBoard.path(BOARD_TRACE));
    return cFile.open(QIODevice::Append) && cFile.write(pszText) > 0;
}

void TestHaldenBoard::switches_and_shows_the_trace()
{
    QCOMPARE(run({"trace", "on"}), 0);
    QVERIFY(m_cBoard.isTracing());
    QVERIFY(writeTrace(m_cBoard, "fpga open = 5\nfpga close\n"));
    QCOMPARE(run({"trace", "show"}), 0);
    QCOMPARE(m_cOutput, QStringLiteral("fpga open = 5\nfpga close\n"));
    QCOMPARE(run({"trace", "clear"}), 0);
    QCOMPARE(run({"trace", "show"}), 0);
    QCOMPARE(m_cOutput, QString());
    QCOMPARE(run({"trace", "off"}), 0);
    QVERIFY(!m_cBoard.isTracing());
}

void TestHaldenBoard::follows_the_trace()
{
    QVERIFY(writeTrace(m_cBoard, "first line\n"));
    CChildProcess cProcess;
    cProcess.setProcessEnvironment(m_cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL), {"trace", "follow"});
    QByteArray cSeen;
    const auto seen = [&cProcess, &cSeen]() -> const QByteArray& { return cSeen += cProcess.readAll(); };
    QTRY_COMPARE_WITH_TIMEOUT(seen(), QByteArray("first line\n"), PROCESS_MS);
    QVERIFY(writeTrace(m_cBoard, "second\n"));
    QTRY_COMPARE_WITH_TIMEOUT(seen(), QByteArray("first line\nsecond\n"), PROCESS_MS);
    QVERIFY(m_cBoard.clearTrace());
    QVERIFY(writeTrace(m_cBoard, "third\n"));
    QTRY_COMPARE_WITH_TIMEOUT(seen(), QByteArray("first line\nsecond\nthird\n"), PROCESS_MS);
    cProcess.terminate();
    QVERIFY(cProcess.waitForFinished(PROCESS_MS));
    QCOMPARE(cProcess.exitCode(), 0);
}

void TestHaldenBoard::chooses_the_camera_picture()
{
    QImage cImage(20, 10, QImage::Format_RGB32);
    cImage.fill(0xff336699);
    QVERIFY(cImage.save(file("blue.png")));
    QCOMPARE(run({"camera", file("blue.png")}), 0);
    QCOMPARE(m_cBoard.cameraImage().pixel(300, 300), 0xff336699u);
    QCOMPARE(run({"camera", "test", "--frame", "25"}), 0);
    QCOMPARE(m_cBoard.cameraImage(), CTestPicture::frame(25));
    QCOMPARE(run({"camera", "test"}), 0);
    QCOMPARE(m_cBoard.cameraImage(), CTestPicture::frame(0));
}

void TestHaldenBoard::lets_the_camera_move()
{
    QCOMPARE(run({"camera", "moving", "--frame", "77"}), 0);
    QCOMPARE(m_cBoard.cameraSource(), BOARD_CAMERA_MOVING);
    QCOMPARE(m_cBoard.cameraFrame(), 77u);
    QCOMPARE(run({"camera", "moving"}), 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_cBoard.cameraFrame() != 77 && m_cBoard.cameraFrame() > 0, PROCESS_MS);
    QCOMPARE(run({"camera", "test"}), 0);
    QCOMPARE(m_cBoard.cameraSource(), BOARD_CAMERA_STILL);
}

void TestHaldenBoard::plugs_the_camera()
{
    QCOMPARE(run({"camera", "unplug"}), 0);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0x40));
    QCOMPARE(run({"camera", "plug"}), 0);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0));
}

void TestHaldenBoard::switches_the_signal()
{
    QCOMPARE(run({"signal", "off"}), 0);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0x40));
    QVERIFY(!m_cBoard.isCameraPlugged());
    QCOMPARE(run({"signal", "on"}), 0);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0));
}

void TestHaldenBoard::shows_and_clears_judgements()
{
    QCOMPARE(run({"judgements"}), 0);
    QCOMPARE(m_cOutput, QString());
    QFile cFile(m_cBoard.path(BOARD_JUDGEMENTS));
    QVERIFY(cFile.open(QIODevice::Append));
    cFile.write("fpga seek: closed before\ni2c seek: no such operation\nfpga seek: closed before\n");
    cFile.close();
    m_cBoard.setLimeRegister(CBoard::LIME_PIO, 0, 1);
    QCOMPARE(run({"judgements", "show"}), 0);
    const QString cLime = QStringLiteral("lime pio 0x00000000 0x00000001: no such register");
    QCOMPARE(outputLines(), QStringList({"fpga seek: closed before", "i2c seek: no such operation", cLime}));
    QCOMPARE(run({"judgements", "clear"}), 0);
    QCOMPARE(m_cOutput, QString());
    QCOMPARE(run({"judgements"}), 0);
    QCOMPARE(outputLines(), QStringList(cLime));
    QVERIFY(QFile::remove(m_cBoard.path(BOARD_JUDGEMENTS)));
    QCOMPARE(run({"judgements", "clear"}), 1);
    QVERIFY2(m_cErrors.contains(QLatin1String("can't be cleared")), qPrintable(m_cErrors));
}

void TestHaldenBoard::steers_the_codec()
{
    for (const char* pszMode : {"refuse", "hang", "stall", "lose", "die", "ok"}) {
        QCOMPARE(run({"codec", pszMode}), 0);
        QCOMPARE(CBoard::codecModeName(m_cBoard.codecMode()), QString(pszMode));
    }
    QCOMPARE(run({"codec", "slow", "250"}), 0);
    QCOMPARE(m_cBoard.codecDelay(), 250u);
    QCOMPARE(run({"codec"}), 0);
    QCOMPARE(outputLines(), QStringList({"ok, 250 ms a call; idle 0 ", "halden-codec doesn't run"}));
    SCodecState sState;
    sState.eActivity = SCodecState::PLAYING_PAUSED;
    sState.iFrame = 75;
    sState.cFile = QStringLiteral("a.ts");
    QVERIFY(m_cBoard.setCodecState(sState));
    QCOMPARE(run({"codec", "show"}), 0);
    QCOMPARE(outputLines(),
             QStringList({"ok, 250 ms a call; playing-paused 75 a.ts", "halden-codec doesn't run"}));
    QVERIFY(m_cBoard.claimCodec());
    QCOMPARE(run({"codec"}), 0);
    QCOMPARE(outputLines().last(), QString("halden-codec runs"));
}

void TestHaldenBoard::shows_and_clears_the_codec_calls()
{
    QVERIFY(m_cBoard.noteCodecCall("/Record pause interface=-"));
    QVERIFY(m_cBoard.noteCodecCall("/Record stop interface=-"));
    QCOMPARE(run({"codec", "log"}), 0);
    QCOMPARE(outputLines(), QStringList({"/Record pause interface=-", "/Record stop interface=-"}));
    QCOMPARE(run({"codec", "clear"}), 0);
    QCOMPARE(m_cBoard.codecCalls(), QStringList());
    QVERIFY(QFile::remove(m_cBoard.path(BOARD_CODEC_LOG)));
    QCOMPARE(run({"codec", "clear"}), 1);
    QVERIFY2(m_cErrors.contains(QLatin1String("can't be cleared")), qPrintable(m_cErrors));
}

void TestHaldenBoard::sets_faults()
{
    QCOMPARE(run({"fault", "fpga-write", "--nth", "3", "--count", "2", "--errno", "ENOSPC", "--short"}), 0);
    const QVector<CBoard::SFault> cFaults = m_cBoard.faults();
    QCOMPARE(cFaults.size(), 1);
    QCOMPARE(cFaults[0].eOperation, BOARD_OPERATION_FPGA_WRITE);
    QCOMPARE(cFaults[0].u32Nth, 3u);
    QCOMPARE(cFaults[0].u32Count, 2u);
    QCOMPARE(cFaults[0].iError, ENOSPC);
    QVERIFY(cFaults[0].bShort);
}

void TestHaldenBoard::fills_the_disk()
{
    QCOMPARE(run({"fault", "disk-write", "--short"}), 0);
    QCOMPARE(run({"fault", "cnfs-write"}), 0);
    QCOMPARE(run({"fault", "list"}), 0);
    QCOMPARE(m_cOutput, QStringLiteral("disk-write       0 pass, then all do half; so far 0\n"
                                       "cnfs-write       0 pass, then all fail with ENOSPC; so far 0\n"));
}

void TestHaldenBoard::lists_and_clears_faults()
{
    QCOMPARE(run({"fault", "i2c-read"}), 0);
    QCOMPARE(run({"fault", "fpga-read", "--count", "1", "--nth", "4", "--short"}), 0);
    QCOMPARE(run({"fault", "list"}), 0);
    QCOMPARE(m_cOutput, QStringLiteral("fpga-read        3 pass, then 1 do half; so far 0\n"
                                       "i2c-read         0 pass, then all fail with EIO; so far 0\n"));
    QCOMPARE(run({"fault", "clear"}), 0);
    QVERIFY(m_cBoard.faults().isEmpty());
    QCOMPARE(run({"fault", "list"}), 0);
    QCOMPARE(m_cOutput, QString());
}

QTEST_GUILESS_MAIN(TestHaldenBoard)
#include "tst_halden_board.moc"
