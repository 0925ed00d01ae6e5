/* SPDX-License-Identifier: MIT */
/* Real devices do the work, and the preloaded library notes it. Plain files are the devices. */
#include "board/trace/CTraceNames.h"
#include "board/trace/CTraceReplay.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CTemporaryBoard.h"
#include "tests/support/KernelsError.h"
#include "tests/support/Preload.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

static const int PROCESS_MS = 60000;
static const unsigned long FPGA_WRITE_32 = 0xc0086b05;

class TestPassThrough : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void devices_do_the_work_and_each_access_is_noted();
    void a_replay_has_what_the_devices_have();
    void a_device_without_a_link_is_not_noted();
    void results_of_the_devices_reach_the_program();
    void a_folder_without_devices_is_no_use();

private:
    QString device(const char* pszName) const { return m_pcFolder->filePath(QLatin1String(pszName)); }
    QString note(const char* pszName) const { return device("notes/") + QLatin1String(pszName); }
    bool makeDevice(const char* pszName, qint64 iBytes);
    QByteArray deviceBytes(const char* pszName, qint64 iAt, int iBytes) const;
    int run(bool bFakes = true);
    QStringList trace() const;

    QScopedPointer<QTemporaryDir> m_pcFolder;
    QByteArray m_cErrors;
};

bool TestPassThrough::makeDevice(const char* pszName, qint64 iBytes)
{
    QFile cFile(device(pszName));
    return cFile.open(QIODevice::WriteOnly) && cFile.resize(iBytes);
}

void TestPassThrough::init()
{
    m_pcFolder.reset(new QTemporaryDir);
    QVERIFY(QDir(m_pcFolder->path()).mkpath("notes"));
    QVERIFY(makeDevice("fpga", BOARD_FPGA_BYTES));
    QVERIFY(makeDevice("lime", static_cast<qint64>(board_lime_bytes())));
    QVERIFY(makeDevice("i2c", BOARD_I2C_BYTES));
    QFile cI2c(device("i2c"));
    QVERIFY(cI2c.open(QIODevice::ReadWrite) && cI2c.seek(SAA7113_SLAVE * 256 + SAA7113_STATUS));
    QVERIFY(cI2c.putChar(SAA7113_STATUS_NO_LOCK));
    QVERIFY(QFile::link(device("fpga"), note(BOARD_FPGA)) && QFile::link(device("lime"), note(BOARD_LIME)) &&
            QFile::link(device("i2c"), note(BOARD_I2C)));
}

/// The program's status; without the fakes the kernel answers the requests.
int TestPassThrough::run(bool bFakes)
{
    CChildProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    preload(cEnvironment, QStringLiteral(HALDEND_BOARD_PRELOAD));
    if (bFakes)
        preload(cEnvironment, QStringLiteral(FAKE_DEVICES));
    cEnvironment.insert(BOARD_PASS_VARIABLE, device("notes"));
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(QStringLiteral(PASS_PROBE), {device("fpga"), device("lime"), device("i2c")});
    if (!cProcess.waitForFinished(PROCESS_MS) || cProcess.exitStatus() != QProcess::NormalExit)
        return -1;
    m_cErrors = cProcess.readAllStandardError();
    return cProcess.exitCode();
}

QByteArray TestPassThrough::deviceBytes(const char* pszName, qint64 iAt, int iBytes) const
{
    QFile cFile(device(pszName));
    return cFile.open(QIODevice::ReadOnly) && cFile.seek(iAt) ? cFile.read(iBytes) : QByteArray();
}

QStringList TestPassThrough::trace() const
{
    QFile cFile(note(BOARD_TRACE));
    return cFile.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
               : QStringList();
}

