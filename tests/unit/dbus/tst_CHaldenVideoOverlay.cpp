/* SPDX-License-Identifier: MIT */
/* The service object of "/videooverlay": its slots, and the video counter second by second. */
#include "dbus/CHaldenVideoOverlay.h"
#include "fpga/screen.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "overlay/COverlayObjectManager.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "overlay/CVideoOverlayFrontEnd.h"
#include "tests/support/CAttachedBoard.h"
#include "tests/support/CPrivateBus.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QMetaMethod>
#include <QtTest>

class TestCHaldenVideoOverlay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void registers_once();
    void slots_are_in_their_order();
    void the_adaptor_has_the_signal_first_and_then_all_methods_in_order();
    void the_adaptor_forwards_all_methods_but_one();
    void set_text_format_has_no_slot();

    void counter_text_has_three_two_and_two_places_data();
    void counter_text_has_three_two_and_two_places();
    void only_0_and_1_start_the_counter_data();
    void only_0_and_1_start_the_counter();
    void only_the_owner_controls_a_running_counter();
    void a_start_goes_on_from_the_values_that_are_there();
    void anybody_sets_an_idle_counter_and_owns_it_then();
    void values_are_cut_from_above_only();
    void each_second_carries_over();
    void a_counter_without_a_text_counts_all_the_same();
    void the_counter_writes_into_the_text_with_the_id_102();
    void the_timer_runs_while_the_counter_does();
    void a_resume_begins_a_new_second();
    void the_overlay_is_switched_on_and_off();
    void the_counter_is_precise();
    void setting_the_counter_leaves_its_second_alone();

    void positions_keep_their_low_8_bits();
    void a_length_is_the_end_column();
    void the_format_is_that_of_the_counter_text();
    void unknown_handles_give_the_defaults();

private:
    QList<int> counter() const
    {
        QList<int> cValues;
        for (const QVariant& rcValue : m_pcOverlay->get_videocounter())
            cValues << rcValue.toInt();
        return cValues;
    }
    bool isTicking() const { return m_pcOverlay->isCounterRunning(); }

    CPrivateBus m_cBus;
    QScopedPointer<CAttachedBoard> m_pcBoard;
    screen m_sScreen = {};
    QScopedPointer<COverlayObjectManager> m_pcManager;
    QScopedPointer<CVideoOverlayBackEnd> m_pcBackEnd;
    QScopedPointer<CVideoOverlayFrontEnd> m_pcFrontEnd;
    QScopedPointer<CHaldenVideoOverlay> m_pcOverlay;
};

static int s_iTimerStarts = 0;
static Qt::TimerType s_eTimerType = Qt::VeryCoarseTimer;

// Counts the calls of QTimer::start(), notes the timer's type, and passes them on.
extern "C" {
void __real__ZN6QTimer5startEv(QTimer* pcTimer);
void __wrap__ZN6QTimer5startEv(QTimer* pcTimer)
{
    ++s_iTimerStarts;
    s_eTimerType = pcTimer->timerType();
    __real__ZN6QTimer5startEv(pcTimer);
}
}

