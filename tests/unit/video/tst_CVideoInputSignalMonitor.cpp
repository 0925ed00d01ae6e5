/* SPDX-License-Identifier: MIT */
/* The check of the camera signal on a virtual board; its ticks are sent, not waited for. */
#include "daemon/CEventLogger.h"
#include "hw/fpga_map.h"
#include "platform/CMultimediaPlatform.h"
#include "regdb/chip_regs.h"
#include "regdb/registers.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/support/CPlatformBoard.h"
#include "video/CVideoInputSignalMonitor.h"

#include <QAbstractEventDispatcher>
#include <QFile>
#include <QTimerEvent>
#include <QtTest>

#include <cerrno>

class TestCVideoInputSignalMonitor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void starts_with_the_sync_that_the_signal_asks_for_data();
    void starts_with_the_sync_that_the_signal_asks_for();
    void starts_by_the_signal_also_without_auto_sync();
    void watches_every_second();
    void a_device_that_can_not_be_used_is_said_and_not_watched_data();
    void a_device_that_can_not_be_used_is_said_and_not_watched();
    void can_be_destroyed_without_having_been_initialized();
    void closes_its_device();

    void every_status_byte();
    void a_decoder_that_can_not_be_read_has_no_signal_data();
    void a_decoder_that_can_not_be_read_has_no_signal();
    void a_table_without_the_status_has_no_signal_data();
    void a_table_without_the_status_has_no_signal();
    void a_check_is_one_read();
    void asking_stores_nothing();

    void a_change_is_emitted_and_switches_the_sync();
    void two_ticks_with_the_same_result_emit_nothing();
    void a_tick_while_a_change_is_emitted_emits_nothing();
    void any_timer_is_its_tick();
    void without_auto_sync_a_change_is_emitted_and_the_sync_left_alone();
    void enabling_auto_sync_again_does_not_even_check();
    void enabling_auto_sync_sets_the_sync_and_emits_nothing_data();
    void enabling_auto_sync_sets_the_sync_and_emits_nothing();
    void disabling_auto_sync_does_nothing_yet();

    void a_reload_leaves_its_bus_alone();
    void survives_a_configuration_that_is_gone();

private:
    bool initialize() { return m_pcMonitor->initialize(m_cDevice.constData()); }
    void tick();
    bool internalSync() { return (*m_pcBoard)->fpgaRegister(FPGA_CTRL) == FRAME_GENERATOR; }

    static const quint32 FRAME_GENERATOR = 0x00800000;

    QScopedPointer<CPlatformBoard> m_pcBoard;
    QScopedPointer<CVideoInputSignalMonitor> m_pcMonitor;
    QByteArray m_cDevice;
    QList<int> m_cEmitted;
};

static const QList<int> EXTERNAL = {eVideoInputTypeExternal};
static const QList<int> INTERNAL = {eVideoInputTypeInternal};

void TestCVideoInputSignalMonitor::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
}

void TestCVideoInputSignalMonitor::init()
{
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
    QCOMPARE(m_pcBoard->initialize(), 1);
    m_cDevice = (*m_pcBoard)->path(BOARD_I2C).toLocal8Bit();
    m_pcMonitor.reset(new CVideoInputSignalMonitor);
    m_cEmitted.clear();
    connect(m_pcMonitor.data(), &CVideoInputSignalMonitor::videoInputTypeChanged, this,
            [this](EVideoInputType eType) { m_cEmitted << eType; });
}

