/* SPDX-License-Identifier: MIT */
/* The library itself, preloaded into a program that knows nothing of it. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/Preload.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

static const int PROCESS_MS = 60000;

// The errors of requests that a file doesn't know, and of requests on no file. The emulator answers requests that it
// doesn't know itself, whatever they are made on.
#ifdef HALDEND_EMULATED
static const QString UNKNOWN = QStringLiteral("ENOSYS");
static const QString NO_FILE = QStringLiteral("ENOSYS");
#else
static const QString UNKNOWN = QStringLiteral("ENOTTY");
static const QString NO_FILE = QStringLiteral("EBADF");
#endif

class TestPreloadLibrary : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void stands_in_for_the_devices_data() { probes(); }
    void stands_in_for_the_devices();
    void passes_through_without_a_board_data() { probes(); }
    void passes_through_without_a_board();
    void says_once_that_a_board_is_unusable();
    void makes_the_first_open_fail();

private:
    static void probes();
    void run(const QString& rcProbe, const QString& rcBoard);

    QScopedPointer<QTemporaryDir> m_pcDirectory;
    CBoard m_cBoard;
    QStringList m_cOutput;
    QByteArray m_cErrors;
};

void TestPreloadLibrary::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    const QString cPath = m_pcDirectory->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cPath, cError) && m_cBoard.open(cPath), qPrintable(cError));
    m_cBoard.setTracing(true);
}

void TestPreloadLibrary::probes()
{
    QTest::addColumn<QString>("probe");
    QTest::newRow("plain") << HALDEND_PROBE;
    QTest::newRow("fortified, large files") << HALDEND_PROBE_FORTIFIED;
}

/// Without a board the variable isn't set.
void TestPreloadLibrary::run(const QString& rcProbe, const QString& rcBoard)
{
    QProcessEnvironment cEnvironment;
    preload(cEnvironment, QStringLiteral(HALDEND_BOARD_PRELOAD));
    if (!rcBoard.isNull())
        cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), rcBoard);
    CChildProcess cProcess;
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(rcProbe, {m_cBoard.path(BOARD_FPGA), m_cBoard.path(BOARD_LIME), m_cBoard.path(BOARD_I2C)});
    QVERIFY(cProcess.waitForFinished(PROCESS_MS));
    QCOMPARE(cProcess.exitStatus(), QProcess::NormalExit);
    QCOMPARE(cProcess.exitCode(), 0);
    m_cOutput =
        QString::fromLatin1(cProcess.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_cErrors = cProcess.readAllStandardError();
}

void TestPreloadLibrary::stands_in_for_the_devices()
{
    QFETCH(QString, probe);
    run(probe, m_cBoard.directory());
    QCOMPARE(m_cErrors, QByteArray());
    QCOMPARE(m_cOutput, QStringList({"write32: 0", "read32: 0", "value: 8519682", "seek: 3145728", "write: 2",
                                     "seek: 3145728", "read: 4", "byte: 65", "close: 0", "unmap: 0",
                                     "close: 0", "slave: 0", "i2c: 0", "close: 0", "folder: 0"}));
    QStringList cTrace = m_cBoard.traceLines();
    cTrace.replaceInStrings(QRegularExpression(QStringLiteral("open = \\d+$")), QStringLiteral("open = N"));
    QCOMPARE(cTrace, QStringList({"fpga open = N", "fpga write32 0x00ff0000 0x00820002",
                                  "fpga read32 0x00ff0000 = 0x00820002", "fpga seek 0x00300000",
                                  "fpga write 2 = 2 : 41 18", "fpga seek 0x00300000",
                                  "fpga read 4 = 4 : 41 18 00 00", "fpga close", "lime open = N",
                                  QStringLiteral("lime map %1").arg(board_lime_bytes()), "lime close",
                                  "i2c open = N", "i2c slave 0x25", "i2c write 0x01 0x08", "i2c close"}));
    QCOMPARE(m_cBoard.fpgaRegister(0x00ff0000), 0x00820002u);
    QCOMPARE(m_cBoard.limeRegister(CBoard::LIME_DISPLAY, 0x184), 0x123456u);
    QCOMPARE(m_cBoard.i2cRegister(0x25, 0x01), quint8(0x08));
    QVERIFY(QFileInfo::exists(m_cBoard.path(BOARD_CNFS) + QStringLiteral("/probe.cnf")));
}

void TestPreloadLibrary::passes_through_without_a_board()
{
    QFETCH(QString, probe);
    run(probe, QString());
    QCOMPARE(m_cErrors, QByteArray());
    QCOMPARE(m_cOutput,
             QStringList({"write32: " + UNKNOWN, "read32: " + UNKNOWN, "value: 0", "seek: 3145728",
                          "write: 2", "seek: 3145728", "read: 4", "byte: 65", "close: 0", "unmap: 0",
                          "close: 0", "slave: " + UNKNOWN, "i2c: " + UNKNOWN, "close: 0", "folder: ENOENT"}));
    QCOMPARE(m_cBoard.traceLines(), QStringList());
}

void TestPreloadLibrary::says_once_that_a_board_is_unusable()
{
    const QString cNone = m_pcDirectory->filePath(QStringLiteral("none"));
    run(QStringLiteral(HALDEND_PROBE), cNone);
    QCOMPARE(m_cErrors,
             QStringLiteral("haldenboard: no usable board, the directory: No such file or directory "
                            "(HALDEN_BOARD=%1)\n")
                 .arg(cNone)
                 .toLocal8Bit());
    QCOMPARE(m_cOutput.first(), "write32: " + UNKNOWN);
}

void TestPreloadLibrary::makes_the_first_open_fail()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_OPEN;
    cFault.u32Count = 1;
    m_cBoard.setFault(cFault);
    run(QStringLiteral(HALDEND_PROBE), m_cBoard.directory());
    QCOMPARE(m_cOutput.first(), "write32: " + NO_FILE);
    QCOMPARE(m_cBoard.traceLines().first(), QStringLiteral("fpga open ! ENXIO"));
    QCOMPARE(m_cBoard.faults().first().u32Hits, 1u);
}

QTEST_GUILESS_MAIN(TestPreloadLibrary)
#include "tst_preload_library.moc"
