/* SPDX-License-Identifier: MIT */
/* The start of the real process: its work on the board, and each way in which it can fail. */
#include "board/picture/CBoardPicture.h"
#include "tests/golden.h"
#include "tests/support/CScene.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QtTest>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void brings_the_board_up_and_shows_the_live_picture();
    void detaches_with_d();
    void a_failed_fork_leaves_it_in_the_foreground();
    void standard_descriptors_that_are_closed_lead_to_nothing_data();
    void standard_descriptors_that_are_closed_lead_to_nothing();
    void files_of_a_detached_daemon_are_written_by_their_owner_alone();

    void device_failures_end_with_255_data();
    void device_failures_end_with_255();
    void without_the_signal_monitor_it_ends_with_255_data();
    void without_the_signal_monitor_it_ends_with_255();
    void a_register_file_that_can_not_be_read_ends_with_255_data();
    void a_register_file_that_can_not_be_read_ends_with_255();
    void devices_that_do_not_exist_end_with_255();
    void a_device_that_is_too_short_ends_with_255();
    void signal_hook_failures_end_with_255_data();
    void signal_hook_failures_end_with_255();
    void handlers_that_can_not_be_installed_do_not_stop_the_start();
    void without_a_bus_it_ends_with_255();
    void a_bus_that_refuses_the_name_ends_it_with_255();
    void a_second_instance_ends_with_255_and_leaves_the_first_alone();
};

static const QString STARTING = QStringLiteral("Starting haldend...");
static const QString FAILED = QStringLiteral("Error starting haldend.");
static const QString HARDWARE = QStringLiteral("cMultimediaDaemon.initSubsystems()");
static const QString LIME = QStringLiteral("Error initializing Lime framebuffer");
static const QString FPGA = QStringLiteral("Error initializing FPGA framebuffer");
static const QString SAA7113 = QStringLiteral("Error initializing SAA7113");
static const QString SAA7129 = QStringLiteral("Error initializing SAA7129");
static const QString HOOK = QStringLiteral("cMultimediaDaemon.m_pcSignalHook->install()");
static const QString OBJECTS = QStringLiteral("cMultimediaDaemon.setupDBusConnections()");
static const QString NAME = QStringLiteral("cConnection.registerService(DBUS_SERVICE)");

// Starts the daemon of the scene, which must end by itself with 255 after these messages.
#define EXPECT_FAILED_START(cScene, ...)                               \
    do {                                                               \
        (cScene).daemon().start();                                     \
        QVERIFY2((cScene).daemon().waitForEnd(), (cScene).describe()); \
        QVERIFY2(!(cScene).daemon().crashed(), (cScene).describe());   \
        QCOMPARE((cScene).daemon().exitCode(), 255);                   \
        QCOMPARE((cScene).daemon().log(), (QStringList{__VA_ARGS__})); \
        QCOMPARE((cScene).daemon().unexpectedOutput(), QStringList()); \
    } while (false)

static void setFault(CScene& rcScene, board_operation eOperation, quint32 u32Nth, quint32 u32Count)
{
    CBoard::SFault sFault;
    sFault.eOperation = eOperation;
    sFault.u32Nth = u32Nth;
    sFault.u32Count = u32Count;
    rcScene.board().setFault(sFault);
}

// The kind of each device operation in the trace: "lime open", "lime map" and so on.
static QStringList operations(const CBoard& rcBoard)
{
    QStringList cOperations;
    for (const QString& rcLine : rcBoard.traceLines())
        cOperations << rcLine.section(QLatin1Char(' '), 0, 1);
    return cOperations;
}

void TestStartup::brings_the_board_up_and_shows_the_live_picture()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    QCOMPARE(CBoardPicture::monitor(cScene.board()).pixel(300, 200), 0xff000000U);
    QVERIFY2(cScene.start(), cScene.describe());
    QCOMPARE(
        differenceFromGolden(CBoardPicture::monitor(cScene.board()), QStringLiteral("renderer_unscaled")),
        QString());
    QCOMPARE(cScene.end(), QString());
    QCOMPARE(cScene.daemon().log(), (QStringList{STARTING, QStringLiteral("Terminating haldend...")}));
    QCOMPARE(cScene.daemon().standardOutput(),
             QByteArray("CHaldenDebug::setupDBusConnection(start) \n"
                        "CHaldenDebug::setupDBusConnection(new) \n"
                        "CHaldenDebug::setupDBusConnection()=1 \n"
                        "CHaldenVideoProcessing::setupDBusConnection() \n"
                        "CHaldenVideoProcessing::setupDBusConnection(new) \n"
                        "CHaldenVideoProcessing::setupDBusConnection()=1 \n"));
}

