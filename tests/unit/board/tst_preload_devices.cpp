/* SPDX-License-Identifier: MIT */
/* The three devices as the daemon meets them: system calls in, results and trace out. */
#include "tests/support/CAttachedBoard.h"
#include "tests/support/KernelsError.h"

#include <QTest>

#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct SRecord {
    quint32 u32Address;
    quint32 u32Value;
};

const quint32 READ_8 = 0xc0086b00;
const quint32 READ_16 = 0xc0086b01;
const quint32 READ_32 = 0xc0086b02;
const quint32 WRITE_8 = 0xc0086b03;
const quint32 WRITE_16 = 0xc0086b04;
const quint32 WRITE_32 = 0xc0086b05;
const quint32 PLAIN = 0x20006b07;
const int UNTOUCHED = 12345; // a value of errno that no call gives

int transfer(int iDescriptor, quint32 u32Request, SRecord& rcRecord)
{
    errno = UNTOUCHED;
    return ::ioctl(iDescriptor, u32Request, &rcRecord);
}

int smbus(int iDescriptor, int iDirection, quint8 u8Sub, quint32 u32Size, quint8& ru8Value)
{
    i2c_smbus_data uData = {};
    uData.byte = ru8Value;
    i2c_smbus_ioctl_data cTransfer = {static_cast<__u8>(iDirection), u8Sub, u32Size, &uData};
    errno = UNTOUCHED;
    const int iResult = ::ioctl(iDescriptor, I2C_SMBUS, &cTransfer);
    ru8Value = uData.byte;
    return iResult;
}

} // namespace

class TestPreloadDevices : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fpga_registers_have_three_widths();
    void fpga_registers_are_little_endian_memory();
    void fpga_addresses_end_with_the_memory_data();
    void fpga_addresses_end_with_the_memory();
    void fpga_refuses_other_requests_data();
    void fpga_refuses_other_requests();
    void fpga_request_may_come_as_an_int();
    void fpga_answers_the_plain_request();
    void fpga_needs_a_record();
    void fpga_memory_is_a_seekable_file();
    void fpga_positions_are_those_of_open_files();
    void fpga_positions_are_shared_by_processes();
    void fpga_positions_can_not_go_before_the_begin();
    void fpga_positions_work_however_many_files_were_opened();
    void fpga_does_not_grow();

    void i2c_reads_and_writes_chips_apart();
    void i2c_slave_belongs_to_the_descriptor();
    void i2c_refuses_large_addresses();
    void i2c_has_two_chips();
    void i2c_transfers_bytes_only();
    void i2c_needs_data();
    void i2c_decoder_status_can_only_be_read();
    void i2c_decoder_status_tells_that_the_source_is_gone();
    void i2c_has_no_plain_transfers();

    void lime_is_mapped();
    void lime_refuses_requests();

    void trace_of_the_fpga();
    void trace_of_i2c();
    void trace_of_the_lime();
    void trace_shows_the_first_bytes();
    void trace_is_off_at_first();

    void success_leaves_errno_alone();
    void copies_of_a_descriptor_are_the_device();
    void a_closed_descriptor_is_forgotten();
    void other_paths_to_a_device_are_the_device();
    void other_files_are_left_alone();

private:
    QScopedPointer<CAttachedBoard> m_pcBoard;
    int m_iFpga = -1;
    int m_iI2c = -1;
    int m_iLime = -1;
};

void TestPreloadDevices::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_pcBoard->dontJudge(); // also tries operations that the devices refuse
    m_iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    m_iI2c = m_pcBoard->openDevice(BOARD_I2C);
    m_iLime = m_pcBoard->openDevice(BOARD_LIME);
    QVERIFY(m_iFpga >= 0 && m_iI2c >= 0 && m_iLime >= 0);
}

void TestPreloadDevices::cleanup()
{
    ::close(m_iFpga);
    ::close(m_iI2c);
    ::close(m_iLime);
    m_pcBoard.reset();
}

// FPGA

