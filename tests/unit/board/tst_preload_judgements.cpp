/* SPDX-License-Identifier: MIT */
/* The operations that the board notes because no program for it may do them, and that it notes nothing
 * else. */
#include "board/judge/CJudgements.h"
#include "tests/support/CAttachedBoard.h"
#include "tests/support/Judgements.h"
#include "tests/support/KernelsError.h"

#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

static const quint32 READ_8 = 0xc0086b00;
static const quint32 READ_16 = 0xc0086b01;
static const quint32 READ_32 = 0xc0086b02;
static const quint32 WRITE_8 = 0xc0086b03;
static const quint32 WRITE_32 = 0xc0086b05;

class TestPreloadJudgements : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void registers_of_the_fpga_data();
    void registers_of_the_fpga();
    void blocks_of_the_fpga_data();
    void blocks_of_the_fpga();
    void a_failed_seek_leads_astray();
    void requests_to_the_fpga();
    void bytes_of_the_i2c_chips_data();
    void bytes_of_the_i2c_chips();
    void requests_to_the_i2c_bus();
    void requests_to_the_display_controller();
    void words_in_the_display_controller_data();
    void words_in_the_display_controller();
    void closed_devices();
    void numbers_that_others_got_since();
    void what_a_fault_makes_fail_is_not_judged();
    void each_is_said_once();
    void the_file_stops_growing();
    void tests_compare_them_with_what_they_announced();

private:
    int transfer(quint32 u32Request, quint32 u32Address, quint32 u32Value = 0);
    int smbus(quint8 u8Direction, quint8 u8Sub, quint32 u32Size = I2C_SMBUS_BYTE_DATA);
    QStringList takeJudgements();

    QScopedPointer<CAttachedBoard> m_pcBoard;
    int m_iFpga = -1;
    int m_iI2c = -1;
};

void TestPreloadJudgements::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_iFpga = m_pcBoard->openDevice(BOARD_FPGA);
    m_iI2c = m_pcBoard->openDevice(BOARD_I2C);
    QVERIFY(m_iFpga >= 0 && m_iI2c >= 0);
}

void TestPreloadJudgements::cleanup()
{
    ::close(m_iFpga);
    ::close(m_iI2c);
    m_pcBoard.reset();
}

int TestPreloadJudgements::transfer(quint32 u32Request, quint32 u32Address, quint32 u32Value)
{
    quint32 au32Record[2] = {u32Address, u32Value};
    return ::ioctl(m_iFpga, u32Request, au32Record);
}

int TestPreloadJudgements::smbus(quint8 u8Direction, quint8 u8Sub, quint32 u32Size)
{
    i2c_smbus_data uData = {};
    i2c_smbus_ioctl_data cTransfer = {u8Direction, u8Sub, u32Size, &uData};
    return ::ioctl(m_iI2c, I2C_SMBUS, &cTransfer);
}

QStringList TestPreloadJudgements::takeJudgements()
{
    QStringList cLines = CJudgements::of(**m_pcBoard);
    (*m_pcBoard)->clearJudgements();
    return cLines;
}

/// An empty line: nothing is wrong.
static QStringList lines(const QString& rcLine)
{
    return rcLine.isEmpty() ? QStringList() : QStringList(rcLine);
}