// A field of /proc/PID/status.
static QByteArray statusField(uint uiPid, const QByteArray& rcField)
{
    QFile cFile(QStringLiteral("/proc/%1/status").arg(uiPid));
    if (!cFile.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& rcLine : cFile.readAll().split('\n'))
        if (rcLine.startsWith(rcField + ":"))
            return rcLine.mid(rcField.size() + 1).trimmed();
    return {};
}

// The service's owner on a bus: waits for it to come or to go.
class CServiceWait
{
public:
    explicit CServiceWait(const QDBusConnection& rcConnection)
        : m_cWatcher(QStringLiteral("velmar.haldend"), rcConnection),
          m_cRegistered(&m_cWatcher, &QDBusServiceWatcher::serviceRegistered),
          m_cUnregistered(&m_cWatcher, &QDBusServiceWatcher::serviceUnregistered)
    {
    }

    bool forRegistration() { return !m_cRegistered.isEmpty() || m_cRegistered.wait(TIMEOUT_PROCESS_MS); }
    bool forEnd() { return !m_cUnregistered.isEmpty() || m_cUnregistered.wait(TIMEOUT_PROCESS_MS); }

    /// Process number of the owner.
    uint pid() const
    {
        return m_cWatcher.connection().interface()->servicePid(QStringLiteral("velmar.haldend"));
    }

private:
    QDBusServiceWatcher m_cWatcher;
    QSignalSpy m_cRegistered;
    QSignalSpy m_cUnregistered;
};

void TestStartup::detaches_with_d()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    CDaemonProcess& rcDaemon = cScene.daemon();
    CServiceWait cService(rcDaemon.client());

    // Into a file: the pipes of the process close when the parent ends, which is at once.
    const QString cLog = cScene.board().directory() + QStringLiteral("/log");
    rcDaemon.process().setStandardErrorFile(cLog);
    rcDaemon.setArguments(rcDaemon.arguments() << QStringLiteral("-d"));
    rcDaemon.start();
    const qint64 iParent = rcDaemon.pid();
    QVERIFY2(rcDaemon.waitForEnd(), cScene.describe());
    QCOMPARE(rcDaemon.exitCode(), 0);
    QVERIFY(cService.forRegistration());

    const uint uiChild = cService.pid();
    QVERIFY(uiChild != static_cast<uint>(iParent));
    QCOMPARE(getsid(static_cast<pid_t>(uiChild)), static_cast<pid_t>(uiChild)); // no terminal's any more
    QCOMPARE(QFile::symLinkTarget(QStringLiteral("/proc/%1/cwd").arg(uiChild)), QStringLiteral("/"));
    QCOMPARE(statusField(uiChild, "Umask"), QByteArray("0000"));
    QFile cFile(cLog);
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    QCOMPARE(cFile.readAll(), "haldend[" + QByteArray::number(uiChild) + "]: Starting haldend...\n");

    QCOMPARE(::kill(static_cast<pid_t>(uiChild), SIGTERM), 0);
    QVERIFY(cService.forEnd());
}

void TestStartup::a_failed_fork_leaves_it_in_the_foreground()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    setFault(cScene, BOARD_OPERATION_FORK, 1, 1);
    cScene.daemon().setArguments(cScene.daemon().arguments() << QStringLiteral("-d"));
    QVERIFY2(cScene.start(), cScene.describe());
    QCOMPARE(cScene.board().faults().value(0).u32Hits, 1U);
    const uint uiDaemon = static_cast<uint>(cScene.daemon().pid());
    QCOMPARE(QFile::symLinkTarget(QStringLiteral("/proc/%1/cwd").arg(uiDaemon)), QDir::currentPath());
    QCOMPARE(statusField(uiDaemon, "Umask"), statusField(static_cast<uint>(getpid()), "Umask"));
    QCOMPARE(cScene.end(), QString());
    QCOMPARE(cScene.daemon().log(), (QStringList{STARTING, QStringLiteral("Terminating haldend...")}));
}

void TestStartup::standard_descriptors_that_are_closed_lead_to_nothing_data()
{
    QTest::addColumn<QString>("redirections");
    const char* const apszClosed[] = {"<&-", ">&-", "2>&-"};
    for (int iSet = 0; iSet < 8; ++iSet) {
        QStringList cRedirections;
        for (int iDescriptor = 0; iDescriptor < 3; ++iDescriptor)
            if ((iSet & 1 << iDescriptor) != 0)
                cRedirections << QString::fromLatin1(apszClosed[iDescriptor]);
        const QString cAll = cRedirections.join(QLatin1Char(' '));
        QTest::newRow(qPrintable(QStringLiteral("closed: ") + cAll)) << cAll;
    }
}

