/* SPDX-License-Identifier: MIT */
/* Boards built from traces, and their comparison. */
#include "board/picture/CTestPicture.h"
#include "board/trace/CBoardComparison.h"
#include "board/trace/CTraceReplay.h"
#include "board/trace/CTraceSnapshot.h"
#include "tests/support/CAttachedBoard.h"
#include "tests/support/LiveVideo.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

class TestCTraceReplay : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_replay_is_the_board();
    void a_trace_may_begin_in_the_middle();
    void a_usual_trace_has_positions_and_chips_too();
    void a_failed_operation_does_nothing();
    void refuses_lines_data();
    void refuses_lines();
    void stores_the_picture_of_the_camera();
    void keeps_the_status_that_no_program_can_write();
    void names_the_first_difference_data();
    void names_the_first_difference();
    void names_the_first_pixel_that_differs();

private:
    QString replay();
    void writeRegister(quint32 u32Address, quint32 u32Value);
    void writeMemory(off_t iAddress, const QByteArray& rcBytes);

    QScopedPointer<CAttachedBoard> m_pcBoard;
    QScopedPointer<CTemporaryBoard> m_pcReplayed;
    QScopedPointer<CTraceReplay> m_pcReplay;
    int m_iFpga = -1;
};

void TestCTraceReplay::init()
{
    // Opened before the process is on a board: the accesses of the replay are none of a program.
    m_pcReplayed.reset(new CTemporaryBoard);
    m_pcReplay.reset();
    QVERIFY(m_pcReplayed->make());
    m_pcReplay.reset(new CTraceReplay(m_pcReplayed->board()));
    QString cError;
    QVERIFY2(m_pcReplay->open(cError), qPrintable(cError));
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    QVERIFY(m_iFpga >= 0);
}

void TestCTraceReplay::cleanup()
{
    ::close(m_iFpga);
    m_pcBoard.reset();
}

void TestCTraceReplay::writeRegister(quint32 u32Address, quint32 u32Value)
{
    quint32 auRecord[2] = {u32Address, u32Value};
    QCOMPARE(::ioctl(m_iFpga, 0xc0086b05UL, auRecord), 0);
}

void TestCTraceReplay::writeMemory(off_t iAddress, const QByteArray& rcBytes)
{
    QCOMPARE(::lseek(m_iFpga, iAddress, SEEK_SET), iAddress);
    QCOMPARE(::write(m_iFpga, rcBytes.constData(), static_cast<size_t>(rcBytes.size())),
             ssize_t(rcBytes.size()));
}

/// The trace so far. Empty, or what is wrong with a line.
QString TestCTraceReplay::replay()
{
    QString cError;
    for (const QString& rcLine : (*m_pcBoard)->traceLines())
        if (!m_pcReplay->apply(rcLine, cError))
            return rcLine.left(80) + ": " + cError;
    return QString();
}

// All kinds of bytes: runs, and so many that they need several lines.
static QByteArray manyBytes()
{
    QByteArray cBytes(1000, '\0');
    for (int i = 0; i < 5000; ++i)
        cBytes.append(static_cast<char>(i * i % 251));
    return cBytes + QByteArray(700, '\x41') + QByteArray("end");
}

void TestCTraceReplay::a_replay_is_the_board()
{
    QVERIFY(CTraceSnapshot::begin(**m_pcBoard));
    writeRegister(FPGA_CTRL, FPGA_CTRL_FGON | FPGA_CTRL_ATO);
    writeMemory(FPGA_TEXT_PAGES, manyBytes());
    (*m_pcBoard)->setLimeRegister(CBoard::LIME_DISPLAY, LIME_DCM1, LIME_DCM1_DISPLAY);
    writeRegister(FPGA_FGCC, 0x123456);
    // The last store, which no operation follows.
    (*m_pcBoard)->setLimeRegister(CBoard::LIME_DISPLAY, LIME_DCM1, 0);
    (*m_pcBoard)->setLimeRegister(CBoard::LIME_DISPLAY, LIME_DBGC, 0x00ff00);
    QVERIFY(CTraceSnapshot::end(**m_pcBoard));
    QCOMPARE(replay(), QString());
    QCOMPARE(CBoardComparison::firstDifference(**m_pcBoard, m_pcReplayed->board()), QString());
    QVERIFY((*m_pcBoard)->traceLines().contains("lime display 0x00000100 0x80000000"));
}