void TestPreloadJudgements::registers_of_the_fpga_data()
{
    QTest::addColumn<quint32>("request");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("line");
    for (const quint32 u32Address :
         {0xff0000u, 0xff0004u, 0xff0008u, 0xff000cu, 0xff0a00u, 0xff0a04u, 0xff0a08u, 0xff0a0cu, 0xff1008u,
          0xff1400u, 0xff17fcu, 0xff1800u, 0xff187cu, 0xff1a00u, 0xff1a04u, 0xff1a08u, 0xff1a0cu}) {
        QTest::addRow("read %x", u32Address) << READ_32 << u32Address << 0xffffffffu << "";
        QTest::addRow("write %x", u32Address) << WRITE_32 << u32Address << 0x00000001u << "";
    }
    QTest::newRow("declared bits") << WRITE_32 << 0xff0000u << 0x03971f1fu << "";
    QTest::newRow("an undeclared bit") << WRITE_32 << 0xff0000u << 0x0080000au + 0x40u
                                       << "fpga write32 0x00ff0000 0x0080004a: undeclared bits 0x00000040";
    QTest::newRow("text page") << WRITE_32 << 0xff1a0cu << 0x00307000u << "";
    QTest::newRow("no text page") << WRITE_32 << 0xff1a0cu << 0x01000000u
                                  << "fpga write32 0x00ff1a0c 0x01000000: undeclared bits 0x01000000";
    QTest::newRow("colour") << WRITE_32 << 0xff1800u << 0xffffffffu << "";
    QTest::newRow("read of none") << READ_32 << 0xff0010u << 0u << "fpga read32 0x00ff0010: no such register";
    QTest::newRow("write of none") << WRITE_32 << 0xff0010u << 0u
                                   << "fpga write32 0x00ff0010: no such register";
    QTest::newRow("behind the palettes")
        << READ_32 << 0xff1880u << 0u << "fpga read32 0x00ff1880: no such register";
    QTest::newRow("behind the last") << READ_32 << 0xff1a10u << 0u
                                     << "fpga read32 0x00ff1a10: no such register";
    QTest::newRow("below the first") << WRITE_32 << 0xfefffcu << 0u
                                     << "fpga write32 0x00fefffc: no such register";
    QTest::newRow("memory") << READ_32 << 0x300000u << 0u << "fpga read32 0x00300000: no such register";
    QTest::newRow("beyond the device")
        << READ_32 << 0xfffffffcu << 0u << "fpga read32 0xfffffffc: no such register";
    QTest::newRow("8 bits") << WRITE_8 << 0xff0000u << 0u << "fpga write8 0x00ff0000: not 32 bits wide";
    QTest::newRow("read of 8 bits") << READ_8 << 0xff1a04u << 0u << "fpga read8 0x00ff1a04: not 32 bits wide";
    QTest::newRow("16 bits") << READ_16 << 0xff0000u << 0u << "fpga read16 0x00ff0000: not 32 bits wide";
    QTest::newRow("unaligned") << READ_32 << 0xff0002u << 0u << "fpga read32 0x00ff0002: not aligned";
    QTest::newRow("unaligned colour")
        << WRITE_32 << 0xff1401u << 0u << "fpga write32 0x00ff1401: not aligned";
}

void TestPreloadJudgements::registers_of_the_fpga()
{
    QFETCH(quint32, request);
    QFETCH(quint32, address);
    QFETCH(quint32, value);
    QFETCH(QString, line);
    transfer(request, address, value);
    QCOMPARE(takeJudgements(), lines(line));
}

void TestPreloadJudgements::blocks_of_the_fpga_data()
{
    QTest::addColumn<quint32>("begin");
    QTest::addColumn<quint32>("end");
    QTest::newRow("graphic pages") << 0x000000u << 0x1cd400u;
    QTest::newRow("glyphs") << 0x200000u << 0x204000u;
    QTest::newRow("text pages") << 0x300000u << 0x307e00u;
    QTest::newRow("cursor image") << 0xff0800u << 0xff0a00u;
    QTest::newRow("palettes") << 0xff1400u << 0xff1880u;
    QTest::newRow("video image") << 0x1000000u << 0x1195000u;
}

void TestPreloadJudgements::blocks_of_the_fpga()
{
    QFETCH(quint32, begin);
    QFETCH(quint32, end);
    QByteArray cBlock(static_cast<int>(end - begin), '\1');
    const auto write = [this, &cBlock](quint32 u32Offset, quint32 u32Bytes) {
        ::lseek(m_iFpga, u32Offset, SEEK_SET);
        return ::write(m_iFpga, cBlock.constData(), u32Bytes) == static_cast<ssize_t>(u32Bytes);
    };
    const auto read = [this, &cBlock](quint32 u32Offset, quint32 u32Bytes) {
        ::lseek(m_iFpga, u32Offset, SEEK_SET);
        return ::read(m_iFpga, cBlock.data(), u32Bytes) == static_cast<ssize_t>(u32Bytes);
    };
    const auto line = [](const char* pszOperation, quint32 u32Offset, int iBytes) {
        return QStringLiteral("fpga %1 0x%2 %3: not all of it is memory")
            .arg(QLatin1String(pszOperation))
            .arg(u32Offset, 8, 16, QLatin1Char('0'))
            .arg(iBytes);
    };
    QVERIFY(write(begin, end - begin) && read(begin, end - begin) && write(end - 1, 1));
    write(end, 0);
    QCOMPARE(takeJudgements(), QStringList());
    write(end - 1, 2);
    write(end, 1);
    read(end - 1, 2);
    read(end, 1);
    QCOMPARE(takeJudgements(), QStringList({line("write", end - 1, 2), line("write", end, 1),
                                            line("read", end - 1, 2), line("read", end, 1)}));
    if (begin == 0)
        return;
    write(begin - 1, 2);
    read(begin - 1, 1);
    QCOMPARE(takeJudgements(), QStringList({line("write", begin - 1, 2), line("read", begin - 1, 1)}));
}