// The descriptors of a process that lead to the null device, without the standard ones.
static QSet<int> nullDevices(qint64 iPid)
{
    QSet<int> cDescriptors;
    const QDir cFolder(QStringLiteral("/proc/%1/fd").arg(iPid));
    for (const QString& rcName : cFolder.entryList(QDir::Files | QDir::System))
        if (rcName.toInt() > STDERR_FILENO &&
            QFile::symLinkTarget(cFolder.filePath(rcName)) == QStringLiteral("/dev/null"))
            cDescriptors << rcName.toInt();
    return cDescriptors;
}

// Otherwise the next files would get the numbers, and the log would go into one of them.
void TestStartup::standard_descriptors_that_are_closed_lead_to_nothing()
{
    QFETCH(QString, redirections);
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    CDaemonProcess& rcDaemon = cScene.daemon();
    rcDaemon.setRedirections(redirections);
    QVERIFY2(cScene.start(), cScene.describe());
    const QStringList cClosed = redirections.split(QLatin1Char(' '));
    const bool abOpen[] = {!cClosed.contains(QStringLiteral("<&-")), !cClosed.contains(QStringLiteral(">&-")),
                           !cClosed.contains(QStringLiteral("2>&-"))};
    for (int iDescriptor = 0; iDescriptor < 3; ++iDescriptor) {
        const QString cFile =
            QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/%2").arg(rcDaemon.pid()).arg(iDescriptor));
        QVERIFY2(abOpen[iDescriptor] ? cFile.contains(QStringLiteral("pipe:"))
                                     : cFile == QStringLiteral("/dev/null"),
                 qPrintable(QStringLiteral("%1: ").arg(iDescriptor) + cFile));
    }
    const QSet<int> cOpened = nullDevices(rcDaemon.pid()) - nullDevices(getpid());
    QVERIFY2(cOpened.isEmpty(), cScene.describe());

    // A call that is logged.
    rcDaemon.send(QStringLiteral("/videooverlay"), QStringLiteral("draw_temp_text"),
                  {QStringLiteral("Saved"), 1, 5, 10, 10, 1});
    QVERIFY2(rcDaemon.settle(), cScene.describe());
    QCOMPARE(cScene.end(), QString());
    QCOMPARE(rcDaemon.log().contains(STARTING), abOpen[2]);
    QCOMPARE(rcDaemon.standardOutput().isEmpty(), !abOpen[1]);
}

// The umask of a detached daemon is 0.
void TestStartup::files_of_a_detached_daemon_are_written_by_their_owner_alone()
{
    CVideoScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    CDaemonProcess& rcDaemon = cScene.daemon();
    CServiceWait cService(rcDaemon.client());
    const QString cRegisters = cScene.board().path(BOARD_CNFS) + QStringLiteral("/lime.cnf");
    rcDaemon.process().setStandardErrorFile(cScene.board().directory() + QStringLiteral("/log"));
    rcDaemon.setArguments(rcDaemon.arguments() << QStringLiteral("-d"));
    rcDaemon.start();
    QVERIFY2(rcDaemon.waitForEnd(), cScene.describe());
    QVERIFY(cService.forRegistration());
    const pid_t iChild = static_cast<pid_t>(cService.pid());

    QVERIFY(QFile::remove(cRegisters));
    rcDaemon.send(QStringLiteral("/debug"), QStringLiteral("save_hardware_config"), {});
    const QString cStill = cScene.file("a.bmp");
    QCOMPARE(cScene.call("save_video_image", cStill), VideoResult::OK);
    QVERIFY(rcDaemon.settle());
    for (const QString& rcFile : {cRegisters, cStill}) {
        struct stat sStat = {};
        QVERIFY2(stat(qPrintable(rcFile), &sStat) == 0, qPrintable(rcFile));
        QCOMPARE(uint(sStat.st_mode & 07777), 0644U);
    }
    QCOMPARE(statusField(static_cast<uint>(iChild), "Umask"), QByteArray("0000"));

    QCOMPARE(::kill(iChild, SIGTERM), 0);
    QVERIFY(cService.forEnd());
}

