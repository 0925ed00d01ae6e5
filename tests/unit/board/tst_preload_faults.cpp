/* SPDX-License-Identifier: MIT */
/* Every fault, on the operation that it is for and on no other. */
#include "tests/support/CAttachedBoard.h"

#include <QFile>
#include <QTest>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

Q_DECLARE_METATYPE(board_operation)

class TestPreloadFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fails_at_the_right_time_data() { operations(); }
    void fails_at_the_right_time();
    void fails_until_cleared_data() { operations(); }
    void fails_until_cleared();
    void meets_no_other_operation_data() { operations(); }
    void meets_no_other_operation();
    void failing_operations_are_traced_data();
    void failing_operations_are_traced();
    void short_transfers_do_half();
    void a_failed_read_leaves_the_value();
    void a_failed_write_leaves_the_register();
    void a_failed_open_leaves_no_descriptor();
    void counts_across_threads_and_descriptors();
    void a_full_disk_is_met_by_qfile();
    void a_disk_that_gets_full_takes_half();
    void a_full_disk_spares_what_is_no_plain_file();
    void a_full_disk_spares_the_standard_streams();
    void register_files_can_be_read_from_a_full_disk();
    void register_files_can_be_refused_to_every_way_of_opening();

private:
    static void operations();
    bool succeeds(board_operation eOperation);

    QScopedPointer<CAttachedBoard> m_pcBoard;
    int m_iFpga = -1;
    int m_iI2c = -1;
    int m_iLime = -1;
};

void TestPreloadFaults::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    m_iI2c = m_pcBoard->openDevice(BOARD_I2C);
    m_iLime = m_pcBoard->openDevice(BOARD_LIME);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x25), 0);
}

void TestPreloadFaults::cleanup()
{
    ::close(m_iFpga);
    ::close(m_iI2c);
    ::close(m_iLime);
    m_pcBoard.reset();
}

void TestPreloadFaults::operations()
{
    QTest::addColumn<board_operation>("operation");
    for (int iOperation = 1; iOperation < BOARD_OPERATION_COUNT; ++iOperation) {
        const auto eOperation = static_cast<board_operation>(iOperation);
        QTest::newRow(qPrintable(CBoard::operationName(eOperation))) << eOperation;
    }
}

namespace
{

bool forks()
{
    const pid_t iChild = ::fork();
    if (iChild == 0)
        ::_exit(0);
    return iChild > 0 && ::waitpid(iChild, nullptr, 0) == iChild;
}

bool makesSocketPair()
{
    int aiSockets[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, aiSockets) != 0)
        return false;
    ::close(aiSockets[0]);
    ::close(aiSockets[1]);
    return true;
}

bool opens(CAttachedBoard& rcBoard, const char* pszFile)
{
    const int iDescriptor = rcBoard.openDevice(pszFile);
    if (iDescriptor < 0)
        return false;
    const int iError = errno;
    ::close(iDescriptor);
    errno = iError;
    return true;
}

bool maps(int iDescriptor)
{
    void* pvMap = ::mmap(nullptr, 4096, PROT_READ, MAP_SHARED, iDescriptor, 0);
    if (pvMap == MAP_FAILED)
        return false;
    ::munmap(pvMap, 4096);
    return true;
}

bool transfersRegister(int iDescriptor, quint32 u32Request)
{
    quint32 au32Record[2] = {0x00ff0000, 0};
    return ::ioctl(iDescriptor, u32Request, au32Record) == 0;
}

bool transfersByte(int iDescriptor, int iDirection)
{
    i2c_smbus_data uData = {};
    i2c_smbus_ioctl_data cTransfer = {static_cast<__u8>(iDirection), 1, I2C_SMBUS_BYTE_DATA, &uData};
    return ::ioctl(iDescriptor, I2C_SMBUS, &cTransfer) == 0;
}

bool writesFile(const QString& rcPath)
{
    const int iDescriptor = ::open(qPrintable(rcPath), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool bWritten = ::write(iDescriptor, "text", 4) == 4;
    const int iError = errno;
    ::close(iDescriptor);
    errno = iError;
    return bWritten;
}

/// By stdio, as the daemon does.
bool writesRegisterFile()
{
    FILE* pcFile = std::fopen("/usr/etc/cnfs/new.cnf", "w+");
    if (pcFile == nullptr)
        return false;
    std::fputs("CTRL: {};", pcFile);
    return std::fclose(pcFile) == 0;
}

} // namespace

