/* SPDX-License-Identifier: MIT */
/* A board from outside: making it, opening it, and the contents of its parts. */
#include "board/create/CBoardMaker.h"
#include "board/judge/CJudgements.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

class TestCBoard : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void create_refuses_a_directory_in_use();
    void create_refuses_an_impossible_place();
    void create_makes_parents_and_takes_an_empty_directory();
    void create_makes_sparse_files_of_the_right_size();
    void create_leaves_a_board_to_start_on();
    void open_refuses_what_is_no_board();
    void open_refuses_damaged_boards_data();
    void open_refuses_damaged_boards();
    void a_closed_board_reads_as_nothing();

    void lime_registers_in_all_windows();
    void lime_registers_outside_are_dropped();
    void fpga_registers_are_little_endian();
    void fpga_registers_outside_are_dropped();
    void i2c_registers_are_those_of_a_chip();
    void camera_keeps_pixels();
    void camera_scales_other_sizes();
    void camera_file_is_little_endian();
    void camera_plug_is_one_bit_of_the_status();
    void trace_is_read_and_cleared();
    void faults_are_kept_and_replaced();
    void operations_have_names();
    void two_see_the_same_board();

private:
    QScopedPointer<QTemporaryDir> m_pcDirectory;
    QString m_cPath;
    QString m_cError;
    CBoard m_cBoard;
};

void TestCBoard::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    m_cPath = m_pcDirectory->filePath(QStringLiteral("board"));
    m_cError.clear();
    QVERIFY2(CBoardMaker::create(m_cPath, m_cError), qPrintable(m_cError));
    QVERIFY2(m_cBoard.open(m_cPath), qPrintable(m_cBoard.errorString()));
}

void TestCBoard::create_refuses_a_directory_in_use()
{
    m_cBoard.setFpgaRegister(0x00ff0000, 5);
    QVERIFY(!CBoardMaker::create(m_cPath, m_cError));
    QCOMPARE(m_cError, m_cPath + QStringLiteral(": exists and isn't empty"));
    QCOMPARE(m_cBoard.fpgaRegister(0x00ff0000), 5u);
}

void TestCBoard::create_refuses_an_impossible_place()
{
    const QString cInFile = m_cBoard.path(BOARD_CONTROL) + QStringLiteral("/board");
    QVERIFY(!CBoardMaker::create(cInFile, m_cError));
    QCOMPARE(m_cError, cInFile + QStringLiteral(": can't be created"));
}

void TestCBoard::create_makes_parents_and_takes_an_empty_directory()
{
    const QString cDeep = m_pcDirectory->filePath(QStringLiteral("a/b/c"));
    QVERIFY2(CBoardMaker::create(cDeep, m_cError), qPrintable(m_cError));
    QVERIFY(QDir(m_pcDirectory->path()).mkdir(QStringLiteral("empty")));
    QVERIFY(CBoardMaker::create(m_pcDirectory->filePath(QStringLiteral("empty")), m_cError));
}

void TestCBoard::create_makes_sparse_files_of_the_right_size()
{
    QCOMPARE(QFileInfo(m_cBoard.path(BOARD_FPGA)).size(), qint64(0x1000000 + 1658880));
    QCOMPARE(QFileInfo(m_cBoard.path(BOARD_LIME)).size(), qint64(getpagesize()) << 13);
    QCOMPARE(QFileInfo(m_cBoard.path(BOARD_I2C)).size(), qint64(32768));
    QCOMPARE(QFileInfo(m_cBoard.path(BOARD_CAMERA)).size(), qint64(1658880));
    QVERIFY(QFileInfo(m_cBoard.path(BOARD_CNFS)).isDir());
}