/// The actual position counts, not the requested one.
void TestPreloadJudgements::a_failed_seek_leads_astray()
{
    ::lseek(m_iFpga, 0x307dff, SEEK_SET);
    QCOMPARE(::write(m_iFpga, "a", 1), ssize_t(1));
    CBoard::SFault cFault;
    cFault.eOperation = BOARD_OPERATION_FPGA_SEEK;
    (*m_pcBoard)->setFault(cFault);
    ::lseek(m_iFpga, 0x300000, SEEK_SET);
    QCOMPARE(::write(m_iFpga, "a", 1), ssize_t(1));
    QCOMPARE(takeJudgements(), QStringList("fpga write 0x00307e00 1: not all of it is memory"));
}

void TestPreloadJudgements::requests_to_the_fpga()
{
    QCOMPARE(::ioctl(m_iFpga, 0x20006b07, nullptr), 0);
    QCOMPARE(takeJudgements(), QStringList());
    transfer(0xc0086b06, 0xff0000);
    ::ioctl(m_iFpga, READ_32, nullptr);
    QCOMPARE(takeJudgements(), QStringList({"fpga ioctl 0xc0086b06: no such request",
                                            "fpga ioctl 0xc0086b02: its record is missing"}));
}

void TestPreloadJudgements::bytes_of_the_i2c_chips_data()
{
    QTest::addColumn<uint>("chip");
    QTest::addColumn<QVector<uint>>("registers");
    QTest::addColumn<QVector<uint>>("none");
    QTest::newRow("decoder") << 0x25u << QVector<uint>{0x00, 0x17, 0x1f, 0x40, 0x58, 0x5b, 0x5e}
                             << QVector<uint>{0x18, 0x1e, 0x20, 0x3f, 0x41, 0x57, 0x5c, 0x5d, 0x5f, 0xff};
    QTest::newRow("encoder") << 0x44u << QVector<uint>{0x26, 0x2d, 0x38, 0x3a, 0x42, 0x7f}
                             << QVector<uint>{0x00, 0x25, 0x2e, 0x37, 0x3b, 0x41, 0x80};
}

void TestPreloadJudgements::bytes_of_the_i2c_chips()
{
    QFETCH(uint, chip);
    QFETCH(QVector<uint>, registers);
    QFETCH(QVector<uint>, none);
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, chip), 0);
    for (const uint uiSub : registers)
        QVERIFY(smbus(I2C_SMBUS_READ, static_cast<quint8>(uiSub)) == 0 &&
                smbus(I2C_SMBUS_WRITE, static_cast<quint8>(uiSub)) == 0);
    QCOMPARE(takeJudgements(), QStringList());
    for (const uint uiSub : none) {
        smbus(I2C_SMBUS_READ, static_cast<quint8>(uiSub));
        smbus(I2C_SMBUS_WRITE, static_cast<quint8>(uiSub));
        const QString cPlace = QStringLiteral("0x%1 0x%2: no such register")
                                   .arg(chip, 2, 16, QLatin1Char('0'))
                                   .arg(uiSub, 2, 16, QLatin1Char('0'));
        QCOMPARE(takeJudgements(), QStringList({"i2c read " + cPlace, "i2c write " + cPlace}));
    }
}

void TestPreloadJudgements::requests_to_the_i2c_bus()
{
    smbus(I2C_SMBUS_READ, 0x01);
    ::ioctl(m_iI2c, I2C_SLAVE, 0x26);
    smbus(I2C_SMBUS_WRITE, 0x01);
    ::ioctl(m_iI2c, I2C_SLAVE, 0x80);
    ::ioctl(m_iI2c, I2C_SLAVE, 0x25);
    smbus(I2C_SMBUS_READ, 0x01, I2C_SMBUS_WORD_DATA);
    ::ioctl(m_iI2c, I2C_SMBUS, nullptr);
    ::ioctl(m_iI2c, I2C_FUNCS, nullptr);
    char cByte = 0;
    ::lseek(m_iI2c, 0, SEEK_SET);
    QCOMPARE(::read(m_iI2c, &cByte, 1), ssize_t(-1));
    QCOMPARE(::write(m_iI2c, &cByte, 1), ssize_t(-1));
    QCOMPARE(takeJudgements(),
             QStringList({"i2c read 0x00 0x01: no chip chosen", "i2c write 0x26 0x01: no such chip",
                          "i2c slave 0x80: no such address", "i2c transfer 0x03: no such size",
                          "i2c ioctl 0x00000720: its record is missing",
                          "i2c ioctl 0x00000705: no such request", "i2c seek: no such operation",
                          "i2c receive: no such operation", "i2c send: no such operation"}));
}

