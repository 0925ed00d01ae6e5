/* SPDX-License-Identifier: MIT */
/* The service object and its generated adaptor on a private bus, the display controller recorded. */
#include "dbus/CHaldenVideoDisplay.h"
#include "hw/lime_mmio.h"
#include "platform/Lime.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/hw/lime_recorder.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QtTest>

#include <vector>

using accesses = std::vector<lime_access>;

class TestCHaldenVideoDisplay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void registers_once();
    void a_path_already_taken_fails_and_leaves_no_adaptor();
    void the_adaptor_forwards_by_name_data();
    void the_adaptor_forwards_by_name();
    void the_adaptor_returns_the_displayed_size();
    void set_video_restart_has_no_slot();
    void adaptor_slots_are_in_alphabetical_order();
    void sizes_are_cut_to_16_bits_data();
    void sizes_are_cut_to_16_bits();
    void positions_are_passed_as_unsigned_data();
    void positions_are_passed_as_unsigned();
    void the_layer_switch_reaches_layer_1();
    void rotation_and_mode_do_nothing();

private:
    CPrivateBus m_cBus;
    CHaldenVideoDisplay m_cDisplay;
};

static const quint32 DISP = LIME_DISP_WINDOW;
static const quint32 CAPT = LIME_CAPT_WINDOW;

// Values around every border between "in range", "wraps" and "refused".
static const int EDGE_VALUES[] = {0, 1, -1, 719, 720, 721, 4095, 4096, 65535, 65536, 70000, INT_MIN, INT_MAX};

static QObject* adaptorOf(QObject& rcService)
{
    return rcService.findChild<QDBusAbstractAdaptor*>();
}

void TestCHaldenVideoDisplay::initTestCase()
{
    QVERIFY2(m_cBus.start(), qPrintable(m_cBus.error()));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cBus.address().toLocal8Bit());
    QVERIFY(m_cDisplay.setupDBusConnection());
}

void TestCHaldenVideoDisplay::init()
{
    Lime::lime_video_resize(300, 200);
    lime_recorder_reset();
}

void TestCHaldenVideoDisplay::registers_once()
{
    QObject* pcAdaptor = adaptorOf(m_cDisplay);
    QVERIFY(pcAdaptor != nullptr);
    QVERIFY(!m_cDisplay.setupDBusConnection());
    QCOMPARE(adaptorOf(m_cDisplay), pcAdaptor);
    QCOMPARE(m_cDisplay.findChildren<QDBusAbstractAdaptor*>().size(), 1);
    QCOMPARE(QDBusConnection::systemBus().objectRegisteredAt(QStringLiteral("/videodisplay")), &m_cDisplay);
}

void TestCHaldenVideoDisplay::a_path_already_taken_fails_and_leaves_no_adaptor()
{
    CHaldenVideoDisplay cSecond;
    QVERIFY(!cSecond.setupDBusConnection());
    QVERIFY(adaptorOf(cSecond) == nullptr);
    QCOMPARE(QDBusConnection::systemBus().objectRegisteredAt(QStringLiteral("/videodisplay")), &m_cDisplay);
}

void TestCHaldenVideoDisplay::the_adaptor_forwards_by_name_data()
{
    QTest::addColumn<QByteArray>("method");
    for (const char* pszMethod :
         {"get_displayed_video_height()", "get_displayed_video_width()", "set_video_layer_enabled(bool)",
          "set_video_mode(int)", "set_video_position(int,int)", "set_video_rotation(int)",
          "set_video_size(int,int)"})
        QTest::newRow(pszMethod) << QByteArray(pszMethod);
}

// Both sides have the method with the same arguments and the same result, or the forwarding fails at run
// time.
void TestCHaldenVideoDisplay::the_adaptor_forwards_by_name()
{
    QFETCH(QByteArray, method);
    const QMetaObject* pcAdaptor = adaptorOf(m_cDisplay)->metaObject();
    const QMetaObject* pcService = m_cDisplay.metaObject();
    const int iAdaptorSlot = pcAdaptor->indexOfSlot(method);
    const int iServiceSlot = pcService->indexOfSlot(method);
    QVERIFY(iAdaptorSlot >= 0);
    QVERIFY(iServiceSlot >= 0);
    QCOMPARE(pcAdaptor->method(iAdaptorSlot).returnType(), pcService->method(iServiceSlot).returnType());
}

void TestCHaldenVideoDisplay::the_adaptor_returns_the_displayed_size()
{
    int iWidth = 0;
    int iHeight = 0;
    QVERIFY(QMetaObject::invokeMethod(adaptorOf(m_cDisplay), "get_displayed_video_width",
                                      Q_RETURN_ARG(int, iWidth)));
    QVERIFY(QMetaObject::invokeMethod(adaptorOf(m_cDisplay), "get_displayed_video_height",
                                      Q_RETURN_ARG(int, iHeight)));
    QCOMPARE(iWidth, 300);
    QCOMPARE(iHeight, 200);
}

