/* SPDX-License-Identifier: MIT */
/* The library and the process around it: attaching, threads, children, byte order. */
#include "board/create/CBoardMaker.h"
#include "board/preload/haldenboard.h"
#include "tests/support/CAttachedBoard.h"
#include "tests/support/KernelsError.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QThread>
#include <QtEndian>

#include <cerrno>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

static const quint32 READ_32 = 0xc0086b02;
static const quint32 WRITE_32 = 0xc0086b05;
static const int THREAD_MS = 60000;

class TestPreloadProcess : public QObject
{
    Q_OBJECT

private slots:
    void refuses_unusable_boards_data();
    void refuses_unusable_boards();
    void turns_registers_into_its_own_byte_order();
    void keeps_registers_of_its_own_byte_order();
    void serves_several_threads();
    void notes_whole_lines_of_several_threads();
    void works_in_a_forked_child();
    void lets_go_of_a_board();
};

void TestPreloadProcess::refuses_unusable_boards_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<qint64>("bytes"); // -1: the file is removed
    QTest::addColumn<int>("error");
    for (const char* pszFile : {BOARD_CONTROL, BOARD_FPGA, BOARD_LIME, BOARD_I2C}) {
        QTest::addRow("%s missing", pszFile) << pszFile << qint64(-1) << ENOENT;
        QTest::addRow("%s short", pszFile) << pszFile << qint64(16) << EINVAL;
    }
    QTest::newRow("foreign control file") << BOARD_CONTROL << qint64(-2) << EINVAL;
    QTest::newRow("no directory") << "" << qint64(-1) << ENOENT;
}

void TestPreloadProcess::refuses_unusable_boards()
{
    QFETCH(QString, file);
    QFETCH(qint64, bytes);
    QFETCH(int, error);
    QTemporaryDir cDirectory;
    const QString cBoard = cDirectory.filePath(QStringLiteral("board"));
    if (!file.isEmpty()) {
        QString cError;
        QVERIFY(CBoardMaker::create(cBoard, cError));
        QFile cFile(cBoard + QLatin1Char('/') + file);
        if (bytes == -1) {
            QVERIFY(cFile.remove());
        } else if (bytes >= 0) {
            QVERIFY(cFile.resize(bytes));
        } else {
            QVERIFY(cFile.open(QIODevice::ReadWrite));
            cFile.write("something else");
        }
    }
    QCOMPARE(haldenboard_attach(qPrintable(cBoard)), -1);
    QCOMPARE(errno, error);
    CBoard cOutside;
    QVERIFY(!cOutside.open(cBoard));
    QVERIFY2(cOutside.errorString().contains(file.isEmpty() ? cBoard : file),
             qPrintable(cOutside.errorString()));
    QVERIFY(!cOutside.isOpen());
}

void TestPreloadProcess::turns_registers_into_its_own_byte_order()
{
    QTemporaryDir cDirectory;
    const QString cPath = cDirectory.filePath(QStringLiteral("board"));
    QString cError;
    CBoard cBoard;
    QVERIFY(CBoardMaker::create(cPath, cError) && cBoard.open(cPath));
    const quint32 u32Other = board_own_order() == BOARD_ORDER_LITTLE ? BOARD_ORDER_BIG : BOARD_ORDER_LITTLE;
    QFile cControl(cBoard.path(BOARD_CONTROL));
    QVERIFY(cControl.open(QIODevice::ReadWrite) && cControl.seek(offsetof(board_control, lime_order)));
    const quint32 u32Stored = qToLittleEndian(u32Other);
    cControl.write(reinterpret_cast<const char*>(&u32Stored), sizeof u32Stored);
    cControl.close();

    // Written from outside in the other order, as a daemon of that order would have left them.
    cBoard.setLimeRegister(CBoard::LIME_HOST, 0, 0x01020304);
    cBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x00112233);
    cBoard.setLimeRegister(CBoard::LIME_PIO, 0x7ffc, 0xa0b0c0d0);
    QCOMPARE(haldenboard_attach(qPrintable(cPath)), 0);
    haldenboard_detach();
    QFile cLime(cBoard.path(BOARD_LIME));
    QVERIFY(cLime.open(QIODevice::ReadOnly) && cLime.seek(LIME_DISP_WINDOW + 0x184));
    quint32 u32Own = 0;
    cLime.read(reinterpret_cast<char*>(&u32Own), sizeof u32Own);
    QCOMPARE(u32Own, 0x00112233u);
    QCOMPARE(cBoard.limeRegister(CBoard::LIME_HOST, 0), 0x01020304u);
    QCOMPARE(cBoard.limeRegister(CBoard::LIME_DISPLAY, 0x184), 0x00112233u);
    QCOMPARE(cBoard.limeRegister(CBoard::LIME_PIO, 0x7ffc), 0xa0b0c0d0u);
}

void TestPreloadProcess::keeps_registers_of_its_own_byte_order()
{
    CAttachedBoard cBoard;
    QVERIFY(cBoard.isReady());
    cBoard->setLimeRegister(CBoard::LIME_DISPLAY, 0x100, 0x80020000u);
    haldenboard_detach();
    QCOMPARE(haldenboard_attach(qPrintable(cBoard->directory())), 0);
    QCOMPARE(cBoard->limeRegister(CBoard::LIME_DISPLAY, 0x100), 0x80020000u);
}