void TestStartup::device_failures_end_with_255_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QByteArray>("output");
    const QByteArray cNoMap = "Error: failed to map framebuffer device to memory\n";
    const QByteArray cNoBus = "Error: cannot open i2c device\n";
    const QByteArray cNoSlave = "I2C_SLAVE - communication break up\n";
    const auto cRow = [](const char* pszName, board_operation eOperation, int iNth, const QString& rcLabel,
                         const QByteArray& rcOutput) {
        QTest::newRow(pszName) << int(eOperation) << iNth << QStringList{rcLabel} << rcOutput;
    };
    cRow("display controller can't be opened", BOARD_OPERATION_LIME_OPEN, 1, LIME, cNoMap);
    cRow("display controller can't be mapped", BOARD_OPERATION_LIME_MAP, 1, LIME, cNoMap);
    cRow("FPGA can't be opened", BOARD_OPERATION_FPGA_OPEN, 1, FPGA,
         "Error: cannot open fpga framebuffer device\n");
    cRow("bus can't be opened for the decoder", BOARD_OPERATION_I2C_OPEN, 1, SAA7113, cNoBus);
    cRow("bus can't be opened for the encoder", BOARD_OPERATION_I2C_OPEN, 2, SAA7129, cNoBus);
    cRow("no decoder on the bus", BOARD_OPERATION_I2C_SLAVE, 1, SAA7113, cNoSlave);
    cRow("no encoder on the bus", BOARD_OPERATION_I2C_SLAVE, 2, SAA7129, cNoSlave);
}

void TestStartup::device_failures_end_with_255()
{
    QFETCH(int, operation);
    QFETCH(int, nth);
    QFETCH(QStringList, labels);
    QFETCH(QByteArray, output);
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    setFault(cScene, static_cast<board_operation>(operation), static_cast<quint32>(nth), 1);
    EXPECT_FAILED_START(cScene, STARTING, labels.constFirst(), HARDWARE, FAILED);
    QVERIFY2(cScene.daemon().standardOutput().startsWith(output), cScene.describe());
}

void TestStartup::without_the_signal_monitor_it_ends_with_255_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("output");
    QTest::newRow("bus can't be opened")
        << int(BOARD_OPERATION_I2C_OPEN) << QStringLiteral("Cannot open saa7113-device");
    QTest::newRow("no decoder on the bus")
        << int(BOARD_OPERATION_I2C_SLAVE) << QStringLiteral("i2c communication broken");
}

// The third to use the bus, behind the bring-up of decoder and encoder.
void TestStartup::without_the_signal_monitor_it_ends_with_255()
{
    QFETCH(int, operation);
    QFETCH(QString, output);
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    setFault(cScene, static_cast<board_operation>(operation), 3, 1);
    cScene.daemon().start();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QVERIFY2(!cScene.daemon().crashed(), cScene.describe());
    QCOMPARE(cScene.daemon().exitCode(), 255);
    QCOMPARE(cScene.daemon().log(), (QStringList{STARTING, HARDWARE, FAILED}));
    QCOMPARE(cScene.daemon().unexpectedOutput(), QStringList{output});
}

void TestStartup::a_register_file_that_can_not_be_read_ends_with_255_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("label");
    QTest::newRow("decoder") << QStringLiteral("saa7113.cnf") << SAA7113;
    QTest::newRow("encoder") << QStringLiteral("saa7129.cnf") << SAA7129;
    QTest::newRow("FPGA") << QStringLiteral("fpga.cnf") << QStringLiteral("Error initializing FPGA");
    QTest::newRow("display controller")
        << QStringLiteral("lime.cnf") << QStringLiteral("Error initializing Lime");
}

void TestStartup::a_register_file_that_can_not_be_read_ends_with_255()
{
    QFETCH(QString, file);
    QFETCH(QString, label);
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    QVERIFY(QFile::remove(cScene.board().path(BOARD_CNFS) + QLatin1Char('/') + file));
    cScene.daemon().start();
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QVERIFY2(!cScene.daemon().crashed(), cScene.describe());
    QCOMPARE(cScene.daemon().exitCode(), 255);
    QCOMPARE(cScene.daemon().log(), (QStringList{STARTING, label, HARDWARE, FAILED}));
    QCOMPARE(
        cScene.daemon().unexpectedOutput(),
        (QStringList{QStringLiteral("Errormessage in configfile: /usr/etc/cnfs/%1, Linenumber:0").arg(file),
                     QStringLiteral("file I/O error")}));
}