bool TestPreloadFaults::succeeds(board_operation eOperation)
{
    char aBytes[4] = {};
    switch (eOperation) {
    case BOARD_OPERATION_FORK:
        return forks();
    case BOARD_OPERATION_SOCKETPAIR:
        return makesSocketPair();
    case BOARD_OPERATION_SIGACTION:
        return ::sigaction(SIGUSR1, nullptr, nullptr) == 0;
    case BOARD_OPERATION_FPGA_OPEN:
        return opens(*m_pcBoard, BOARD_FPGA);
    case BOARD_OPERATION_FPGA_READ:
        return ::read(m_iFpga, aBytes, sizeof aBytes) == sizeof aBytes;
    case BOARD_OPERATION_FPGA_WRITE:
        return ::write(m_iFpga, aBytes, sizeof aBytes) == sizeof aBytes;
    case BOARD_OPERATION_FPGA_SEEK:
        return ::lseek(m_iFpga, 16, SEEK_SET) == 16;
    case BOARD_OPERATION_FPGA_IOCTL_READ:
        return transfersRegister(m_iFpga, 0xc0086b02);
    case BOARD_OPERATION_FPGA_IOCTL_WRITE:
        return transfersRegister(m_iFpga, 0xc0086b05);
    case BOARD_OPERATION_LIME_OPEN:
        return opens(*m_pcBoard, BOARD_LIME);
    case BOARD_OPERATION_LIME_MAP:
        return maps(m_iLime);
    case BOARD_OPERATION_I2C_OPEN:
        return opens(*m_pcBoard, BOARD_I2C);
    case BOARD_OPERATION_I2C_SLAVE:
        return ::ioctl(m_iI2c, I2C_SLAVE, 0x25) == 0;
    case BOARD_OPERATION_I2C_READ:
        return transfersByte(m_iI2c, I2C_SMBUS_READ);
    case BOARD_OPERATION_I2C_WRITE:
        return transfersByte(m_iI2c, I2C_SMBUS_WRITE);
    case BOARD_OPERATION_DISK_WRITE:
        return writesFile((*m_pcBoard)->path("still"));
    case BOARD_OPERATION_CNFS_WRITE:
        return writesRegisterFile();
    case BOARD_OPERATION_NONE:
    case BOARD_OPERATION_COUNT:
        break;
    }
    return false;
}

void TestPreloadFaults::fails_at_the_right_time()
{
    QFETCH(board_operation, operation);
    CBoard::SFault cFault;
    cFault.eOperation = operation;
    cFault.u32Nth = 3;
    cFault.u32Count = 2;
    cFault.iError = EXDEV;
    (*m_pcBoard)->setFault(cFault);
    for (const bool bExpected : {true, true, false, false, true, true}) {
        errno = 0;
        QCOMPARE(succeeds(operation), bExpected);
        if (!bExpected)
            QCOMPARE(errno, EXDEV);
    }
    const QVector<CBoard::SFault> cFaults = (*m_pcBoard)->faults();
    QCOMPARE(cFaults.size(), 1);
    QCOMPARE(cFaults.first().u32Hits, 2u);
    QCOMPARE(cFaults.first().u32Count, 0u);
}

void TestPreloadFaults::fails_until_cleared()
{
    QFETCH(board_operation, operation);
    CBoard::SFault cFault;
    cFault.eOperation = operation;
    (*m_pcBoard)->setFault(cFault);
    const int iUsual = (*m_pcBoard)->faults().first().iError;
    QVERIFY(iUsual != 0);
    for (int i = 0; i < 5; ++i) {
        errno = 0;
        QVERIFY(!succeeds(operation));
        QCOMPARE(errno, iUsual);
    }
    (*m_pcBoard)->clearFaults();
    QVERIFY(succeeds(operation));
    QVERIFY((*m_pcBoard)->faults().isEmpty());
}

void TestPreloadFaults::meets_no_other_operation()
{
    QFETCH(board_operation, operation);
    CBoard::SFault cFault;
    cFault.eOperation = operation;
    (*m_pcBoard)->setFault(cFault);
    for (int iOther = 1; iOther < BOARD_OPERATION_COUNT; ++iOther)
        QCOMPARE(succeeds(static_cast<board_operation>(iOther)), iOther != operation);
}