void TestPassThrough::devices_do_the_work_and_each_access_is_noted()
{
    QCOMPARE(run(), 0);
    QCOMPARE(m_cErrors, QByteArray());
    QCOMPARE(deviceBytes("fpga", FPGA_CTRL, 4), QByteArray::fromHex("00008200"));
    QCOMPARE(deviceBytes("i2c", SAA7113_SLAVE * 256 + 0x0a, 1), QByteArray("\x7d"));
    CTraceNames cNames;
    QStringList cNamed;
    for (const QString& rcLine : trace())
        if (!rcLine.contains(" open ") && !rcLine.startsWith("fpga bytes"))
            cNamed << cNames.named(rcLine).section(QLatin1Char(','), 0, 1);
    QVERIFY2(cNamed.removeAll("lime L1WXY l1wx=200 l1wy=300") == 1, qPrintable(cNamed.join('\n')));
    cNamed = cNamed.filter(QRegularExpression("^(?!lime [A-Z0-9]+ 0$)"));
    QCOMPARE(cNamed.mid(0, 9), QStringList({
                                   QString("lime map %1").arg(board_lime_bytes()),
                                   "lime close",
                                   "fpga write32 CTRL fgon=1 cto=1",
                                   "fpga read32 CTRL fgon=1 cto=1",
                                   "fpga seek cell 0,0",
                                   "fpga write cell \" \" transparent on teal-2 at 0,0",
                                   "fpga seek cell 0,0",
                                   "fpga read cell \" \" transparent on teal-2 at 0,0",
                                   "fpga close",
                               }));
    QCOMPARE(cNamed.mid(9), QStringList({"i2c slave saa7113", "i2c write LUBR lubr=125",
                                         "i2c read SBVD hlvln_hlck=1", "i2c close"}));
}

void TestPassThrough::a_replay_has_what_the_devices_have()
{
    QCOMPARE(run(), 0);
    CTemporaryBoard cBoard;
    QVERIFY(cBoard.make());
    CTraceReplay cReplay(cBoard.board());
    QString cError;
    QVERIFY(cReplay.open(cError));
    for (const QString& rcLine : trace())
        QVERIFY2(cReplay.apply(rcLine, cError), qPrintable(rcLine + ": " + cError));
    for (quint32 u32Begin = 0; u32Begin < BOARD_FPGA_BYTES; u32Begin += 0x100000) {
        const int iBytes = static_cast<int>(qMin(0x100000U, BOARD_FPGA_BYTES - u32Begin));
        QCOMPARE(cBoard.board().fpgaMemory(u32Begin, iBytes), deviceBytes("fpga", u32Begin, iBytes));
    }
    QCOMPARE(cBoard.board().limeRegister(CBoard::LIME_DISPLAY, LIME_L1WXY), 0x00c8012cU);
    QCOMPARE(cBoard.board().i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x7d));
    QVERIFY(!cBoard.board().isCameraPlugged());
}

void TestPassThrough::a_device_without_a_link_is_not_noted()
{
    QVERIFY(QFile::remove(note(BOARD_I2C)));
    QCOMPARE(run(), 0);
    QVERIFY(trace().filter(QRegularExpression("^i2c")).isEmpty());
    QVERIFY(!trace().filter(QRegularExpression("^fpga")).isEmpty());
}

// A plain file refuses the FPGA's requests, and the program hears that.
void TestPassThrough::results_of_the_devices_reach_the_program()
{
    QFile cPlain(device("fpga"));
    QVERIFY(cPlain.open(QIODevice::ReadWrite));
    quint32 au32Record[2] = {FPGA_CTRL, 0};
    const char* pszError = strerrorname_np(kernelsError(cPlain.handle(), FPGA_WRITE_32, au32Record));
    QCOMPARE(run(false), 1);
    QVERIFY(trace().contains(QString("fpga write32 0x00ff0000 0x00820000 ! %1").arg(pszError)));
    QVERIFY(m_cErrors.startsWith("not so: ioctl(descriptor, FPGA_WRITE_32, record) == 0"));
}

void TestPassThrough::a_folder_without_devices_is_no_use()
{
    for (const char* pszName : {BOARD_FPGA, BOARD_LIME, BOARD_I2C})
        QVERIFY(QFile::remove(note(pszName)));
    QCOMPARE(run(), 0);
    QVERIFY(trace().isEmpty());
    QCOMPARE(QString(m_cErrors),
             QString("haldenboard: no usable board, none of fpgamem, fb0, i2c-1: No such file or "
                     "directory (HALDEN_BOARD_PASS=%1)\n")
                 .arg(device("notes")));
}

QTEST_APPLESS_MAIN(TestPassThrough)

#include "tst_pass_through.moc"