namespace
{

/// Opens, writes, reads back and closes, on a register of its own; the number of mistakes.
class CHammer : public QThread
{
public:
    CHammer(CAttachedBoard& rcBoard, quint32 u32Address, int iRounds)
        : m_rcBoard(rcBoard), m_u32Address(u32Address), m_iRounds(iRounds)
    {
    }

    int mistakes() const { return m_iMistakes; }

protected:
    void run() override
    {
        for (int i = 0; i < m_iRounds; ++i) {
            const int iDescriptor = m_rcBoard.openDevice(BOARD_FPGA);
            quint32 au32Write[2] = {m_u32Address, static_cast<quint32>(i)};
            quint32 au32Read[2] = {m_u32Address, ~0u};
            const bool bRight = ::ioctl(iDescriptor, WRITE_32, au32Write) == 0 &&
                                ::ioctl(iDescriptor, READ_32, au32Read) == 0 && au32Read[1] == au32Write[1];
            const int iOther = ::open("/dev/zero", O_RDONLY | O_CLOEXEC);
            quint32 u32Zero = 1;
            const bool bZero = ::read(iOther, &u32Zero, sizeof u32Zero) == sizeof u32Zero && u32Zero == 0 &&
                               ::ioctl(iOther, READ_32, au32Read) == -1;
            m_iMistakes += bRight && bZero ? 0 : 1;
            ::close(iDescriptor);
            ::close(iOther);
        }
    }

private:
    CAttachedBoard& m_rcBoard;
    const quint32 m_u32Address;
    const int m_iRounds;
    int m_iMistakes = 0;
};

/// The number of mistakes of four threads; -1 if they hang.
int hammer(CAttachedBoard& rcBoard, int iRounds)
{
    QVector<CHammer*> cThreads;
    for (quint32 u32Address = 0x00ff1400; u32Address < 0x00ff1410; u32Address += 4)
        cThreads << new CHammer(rcBoard, u32Address, iRounds);
    for (CHammer* pcThread : cThreads)
        pcThread->start();
    int iMistakes = 0;
    for (CHammer* pcThread : cThreads) {
        if (!pcThread->wait(THREAD_MS))
            return -1;
        iMistakes += pcThread->mistakes();
    }
    qDeleteAll(cThreads);
    return iMistakes;
}

} // namespace

void TestPreloadProcess::serves_several_threads()
{
    CAttachedBoard cBoard;
    QVERIFY(cBoard.isReady());
    QCOMPARE(hammer(cBoard, 5000), 0);
}

void TestPreloadProcess::notes_whole_lines_of_several_threads()
{
    const int ROUNDS = 200;
    CAttachedBoard cBoard;
    QVERIFY(cBoard.isReady());
    cBoard->setTracing(true);
    QCOMPARE(hammer(cBoard, ROUNDS), 0);
    const QStringList cLines = cBoard.takeTrace();
    const QRegularExpression cWhole(
        QStringLiteral("^fpga (open = N|(write32|read32) 0x00ff14[0-9a-f]{2} (= )?0x[0-9a-f]{8}|close)$"));
    QCOMPARE(cLines.size(), 4 * 4 * ROUNDS);
    QCOMPARE(cLines.filter(cWhole).size(), cLines.size());
}

void TestPreloadProcess::works_in_a_forked_child()
{
    CAttachedBoard cBoard;
    QVERIFY(cBoard.isReady());
    cBoard->setTracing(true);
    const int iDescriptor = cBoard.openDevice(BOARD_FPGA);
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        quint32 au32Record[2] = {0x00ff0004, 0xc0ffee};
        const bool bDone = ::ioctl(iDescriptor, WRITE_32, au32Record) == 0 && ::close(iDescriptor) == 0;
        ::_exit(bDone ? 0 : 1);
    }
    int iStatus = -1;
    QCOMPARE(::waitpid(iChild, &iStatus, 0), iChild);
    QCOMPARE(iStatus, 0);
    QCOMPARE(cBoard->fpgaRegister(0x00ff0004), 0xc0ffeeu);
    quint32 au32Record[2] = {0x00ff0004, 0};
    QCOMPARE(::ioctl(iDescriptor, READ_32, au32Record), 0);
    ::close(iDescriptor);
    QCOMPARE(cBoard.takeTrace(),
             QStringList({"fpga open = N", "fpga write32 0x00ff0004 0x00c0ffee", "fpga close",
                          "fpga read32 0x00ff0004 = 0x00c0ffee", "fpga close"}));
}

void TestPreloadProcess::lets_go_of_a_board()
{
    CAttachedBoard cBoard;
    QVERIFY(cBoard.isReady());
    const int iDescriptor = cBoard.openDevice(BOARD_FPGA);
    quint32 au32Record[2] = {0x00ff0000, 0};
    QCOMPARE(::ioctl(iDescriptor, READ_32, au32Record), 0);
    haldenboard_detach();
    QCOMPARE(::ioctl(iDescriptor, READ_32, au32Record), -1);
    QCOMPARE(errno, kernelsError(iDescriptor, READ_32, au32Record));
    ::close(iDescriptor);
}

QTEST_GUILESS_MAIN(TestPreloadProcess)
#include "tst_preload_process.moc"