void TestStartup::devices_that_do_not_exist_end_with_255()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    cScene.daemon().setArguments({QStringLiteral("-i"), QStringLiteral("/nonexistent/i2c-1"),
                                  QStringLiteral("-f"), QStringLiteral("/nonexistent/fpgamem"),
                                  QStringLiteral("-l"), QStringLiteral("/nonexistent/fb0")});
    EXPECT_FAILED_START(cScene, STARTING, LIME, FPGA, SAA7113, SAA7129, HARDWARE, FAILED);
}

void TestStartup::a_device_that_is_too_short_ends_with_255()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    const QString cShort = cScene.board().directory() + QStringLiteral("/short");
    QFile cFile(cShort);
    QVERIFY(cFile.open(QIODevice::WriteOnly));
    for (const qint64 iSize : {qint64(0), qint64(4096), static_cast<qint64>(board_lime_bytes()) - 1}) {
        QVERIFY(cFile.resize(iSize));
        CDaemonProcess cDaemon;
        cDaemon.setBusAddress(cScene.bus().address());
        cDaemon.useBoard(cScene.board().directory());
        cDaemon.setArguments(cDaemon.arguments() << QStringLiteral("-l") << cShort);
        cDaemon.start();
        QVERIFY2(cDaemon.waitForEnd(), cDaemon.describe());
        QVERIFY2(!cDaemon.crashed(), cDaemon.describe());
        QCOMPARE(cDaemon.exitCode(), 255);
        QCOMPARE(cDaemon.log(), (QStringList{STARTING, LIME, HARDWARE, FAILED}));
    }
}

void TestStartup::signal_hook_failures_end_with_255_data()
{
    QTest::addColumn<int>("nth");
    QTest::newRow("socket pair of SIGHUP") << 1;
    QTest::newRow("socket pair of SIGTERM") << 2;
}

void TestStartup::signal_hook_failures_end_with_255()
{
    QFETCH(int, nth);
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    cScene.board().setTracing(true);
    setFault(cScene, BOARD_OPERATION_SOCKETPAIR, static_cast<quint32>(nth), 1);
    EXPECT_FAILED_START(cScene, STARTING, HOOK, FAILED);
    QCOMPARE(operations(cScene.board()), QStringList());
}

void TestStartup::handlers_that_can_not_be_installed_do_not_stop_the_start()
{
    for (const quint32 u32Nth : {1U, 2U}) {
        CScene cScene;
        QVERIFY2(cScene.prepare(), cScene.describe());
        setFault(cScene, BOARD_OPERATION_SIGACTION, u32Nth, 1);
        QVERIFY2(cScene.start(), cScene.describe());
        QCOMPARE(cScene.board().faults().value(0).u32Hits, 1U);
        // The other signal's handler is installed.
        QVERIFY(cScene.daemon().endBySignal(u32Nth == 1 ? SIGTERM : SIGHUP));
        QVERIFY2(!cScene.daemon().crashed(), cScene.describe());
        QCOMPARE(cScene.daemon().exitCode(), 0);
    }
}

void TestStartup::without_a_bus_it_ends_with_255()
{
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    cScene.daemon().setBusAddress(QStringLiteral("unix:path=/nonexistent/bus"));
    EXPECT_FAILED_START(cScene, STARTING, OBJECTS, FAILED);
}

void TestStartup::a_bus_that_refuses_the_name_ends_it_with_255()
{
    CPrivateBus cRefusing;
    QVERIFY2(cRefusing.start(QFINDTESTDATA("no-own.conf")), qPrintable(cRefusing.error()));
    CScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    cScene.daemon().setBusAddress(cRefusing.address());
    EXPECT_FAILED_START(cScene, STARTING, NAME, QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"),
                        FAILED);
}

void TestStartup::a_second_instance_ends_with_255_and_leaves_the_first_alone()
{
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    cScene.board().setTracing(true);
    CDaemonProcess cSecond;
    cSecond.setBusAddress(cScene.bus().address());
    cSecond.useBoard(cScene.board().directory());
    cSecond.start();
    QVERIFY2(cSecond.waitForEnd(), cSecond.describe());
    QVERIFY2(!cSecond.crashed(), cSecond.describe());
    QCOMPARE(cSecond.exitCode(), 255);
    QCOMPARE(cSecond.log(), (QStringList{STARTING, NAME, QStringLiteral("NoError"), FAILED}));
    // It got as far as the devices.
    QVERIFY(operations(cScene.board()).contains(QStringLiteral("lime map")));

    QVERIFY(cScene.daemon().settle());
    QCOMPARE(cScene.end(), QString());
}

QTEST_GUILESS_MAIN(TestStartup)

#include "tst_startup.moc"