void TestCTraceReplay::a_trace_may_begin_in_the_middle()
{
    writeRegister(FPGA_CTRL, FPGA_CTRL_FGON);
    writeMemory(FPGA_GLYPHS, manyBytes());
    (*m_pcBoard)->setI2cRegister(SAA7129_SLAVE, 0x7f, 3);
    (*m_pcBoard)->setLimeRegister(CBoard::LIME_CAPTURE, LIME_CSC, 0x08000800);
    QVERIFY(CTraceSnapshot::begin(**m_pcBoard));
    QCOMPARE(replay(), QString());
    QCOMPARE(CBoardComparison::firstDifference(**m_pcBoard, m_pcReplayed->board()), QString());
}

void TestCTraceReplay::a_usual_trace_has_positions_and_chips_too()
{
    QString cError;
    for (const char* pszLine : {"fpga seek 0x00300010", "fpga write 2 = 2 : 41 15", "fpga read 2 = 2 : 42 15",
                                "i2c slave 0x25", "i2c write 0x0a 0x7d", "fpga write8 0x00300000 0x43"})
        QVERIFY2(m_pcReplay->apply(pszLine, cError), pszLine);
    QCOMPARE(m_pcReplayed->board().fpgaMemory(0x300010, 4), QByteArray("\x41\x15\x42\x15"));
    QCOMPARE(m_pcReplayed->board().fpgaMemory(0x300000, 2), QByteArray("\x43\x00", 2));
    QCOMPARE(m_pcReplayed->board().i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x7d));
}

void TestCTraceReplay::a_failed_operation_does_nothing()
{
    QString cError;
    QVERIFY(m_pcReplay->apply("fpga write32 0x00ff0000 0x00820000 ! EIO", cError));
    QCOMPARE(m_pcReplayed->board().fpgaRegister(FPGA_CTRL), 0U);
}

void TestCTraceReplay::refuses_lines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");
    const QString cNone = QStringLiteral("not a line of a trace");
    const QString cBehind = QStringLiteral("behind the end of the board");
    const QString cNotAll = QStringLiteral("has not all bytes: switch the trace to full before it is taken");
    QTest::newRow("empty") << "" << cNone;
    QTest::newRow("text") << "Dear reader," << cNone;
    QTest::newRow("no value") << "fpga write32 0x00ff0000" << cNone;
    QTest::newRow("no number") << "fpga write32 here 0x1" << cNone;
    QTest::newRow("no place") << "fpga bytes : 01" << cNone;
    QTest::newRow("no offset") << "lime display" << cNone;
    QTest::newRow("cut off") << "fpga write 20 = 20 : 41 18 ..." << cNotAll;
    QTest::newRow("too few") << "fpga write 3 @ 0x00300000 = 3 : 41 18" << cNotAll;
    QTest::newRow("register far away") << "fpga write32 0xfffffffe 0x1" << cBehind;
    QTest::newRow("memory far away") << "fpga bytes @ 0x01195000 : 01" << cBehind;
    QTest::newRow("memory reaches out") << "fpga bytes @ 0x01194fff : 01*2" << cBehind;
    QTest::newRow("more than the memory") << "fpga bytes @ 0x00000000 : 01*20000000" << cBehind;
    QTest::newRow("no chip") << "i2c write 0x00 @ 0x80 0x01" << cBehind;
    QTest::newRow("no such register") << "i2c write 0x100 @ 0x25 0x01" << cBehind;
    QTest::newRow("no such register, far away") << "i2c write 0xffffffff @ 0x25 0x01" << cBehind;
    QTest::newRow("chip reaches out") << "i2c bytes @ 0x7f : 00*257" << cBehind;
}