// The description of the methods for readers.
static const QStringList METHODS = {"adjust_character_set_to_locale",
                                    "change_camerahorizon_color",
                                    "change_camerahorizon_gridcolor",
                                    "change_camerahorizon_position",
                                    "change_camerahorizon_shape",
                                    "change_crawlerpitch_color",
                                    "change_crawlerpitch_position",
                                    "change_crawlerpitch_shape",
                                    "change_crawlerroll_color",
                                    "change_crawlerroll_position",
                                    "change_crawlerroll_shape",
                                    "change_crosshair_color",
                                    "change_crosshair_position",
                                    "change_crosshair_shape",
                                    "change_font",
                                    "change_logo_file",
                                    "change_logo_position",
                                    "change_roi_color",
                                    "change_roi_position",
                                    "change_roi_shape",
                                    "change_roi_size",
                                    "change_spyhole_color",
                                    "change_spyhole_position",
                                    "change_spyhole_shape",
                                    "change_video_position",
                                    "clear_temp_texts",
                                    "create_text",
                                    "destroy_all_texts",
                                    "destroy_text",
                                    "draw_roi",
                                    "draw_temp_text",
                                    "get_max_text_line_count",
                                    "get_max_text_line_width",
                                    "get_text_colors",
                                    "get_text_format",
                                    "get_text_handle_by_id",
                                    "get_text_id",
                                    "get_text_length",
                                    "get_text_position",
                                    "get_text_string",
                                    "get_videocounter",
                                    "hide_all_texts",
                                    "hide_overlay",
                                    "hide_text",
                                    "is_overlay_visible",
                                    "is_text_visible",
                                    "is_videocounter_active",
                                    "move_video_position",
                                    "set_osd_transparency",
                                    "set_roi_draw_point_1",
                                    "set_roi_draw_point_2",
                                    "set_text_colors",
                                    "set_text_format",
                                    "set_text_id",
                                    "set_text_position",
                                    "set_text_string",
                                    "set_videocounter",
                                    "show_all_texts",
                                    "show_overlay",
                                    "show_text",
                                    "toggle_camerahorizon_visibility",
                                    "toggle_crawlerpitch_visibility",
                                    "toggle_crawlerroll_visibility",
                                    "toggle_crosshair_visibility",
                                    "toggle_logo_animation",
                                    "toggle_logo_visibility",
                                    "toggle_roi_visibility",
                                    "toggle_spyhole_visibility",
                                    "videocounter_pause",
                                    "videocounter_resume",
                                    "videocounter_start",
                                    "videocounter_stop"};

static const QStringList SLOTS = {"adjust_character_set_to_locale",
                                  "clear_temp_texts",
                                  "create_text",
                                  "destroy_all_texts",
                                  "destroy_text",
                                  "draw_temp_text",
                                  "get_max_text_line_count",
                                  "get_max_text_line_width",
                                  "get_text_colors",
                                  "get_text_format",
                                  "get_text_handle_by_id",
                                  "get_text_id",
                                  "get_text_length",
                                  "get_text_position",
                                  "get_text_string",
                                  "hide_all_texts",
                                  "hide_overlay",
                                  "hide_text",
                                  "is_overlay_visible",
                                  "is_text_visible",
                                  "set_text_colors",
                                  "set_osd_transparency",
                                  "set_text_id",
                                  "set_text_position",
                                  "set_text_string",
                                  "show_all_texts",
                                  "show_overlay",
                                  "show_text",
                                  "toggle_crosshair_visibility",
                                  "change_crosshair_color",
                                  "change_crosshair_position",
                                  "change_crosshair_shape",
                                  "toggle_camerahorizon_visibility",
                                  "change_camerahorizon_color",
                                  "change_camerahorizon_gridcolor",
                                  "change_camerahorizon_position",
                                  "change_camerahorizon_shape",
                                  "toggle_logo_visibility",
                                  "toggle_logo_animation",
                                  "change_logo_file",
                                  "change_logo_position",
                                  "toggle_roi_visibility",
                                  "change_roi_color",
                                  "change_roi_position",
                                  "set_roi_draw_point_1",
                                  "set_roi_draw_point_2",
                                  "change_roi_shape",
                                  "change_roi_size",
                                  "draw_roi",
                                  "toggle_crawlerroll_visibility",
                                  "change_crawlerroll_color",
                                  "change_crawlerroll_shape",
                                  "change_crawlerroll_position",
                                  "toggle_crawlerpitch_visibility",
                                  "change_crawlerpitch_color",
                                  "change_crawlerpitch_shape",
                                  "change_crawlerpitch_position",
                                  "toggle_spyhole_visibility",
                                  "change_spyhole_color",
                                  "change_spyhole_position",
                                  "change_spyhole_shape",
                                  "change_video_position",
                                  "move_video_position",
                                  "change_font",
                                  "is_videocounter_active",
                                  "videocounter_start",
                                  "videocounter_pause",
                                  "videocounter_resume",
                                  "videocounter_stop",
                                  "get_videocounter",
                                  "set_videocounter",
                                  "onVideocounterChanged",
                                  "onVideoTimerTimeout"};

void TestCHaldenVideoOverlay::initTestCase()
{
    QVERIFY2(m_cBus.start(), qPrintable(m_cBus.error()));
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cBus.address().toLocal8Bit());
}