void TestPreloadJudgements::requests_to_the_display_controller()
{
    const int iLime = m_pcBoard->openDevice(BOARD_LIME);
    ::ioctl(iLime, READ_32, nullptr);
    ::close(iLime);
    QCOMPARE(takeJudgements(), QStringList("lime ioctl 0xc0086b02: no such request"));
}

Q_DECLARE_METATYPE(CBoard::ELimeWindow)

void TestPreloadJudgements::words_in_the_display_controller_data()
{
    QTest::addColumn<CBoard::ELimeWindow>("window");
    QTest::addColumn<quint32>("offset");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("line");
    QTest::newRow("capture scale") << CBoard::LIME_CAPTURE << 4u << 0xffffffffu << "";
    QTest::newRow("last of capture") << CBoard::LIME_CAPTURE << 0x4004u << 0x1fff1fffu << "";
    QTest::newRow("layer 5") << CBoard::LIME_DISPLAY << 0x1b4u << 0x80000000u << "";
    QTest::newRow("layer 5's colour") << CBoard::LIME_DISPLAY << 0x1b4u << 0x80000001u
                                      << "lime display 0x000001b4 0x80000001: undeclared bits 0x00000001";
    QTest::newRow("position") << CBoard::LIME_DISPLAY << 0x124u << 0xffff0001u
                              << "lime display 0x00000124 0xffff0001: undeclared bits 0xf0000000";
    QTest::newRow("none in display") << CBoard::LIME_DISPLAY << 0x1b8u << 1u
                                     << "lime display 0x000001b8 0x00000001: no such register";
    QTest::newRow("last word of display")
        << CBoard::LIME_DISPLAY << 0x7ffcu << 1u << "lime display 0x00007ffc 0x00000001: no such register";
    QTest::newRow("last word of capture")
        << CBoard::LIME_CAPTURE << 0x17ffcu << 1u << "lime capture 0x00017ffc 0x00000001: no such register";
    QTest::newRow("host") << CBoard::LIME_HOST << 0u << 1u
                          << "lime host 0x00000000 0x00000001: no such register";
    QTest::newRow("draw") << CBoard::LIME_DRAW << 0x20u << 1u
                          << "lime draw 0x00000020 0x00000001: no such register";
    QTest::newRow("pio") << CBoard::LIME_PIO << 0x7ffcu << 0xffffffffu
                         << "lime pio 0x00007ffc 0xffffffff: no such register";
}

void TestPreloadJudgements::words_in_the_display_controller()
{
    QFETCH(CBoard::ELimeWindow, window);
    QFETCH(quint32, offset);
    QFETCH(quint32, value);
    QFETCH(QString, line);
    const int iLime = m_pcBoard->openDevice(BOARD_LIME);
    void* pvMap = ::mmap(nullptr, board_lime_bytes(), PROT_READ | PROT_WRITE, MAP_SHARED, iLime, 0);
    ::close(iLime);
    QVERIFY(pvMap != MAP_FAILED);
    auto* pu32Word = reinterpret_cast<volatile quint32*>(static_cast<char*>(pvMap) + window + offset);
    *pu32Word = value;
    QCOMPARE(takeJudgements(), lines(line));
    // It can't be forgotten while the word is there.
    QCOMPARE(takeJudgements(), lines(line));
    *pu32Word = 0;
    ::munmap(pvMap, board_lime_bytes());
    QCOMPARE(takeJudgements(), QStringList());
}

void TestPreloadJudgements::closed_devices()
{
    const int iClosed = m_pcBoard->openDevice(BOARD_FPGA);
    ::close(iClosed);
    quint32 au32Record[2] = {0xff0000, 0};
    QCOMPARE(::ioctl(iClosed, READ_32, au32Record), -1);
    QCOMPARE(errno, kernelsError(iClosed, READ_32, au32Record));
    QCOMPARE(::lseek(iClosed, 0, SEEK_SET), off_t(-1));
    QCOMPARE(::read(iClosed, au32Record, 1), ssize_t(-1));
    QCOMPARE(::write(iClosed, au32Record, 1), ssize_t(-1));
    QCOMPARE(::mmap(nullptr, 1, PROT_READ, MAP_SHARED, iClosed, 0), MAP_FAILED);
    QCOMPARE(::close(iClosed), -1);
    QCOMPARE(errno, EBADF);
    QCOMPARE(takeJudgements(), QStringList({"fpga ioctl: closed before", "fpga seek: closed before",
                                            "fpga read: closed before", "fpga write: closed before",
                                            "fpga map: closed before", "fpga close: closed before"}));
    QCOMPARE(::ioctl(-1, READ_32, au32Record), -1);
    QCOMPARE(takeJudgements(), QStringList());
}