void TestCTraceReplay::refuses_lines()
{
    QFETCH(QString, line);
    QFETCH(QString, error);
    QString cError;
    QVERIFY(!m_pcReplay->apply(line, cError));
    QCOMPARE(cError, error);
}

void TestCTraceReplay::stores_the_picture_of_the_camera()
{
    QVERIFY(CTraceSnapshot::begin(**m_pcBoard));
    (*m_pcBoard)->setCamera(CTestPicture::frame(7));
    m_pcReplayed->board().setCamera(CTestPicture::frame(7));
    writeRegister(FPGA_STORE_VIDEO, 1);
    QCOMPARE(replay(), QString());
    QCOMPARE(CBoardComparison::firstDifference(**m_pcBoard, m_pcReplayed->board()), QString());
}

void TestCTraceReplay::keeps_the_status_that_no_program_can_write()
{
    QString cError;
    QVERIFY(m_pcReplay->apply("i2c read 0x1f @ 0x25 = 0x40", cError));
    QVERIFY(m_pcReplay->apply("i2c write 0x1f @ 0x25 0x00", cError));
    QVERIFY(!m_pcReplayed->board().isCameraPlugged());
}

void TestCTraceReplay::names_the_first_difference_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("difference");
    QTest::newRow("none") << QStringList() << "";
    QTest::newRow("register before all others")
        << QStringList({"fpga bytes @ 0x00300000 : 41 15", "i2c write 0x0a @ 0x25 0x7d",
                        "fpga write32 0x00ff0000 0x00820000"})
        << "register CTRL: 0 | fgon=1 cto=1";
    QTest::newRow("display controller")
        << QStringList("lime display 0x00000124 0x00c8012c") << "register L1WXY: 0 | l1wx=200 l1wy=300";
    QTest::newRow("word without a name")
        << QStringList("lime draw 0x00000008 0x00000001") << "lime draw 0x00000008: 0x00000000 | 0x00000001";
    QTest::newRow("chip") << QStringList("i2c write 0x0a @ 0x25 0x7d") << "register LUBR: 0 | lubr=125";
    QTest::newRow("byte without a name")
        << QStringList("i2c write 0xf0 @ 0x44 0x7d") << "i2c saa7129 0xf0: 0x00 | 0x7d";
    QTest::newRow("cell before other memory")
        << QStringList({"fpga bytes @ 0x00200000 : 01", "fpga bytes @ 0x00300299 : 15"})
        << "cell 12,5: \" \" transparent on transparent | \" \" white on navy";
    QTest::newRow("memory") << QStringList("fpga bytes @ 0x00ff1805 : 15") << "text colour 1: 0x00 | 0x15";
}

void TestCTraceReplay::names_the_first_difference()
{
    QFETCH(QStringList, lines);
    QFETCH(QString, difference);
    QString cError;
    for (const QString& rcLine : lines)
        QVERIFY2(m_pcReplay->apply(rcLine, cError), qPrintable(cError));
    QCOMPARE(CBoardComparison::firstDifference(**m_pcBoard, m_pcReplayed->board()), difference);
}

// Nothing differs but what the camera sees.
void TestCTraceReplay::names_the_first_pixel_that_differs()
{
    QImage cBlack(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cBlack.fill(Qt::black);
    QImage cDot = cBlack;
    cDot.setPixelColor(20, 7, Qt::red);
    programVideoChips(**m_pcBoard);
    programVideoChips(m_pcReplayed->board());
    (*m_pcBoard)->setCamera(cBlack);
    m_pcReplayed->board().setCamera(cDot);
    QCOMPARE(CBoardComparison::firstDifference(**m_pcBoard, m_pcReplayed->board()),
             QString("recorded pixel 20,7: #000000 | #ff0000"));
}

QTEST_APPLESS_MAIN(TestCTraceReplay)

#include "tst_CTraceReplay.moc"