void TestPreloadDevices::fpga_registers_have_three_widths()
{
    SRecord cRecord = {0x00ff0000, 0x12345678};
    QCOMPARE(transfer(m_iFpga, WRITE_32, cRecord), 0);
    cRecord.u32Value = 0;
    QCOMPARE(transfer(m_iFpga, READ_32, cRecord), 0);
    QCOMPARE(cRecord.u32Value, 0x12345678u);
    QCOMPARE(transfer(m_iFpga, READ_16, cRecord), 0);
    QCOMPARE(cRecord.u32Value, 0x5678u);
    QCOMPARE(transfer(m_iFpga, READ_8, cRecord), 0);
    QCOMPARE(cRecord.u32Value, 0x78u);

    cRecord.u32Value = 0xffffaaaa;
    QCOMPARE(transfer(m_iFpga, WRITE_16, cRecord), 0);
    QCOMPARE((*m_pcBoard)->fpgaRegister(0x00ff0000), 0x1234aaaau);
    cRecord.u32Value = 0xffffffbb;
    QCOMPARE(transfer(m_iFpga, WRITE_8, cRecord), 0);
    QCOMPARE((*m_pcBoard)->fpgaRegister(0x00ff0000), 0x1234aabbu);
}

void TestPreloadDevices::fpga_registers_are_little_endian_memory()
{
    SRecord cRecord = {0x00ff1800, 0x11223344};
    QCOMPARE(transfer(m_iFpga, WRITE_32, cRecord), 0);
    char aBytes[4] = {};
    QCOMPARE(::lseek(m_iFpga, 0x00ff1800, SEEK_SET), off_t(0x00ff1800));
    QCOMPARE(::read(m_iFpga, aBytes, sizeof aBytes), ssize_t(4));
    QCOMPARE(QByteArray(aBytes, 4).toHex(), QByteArray("44332211"));
}

void TestPreloadDevices::fpga_addresses_end_with_the_memory_data()
{
    QTest::addColumn<quint32>("request");
    QTest::addColumn<quint32>("bytes");
    QTest::newRow("read 8") << READ_8 << 1u;
    QTest::newRow("read 16") << READ_16 << 2u;
    QTest::newRow("read 32") << READ_32 << 4u;
    QTest::newRow("write 8") << WRITE_8 << 1u;
    QTest::newRow("write 16") << WRITE_16 << 2u;
    QTest::newRow("write 32") << WRITE_32 << 4u;
}

void TestPreloadDevices::fpga_addresses_end_with_the_memory()
{
    QFETCH(quint32, request);
    QFETCH(quint32, bytes);
    SRecord cRecord = {BOARD_FPGA_BYTES - bytes, 1};
    QCOMPARE(transfer(m_iFpga, request, cRecord), 0);
    for (const quint32 u32Address : {BOARD_FPGA_BYTES - bytes + 1, BOARD_FPGA_BYTES, 0xffffffffu}) {
        cRecord = {u32Address, 77};
        QCOMPARE(transfer(m_iFpga, request, cRecord), -1);
        QCOMPARE(errno, EINVAL);
        QCOMPARE(cRecord.u32Value, 77u);
    }
}

void TestPreloadDevices::fpga_refuses_other_requests_data()
{
    QTest::addColumn<quint32>("request");
    QTest::newRow("before the first") << 0xc0086affu;
    QTest::newRow("behind the last") << 0xc0086b06u;
    QTest::newRow("another size") << 0xc0046b02u;
    QTest::newRow("the plain one's neighbour") << 0x20006b08u;
    QTest::newRow("of a terminal") << 0x5401u;
    QTest::newRow("of the other bus") << quint32(I2C_SMBUS);
}

void TestPreloadDevices::fpga_refuses_other_requests()
{
    QFETCH(quint32, request);
    SRecord cRecord = {0x00ff0000, 77};
    QCOMPARE(transfer(m_iFpga, request, cRecord), -1);
    QCOMPARE(errno, ENOTTY);
    QCOMPARE(cRecord.u32Value, 77u);
}

void TestPreloadDevices::fpga_request_may_come_as_an_int()
{
    (*m_pcBoard)->setFpgaRegister(0x00ff0004, 42);
    SRecord cRecord = {0x00ff0004, 0};
    const int iRequest = static_cast<int>(READ_32);
    QCOMPARE(::ioctl(m_iFpga, static_cast<unsigned long>(iRequest), &cRecord), 0);
    QCOMPARE(cRecord.u32Value, 42u);
}

