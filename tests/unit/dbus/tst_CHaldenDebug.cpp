/* SPDX-License-Identifier: MIT */
/* The service object of "/debug": its registration, and what it prints during it. tests/system/tst_debug.cpp
 * tests the slots with the whole daemon. */
#include "dbus/CHaldenDebug.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/support/CPrivateBus.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QMetaMethod>
#include <QtTest>

class TestCHaldenDebug : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void says_how_it_registers();
    void registers_once();
    void a_path_already_taken_fails_and_leaves_no_adaptor();
    void slots_and_forwarding_slots_are_the_nine_methods();

private:
    CPrivateBus m_cBus;
    CHaldenDebug m_cDebug;
};

static QObject* adaptorOf(QObject& rcService)
{
    return rcService.findChild<QDBusAbstractAdaptor*>();
}

// Registers the object; rcOutput gets its lines on standard output.
static bool setup(CHaldenDebug& rcDebug, QByteArray& rcOutput)
{
    CCapturedOutput cOutput(1);
    const bool bRegistered = rcDebug.setupDBusConnection();
    rcOutput = cOutput.take();
    return bRegistered;
}

void TestCHaldenDebug::initTestCase()
{
    QVERIFY2(m_cBus.start(), qPrintable(m_cBus.error()));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cBus.address().toLocal8Bit());
}

void TestCHaldenDebug::says_how_it_registers()
{
    QByteArray cOutput;
    QVERIFY(setup(m_cDebug, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenDebug::setupDBusConnection(start) \n"
                                 "CHaldenDebug::setupDBusConnection(new) \n"
                                 "CHaldenDebug::setupDBusConnection()=1 \n"));
}

void TestCHaldenDebug::registers_once()
{
    QObject* pcAdaptor = adaptorOf(m_cDebug);
    QVERIFY(pcAdaptor != nullptr);
    QByteArray cOutput;
    QVERIFY(!setup(m_cDebug, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenDebug::setupDBusConnection(start) \n"
                                 "CHaldenDebug::setupDBusConnection()=0 \n"));
    QCOMPARE(adaptorOf(m_cDebug), pcAdaptor);
    QCOMPARE(QDBusConnection::systemBus().objectRegisteredAt(QStringLiteral("/debug")), &m_cDebug);
}

void TestCHaldenDebug::a_path_already_taken_fails_and_leaves_no_adaptor()
{
    CHaldenDebug cSecond;
    QByteArray cOutput;
    QVERIFY(!setup(cSecond, cOutput));
    QCOMPARE(cOutput, QByteArray("CHaldenDebug::setupDBusConnection(start) \n"
                                 "CHaldenDebug::setupDBusConnection(new) \n"
                                 "CHaldenDebug::setupDBusConnection(delete) \n"
                                 "CHaldenDebug::setupDBusConnection()=0 \n"));
    QVERIFY(adaptorOf(cSecond) == nullptr);
}

// In the order of their names, on both sides: the adaptor forwards by name, which nothing checks at compile
// time.
void TestCHaldenDebug::slots_and_forwarding_slots_are_the_nine_methods()
{
    const QList<QByteArray> cExpected = {
        "fpga_disable_frame_generator()", "fpga_disable_video_restore()", "fpga_enable_frame_generator()",
        "fpga_enable_video_restore()",    "fpga_enter_playback_mode()",   "fpga_enter_recording_mode()",
        "print_hardware_config(QString)", "reload_hardware_config()",     "save_hardware_config()"};
    for (const QMetaObject* pcMeta : {m_cDebug.metaObject(), adaptorOf(m_cDebug)->metaObject()}) {
        QList<QByteArray> cSlots;
        for (int iMethod = pcMeta->methodOffset(); iMethod < pcMeta->methodCount(); ++iMethod)
            cSlots << pcMeta->method(iMethod).methodSignature();
        QCOMPARE(cSlots, cExpected);
    }
}

QTEST_GUILESS_MAIN(TestCHaldenDebug)

#include "tst_CHaldenDebug.moc"
