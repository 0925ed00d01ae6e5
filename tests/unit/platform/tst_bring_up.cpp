/* SPDX-License-Identifier: MIT */
/* A bring-up from the default register files: every call and every store on the devices, in number and order.
 * The display controller's stores are recorded, all others are traced on a virtual board. */
#include "daemon/CEventLogger.h"
#include "fpga/font.h"
#include "fpga/screen.h"
#include "hw/lime_mmio.h"
#include "platform/CMultimediaPlatform.h"
#include "tests/support/CPlatformBoard.h"
#include "tests/support/hw/lime_recorder.h"

#include <QFile>
#include <QtTest>

#include <vector>

using accesses = std::vector<lime_access>;

class TestBringUp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void files_that_name_nothing_leave_fpga_and_display_controller_alone();
    void device_calls_are_those_of_each_step_in_order();
    void a_reload_opens_the_devices_anew_beside_the_old_ones();

private:
    QScopedPointer<CPlatformBoard> m_pcBoard;
};

/// A register of a chip on the I2C bus and the value written to it.
struct SI2CWrite {
    unsigned int uSub;
    unsigned int uValue;
};

// All of the decoder's registers but the version, which is read-only.
static const SI2CWrite DECODER[] = {
    {0x01, 0x08},
    {0x02, 0xc0},
    {0x03, 0x23},
    {0x04, 0x00},
    {0x05, 0x00},
    {0x06, 0xe9},
    {0x07, 0x0d},
    {0x08, 0x98},
    {0x09, 0x01},
    {0x0a, 0x7d},
    {0x0b, 0x47},
    {0x0c, 0x7e},
    {0x0d, 0x00},
    {0x0e, 0x01},
    {0x0f, 0xaa},
    {0x10, 0x00},
    {0x11, 0x1c},
    {0x12, 0x01},
    {0x13, 0x00},
    {0x14, 0x00},
    {0x15, 0x00},
    {0x16, 0x00},
    {0x17, 0x00},
    {0x1f, 0x00},
    {0x40, 0x02},
    {0x58, 0x00},
    {0x59, 0x54},
    {0x5a, 0x07},
    {0x5b, 0x83},
    {0x5e, 0x00},
};

static const SI2CWrite ENCODER[] = {
    {0x26, 0x0d},
    {0x27, 0x00},
    {0x28, 0x21},
    {0x29, 0x1d},
    {0x2a, 0x75},
    {0x2b, 0x3f},
    {0x2c, 0x06},
    {0x2d, 0xf3},
    {0x38, 0x1a},
    {0x39, 0x1a},
    {0x3a, 0x13},
    {0x42, 0x00},
    {0x43, 0x68},
    {0x44, 0x10},
    {0x45, 0x97},
    {0x46, 0x4c},
    {0x47, 0x18},
    {0x48, 0x9b},
    {0x49, 0x93},
    {0x4a, 0x9f},
    {0x4b, 0xff},
    {0x4c, 0x7c},
    {0x4d, 0x34},
    {0x4e, 0x3f},
    {0x4f, 0x17},
    {0x50, 0x00},
    {0x51, 0x83},
    {0x52, 0x83},
    {0x53, 0x80},
    {0x54, 0x8c},
    {0x55, 0x0f},
    {0x56, 0xc3},
    {0x57, 0x06},
    {0x58, 0x02},
    {0x59, 0x80},
    {0x5a, 0x34},
    {0x5b, 0x7d},
    {0x5c, 0xaf},
    {0x5d, 0x2d},
    {0x5e, 0x3f},
    {0x5f, 0x3f},
    {0x60, 0x7b},
    {0x61, 0x02},
    {0x62, 0x2f},
    {0x63, 0xcb},
    {0x64, 0x8a},
    {0x65, 0x09},
    {0x66, 0x2a},
    {0x67, 0x77},
    {0x68, 0x41},
    {0x69, 0x88},
    {0x6a, 0x41},
    {0x6b, 0x00},
    {0x6c, 0x02},
    {0x6d, 0x20},
    {0x6e, 0xa0},
    {0x6f, 0xb4},
    {0x70, 0x41},
    {0x71, 0xc3},
    {0x72, 0x00},
    {0x73, 0x3e},
    {0x74, 0xb8},
    {0x75, 0x1e},
    {0x76, 0x15},
    {0x77, 0x16},
    {0x78, 0x15},
    {0x79, 0x16},
    {0x7a, 0x2b},
    {0x7b, 0xd9},
    {0x7c, 0x80},
    {0x7d, 0x00},
    {0x7e, 0x00},
    {0x7f, 0x00},
};

