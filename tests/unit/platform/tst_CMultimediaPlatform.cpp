/* The bring-up on files in the place of devices. */
#include "daemon/CEventLogger.h"
#include "hw/lime_device.h"
#include "hw/lime_map.h"
#include "platform/CMultimediaPlatform.h"
#include "platform/Lime.h"
#include "tests/support/CCapturedOutput.h"

#include <QTemporaryFile>
#include <QtTest>

class TestCMultimediaPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void brings_the_display_controller_up();
    void reports_and_logs_a_device_that_does_not_exist();
    void comes_back_when_the_device_does();
    void finalize_can_be_called_twice();
    void names_the_register_files();
};

// Initializes with a display controller at rcPath; rcOutput and rcLog receive what came out.
static int initialize(const QByteArray& rcPath, QByteArray& rcOutput, QByteArray& rcLog)
{
    CCapturedOutput cOutput(1);
    CCapturedOutput cLog(2);
    const int iResult = CMultimediaPlatform::initialize("/dev/null", "/dev/null", rcPath.constData());
    rcLog = cLog.take();
    rcOutput = cOutput.take();
    return iResult;
}

void TestCMultimediaPlatform::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
}

void TestCMultimediaPlatform::brings_the_display_controller_up()
{
    QTemporaryFile cDevice;
    QVERIFY(cDevice.open());
    QVERIFY(cDevice.resize(static_cast<qint64>(lime_map_length())));
    const QByteArray cPath = cDevice.fileName().toLocal8Bit();
    QByteArray cOutput;
    QByteArray cLog;
    QCOMPARE(initialize(cPath, cOutput, cLog), 1);
    QCOMPARE(cOutput, QByteArray());
    QCOMPARE(cLog, QByteArray());

    // Both mappings show the same controller: the one of the tables and the one of the video window.
    Lime::lime_set_background_color(1, 2, 3);
    QCOMPARE(lime_read_disp_reg(0x184), 0x00010203U);
    QCOMPARE(CMultimediaPlatform::reinitialize(), 1);
    QCOMPARE(lime_read_disp_reg(0x184), 0U);
    QCOMPARE(Lime::lime_read_disp_reg(0x184), 0U);
}

void TestCMultimediaPlatform::reports_and_logs_a_device_that_does_not_exist()
{
    QByteArray cOutput;
    QByteArray cLog;
    QCOMPARE(initialize("/nonexistent/fb0", cOutput, cLog), 0);
    QCOMPARE(cOutput, QByteArray("Error: failed to map framebuffer device to memory\n"));
    QVERIFY2(QRegularExpression(QStringLiteral("^haldend\\[\\d+\\]: Error initializing Lime framebuffer\n$"))
                 .match(QString::fromLocal8Bit(cLog))
                 .hasMatch(),
             cLog.constData());
    QCOMPARE(Lime::lime_read_disp_reg(0x184), 0U);
}

void TestCMultimediaPlatform::comes_back_when_the_device_does()
{
    QTemporaryFile cDevice;
    QVERIFY(cDevice.open());
    const QByteArray cPath = cDevice.fileName().toLocal8Bit();
    QByteArray cOutput;
    QByteArray cLog;
    QCOMPARE(initialize(cPath, cOutput, cLog), 0);
    QVERIFY(cDevice.resize(static_cast<qint64>(lime_map_length())));
    QCOMPARE(CMultimediaPlatform::reinitialize(), 1);
    Lime::lime_set_background_color(4, 5, 6);
    QCOMPARE(lime_read_disp_reg(0x184), 0x00040506U);
}

void TestCMultimediaPlatform::finalize_can_be_called_twice()
{
    Lime::instance();
    CMultimediaPlatform::finalize();
    CMultimediaPlatform::finalize();
    Lime::instance().lime_set_background_color(7, 8, 9);
    QCOMPARE(lime_read_disp_reg(0x184), 0x00070809U);
    CMultimediaPlatform::finalize();
}

void TestCMultimediaPlatform::names_the_register_files()
{
    QCOMPARE(CMultimediaPlatform::getFPGAConfigFile(), "/usr/etc/cnfs/fpga.cnf");
    QCOMPARE(CMultimediaPlatform::getLimeConfigFile(), "/usr/etc/cnfs/lime.cnf");
    QCOMPARE(CMultimediaPlatform::getSAA7113ConfigFile(), "/usr/etc/cnfs/saa7113.cnf");
    QCOMPARE(CMultimediaPlatform::getSAA7129ConfigFile(), "/usr/etc/cnfs/saa7129.cnf");
}

QTEST_GUILESS_MAIN(TestCMultimediaPlatform)

#include "tst_CMultimediaPlatform.moc"