void TestPreloadDevices::fpga_answers_the_plain_request()
{
    QCOMPARE(::ioctl(m_iFpga, PLAIN, 1), 0);
}

void TestPreloadDevices::fpga_needs_a_record()
{
    QCOMPARE(::ioctl(m_iFpga, READ_32, nullptr), -1);
    QCOMPARE(errno, EFAULT);
}

void TestPreloadDevices::fpga_memory_is_a_seekable_file()
{
    QCOMPARE(::lseek(m_iFpga, 0x300000, SEEK_SET), off_t(0x300000));
    QCOMPARE(::write(m_iFpga, "\x41\x18", 2), ssize_t(2));
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_CUR), off_t(0x300002));
    QCOMPARE((*m_pcBoard)->fpgaMemory(0x300000, 3), QByteArray("\x41\x18\x00", 3));
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_END), off_t(BOARD_FPGA_BYTES));
    char cByte = 0;
    QCOMPARE(::read(m_iFpga, &cByte, 1), ssize_t(0));
}

// A copy of a descriptor is the same open file, one that is opened again is another.
void TestPreloadDevices::fpga_positions_are_those_of_open_files()
{
    const int iCopy = ::dup(m_iFpga);
    const int iOther = m_pcBoard->openDevice(BOARD_FPGA);
    ::lseek(m_iFpga, 0x300000, SEEK_SET);
    QCOMPARE(::write(iCopy, "ab", 2), ssize_t(2));
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_CUR), off_t(0x300002));
    QCOMPARE(::lseek(iCopy, -1, SEEK_CUR), off_t(0x300001));
    char cByte = 0;
    QCOMPARE(::read(m_iFpga, &cByte, 1), ssize_t(1));
    QCOMPARE(cByte, 'b');
    QCOMPARE(::lseek(iOther, 0, SEEK_CUR), off_t(0));
    ::close(m_iFpga);
    QCOMPARE(::lseek(iCopy, 0, SEEK_CUR), off_t(0x300002));
    m_iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_CUR), off_t(0));
    ::close(iCopy);
    ::close(iOther);
}

void TestPreloadDevices::fpga_positions_are_shared_by_processes()
{
    ::lseek(m_iFpga, 0x300000, SEEK_SET);
    const pid_t iChild = ::fork();
    if (iChild == 0)
        ::_exit(::write(m_iFpga, "abc", 3) == 3 ? 0 : 1);
    int iStatus = -1;
    QCOMPARE(::waitpid(iChild, &iStatus, 0), iChild);
    QCOMPARE(iStatus, 0);
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_CUR), off_t(0x300003));
    QCOMPARE((*m_pcBoard)->fpgaMemory(0x300000, 3), QByteArray("abc"));
}

void TestPreloadDevices::fpga_positions_can_not_go_before_the_begin()
{
    ::lseek(m_iFpga, 5, SEEK_SET);
    for (const off_t iOffset :
         {off_t(-6), std::numeric_limits<off_t>::min(), std::numeric_limits<off_t>::max()}) {
        errno = 0;
        QCOMPARE(::lseek(m_iFpga, iOffset, SEEK_CUR), off_t(-1));
        QVERIFY(errno == EINVAL || errno == EOVERFLOW);
    }
    QCOMPARE(::lseek(m_iFpga, -1, SEEK_SET), off_t(-1));
    QCOMPARE(errno, EINVAL);
    QCOMPARE(::lseek(m_iFpga, 0, 77), off_t(-1));
    QCOMPARE(errno, EINVAL);
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_CUR), off_t(5));
}

// The library has a limited number of them, and leaves the others to the kernel.
void TestPreloadDevices::fpga_positions_work_however_many_files_were_opened()
{
    for (int i = 0; i < 300; ++i) {
        const int iFpga = m_pcBoard->openDevice(BOARD_FPGA);
        const char cWritten = static_cast<char>(i);
        char cRead = 0;
        QCOMPARE(::lseek(iFpga, 0x300000, SEEK_SET), off_t(0x300000));
        QCOMPARE(::write(iFpga, &cWritten, 1), ssize_t(1));
        QCOMPARE(::lseek(iFpga, -1, SEEK_CUR), off_t(0x300000));
        QCOMPARE(::read(iFpga, &cRead, 1), ssize_t(1));
        QCOMPARE(cRead, cWritten);
        QCOMPARE(::lseek(iFpga, 0, SEEK_CUR), off_t(0x300001));
        ::close(iFpga);
    }
}