void TestCHaldenVideoDisplay::set_video_restart_has_no_slot()
{
    QCOMPARE(m_cDisplay.metaObject()->indexOfMethod("set_video_restart(int)"), -1);
    QTest::ignoreMessage(
        QtWarningMsg,
        "QMetaObject::invokeMethod: No such method CHaldenVideoDisplay::set_video_restart(int)");
    QVERIFY(QMetaObject::invokeMethod(adaptorOf(m_cDisplay), "set_video_restart", Q_ARG(int, 1)));
    QVERIFY(lime_recorded().empty());
}

void TestCHaldenVideoDisplay::adaptor_slots_are_in_alphabetical_order()
{
    const QMetaObject* pcMeta = adaptorOf(m_cDisplay)->metaObject();
    QStringList cNames;
    for (int iMethod = pcMeta->methodOffset(); iMethod < pcMeta->methodCount(); ++iMethod)
        cNames << QString::fromLatin1(pcMeta->method(iMethod).name());
    QStringList cSorted = cNames;
    cSorted.sort();
    QCOMPARE(cNames.size(), 8);
    QCOMPARE(cNames, cSorted);
}

static void addEdgePairs()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    for (const int iFirst : EDGE_VALUES)
        for (const int iSecond : EDGE_VALUES)
            QTest::addRow("%d, %d", iFirst, iSecond) << iFirst << iSecond;
    QTest::addRow("cut to 4464 and 5") << 70000 << 5;
}

void TestCHaldenVideoDisplay::sizes_are_cut_to_16_bits_data()
{
    addEdgePairs();
}

void TestCHaldenVideoDisplay::sizes_are_cut_to_16_bits()
{
    QFETCH(int, first);
    QFETCH(int, second);
    const auto u16Width = static_cast<quint16>(static_cast<quint32>(first) % 65536);
    const auto u16Height = static_cast<quint16>(static_cast<quint32>(second) % 65536);
    m_cDisplay.set_video_size(first, second);

    if (u16Width == 0 || u16Height == 0 || u16Width > 4095 || u16Height > 4095) {
        QVERIFY(lime_recorded().empty());
        QCOMPARE(m_cDisplay.get_displayed_video_width(), 300);
        QCOMPARE(m_cDisplay.get_displayed_video_height(), 200);
        return;
    }
    const quint16 u16Shown = u16Width == 720 ? 688 : u16Width;
    QCOMPARE(lime_recorded().size(), std::size_t{2});
    QVERIFY(lime_recorded()[0].op == lime_access::store);
    QCOMPARE(lime_recorded()[0].window, CAPT);
    QVERIFY(lime_recorded()[1] == lime_stored(DISP, 0x128, static_cast<quint32>(u16Height) << 16 | u16Shown));
    QCOMPARE(m_cDisplay.get_displayed_video_width(), int(u16Shown));
    QCOMPARE(m_cDisplay.get_displayed_video_height(), int(u16Height));
}

void TestCHaldenVideoDisplay::positions_are_passed_as_unsigned_data()
{
    addEdgePairs();
}

void TestCHaldenVideoDisplay::positions_are_passed_as_unsigned()
{
    QFETCH(int, first);
    QFETCH(int, second);
    const auto u32X = static_cast<quint32>(first);
    const auto u32Y = static_cast<quint32>(second);
    m_cDisplay.set_video_position(first, second);
    QVERIFY((lime_recorded() == accesses{lime_stored(DISP, 0x124, u32Y * 65536 | u32X)}));
}

void TestCHaldenVideoDisplay::the_layer_switch_reaches_layer_1()
{
    lime_recorder_set(DISP, 0x100, 0x80030000);
    m_cDisplay.set_video_layer_enabled(false);
    m_cDisplay.set_video_layer_enabled(true);
    QVERIFY((lime_recorded() ==
             accesses{lime_loaded(DISP, 0x100, 0x80030000), lime_stored(DISP, 0x100, 0x80010000),
                      lime_loaded(DISP, 0x100, 0x80010000), lime_stored(DISP, 0x100, 0x80030000)}));
}

void TestCHaldenVideoDisplay::rotation_and_mode_do_nothing()
{
    for (const int iValue : EDGE_VALUES) {
        m_cDisplay.set_video_rotation(iValue);
        m_cDisplay.set_video_mode(iValue);
    }
    QVERIFY(lime_recorded().empty());
}

QTEST_GUILESS_MAIN(TestCHaldenVideoDisplay)

#include "tst_CHaldenVideoDisplay.moc"