void TestCHaldenVideoOverlay::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    QCOMPARE(init_fpga_framebuffer(qPrintable((*m_pcBoard)->path(BOARD_FPGA))), 0);
    init_screen(&m_sScreen, nullptr);
    (*m_pcBoard)->setTracing(true);
    m_pcManager.reset(new COverlayObjectManager);
    m_pcBackEnd.reset(new CVideoOverlayBackEnd);
    m_pcFrontEnd.reset(new CVideoOverlayFrontEnd(*m_pcBackEnd, *m_pcManager));
    m_pcOverlay.reset(new CHaldenVideoOverlay(*m_pcFrontEnd));
}

// In the order in which the daemon destroys them.
void TestCHaldenVideoOverlay::cleanup()
{
    m_pcOverlay.reset();
    m_pcFrontEnd.reset();
    m_pcBackEnd.reset();
    m_pcManager.reset();
    destroy_fpga_framebuffer();
    m_pcBoard.reset();
}

static QObject* adaptorOf(QObject& rcService)
{
    return rcService.findChild<QDBusAbstractAdaptor*>();
}

static QStringList methodNames(const QMetaObject& rcMeta, QMetaMethod::MethodType eType)
{
    QStringList cNames;
    for (int iMethod = rcMeta.methodOffset(); iMethod < rcMeta.methodCount(); ++iMethod)
        if (rcMeta.method(iMethod).methodType() == eType)
            cNames << QString::fromLatin1(rcMeta.method(iMethod).name());
    return cNames;
}

void TestCHaldenVideoOverlay::registers_once()
{
    QVERIFY(m_pcOverlay->setupDBusConnection());
    QVERIFY(adaptorOf(*m_pcOverlay) != nullptr);
    QVERIFY(!m_pcOverlay->setupDBusConnection());
    QCOMPARE(QDBusConnection::systemBus().objectRegisteredAt(QStringLiteral("/videooverlay")),
             m_pcOverlay.data());
    CHaldenVideoOverlay cSecond(*m_pcFrontEnd);
    QVERIFY(!cSecond.setupDBusConnection());
    QVERIFY(adaptorOf(cSecond) == nullptr);
}

void TestCHaldenVideoOverlay::slots_are_in_their_order()
{
    QCOMPARE(methodNames(*m_pcOverlay->metaObject(), QMetaMethod::Slot), SLOTS);
    QCOMPARE(methodNames(*m_pcOverlay->metaObject(), QMetaMethod::Signal), QStringList());
}

void TestCHaldenVideoOverlay::the_adaptor_has_the_signal_first_and_then_all_methods_in_order()
{
    QVERIFY(m_pcOverlay->setupDBusConnection());
    const QMetaObject* pcMeta = adaptorOf(*m_pcOverlay)->metaObject();
    QCOMPARE(pcMeta->method(pcMeta->methodOffset()).methodSignature(),
             QByteArray("videocounter_changed(int,int,int,int)"));
    QCOMPARE(methodNames(*pcMeta, QMetaMethod::Slot), METHODS);
    QCOMPARE(METHODS.size(), 72);
}

// Same name, same arguments, same result: nothing checks that at compile time.
void TestCHaldenVideoOverlay::the_adaptor_forwards_all_methods_but_one()
{
    QVERIFY(m_pcOverlay->setupDBusConnection());
    const QMetaObject* pcAdaptor = adaptorOf(*m_pcOverlay)->metaObject();
    const QMetaObject* pcService = m_pcOverlay->metaObject();
    for (int iMethod = pcAdaptor->methodOffset(); iMethod < pcAdaptor->methodCount(); ++iMethod) {
        const QMetaMethod cMethod = pcAdaptor->method(iMethod);
        if (cMethod.methodType() != QMetaMethod::Slot || cMethod.name() == "set_text_format")
            continue;
        const int iSlot = pcService->indexOfSlot(cMethod.methodSignature());
        QVERIFY2(iSlot >= 0, cMethod.methodSignature().constData());
        QCOMPARE(pcService->method(iSlot).returnType(), cMethod.returnType());
    }
}