void TestPreloadDevices::fpga_does_not_grow()
{
    ::lseek(m_iFpga, BOARD_FPGA_BYTES - 3, SEEK_SET);
    QCOMPARE(::write(m_iFpga, "abcdefgh", 8), ssize_t(3));
    QCOMPARE((*m_pcBoard)->fpgaMemory(BOARD_FPGA_BYTES - 3, 3), QByteArray("abc"));
    QCOMPARE(::write(m_iFpga, "d", 1), ssize_t(-1));
    QCOMPARE(errno, ENOSPC);
    QCOMPARE(::write(m_iFpga, "d", 0), ssize_t(0));
    QCOMPARE(::lseek(m_iFpga, 0, SEEK_END), off_t(BOARD_FPGA_BYTES));
}

// I2C

void TestPreloadDevices::i2c_reads_and_writes_chips_apart()
{
    quint8 u8Value = 0x08;
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x25), 0);
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_WRITE, 0x01, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE((*m_pcBoard)->i2cRegister(0x25, 0x01), quint8(0x08));
    QCOMPARE((*m_pcBoard)->i2cRegister(0x44, 0x01), quint8(0));
    (*m_pcBoard)->setI2cRegister(0x44, 0x7f, 0x99);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x44), 0);
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 0x7f, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0x99));
}

void TestPreloadDevices::i2c_slave_belongs_to_the_descriptor()
{
    const int iOther = m_pcBoard->openDevice(BOARD_I2C);
    (*m_pcBoard)->setI2cRegister(0x25, 5, 0x11);
    (*m_pcBoard)->setI2cRegister(0x44, 5, 0x22);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x25), 0);
    QCOMPARE(::ioctl(iOther, I2C_SLAVE, 0x44), 0);
    quint8 u8Value = 0;
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 5, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0x11));
    QCOMPARE(smbus(iOther, I2C_SMBUS_READ, 5, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0x22));
    ::close(iOther);
    const int iAgain = m_pcBoard->openDevice(BOARD_I2C);
    QCOMPARE(iAgain, iOther);
    QCOMPARE(smbus(iAgain, I2C_SMBUS_READ, 5, I2C_SMBUS_BYTE_DATA, u8Value), -1);
    QCOMPARE(errno, ENXIO);
    ::close(iAgain);
}

void TestPreloadDevices::i2c_refuses_large_addresses()
{
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x7f), 0);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x80), -1);
    QCOMPARE(errno, EINVAL);
}

void TestPreloadDevices::i2c_has_two_chips()
{
    for (unsigned uChip = 0; uChip < 128; ++uChip) {
        const bool bExists = uChip == 0x25 || uChip == 0x44;
        quint8 u8Value = 0x77;
        QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, uChip), 0);
        for (const int iDirection : {I2C_SMBUS_READ, I2C_SMBUS_WRITE}) {
            QCOMPARE(smbus(m_iI2c, iDirection, 0x10, I2C_SMBUS_BYTE_DATA, u8Value), bExists ? 0 : -1);
            QCOMPARE(errno, bExists ? UNTOUCHED : ENXIO);
        }
    }
}

void TestPreloadDevices::i2c_transfers_bytes_only()
{
    ::ioctl(m_iI2c, I2C_SLAVE, 0x25);
    for (quint32 u32Size = 0; u32Size < 10; ++u32Size) {
        quint8 u8Value = 0;
        const bool bByte = u32Size == I2C_SMBUS_BYTE_DATA;
        QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 0, u32Size, u8Value), bByte ? 0 : -1);
        QCOMPARE(errno, bByte ? UNTOUCHED : EOPNOTSUPP);
    }
    QCOMPARE(::ioctl(m_iI2c, I2C_RDWR, nullptr), -1);
    QCOMPARE(errno, ENOTTY);
}

void TestPreloadDevices::i2c_needs_data()
{
    ::ioctl(m_iI2c, I2C_SLAVE, 0x25);
    i2c_smbus_ioctl_data cTransfer = {I2C_SMBUS_READ, 0, I2C_SMBUS_BYTE_DATA, nullptr};
    QCOMPARE(::ioctl(m_iI2c, I2C_SMBUS, &cTransfer), -1);
    QCOMPARE(errno, EFAULT);
    QCOMPARE(::ioctl(m_iI2c, I2C_SMBUS, nullptr), -1);
    QCOMPARE(errno, EFAULT);
}