void TestPreloadJudgements::numbers_that_others_got_since()
{
    const int iClosed = m_pcBoard->openDevice(BOARD_I2C);
    ::close(iClosed);
    // By a call that the library doesn't see.
    int aiPipe[2];
    QCOMPARE(::pipe2(aiPipe, O_CLOEXEC), 0);
    QCOMPARE(aiPipe[0], iClosed);
    QCOMPARE(::write(aiPipe[1], "a", 1), ssize_t(1));
    char cByte = 0;
    QCOMPARE(::read(aiPipe[0], &cByte, 1), ssize_t(1));
    ::close(aiPipe[0]);
    ::close(aiPipe[1]);
    QCOMPARE(::read(aiPipe[0], &cByte, 1), ssize_t(-1));
    QCOMPARE(takeJudgements(), QStringList());
}

void TestPreloadJudgements::what_a_fault_makes_fail_is_not_judged()
{
    for (const board_operation eOperation : {BOARD_OPERATION_FPGA_IOCTL_READ, BOARD_OPERATION_FPGA_WRITE,
                                             BOARD_OPERATION_I2C_READ, BOARD_OPERATION_I2C_SLAVE}) {
        CBoard::SFault cFault;
        cFault.eOperation = eOperation;
        (*m_pcBoard)->setFault(cFault);
    }
    QCOMPARE(transfer(READ_32, 0xff0010), -1);
    ::lseek(m_iFpga, 0x400000, SEEK_SET);
    QCOMPARE(::write(m_iFpga, "a", 1), ssize_t(-1));
    QCOMPARE(::ioctl(m_iI2c, I2C_SLAVE, 0x80), -1);
    QCOMPARE(smbus(I2C_SMBUS_READ, 0x01), -1);
    QCOMPARE(takeJudgements(), QStringList());
}

void TestPreloadJudgements::each_is_said_once()
{
    for (int i = 0; i < 3; ++i) {
        transfer(WRITE_32, 0xff0010, static_cast<quint32>(i));
        transfer(READ_32, 0xff0014);
    }
    QCOMPARE(takeJudgements(), QStringList({"fpga write32 0x00ff0010: no such register",
                                            "fpga read32 0x00ff0014: no such register"}));
}

void TestPreloadJudgements::the_file_stops_growing()
{
    for (quint32 i = 0; i < 4000; ++i)
        transfer(READ_32, 0xfe0000 + 4 * i);
    const qint64 iBytes = QFileInfo((*m_pcBoard)->path(BOARD_JUDGEMENTS)).size();
    QVERIFY2(iBytes >= 65536 && iBytes < 65536 + 100, qPrintable(QString::number(iBytes)));
    QCOMPARE(takeJudgements().first(), QStringLiteral("fpga read32 0x00fe0000: no such register"));
}

void TestPreloadJudgements::tests_compare_them_with_what_they_announced()
{
    CBoard& rcBoard = **m_pcBoard;
    const QString cFirst = QStringLiteral("fpga read32 0x00ff0010: no such register");
    const QString cSecond = QStringLiteral("fpga read32 0x00ff0014: no such register");
    QCOMPARE(differenceFromAnnounced(rcBoard, {}), QString());
    QCOMPARE(differenceFromAnnounced(rcBoard, {cFirst}),
             QStringLiteral("announced, but not judged: ") + cFirst);
    transfer(READ_32, 0xff0010);
    transfer(READ_32, 0xff0014);
    QCOMPARE(differenceFromAnnounced(rcBoard, {cFirst}), QStringLiteral("judged: ") + cSecond);
    QCOMPARE(differenceFromAnnounced(rcBoard, {}), QString());
    transfer(READ_32, 0xff0010);
    QCOMPARE(differenceFromAnnounced(rcBoard, {cFirst}), QString());
    // The object's own end is the same: this one passes because it is announced.
    transfer(READ_32, 0xff0014);
    m_pcBoard->announceJudgement(cSecond);
}

QTEST_GUILESS_MAIN(TestPreloadJudgements)
#include "tst_preload_judgements.moc"