void TestCBoard::create_leaves_a_board_to_start_on()
{
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_DISPLAY, 0x100), 0u);
    QVERIFY(m_cBoard.isCameraPlugged());
    QVERIFY(!m_cBoard.isTracing());
    QVERIFY(m_cBoard.faults().isEmpty());
    QCOMPARE(CJudgements::of(m_cBoard), QStringList());
    QCOMPARE(m_cBoard.cameraImage(), CTestPicture::frame(0));
    const QDir cFiles(m_cBoard.path(BOARD_CNFS));
    QCOMPARE(cFiles.entryList(QDir::Files, QDir::Name),
             (QStringList{QStringLiteral("fpga.cnf"), QStringLiteral("lime.cnf"),
                          QStringLiteral("saa7113.cnf"), QStringLiteral("saa7129.cnf")}));
    for (const QString& rcName : cFiles.entryList(QDir::Files)) {
        QFile cFile(cFiles.filePath(rcName));
        QFile cDefault(QStringLiteral(REGISTER_FILES "/") + rcName);
        QVERIFY(cFile.open(QIODevice::ReadOnly) && cDefault.open(QIODevice::ReadOnly));
        QCOMPARE(cFile.readAll(), cDefault.readAll());
    }
}

void TestCBoard::open_refuses_what_is_no_board()
{
    QVERIFY(!m_cBoard.open(m_pcDirectory->filePath(QStringLiteral("none"))));
    QVERIFY2(m_cBoard.errorString().contains(QStringLiteral("none/control")),
             qPrintable(m_cBoard.errorString()));
    QVERIFY(!m_cBoard.isOpen());
    QVERIFY(!m_cBoard.open(m_pcDirectory->path()));
    QVERIFY(m_cBoard.open(m_cPath));
    QVERIFY(m_cBoard.errorString().isEmpty());
}

void TestCBoard::open_refuses_damaged_boards_data()
{
    QTest::addColumn<QString>("file");
    for (const char* pszFile : {BOARD_CONTROL, BOARD_FPGA, BOARD_LIME, BOARD_I2C, BOARD_CAMERA})
        QTest::newRow(pszFile) << pszFile;
}

void TestCBoard::open_refuses_damaged_boards()
{
    QFETCH(QString, file);
    m_cBoard.close();
    QVERIFY(QFile::resize(m_cPath + QLatin1Char('/') + file, 100));
    QVERIFY(!m_cBoard.open(m_cPath));
    QVERIFY2(m_cBoard.errorString().contains(file + QStringLiteral(": 100 bytes")),
             qPrintable(m_cBoard.errorString()));
}

void TestCBoard::a_closed_board_reads_as_nothing()
{
    m_cBoard.close();
    m_cBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0, 1);
    m_cBoard.setFpgaRegister(0, 1);
    m_cBoard.setI2cRegister(0x25, 0, 1);
    m_cBoard.setLimeMemory16(0, 1);
    m_cBoard.setTracing(true);
    m_cBoard.setCamera(CTestPicture::frame(1));
    m_cBoard.setFault({BOARD_OPERATION_I2C_READ});
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_DISPLAY, 0), 0u);
    QCOMPARE(m_cBoard.fpgaRegister(0), 0u);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0), quint8(0));
    QCOMPARE(m_cBoard.limeMemory16(0), quint16(0));
    QVERIFY(m_cBoard.fpgaMemory(0, 1).isEmpty());
    QVERIFY(m_cBoard.cameraImage().isNull());
    QVERIFY(CBoardPicture::monitor(m_cBoard).isNull());
    QVERIFY(!m_cBoard.isTracing() && !m_cBoard.isCameraPlugged() && !m_cBoard.clearTrace());
    QVERIFY(m_cBoard.faults().isEmpty());
    QVERIFY(CJudgements::of(m_cBoard).isEmpty() && !m_cBoard.clearJudgements());
}

void TestCBoard::lime_registers_in_all_windows()
{
    quint32 u32Value = 0x01020304;
    for (const CBoard::ELimeWindow eWindow : {CBoard::LIME_HOST, CBoard::LIME_DISPLAY, CBoard::LIME_CAPTURE,
                                              CBoard::LIME_DRAW, CBoard::LIME_PIO}) {
        m_cBoard.setLimeRegister(eWindow, 0x20, ++u32Value);
        QFile cFile(m_cBoard.path(BOARD_LIME));
        QVERIFY(cFile.open(QIODevice::ReadOnly) && cFile.seek(qint64(eWindow) + 0x20));
        quint32 u32Stored = 0;
        QCOMPARE(cFile.read(reinterpret_cast<char*>(&u32Stored), 4), qint64(4));
        QCOMPARE(u32Stored, u32Value);
        QCOMPARE(m_cBoard.limeRegister(eWindow, 0x20), u32Value);
    }
}