// No halden-camera lives for the frames.
void TestPreloadDevices::i2c_decoder_status_tells_that_the_source_is_gone()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    quint8 u8Value = 0;
    QCOMPARE(ioctl(m_iI2c, I2C_SLAVE, 0x25), 0);
    rcBoard.setCameraFrames();
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 0x1f, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0x40));
    QCOMPARE(errno, UNTOUCHED);
    rcBoard.setMovingCamera();
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 0x1f, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0));
}

void TestPreloadDevices::i2c_decoder_status_can_only_be_read()
{
    (*m_pcBoard)->setCameraPlugged(false);
    ::ioctl(m_iI2c, I2C_SLAVE, 0x25);
    quint8 u8Value = 0;
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_WRITE, 0x1f, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(smbus(m_iI2c, I2C_SMBUS_READ, 0x1f, I2C_SMBUS_BYTE_DATA, u8Value), 0);
    QCOMPARE(u8Value, quint8(0x40));
}

void TestPreloadDevices::i2c_has_no_plain_transfers()
{
    char cByte = 0;
    QCOMPARE(::read(m_iI2c, &cByte, 1), ssize_t(-1));
    QCOMPARE(errno, EOPNOTSUPP);
    QCOMPARE(::write(m_iI2c, &cByte, 1), ssize_t(-1));
    QCOMPARE(errno, EOPNOTSUPP);
    QCOMPARE(::lseek(m_iI2c, 0, SEEK_SET), off_t(-1));
    QCOMPARE(errno, ESPIPE);
}

// Lime

void TestPreloadDevices::lime_is_mapped()
{
    void* pvMap = ::mmap(nullptr, board_lime_bytes(), PROT_READ | PROT_WRITE, MAP_SHARED, m_iLime, 0);
    QVERIFY(pvMap != MAP_FAILED);
    auto* pu32Register =
        reinterpret_cast<volatile quint32*>(static_cast<char*>(pvMap) + LIME_DISP_WINDOW + 0x184);
    *pu32Register = 0x00ff8000;
    QCOMPARE((*m_pcBoard)->limeRegister(CBoard::LIME_DISPLAY, 0x184), 0x00ff8000u);
    (*m_pcBoard)->setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x123456);
    QCOMPARE(quint32(*pu32Register), 0x123456u);
    QCOMPARE(::munmap(pvMap, board_lime_bytes()), 0);
}

void TestPreloadDevices::lime_refuses_requests()
{
    QCOMPARE(::ioctl(m_iLime, READ_32, nullptr), -1);
    QCOMPARE(errno, ENOTTY);
}

// Trace

void TestPreloadDevices::trace_of_the_fpga()
{
    (*m_pcBoard)->setTracing(true);
    const int iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    SRecord cRecord = {0x00ff0000, 0x00820002};
    transfer(iFpga, WRITE_32, cRecord);
    transfer(iFpga, READ_32, cRecord);
    transfer(iFpga, READ_16, cRecord);
    transfer(iFpga, READ_8, cRecord);
    transfer(iFpga, WRITE_16, cRecord);
    transfer(iFpga, WRITE_8, cRecord);
    cRecord.u32Address = 0xfffffffe;
    transfer(iFpga, READ_32, cRecord);
    cRecord.u32Value = 0xabcd;
    transfer(iFpga, WRITE_16, cRecord);
    transfer(iFpga, PLAIN, cRecord);
    transfer(iFpga, 0x1234, cRecord);
    ::lseek(iFpga, 0x300000, SEEK_SET);
    QCOMPARE(::write(iFpga, "\x41\x18", 2), ssize_t(2));
    ::lseek(iFpga, -2, SEEK_CUR);
    char aBytes[4];
    QCOMPARE(::read(iFpga, aBytes, 4), ssize_t(4));
    ::lseek(iFpga, 0, SEEK_END);
    QCOMPARE(::read(iFpga, aBytes, 4), ssize_t(0));
    ::lseek(iFpga, -1, SEEK_SET);
    ::close(iFpga);
    QCOMPARE(m_pcBoard->takeTrace(),
             QStringList({"fpga open = N", "fpga write32 0x00ff0000 0x00820002",
                          "fpga read32 0x00ff0000 = 0x00820002", "fpga read16 0x00ff0000 = 0x0002",
                          "fpga read8 0x00ff0000 = 0x02", "fpga write16 0x00ff0000 0x0002",
                          "fpga write8 0x00ff0000 0x02", "fpga read32 0xfffffffe ! EINVAL",
                          "fpga write16 0xfffffffe 0xabcd ! EINVAL", "fpga ioctl 0x20006b07",
                          "fpga ioctl 0x00001234 ! ENOTTY", "fpga seek 0x00300000",
                          "fpga write 2 = 2 : 41 18", "fpga seek 0x00300000", "fpga read 4 = 4 : 41 18 00 00",
                          "fpga seek 0x01195000", "fpga read 4 = 0", "fpga seek -1 ! EINVAL", "fpga close"}));
}