void TestPreloadFaults::failing_operations_are_traced_data()
{
    QTest::addColumn<board_operation>("operation");
    QTest::addColumn<QString>("line");
    QTest::newRow("fpga-open") << BOARD_OPERATION_FPGA_OPEN << "fpga open ! ENXIO";
    QTest::newRow("fpga-read") << BOARD_OPERATION_FPGA_READ << "fpga read 4 ! EIO";
    QTest::newRow("fpga-write") << BOARD_OPERATION_FPGA_WRITE << "fpga write 4 ! EIO";
    QTest::newRow("fpga-seek") << BOARD_OPERATION_FPGA_SEEK << "fpga seek 0x00000010 ! EIO";
    QTest::newRow("fpga-ioctl-read") << BOARD_OPERATION_FPGA_IOCTL_READ << "fpga read32 0x00ff0000 ! EIO";
    QTest::newRow("fpga-ioctl-write")
        << BOARD_OPERATION_FPGA_IOCTL_WRITE << "fpga write32 0x00ff0000 0x00000000 ! EIO";
    QTest::newRow("lime-open") << BOARD_OPERATION_LIME_OPEN << "lime open ! ENXIO";
    QTest::newRow("lime-map") << BOARD_OPERATION_LIME_MAP << "lime map 4096 ! ENOMEM";
    QTest::newRow("i2c-open") << BOARD_OPERATION_I2C_OPEN << "i2c open ! ENXIO";
    QTest::newRow("i2c-slave") << BOARD_OPERATION_I2C_SLAVE << "i2c slave 0x25 ! EBUSY";
    QTest::newRow("i2c-read") << BOARD_OPERATION_I2C_READ << "i2c read 0x01 ! EIO";
    QTest::newRow("i2c-write") << BOARD_OPERATION_I2C_WRITE << "i2c write 0x01 0x00 ! EIO";
}

void TestPreloadFaults::failing_operations_are_traced()
{
    QFETCH(board_operation, operation);
    QFETCH(QString, line);
    CBoard::SFault cFault;
    cFault.eOperation = operation;
    (*m_pcBoard)->setFault(cFault);
    (*m_pcBoard)->setTracing(true);
    QVERIFY(!succeeds(operation));
    QCOMPARE(m_pcBoard->takeTrace(), QStringList(line));
}

void TestPreloadFaults::short_transfers_do_half()
{
    CBoard::SFault cFault;
    cFault.u32Count = 1;
    cFault.bShort = true;
    cFault.eOperation = BOARD_OPERATION_FPGA_WRITE;
    (*m_pcBoard)->setFault(cFault);
    cFault.eOperation = BOARD_OPERATION_FPGA_READ;
    (*m_pcBoard)->setFault(cFault);
    QCOMPARE(::write(m_iFpga, "abcdefg", 7), ssize_t(3));
    QCOMPARE((*m_pcBoard)->fpgaMemory(0, 4), QByteArray("abc\0", 4));
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_SET), off_t(0));
    char aBytes[8] = {};
    QCOMPARE(::read(m_iFpga, aBytes, 4), ssize_t(2));
    QCOMPARE(QByteArray(aBytes), QByteArray("ab"));
    QCOMPARE(::read(m_iFpga, aBytes, 4), ssize_t(4));
}

void TestPreloadFaults::a_failed_read_leaves_the_value()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_IOCTL_READ;
    (*m_pcBoard)->setFault(cFault);
    quint32 au32Record[2] = {0x00ff0000, 77};
    QCOMPARE(::ioctl(m_iFpga, 0xc0086b02, au32Record), -1);
    QCOMPARE(au32Record[1], 77u);
}

void TestPreloadFaults::a_failed_write_leaves_the_register()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_IOCTL_WRITE;
    (*m_pcBoard)->setFault(cFault);
    quint32 au32Record[2] = {0x00ff0000, 77};
    QCOMPARE(::ioctl(m_iFpga, 0xc0086b05, au32Record), -1);
    QCOMPARE((*m_pcBoard)->fpgaRegister(0x00ff0000), 0u);
}

void TestPreloadFaults::a_failed_open_leaves_no_descriptor()
{
    const int iNext = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::close(iNext);
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_OPEN;
    (*m_pcBoard)->setFault(cFault);
    QCOMPARE(m_pcBoard->openDevice(BOARD_FPGA), -1);
    QCOMPARE(::open("/dev/null", O_RDWR | O_CLOEXEC), iNext);
    ::close(iNext);
}

void TestPreloadFaults::counts_across_threads_and_descriptors()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_IOCTL_READ;
    cFault.u32Nth = 1001;
    cFault.u32Count = 500;
    (*m_pcBoard)->setFault(cFault);
    QAtomicInt cFailed = 0;
    const int iOther = m_pcBoard->openDevice(BOARD_FPGA);
    QVector<QThread*> cThreads;
    for (const int iDescriptor : {m_iFpga, iOther, m_iFpga, iOther})
        cThreads << QThread::create([&cFailed, iDescriptor] {
            for (int i = 0; i < 1000; ++i)
                if (!transfersRegister(iDescriptor, 0xc0086b02))
                    ++cFailed;
        });
    for (QThread* pcThread : cThreads)
        pcThread->start();
    for (QThread* pcThread : cThreads)
        QVERIFY(pcThread->wait(20000));
    qDeleteAll(cThreads);
    ::close(iOther);
    QCOMPARE(cFailed.loadRelaxed(), 500);
    QCOMPARE((*m_pcBoard)->faults().first().u32Hits, 500u);
}