void TestCVideoInputSignalMonitor::cleanup()
{
    m_pcMonitor.reset();
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

void TestCVideoInputSignalMonitor::tick()
{
    QTimerEvent cTick(0);
    QCoreApplication::sendEvent(m_pcMonitor.data(), &cTick);
}

static QList<QAbstractEventDispatcher::TimerInfo> timersOf(QObject* pcObject)
{
    return QAbstractEventDispatcher::instance()->registeredTimers(pcObject);
}

void TestCVideoInputSignalMonitor::starts_with_the_sync_that_the_signal_asks_for_data()
{
    QTest::addColumn<bool>("plugged");
    QTest::newRow("camera") << true;
    QTest::newRow("no camera") << false;
}

void TestCVideoInputSignalMonitor::starts_with_the_sync_that_the_signal_asks_for()
{
    QFETCH(bool, plugged);
    (*m_pcBoard)->setCameraPlugged(plugged);
    CMultimediaPlatform::setVideoInternalSync(plugged);
    QCOMPARE(internalSync(), plugged);
    QVERIFY(initialize());
    QCOMPARE(internalSync(), !plugged);
    tick();
    QCOMPARE(m_cEmitted, QList<int>());
}

void TestCVideoInputSignalMonitor::starts_by_the_signal_also_without_auto_sync()
{
    m_pcMonitor->setVideoInputAutoSyncEnabled(false);
    (*m_pcBoard)->setCameraPlugged(false);
    QVERIFY(initialize());
    QVERIFY(internalSync());
}

void TestCVideoInputSignalMonitor::watches_every_second()
{
    QVERIFY(timersOf(m_pcMonitor.data()).isEmpty());
    QVERIFY(initialize());
    const QList<QAbstractEventDispatcher::TimerInfo> cTimers = timersOf(m_pcMonitor.data());
    QCOMPARE(cTimers.size(), 1);
    QCOMPARE(cTimers[0].interval, 1000);
    QCOMPARE(cTimers[0].timerType, Qt::PreciseTimer);
}

void TestCVideoInputSignalMonitor::a_device_that_can_not_be_used_is_said_and_not_watched_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("trace");
    QTest::newRow("open") << int(BOARD_OPERATION_I2C_OPEN) << QByteArray("Cannot open saa7113-device\n")
                          << QStringList{QStringLiteral("i2c open ! ENXIO")};
    QTest::newRow("slave") << int(BOARD_OPERATION_I2C_SLAVE) << QByteArray("i2c communication broken\n")
                           << QStringList{QStringLiteral("i2c open = N"),
                                          QStringLiteral("i2c slave 0x25 ! EBUSY"),
                                          QStringLiteral("i2c close")};
}

void TestCVideoInputSignalMonitor::a_device_that_can_not_be_used_is_said_and_not_watched()
{
    QFETCH(int, operation);
    QFETCH(QByteArray, text);
    QFETCH(QStringList, trace);
    (*m_pcBoard)->setFault({static_cast<board_operation>(operation)});
    (*m_pcBoard)->setTracing(true);
    CCapturedOutput cErrors(2);
    QVERIFY(!initialize());
    QCOMPARE(cErrors.take(), text);
    QCOMPARE(m_pcBoard->takeTrace(), trace);
    QVERIFY(timersOf(m_pcMonitor.data()).isEmpty());
    QVERIFY(!m_pcMonitor->isVideoInputSignalAvailable());
    // Nothing is left open that could be closed now.
    m_pcMonitor.reset();
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

void TestCVideoInputSignalMonitor::can_be_destroyed_without_having_been_initialized()
{
    (*m_pcBoard)->setTracing(true);
    QVERIFY(!m_pcMonitor->isVideoInputSignalAvailable());
    m_pcMonitor.reset();
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

void TestCVideoInputSignalMonitor::closes_its_device()
{
    QVERIFY(initialize());
    (*m_pcBoard)->setTracing(true);
    m_pcMonitor.reset();
    QCOMPARE(m_pcBoard->takeTrace(), QStringList{QStringLiteral("i2c close")});
}

// The status in the chip's table and its configuration.
static quint32 statusOfTable()
{
    return reg_value(search_reg_bf_group_by_name(&crp_saa7113, "SBVD"));
}

static quint32 statusOfConfiguration()
{
    config_setting_t* psGroup = search_config_bf_group_by_name(&crp_saa7113, "SBVD");
    quint32 u32Status = 0;
    for (const char* pszField :
         {"intl", "hlvln_hlck", "fidt", "glimt", "glimb", "wipa", "copro_sltca", "rdcap_code"}) {
        const int iBit = config_setting_get_int(search_config_bf_by_name(psGroup, pszField));
        u32Status = u32Status << 1 | static_cast<quint32>(iBit);
    }
    return u32Status;
}

void TestCVideoInputSignalMonitor::every_status_byte()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QVERIFY(initialize());
    for (quint32 u32Byte = 0; u32Byte < 256; ++u32Byte) {
        rcBoard->setI2cRegister(SAA7113_SLAVE, SAA7113_STATUS, 0);
        tick();
        m_cEmitted.clear();
        rcBoard->setI2cRegister(SAA7113_SLAVE, SAA7113_STATUS, static_cast<quint8>(u32Byte));
        const bool bLocked = (u32Byte & 0x40) == 0;
        QCOMPARE(m_pcMonitor->isVideoInputSignalAvailable(), bLocked);
        tick();
        QCOMPARE(m_cEmitted, bLocked ? QList<int>() : INTERNAL);
        QCOMPARE(internalSync(), !bLocked);
        QCOMPARE(statusOfTable(), u32Byte);
        QCOMPARE(statusOfConfiguration(), u32Byte);
    }
}

void TestCVideoInputSignalMonitor::a_decoder_that_can_not_be_read_has_no_signal_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EIO") << EIO;
    QTest::newRow("ENXIO") << ENXIO;
    QTest::newRow("ENODEV") << ENODEV;
    QTest::newRow("ETIMEDOUT") << ETIMEDOUT;
}