void TestCBoard::lime_registers_outside_are_dropped()
{
    m_cBoard.setLimeRegister(CBoard::LIME_PIO, 0x7ffc, 7);
    m_cBoard.setLimeRegister(CBoard::LIME_PIO, 0x8000, 8);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_PIO, 0x7ffc), 7u);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_PIO, 0x8000), 0u);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_PIO, 0xfffffffc), 0u);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_PIO, 0x7ffe), 0u);
    m_cBoard.setLimeMemory16(LIME_HOST_WINDOW, 9);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_HOST, 0), 0u);
    m_cBoard.setLimeMemory16(LIME_HOST_WINDOW - 2, 9);
    QCOMPARE(m_cBoard.limeMemory16(LIME_HOST_WINDOW - 2), quint16(9));
}

void TestCBoard::fpga_registers_are_little_endian()
{
    m_cBoard.setFpgaRegister(0x00ff1800, 0x11223344);
    QCOMPARE(m_cBoard.fpgaMemory(0x00ff1800, 4).toHex(), QByteArray("44332211"));
    QCOMPARE(m_cBoard.fpgaRegister(0x00ff1800), 0x11223344u);
}

void TestCBoard::fpga_registers_outside_are_dropped()
{
    m_cBoard.setFpgaRegister(BOARD_FPGA_BYTES - 4, 3);
    m_cBoard.setFpgaRegister(BOARD_FPGA_BYTES - 3, 4);
    m_cBoard.setFpgaRegister(0xffffffff, 4);
    QCOMPARE(m_cBoard.fpgaRegister(BOARD_FPGA_BYTES - 4), 3u);
    QCOMPARE(m_cBoard.fpgaRegister(BOARD_FPGA_BYTES - 3), 0u);
    QCOMPARE(m_cBoard.fpgaMemory(BOARD_FPGA_BYTES - 4, 4).size(), 4);
    QVERIFY(m_cBoard.fpgaMemory(BOARD_FPGA_BYTES - 4, 5).isEmpty());
    QVERIFY(m_cBoard.fpgaMemory(0, -1).isEmpty());
    QVERIFY(m_cBoard.fpgaMemory(0xffffffff, 4).isEmpty());
}

void TestCBoard::i2c_registers_are_those_of_a_chip()
{
    m_cBoard.setI2cRegister(0x25, 0xff, 1);
    m_cBoard.setI2cRegister(0x44, 0x00, 2);
    m_cBoard.setI2cRegister(0x80, 0x00, 3);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0xff), quint8(1));
    QCOMPARE(m_cBoard.i2cRegister(0x26, 0x00), quint8(0));
    QCOMPARE(m_cBoard.i2cRegister(0x44, 0x00), quint8(2));
    QCOMPARE(m_cBoard.i2cRegister(0x80, 0x00), quint8(0));
}

void TestCBoard::camera_keeps_pixels()
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            cImage.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
    m_cBoard.setCamera(cImage);
    QCOMPARE(m_cBoard.cameraImage(), cImage);
}

void TestCBoard::camera_scales_other_sizes()
{
    QImage cImage(10, 10, QImage::Format_RGB32);
    cImage.fill(0xff102030);
    m_cBoard.setCamera(cImage);
    QCOMPARE(m_cBoard.cameraImage().size(), QSize(720, 576));
    QCOMPARE(m_cBoard.cameraImage().pixel(719, 575), 0xff102030u);
    m_cBoard.setCamera(QImage());
    QCOMPARE(m_cBoard.cameraImage().pixel(0, 0), 0xff102030u);
}

void TestCBoard::camera_file_is_little_endian()
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cImage.fill(0xff102030);
    cImage.setPixel(1, 0, 0xff405060);
    m_cBoard.setCamera(cImage);
    QFile cFile(m_cBoard.path(BOARD_CAMERA));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.read(8).toHex(), QByteArray("302010ff605040ff"));
}