void TestPreloadFaults::a_full_disk_is_met_by_qfile()
{
    QFile cFile((*m_pcBoard)->path("still"));
    QVERIFY(cFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_DISK_WRITE;
    (*m_pcBoard)->setFault(cFault);
    QCOMPARE(cFile.write("some text"), qint64(-1));
    QCOMPARE(cFile.error(), QFileDevice::ResourceError);
    (*m_pcBoard)->clearFaults();
    QCOMPARE(cFile.write("some text"), qint64(9));
}

void TestPreloadFaults::a_disk_that_gets_full_takes_half()
{
    const int iDescriptor =
        ::open(qPrintable((*m_pcBoard)->path("still")), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_DISK_WRITE;
    cFault.u32Count = 1;
    cFault.bShort = true;
    (*m_pcBoard)->setFault(cFault);
    QCOMPARE(::write(iDescriptor, "abcdefg", 7), ssize_t(3));
    QCOMPARE(::write(iDescriptor, "defg", 4), ssize_t(4));
    char aBytes[8] = {};
    QCOMPARE(::lseek(iDescriptor, 0, SEEK_SET), off_t(0));
    QCOMPARE(::read(iDescriptor, aBytes, sizeof aBytes), ssize_t(7));
    QCOMPARE(QByteArray(aBytes), QByteArray("abcdefg"));
    ::close(iDescriptor);
}

void TestPreloadFaults::a_full_disk_spares_what_is_no_plain_file()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_DISK_WRITE;
    (*m_pcBoard)->setFault(cFault);
    int aiPipe[2];
    int aiSockets[2];
    QCOMPARE(::pipe2(aiPipe, O_CLOEXEC), 0);
    QCOMPARE(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, aiSockets), 0);
    const int iNull = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    for (const int iDescriptor : {aiPipe[1], aiSockets[0], iNull, m_iFpga})
        QCOMPARE(::write(iDescriptor, "text", 4), ssize_t(4));
    for (const int iDescriptor : {aiPipe[0], aiPipe[1], aiSockets[0], aiSockets[1], iNull})
        ::close(iDescriptor);
    QCOMPARE((*m_pcBoard)->faults().first().u32Hits, 0u);
}

/// A child, because the streams of this process are the test's.
void TestPreloadFaults::a_full_disk_spares_the_standard_streams()
{
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_DISK_WRITE;
    (*m_pcBoard)->setFault(cFault);
    const int iFile = ::open(qPrintable((*m_pcBoard)->path("log")), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        const bool bWritten = ::dup2(iFile, STDOUT_FILENO) >= 0 && ::dup2(iFile, STDERR_FILENO) >= 0 &&
                              ::write(STDOUT_FILENO, "a", 1) == 1 && ::write(STDERR_FILENO, "b", 1) == 1;
        ::_exit(bWritten ? 0 : 1);
    }
    int iStatus = -1;
    QCOMPARE(::waitpid(iChild, &iStatus, 0), iChild);
    QCOMPARE(iStatus, 0);
    ::close(iFile);
}

void TestPreloadFaults::register_files_can_be_read_from_a_full_disk()
{
    QVERIFY(writesRegisterFile());
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_CNFS_WRITE;
    (*m_pcBoard)->setFault(cFault);
    QFile cFile(QStringLiteral("/usr/etc/cnfs/new.cnf"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readAll(), QByteArray("CTRL: {};"));
    cFile.close();
    QVERIFY(!writesRegisterFile());
    // The file is unchanged: it was never opened.
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readAll(), QByteArray("CTRL: {};"));
}

void TestPreloadFaults::register_files_can_be_refused_to_every_way_of_opening()
{
    const char* const pszPath = "/usr/etc/cnfs/new.cnf";
    QVERIFY(writesRegisterFile());
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_CNFS_WRITE;
    cFault.iError = EROFS;
    (*m_pcBoard)->setFault(cFault);
    for (const char* pszMode : {"w", "a", "r+"}) {
        errno = 0;
        QVERIFY(std::fopen(pszPath, pszMode) == nullptr);
        QCOMPARE(errno, EROFS);
        errno = 0;
        QVERIFY(std::freopen(pszPath, pszMode, std::fopen("/dev/null", "r")) == nullptr);
        QCOMPARE(errno, EROFS);
    }
    for (const int iFlags : {O_WRONLY, O_RDWR, O_WRONLY | O_TRUNC}) {
        errno = 0;
        QCOMPARE(::open(pszPath, iFlags | O_CLOEXEC), -1);
        QCOMPARE(errno, EROFS);
        QCOMPARE(::openat(AT_FDCWD, pszPath, iFlags | O_CLOEXEC), -1);
    }
    QVERIFY(writesFile((*m_pcBoard)->path("elsewhere")));
}

QTEST_GUILESS_MAIN(TestPreloadFaults)
#include "tst_preload_faults.moc"