void TestCVideoInputSignalMonitor::a_decoder_that_can_not_be_read_has_no_signal()
{
    QFETCH(int, error);
    QVERIFY(initialize());
    CBoard::SFault sFault;
    sFault.eOperation = BOARD_OPERATION_I2C_READ;
    sFault.iError = error;
    (*m_pcBoard)->setFault(sFault);
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
    QVERIFY(internalSync());
    QCOMPARE(statusOfTable(), 0xffU);
    (*m_pcBoard)->clearFaults();
    tick();
    QCOMPARE(m_cEmitted, INTERNAL + EXTERNAL);
    QVERIFY(!internalSync());
}

void TestCVideoInputSignalMonitor::a_table_without_the_status_has_no_signal_data()
{
    QTest::addColumn<bool>("field");
    QTest::newRow("no register") << false;
    QTest::newRow("no field") << true;
}

void TestCVideoInputSignalMonitor::a_table_without_the_status_has_no_signal()
{
    QFETCH(bool, field);
    QVERIFY(initialize());
    reg_bf_group* psStatus = search_reg_bf_group_by_name(&crp_saa7113, "SBVD");
    const char** ppszName = field ? &search_reg_bf_by_name(psStatus, "hlvln_hlck")->name : &psStatus->name;
    const char* pszName = *ppszName;
    *ppszName = "other";
    (*m_pcBoard)->setTracing(true);
    const bool bAvailable = m_pcMonitor->isVideoInputSignalAvailable();
    *ppszName = pszName;
    QVERIFY(!bAvailable);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

void TestCVideoInputSignalMonitor::a_check_is_one_read()
{
    (*m_pcBoard)->setTracing(true);
    QVERIFY(initialize());
    QCOMPARE(m_pcBoard->takeTrace().mid(0, 3),
             (QStringList{QStringLiteral("i2c open = N"), QStringLiteral("i2c slave 0x25"),
                          QStringLiteral("i2c read 0x1f = 0x00")}));
    tick();
    QCOMPARE(m_pcBoard->takeTrace(), QStringList{QStringLiteral("i2c read 0x1f = 0x00")});
    QVERIFY(m_pcMonitor->isVideoInputSignalAvailable());
    QCOMPARE(m_pcBoard->takeTrace(), QStringList{QStringLiteral("i2c read 0x1f = 0x00")});
}

// A state found by a call between two ticks is still new to the next tick.
void TestCVideoInputSignalMonitor::asking_stores_nothing()
{
    QVERIFY(initialize());
    (*m_pcBoard)->setCameraPlugged(false);
    QVERIFY(!m_pcMonitor->isVideoInputSignalAvailable());
    QVERIFY(!internalSync());
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
}

void TestCVideoInputSignalMonitor::a_change_is_emitted_and_switches_the_sync()
{
    QVERIFY(initialize());
    for (int iRound = 0; iRound < 3; ++iRound) {
        m_cEmitted.clear();
        (*m_pcBoard)->setCameraPlugged(false);
        tick();
        QVERIFY(internalSync());
        QCOMPARE(m_cEmitted, INTERNAL);
        (*m_pcBoard)->setCameraPlugged(true);
        tick();
        QVERIFY(!internalSync());
        QCOMPARE(m_cEmitted, INTERNAL + EXTERNAL);
    }
}

void TestCVideoInputSignalMonitor::two_ticks_with_the_same_result_emit_nothing()
{
    QVERIFY(initialize());
    tick();
    tick();
    QCOMPARE(m_cEmitted, QList<int>());
    (*m_pcBoard)->setCameraPlugged(false);
    tick();
    tick();
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
}

// A slot may run the event loop, and so let the next tick come.
void TestCVideoInputSignalMonitor::a_tick_while_a_change_is_emitted_emits_nothing()
{
    QVERIFY(initialize());
    connect(m_pcMonitor.data(), &CVideoInputSignalMonitor::videoInputTypeChanged, this, [this] {
        if (m_cEmitted.size() == 1)
            tick();
    });
    (*m_pcBoard)->setCameraPlugged(false);
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
}

void TestCVideoInputSignalMonitor::any_timer_is_its_tick()
{
    QVERIFY(initialize());
    (*m_pcBoard)->setCameraPlugged(false);
    QTimerEvent cTick(12345);
    QCoreApplication::sendEvent(m_pcMonitor.data(), &cTick);
    QCOMPARE(m_cEmitted, INTERNAL);
}

void TestCVideoInputSignalMonitor::without_auto_sync_a_change_is_emitted_and_the_sync_left_alone()
{
    QVERIFY(initialize());
    m_pcMonitor->setVideoInputAutoSyncEnabled(false);
    (*m_pcBoard)->setCameraPlugged(false);
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
    QVERIFY(!internalSync());
    CMultimediaPlatform::setVideoInternalSync(true);
    (*m_pcBoard)->setCameraPlugged(true);
    tick();
    QCOMPARE(m_cEmitted, INTERNAL + EXTERNAL);
    QVERIFY(internalSync());
}

void TestCVideoInputSignalMonitor::enabling_auto_sync_again_does_not_even_check()
{
    QVERIFY(initialize());
    (*m_pcBoard)->setCameraPlugged(false);
    (*m_pcBoard)->setTracing(true);
    m_pcMonitor->setVideoInputAutoSyncEnabled(true);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
    QVERIFY(!internalSync());
}

void TestCVideoInputSignalMonitor::enabling_auto_sync_sets_the_sync_and_emits_nothing_data()
{
    starts_with_the_sync_that_the_signal_asks_for_data();
}

// It stores the state: the next tick finds nothing new.
void TestCVideoInputSignalMonitor::enabling_auto_sync_sets_the_sync_and_emits_nothing()
{
    QFETCH(bool, plugged);
    (*m_pcBoard)->setCameraPlugged(!plugged);
    QVERIFY(initialize());
    m_pcMonitor->setVideoInputAutoSyncEnabled(false);
    (*m_pcBoard)->setCameraPlugged(plugged);
    QCOMPARE(internalSync(), plugged);
    m_pcMonitor->setVideoInputAutoSyncEnabled(true);
    QCOMPARE(internalSync(), !plugged);
    tick();
    QCOMPARE(m_cEmitted, QList<int>());
}

void TestCVideoInputSignalMonitor::disabling_auto_sync_does_nothing_yet()
{
    QVERIFY(initialize());
    (*m_pcBoard)->setCameraPlugged(false);
    (*m_pcBoard)->setTracing(true);
    m_pcMonitor->setVideoInputAutoSyncEnabled(false);
    m_pcMonitor->setVideoInputAutoSyncEnabled(false);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

// The bring-up opens the same bus for both chips and closes it again.
void TestCVideoInputSignalMonitor::a_reload_leaves_its_bus_alone()
{
    QVERIFY(initialize());
    QCOMPARE(CMultimediaPlatform::reinitialize(), 1);
    (*m_pcBoard)->setI2cRegister(SAA7129_SLAVE, SAA7113_STATUS, 0x40);
    (*m_pcBoard)->setTracing(true);
    QVERIFY(m_pcMonitor->isVideoInputSignalAvailable());
    QCOMPARE(m_pcBoard->takeTrace(), QStringList{QStringLiteral("i2c read 0x1f = 0x00")});
}

void TestCVideoInputSignalMonitor::survives_a_configuration_that_is_gone()
{
    QVERIFY(initialize());
    QVERIFY(QFile::remove(m_pcBoard->registerFile("saa7113.cnf")));
    CCapturedOutput cErrors(2);
    QCOMPARE(CMultimediaPlatform::reinitialize(), 0);
    cErrors.take();
    QVERIFY(config_root_setting(&config_saa7113) == nullptr);

    (*m_pcBoard)->setCameraPlugged(false);
    tick();
    tick();
    QCOMPARE(m_cEmitted, INTERNAL);
    // It is there again, with what was read.
    QCOMPARE(statusOfConfiguration(), 0x40U);
}

QTEST_GUILESS_MAIN(TestCVideoInputSignalMonitor)

#include "tst_CVideoInputSignalMonitor.moc"