/// A register of the display controller and the value stored there; window 'C' capture, 'D' display.
struct SLimeStore {
    char cWindow;
    quint32 u32Offset;
    quint32 u32Value;
};

// In the order of the table; the background colour behind it is the daemon's own.
static const SLimeStore LIME[] = {
    {'C', 0x0000, 0x83100002},
    {'C', 0x0004, 0x08000800},
    {'C', 0x0010, 0x00170001},
    {'C', 0x0014, 0x00100000},
    {'C', 0x0018, 0x0036d000},
    {'C', 0x001c, 0x00000000},
    {'C', 0x0020, 0x02cf023f},
    {'C', 0x0028, 0x00000168},
    {'C', 0x002c, 0x0271020d},
    {'C', 0x0034, 0x00000000},
    {'C', 0x0038, 0x00000000},
    {'C', 0x0048, 0x01680240},
    {'C', 0x004c, 0x01680240},
    {'C', 0x4000, 0x010f05a3},
    {'C', 0x4004, 0x011b05a3},
    {'D', 0x0100, 0x80038083},
    {'D', 0x0104, 0x00000000},
    {'D', 0x0108, 0x00000010},
    {'D', 0x0180, 0x00543201},
    {'D', 0x0184, 0x00000000},
    {'D', 0x0020, 0x8017023f},
    {'D', 0x0110, 0x00000001},
    {'D', 0x0024, 0x00000000},
    {'D', 0x0028, 0x00000000},
    {'D', 0x002c, 0x00000000},
    {'D', 0x0114, 0x00000000},
    {'D', 0x0118, 0x023f02d0},
    {'D', 0x00b4, 0x00000000},
    {'D', 0x00bc, 0x00008000},
    {'D', 0x01a0, 0x00000000},
    {'D', 0x0188, 0x00000000},
    {'D', 0x0120, 0x00000000},
    {'D', 0x0030, 0xf0170000},
    {'D', 0x0124, 0x00000000},
    {'D', 0x0128, 0x023d02b0},
    {'D', 0x01a4, 0x00000000},
    {'D', 0x00c0, 0x00000000},
    {'D', 0x01a8, 0x00000000},
    {'D', 0x01ac, 0x00000000},
    {'D', 0x01b0, 0x00000000},
    {'D', 0x01a4, 0x00000000},
    {'D', 0x0184, 0x00000000},
};

static const char* const FPGA[] = {
    "fpga write32 0x00ff0000 0x00000000", // CTRL
    "fpga write32 0x00ff0004 0x00000080", // FGCC
    "fpga write32 0x00ff000c 0x00000000", // SRIC
    "fpga write32 0x00ff1a00 0x0000002a", // TSXP
    "fpga write32 0x00ff1a04 0x0000000e", // TSYP
    "fpga write32 0x00ff1a08 0x00000c0a", // TESZ
    "fpga write32 0x00ff1a0c 0x00300000", // TEMO
    "fpga read32 0x00ff0000 = 0x00000000",
};

template <std::size_t N>
static QStringList i2cSession(const char* pszSlave, const SI2CWrite (&rasWrites)[N])
{
    QStringList cLines = {QStringLiteral("i2c open = N"),
                          QLatin1String("i2c slave ") + QLatin1String(pszSlave)};
    for (const SI2CWrite& rsWrite : rasWrites)
        cLines << QString::asprintf("i2c write 0x%02x 0x%02x", rsWrite.uSub, rsWrite.uValue);
    return cLines << QStringLiteral("i2c close");
}