void TestCHaldenVideoOverlay::set_text_format_has_no_slot()
{
    QVERIFY(m_pcOverlay->setupDBusConnection());
    const int iHandle = m_pcOverlay->create_text();
    QTest::ignoreMessage(
        QtWarningMsg,
        "QMetaObject::invokeMethod: No such method CHaldenVideoOverlay::set_text_format(int,int)");
    QVERIFY(QMetaObject::invokeMethod(adaptorOf(*m_pcOverlay), "set_text_format", Q_ARG(int, iHandle),
                                      Q_ARG(int, 1)));
    QCOMPARE(m_pcOverlay->get_text_format(iHandle), 255);
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

void TestCHaldenVideoOverlay::counter_text_has_three_two_and_two_places_data()
{
    QTest::addColumn<QList<int>>("clock");
    QTest::addColumn<QString>("text");
    QTest::newRow("at start") << QList<int>{0, 0, 0} << QStringLiteral("  0:00:00");
    QTest::newRow("short") << QList<int>{1, 2, 3} << QStringLiteral("  1:02:03");
    QTest::newRow("largest") << QList<int>{100, 60, 60} << QStringLiteral("100:60:60");
    QTest::newRow("negative") << QList<int>{-1, -2, -3} << QStringLiteral(" -1:-2:-3");
    QTest::newRow("very negative") << QList<int>{-10000, 0, 0} << QStringLiteral("-10000:00:00");
}

void TestCHaldenVideoOverlay::counter_text_has_three_two_and_two_places()
{
    QFETCH(QList<int>, clock);
    QFETCH(QString, text);
    m_pcOverlay->set_videocounter(0, clock[0], clock[1], clock[2], 0);
    QCOMPARE(m_pcOverlay->GetVideoCounterTextString(), text);
}

void TestCHaldenVideoOverlay::only_0_and_1_start_the_counter_data()
{
    QTest::addColumn<int>("sender");
    QTest::addColumn<bool>("starts");
    for (const int iSender : {0, 1, 2, 3, 255, 256, INT_MAX, -1, INT_MIN})
        QTest::addRow("%d", iSender) << iSender << (iSender == 0 || iSender == 1);
}

void TestCHaldenVideoOverlay::only_0_and_1_start_the_counter()
{
    QFETCH(int, sender);
    QFETCH(bool, starts);
    m_pcOverlay->videocounter_start(sender);
    QCOMPARE(m_pcOverlay->is_videocounter_active(), starts);
    QCOMPARE(isTicking(), starts);
    QCOMPARE(counter(), (QList<int>{starts ? sender : 0, 0, 0, 0, 0}));
}

void TestCHaldenVideoOverlay::only_the_owner_controls_a_running_counter()
{
    m_pcOverlay->videocounter_start(1);
    m_pcOverlay->videocounter_start(0); // runs already
    QCOMPARE(counter().constFirst(), 1);
    for (const int iOther : {0, 2, -1}) {
        m_pcOverlay->videocounter_pause(iOther);
        m_pcOverlay->videocounter_stop(iOther);
        m_pcOverlay->set_videocounter(iOther, 9, 9, 9, 9);
        QVERIFY(m_pcOverlay->is_videocounter_active());
        QVERIFY(isTicking());
        QCOMPARE(counter(), (QList<int>{1, 0, 0, 0, 0}));
    }
    m_pcOverlay->set_videocounter(1, 1, 2, 3, 4);
    QCOMPARE(counter(), (QList<int>{1, 1, 2, 3, 4}));
    m_pcOverlay->videocounter_pause(1);
    QVERIFY(m_pcOverlay->is_videocounter_active());
    QVERIFY(!isTicking());
    m_pcOverlay->videocounter_resume(0);
    QVERIFY(!isTicking());
    m_pcOverlay->videocounter_resume(1);
    QVERIFY(isTicking());
    m_pcOverlay->videocounter_stop(1);
    QVERIFY(!m_pcOverlay->is_videocounter_active());
    QVERIFY(!isTicking());
    QCOMPARE(counter(), (QList<int>{1, 1, 2, 3, 4}));
}

void TestCHaldenVideoOverlay::a_start_goes_on_from_the_values_that_are_there()
{
    m_pcOverlay->set_videocounter(1, 5, 59, 59, 0);
    m_pcOverlay->videocounter_start(0);
    QCOMPARE(counter(), (QList<int>{0, 5, 59, 59, 0}));
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(counter(), (QList<int>{0, 6, 0, 0, 0}));
    m_pcOverlay->videocounter_stop(0);
    m_pcOverlay->videocounter_start(1);
    QCOMPARE(counter(), (QList<int>{1, 6, 0, 0, 0}));
}

void TestCHaldenVideoOverlay::anybody_sets_an_idle_counter_and_owns_it_then()
{
    m_pcOverlay->set_videocounter(77, 1, 1, 1, 1);
    QCOMPARE(counter(), (QList<int>{77, 1, 1, 1, 1}));
    QVERIFY(!m_pcOverlay->is_videocounter_active());
    m_pcOverlay->set_videocounter(-5, 2, 2, 2, 2);
    QCOMPARE(counter(), (QList<int>{-5, 2, 2, 2, 2}));
}

void TestCHaldenVideoOverlay::values_are_cut_from_above_only()
{
    m_pcOverlay->set_videocounter(0, 250, 75, 61, 120);
    QCOMPARE(counter(), (QList<int>{0, 100, 60, 60, 100}));
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(counter(), (QList<int>{0, 101, 0, 0, 100}));
    m_pcOverlay->set_videocounter(0, 100, 60, 60, 100);
    QCOMPARE(counter(), (QList<int>{0, 100, 60, 60, 100}));
    m_pcOverlay->set_videocounter(0, INT_MIN, INT_MIN, INT_MIN, INT_MIN);
    QCOMPARE(counter(), (QList<int>{0, INT_MIN, INT_MIN, INT_MIN, INT_MIN}));
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(counter(), (QList<int>{0, INT_MIN, INT_MIN, INT_MIN + 1, INT_MIN}));
}

void TestCHaldenVideoOverlay::each_second_carries_over()
{
    m_pcOverlay->set_videocounter(0, 0, 0, 0, 7);
    for (int iSecond = 1; iSecond <= 2 * 3600 + 61; ++iSecond) {
        m_pcOverlay->onVideoTimerTimeout();
        QCOMPARE(counter(), (QList<int>{0, iSecond / 3600, iSecond / 60 % 60, iSecond % 60, 7}));
    }
}

void TestCHaldenVideoOverlay::a_counter_without_a_text_counts_all_the_same()
{
    const int iHandle = m_pcOverlay->create_text();
    m_pcOverlay->show_text(iHandle);
    m_pcBoard->takeTrace();
    m_pcOverlay->set_videocounter(0, 1, 2, 3, 0);
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(counter(), (QList<int>{0, 1, 2, 4, 0}));
    QCOMPARE(m_pcOverlay->get_text_string(iHandle), QString());
    QCOMPARE(m_pcBoard->takeTrace(), QStringList());
}

void TestCHaldenVideoOverlay::the_counter_writes_into_the_text_with_the_id_102()
{
    const int iHandle = m_pcOverlay->create_text();
    m_pcOverlay->set_text_id(iHandle, 102);
    m_pcOverlay->set_videocounter(0, 5, 59, 59, 0);
    QCOMPARE(m_pcOverlay->get_text_string(iHandle), QStringLiteral("  5:59:59"));
    QCOMPARE(m_pcBoard->takeTrace(), QStringList()); // not visible
    m_pcOverlay->show_text(iHandle);
    m_pcBoard->takeTrace();
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(m_pcOverlay->get_text_string(iHandle), QStringLiteral("  6:00:00"));
    QCOMPARE(m_pcBoard->takeTrace().size(), 9 * 2); // a seek and a write a cell
    m_pcOverlay->destroy_text(iHandle);
    m_pcOverlay->onVideoTimerTimeout();
    QCOMPARE(counter(), (QList<int>{0, 6, 0, 1, 0}));
}

void TestCHaldenVideoOverlay::the_timer_runs_while_the_counter_does()
{
    QVERIFY(!isTicking());
    m_pcOverlay->videocounter_start(0);
    QTRY_COMPARE(counter(), (QList<int>{0, 0, 0, 1, 0}));
}

// Of a counter that runs too.
void TestCHaldenVideoOverlay::a_resume_begins_a_new_second()
{
    m_pcOverlay->videocounter_start(0);
    QVERIFY(isTicking());
    s_iTimerStarts = 0;
    m_pcOverlay->videocounter_resume(0);
    QCOMPARE(s_iTimerStarts, 1);
    QVERIFY(isTicking());
    m_pcOverlay->videocounter_pause(0);
    QVERIFY(!isTicking());
    m_pcOverlay->videocounter_resume(0);
    QCOMPARE(s_iTimerStarts, 2);
    QVERIFY(isTicking());
}

void TestCHaldenVideoOverlay::the_overlay_is_switched_on_and_off()
{
    for (int iRound = 0; iRound < 2; ++iRound) {
        m_pcOverlay->show_overlay();
        QVERIFY(m_pcOverlay->is_overlay_visible());
        QVERIFY((*m_pcBoard)->fpgaRegister(FPGA_CTRL) != 0U);
        m_pcOverlay->hide_overlay();
        QVERIFY(!m_pcOverlay->is_overlay_visible());
        QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    }
}

// Another timer may be wrong by a twentieth: three seconds in a minute of film.
void TestCHaldenVideoOverlay::the_counter_is_precise()
{
    m_pcOverlay->videocounter_start(0);
    QCOMPARE(s_eTimerType, Qt::PreciseTimer);
}

void TestCHaldenVideoOverlay::setting_the_counter_leaves_its_second_alone()
{
    s_iTimerStarts = 0;
    m_pcOverlay->set_videocounter(0, 1, 2, 3, 4);
    QVERIFY(!isTicking());
    m_pcOverlay->videocounter_start(0);
    m_pcOverlay->set_videocounter(0, 2, 3, 4, 5);
    QVERIFY(isTicking());
    m_pcOverlay->videocounter_pause(0);
    m_pcOverlay->set_videocounter(0, 3, 4, 5, 6);
    QVERIFY(!isTicking());
    QCOMPARE(s_iTimerStarts, 1);
}

void TestCHaldenVideoOverlay::positions_keep_their_low_8_bits()
{
    const int iHandle = m_pcOverlay->create_text();
    m_pcOverlay->set_text_position(iHandle, 300, -1);
    QCOMPARE(m_pcOverlay->get_text_position(iHandle), (QVariantList{44, 255, 44}));
    m_pcOverlay->set_text_position(iHandle, INT_MIN, INT_MAX);
    QCOMPARE(m_pcOverlay->get_text_position(iHandle), (QVariantList{0, 255, 0}));
}

void TestCHaldenVideoOverlay::a_length_is_the_end_column()
{
    const int iHandle = m_pcOverlay->create_text();
    m_pcOverlay->set_text_string(iHandle, QStringLiteral("Hello"));
    m_pcOverlay->set_text_position(iHandle, 10, 3);
    QCOMPARE(m_pcOverlay->get_text_length(iHandle), 15);
    QCOMPARE(m_pcOverlay->get_text_length(iHandle + 1), 255);
    QCOMPARE(m_pcOverlay->get_text_position(iHandle), (QVariantList{10, 3, 15}));
}

void TestCHaldenVideoOverlay::the_format_is_that_of_the_counter_text()
{
    const int iHandle = m_pcOverlay->create_text();
    const int iCounter = m_pcOverlay->create_text();
    m_pcOverlay->set_text_id(iCounter, 102);
    QCOMPARE(m_pcOverlay->get_text_format(iCounter), 1);
    for (const int iOther : {iHandle, 0, -1, 77, INT_MAX, INT_MIN})
        QCOMPARE(m_pcOverlay->get_text_format(iOther), 255);
}

void TestCHaldenVideoOverlay::unknown_handles_give_the_defaults()
{
    for (const int iHandle : {0, 1, -1, 65535, 65536, INT_MAX, INT_MIN}) {
        QCOMPARE(m_pcOverlay->get_text_id(iHandle), 0);
        QCOMPARE(m_pcOverlay->get_text_string(iHandle), QString());
        QCOMPARE(m_pcOverlay->is_text_visible(iHandle), false);
        QCOMPARE(m_pcOverlay->get_text_length(iHandle), 255);
        QCOMPARE(m_pcOverlay->get_text_position(iHandle), (QVariantList{255, 255, 255}));
        QCOMPARE(m_pcOverlay->get_text_colors(iHandle), (QVariantList{0, 0}));
    }
}

QTEST_GUILESS_MAIN(TestCHaldenVideoOverlay)

#include "tst_CHaldenVideoOverlay.moc"