void TestPreloadDevices::trace_of_i2c()
{
    (*m_pcBoard)->setTracing(true);
    const int iI2c = m_pcBoard->openDevice(BOARD_I2C);
    quint8 u8Value = 0x08;
    ::ioctl(iI2c, I2C_SLAVE, 0x80);
    ::ioctl(iI2c, I2C_SLAVE, 0x25);
    smbus(iI2c, I2C_SMBUS_READ, 0x1f, I2C_SMBUS_BYTE_DATA, u8Value);
    u8Value = 0x08;
    smbus(iI2c, I2C_SMBUS_WRITE, 0x01, I2C_SMBUS_BYTE_DATA, u8Value);
    smbus(iI2c, I2C_SMBUS_READ, 0x01, I2C_SMBUS_WORD_DATA, u8Value);
    ::ioctl(iI2c, I2C_SLAVE, 0x26);
    smbus(iI2c, I2C_SMBUS_READ, 0x01, I2C_SMBUS_BYTE_DATA, u8Value);
    smbus(iI2c, I2C_SMBUS_WRITE, 0x01, I2C_SMBUS_BYTE_DATA, u8Value);
    ::ioctl(iI2c, I2C_FUNCS, nullptr);
    QCOMPARE(::write(iI2c, "a", 1), ssize_t(-1));
    ::close(iI2c);
    QCOMPARE(m_pcBoard->takeTrace(),
             QStringList({"i2c open = N", "i2c slave 0x80 ! EINVAL", "i2c slave 0x25", "i2c read 0x1f = 0x00",
                          "i2c write 0x01 0x08", "i2c transfer 0x03 ! EOPNOTSUPP", "i2c slave 0x26",
                          "i2c read 0x01 ! ENXIO", "i2c write 0x01 0x08 ! ENXIO",
                          "i2c ioctl 0x00000705 ! ENOTTY", "i2c send 1 ! EOPNOTSUPP", "i2c close"}));
}

void TestPreloadDevices::trace_of_the_lime()
{
    (*m_pcBoard)->setTracing(true);
    const int iLime = m_pcBoard->openDevice(BOARD_LIME);
    void* pvMap = ::mmap(nullptr, 4096, PROT_READ, MAP_SHARED, iLime, 0);
    QVERIFY(pvMap != MAP_FAILED);
    QCOMPARE(::mmap(nullptr, 0, PROT_READ, MAP_SHARED, iLime, 0), MAP_FAILED);
    ::close(iLime);
    ::munmap(pvMap, 4096);
    QCOMPARE(m_pcBoard->takeTrace(),
             QStringList({"lime open = N", "lime map 4096", "lime map 0 ! EINVAL", "lime close"}));
}

void TestPreloadDevices::trace_shows_the_first_bytes()
{
    (*m_pcBoard)->setTracing(true);
    QCOMPARE(::write(m_iFpga, "0123456789abcdef", 16), ssize_t(16));
    QCOMPARE(::write(m_iFpga, "0123456789abcdefg", 17), ssize_t(17));
    QCOMPARE(m_pcBoard->takeTrace(),
             QStringList({"fpga write 16 = 16 : 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66",
                          "fpga write 17 = 17 : 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66 ..."}));
}