template <std::size_t N>
static accesses stores(const SLimeStore (&rasStores)[N])
{
    accesses cStores;
    for (const SLimeStore& rsStore : rasStores)
        cStores.push_back(lime_stored(rsStore.cWindow == 'C' ? LIME_CAPT_WINDOW : LIME_DISP_WINDOW,
                                      rsStore.u32Offset, rsStore.u32Value));
    return cStores;
}

void TestBringUp::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
}

void TestBringUp::init()
{
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
    (*m_pcBoard)->setTracing(true);
    lime_recorder_reset();
}

void TestBringUp::cleanup()
{
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

static QStringList limeOpened()
{
    return {QStringLiteral("lime open = N"), QStringLiteral("lime map %1").arg(board_lime_bytes())};
}

static QStringList opened()
{
    return limeOpened() << QStringLiteral("fpga open = N");
}

static QStringList programmed()
{
    QStringList cLines = i2cSession("0x25", DECODER) + i2cSession("0x44", ENCODER);
    for (const char* pszLine : FPGA)
        cLines << QLatin1String(pszLine);
    return cLines;
}

void TestBringUp::device_calls_are_those_of_each_step_in_order()
{
    QCOMPARE(m_pcBoard->initialize(), 1);
    const QStringList cTrace = m_pcBoard->takeTrace();

    // The overlay library's step has tests of its own.
    load_font(-1);
    init_fpga();
    const QStringList cOverlay = m_pcBoard->takeTrace();
    QVERIFY(cOverlay.size() > 5000);

    QCOMPARE(cTrace, opened() + cOverlay + programmed() + limeOpened());
    QVERIFY(lime_recorded() == stores(LIME));
}

void TestBringUp::a_reload_opens_the_devices_anew_beside_the_old_ones()
{
    QCOMPARE(m_pcBoard->initialize(), 1);
    m_pcBoard->takeTrace();
    lime_recorder_reset();
    QCOMPARE(CMultimediaPlatform::reinitialize(), 1);
    const QStringList cTrace = m_pcBoard->takeTrace();
    // The glyph set is there already, and is not loaded again.
    init_fpga();
    const QStringList cOverlay = m_pcBoard->takeTrace();

    // Only the video window's own mapping is undone before it is made again.
    QCOMPARE(cTrace,
             opened() + cOverlay + programmed() + QStringList(QStringLiteral("lime close")) + limeOpened());
    QVERIFY(lime_recorded() == stores(LIME));
}

// Runs first: the tables remember what has been named, for the life of the process.
void TestBringUp::files_that_name_nothing_leave_fpga_and_display_controller_alone()
{
    for (const char* pszName : {"fpga.cnf", "lime.cnf", "saa7113.cnf", "saa7129.cnf"}) {
        QFile cFile(m_pcBoard->registerFile(pszName));
        QVERIFY(cFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
    }
    QCOMPARE(m_pcBoard->initialize(), 1);
    const QStringList cTrace = m_pcBoard->takeTrace();
    QVERIFY(cTrace.filter(QStringLiteral("fpga write32")).filter(QStringLiteral("0x00ff0000")).isEmpty());
    QVERIFY(cTrace.filter(QStringLiteral("fpga write32 0x00ff1a")).isEmpty());
    QVERIFY((lime_recorded() == accesses{lime_stored(LIME_DISP_WINDOW, 0x184, 0)}));

    // Decoder and encoder get all registers but the version, with the values of their fields.
    const QStringList cWrites = cTrace.filter(QStringLiteral("i2c write"));
    QCOMPARE(cWrites.size(), 30 + 73);
    for (const QString& rcWrite : cWrites)
        QVERIFY2(rcWrite.endsWith(QStringLiteral(" 0x00")), qPrintable(rcWrite));
    QVERIFY(!cWrites.contains(QStringLiteral("i2c write 0x00 0x00")));
}

QTEST_GUILESS_MAIN(TestBringUp)

#include "tst_bring_up.moc"