void TestCBoard::camera_plug_is_one_bit_of_the_status()
{
    m_cBoard.setI2cRegister(0x25, 0x1f, 0x81);
    m_cBoard.setCameraPlugged(false);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0xc1));
    QVERIFY(!m_cBoard.isCameraPlugged());
    m_cBoard.setCameraPlugged(true);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x1f), quint8(0x81));
    QVERIFY(m_cBoard.isCameraPlugged());
}

void TestCBoard::trace_is_read_and_cleared()
{
    m_cBoard.setTracing(true);
    QVERIFY(m_cBoard.isTracing());
    QFile cFile(m_cBoard.path(BOARD_TRACE));
    QVERIFY(cFile.open(QIODevice::WriteOnly));
    cFile.write("fpga open = 5\nfpga close\n");
    cFile.close();
    QCOMPARE(m_cBoard.traceLines(), QStringList({"fpga open = 5", "fpga close"}));
    QVERIFY(m_cBoard.clearTrace());
    QCOMPARE(m_cBoard.traceLines(), QStringList());
}

void TestCBoard::faults_are_kept_and_replaced()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_WRITE;
    cFault.u32Nth = 4;
    cFault.u32Count = 2;
    cFault.iError = ENOSPC;
    cFault.bShort = true;
    m_cBoard.setFault(cFault);
    m_cBoard.setFault({BOARD_OPERATION_I2C_READ});
    m_cBoard.setFault({BOARD_OPERATION_NONE});
    m_cBoard.setFault({BOARD_OPERATION_COUNT});
    QVector<CBoard::SFault> cFaults = m_cBoard.faults();
    QCOMPARE(cFaults.size(), 2);
    QCOMPARE(cFaults[0].eOperation, BOARD_OPERATION_FPGA_WRITE);
    QCOMPARE(cFaults[0].u32Nth, 4u);
    QCOMPARE(cFaults[0].u32Count, 2u);
    QCOMPARE(cFaults[0].iError, ENOSPC);
    QVERIFY(cFaults[0].bShort);
    QCOMPARE(cFaults[1].eOperation, BOARD_OPERATION_I2C_READ);
    QCOMPARE(cFaults[1].u32Nth, 1u);
    QCOMPARE(cFaults[1].u32Count, BOARD_FAULT_FOREVER);
    QCOMPARE(cFaults[1].iError, EIO);
    QVERIFY(!cFaults[1].bShort);

    m_cBoard.setFault({BOARD_OPERATION_FPGA_WRITE});
    QCOMPARE(m_cBoard.faults().first().iError, EIO);
    m_cBoard.clearFault(BOARD_OPERATION_FPGA_WRITE);
    QCOMPARE(m_cBoard.faults().size(), 1);
    m_cBoard.clearFaults();
    QVERIFY(m_cBoard.faults().isEmpty());
}

void TestCBoard::operations_have_names()
{
    for (int iOperation = 1; iOperation < BOARD_OPERATION_COUNT; ++iOperation) {
        const auto eOperation = static_cast<board_operation>(iOperation);
        QVERIFY(!CBoard::operationName(eOperation).isEmpty());
        QCOMPARE(CBoard::operationByName(CBoard::operationName(eOperation)), eOperation);
    }
    QCOMPARE(CBoard::operationByName(QString()), BOARD_OPERATION_NONE);
    QCOMPARE(CBoard::operationByName(QStringLiteral("lunch")), BOARD_OPERATION_NONE);
    QVERIFY(CBoard::operationName(BOARD_OPERATION_COUNT).isEmpty());
}

void TestCBoard::two_see_the_same_board()
{
    CBoard cOther;
    QVERIFY(cOther.open(m_cPath));
    cOther.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x112233);
    cOther.setTracing(true);
    cOther.setFault({BOARD_OPERATION_LIME_MAP});
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_DISPLAY, 0x184), 0x112233u);
    QVERIFY(m_cBoard.isTracing());
    QCOMPARE(m_cBoard.faults().size(), 1);
}

QTEST_GUILESS_MAIN(TestCBoard)
#include "tst_CBoard.moc"