void TestPreloadDevices::trace_is_off_at_first()
{
    SRecord cRecord = {0x00ff0000, 0};
    transfer(m_iFpga, READ_32, cRecord);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
    (*m_pcBoard)->setTracing(true);
    transfer(m_iFpga, READ_32, cRecord);
    (*m_pcBoard)->setTracing(false);
    transfer(m_iFpga, READ_32, cRecord);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList({"fpga read32 0x00ff0000 = 0x00000000"}));
}

// Descriptors

void TestPreloadDevices::success_leaves_errno_alone()
{
    (*m_pcBoard)->setTracing(true);
    errno = UNTOUCHED;
    const int iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    QCOMPARE(errno, UNTOUCHED);
    SRecord cRecord = {0x00ff0000, 1};
    QCOMPARE(transfer(iFpga, WRITE_32, cRecord), 0);
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(transfer(iFpga, READ_32, cRecord), 0);
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(::lseek(iFpga, 8, SEEK_SET), off_t(8));
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(::write(iFpga, "a", 1), ssize_t(1));
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(::read(iFpga, &cRecord, 1), ssize_t(1));
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x25), 0);
    QCOMPARE(errno, UNTOUCHED);
    QCOMPARE(::close(iFpga), 0);
    QCOMPARE(errno, UNTOUCHED);
}

void TestPreloadDevices::copies_of_a_descriptor_are_the_device()
{
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x44), 0);
    (*m_pcBoard)->setI2cRegister(0x44, 1, 0x5a);
    const int iSpare = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    const QVector<int> cCopies = {::dup(m_iI2c), ::dup2(m_iI2c, iSpare),
                                  ::fcntl(m_iI2c, F_DUPFD_CLOEXEC, 10)};
    for (const int iCopy : cCopies) {
        quint8 u8Value = 0;
        QVERIFY(iCopy >= 0);
        QCOMPARE(smbus(iCopy, I2C_SMBUS_READ, 1, I2C_SMBUS_BYTE_DATA, u8Value), 0);
        QCOMPARE(u8Value, quint8(0x5a));
        ::close(iCopy);
    }
}

void TestPreloadDevices::a_closed_descriptor_is_forgotten()
{
    const int iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    ::close(iFpga);
    SRecord cRecord = {0x00ff0000, 1};
    QCOMPARE(transfer(iFpga, READ_32, cRecord), -1);
    QCOMPARE(errno, kernelsError(iFpga, READ_32, &cRecord));
    const int iOther = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    QCOMPARE(iOther, iFpga);
    QCOMPARE(transfer(iOther, READ_32, cRecord), -1);
    QCOMPARE(errno, kernelsError(iOther, READ_32, &cRecord));
    QCOMPARE(::write(iOther, "gone", 4), ssize_t(4));
    QCOMPARE((*m_pcBoard)->fpgaMemory(0, 4), QByteArray(4, '\0'));
    ::close(iOther);
}

void TestPreloadDevices::other_paths_to_a_device_are_the_device()
{
    const QByteArray cLink = (*m_pcBoard)->path("link").toLocal8Bit();
    QCOMPARE(::symlink(BOARD_FPGA, cLink.constData()), 0);
    const int iFpga = ::openat(AT_FDCWD, cLink.constData(), O_RDWR | O_CLOEXEC);
    SRecord cRecord = {0x00ff0000, 0};
    QCOMPARE(transfer(iFpga, READ_32, cRecord), 0);
    ::close(iFpga);
}

void TestPreloadDevices::other_files_are_left_alone()
{
    (*m_pcBoard)->setTracing(true);
    QFile cFile((*m_pcBoard)->path("other"));
    QVERIFY(cFile.open(QIODevice::ReadWrite));
    QCOMPARE(cFile.write("some text"), qint64(9));
    QVERIFY(cFile.seek(5));
    QCOMPARE(cFile.read(4), QByteArray("text"));
    SRecord cRecord = {0x00ff0000, 0};
    QCOMPARE(transfer(cFile.handle(), READ_32, cRecord), -1);
    QCOMPARE(errno, kernelsError(cFile.handle(), READ_32, &cRecord));
    cFile.close();
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

QTEST_GUILESS_MAIN(TestPreloadDevices)
#include "tst_preload_devices.moc"
