/* SPDX-License-Identifier: MIT */
/* The video window's registers, recorded in the place of the display controller. */
#include "hw/lime_map.h"
#include "hw/lime_mmio.h"
#include "platform/Lime.h"
#include "tests/support/hw/lime_recorder.h"

#include <QTemporaryFile>
#include <QtTest>

#include <vector>

#include <unistd.h>

using accesses = std::vector<lime_access>;

class TestLime : public QObject
{
    Q_OBJECT

private slots:
    void init();

    // Runs first: the displayed size is process-wide and this is about its initial value.
    void before_any_resize_the_displayed_size_is_688_by_573();

    void refuses_sizes_of_0_and_above_4095_data();
    void refuses_sizes_of_0_and_above_4095();
    void scales_and_sizes_the_window_data();
    void scales_and_sizes_the_window();
    void every_size_keeps_its_formula();
    void places_the_window_without_a_check();
    void layer_enable_1_off_clears_only_bit_17();
    void layer_enable_reaches_layers_0_to_5_only();
    void sets_the_background_colour();
    void each_window_has_its_place();
    void instance_is_one_object_until_it_is_deleted();

    void survives_a_device_that_does_not_exist();
    void survives_a_device_that_is_too_short();
    void survives_a_descriptor_of_0();
    void reinit_releases_the_earlier_mapping();
};

static const quint32 DISP = LIME_DISP_WINDOW;
static const quint32 CAPT = LIME_CAPT_WINDOW;

void TestLime::init()
{
    lime_recorder_reset();
}

void TestLime::before_any_resize_the_displayed_size_is_688_by_573()
{
    QCOMPARE(Lime::getDisplayedVideoWidth(), quint16(688));
    QCOMPARE(Lime::getDisplayedVideoHeight(), quint16(573));
}

void TestLime::refuses_sizes_of_0_and_above_4095_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("width 0") << 0 << 576;
    QTest::newRow("height 0") << 720 << 0;
    QTest::newRow("both 0") << 0 << 0;
    QTest::newRow("width 4096") << 4096 << 576;
    QTest::newRow("height 4096") << 720 << 4096;
    QTest::newRow("width 65535") << 65535 << 576;
    QTest::newRow("height 65535") << 720 << 65535;
}

void TestLime::refuses_sizes_of_0_and_above_4095()
{
    QFETCH(int, width);
    QFETCH(int, height);
    Lime::lime_video_resize(300, 200);
    lime_recorder_reset();
    Lime::lime_video_resize(static_cast<unsigned short>(width), static_cast<unsigned short>(height));
    QVERIFY(lime_recorded().empty());
    QCOMPARE(Lime::getDisplayedVideoWidth(), quint16(300));
    QCOMPARE(Lime::getDisplayedVideoHeight(), quint16(200));
}

void TestLime::scales_and_sizes_the_window_data()
{
    QTest::addColumn<quint16>("width");
    QTest::addColumn<quint16>("height");
    QTest::addColumn<quint32>("scale");
    QTest::addColumn<quint16>("displayed");
    QTest::newRow("full picture") << quint16(720) << quint16(576) << 0x08000800U << quint16(688);
    QTest::newRow("one pixel less") << quint16(719) << quint16(576) << 0x07f507abU << quint16(719);
    QTest::newRow("one pixel more") << quint16(721) << quint16(576) << 0x080007fdU << quint16(721);
    QTest::newRow("quarter") << quint16(360) << quint16(288) << 0x0fd50eb1U << quint16(360);
    QTest::newRow("wider than the screen") << quint16(1024) << quint16(576) << 0x080005a0U << quint16(1024);
    QTest::newRow("largest") << quint16(4095) << quint16(4095) << 0x01200168U << quint16(4095);
    // 576 / 4 * 2048 = 0x48000 and 720 / 33 * 2048 = 44683: the vertical scale loses its high bits.
    QTest::newRow("smallest") << quint16(1) << quint16(1) << 0x8000ae8bU << quint16(1);
    // 576 / 1 * 2048 = 0x120000: all of it is lost.
    QTest::newRow("flat") << quint16(720) << quint16(1) << 0x00000800U << quint16(688);
}

void TestLime::scales_and_sizes_the_window()
{
    QFETCH(quint16, width);
    QFETCH(quint16, height);
    QFETCH(quint32, scale);
    QFETCH(quint16, displayed);
    Lime::lime_video_resize(width, height);
    const quint32 u32Size = static_cast<quint32>(height) << 16 | displayed;
    QVERIFY(
        (lime_recorded() == accesses{lime_stored(CAPT, 0x004, scale), lime_stored(DISP, 0x128, u32Size)}));
    QCOMPARE(Lime::getDisplayedVideoWidth(), displayed);
    QCOMPARE(Lime::getDisplayedVideoHeight(), height);
}

// The scale against the same division in exact integers: single precision may differ by the last unit where
// the quotient lies within its resolution of a whole number, and nowhere else.
void TestLime::every_size_keeps_its_formula()
{
    for (quint32 u32Size = 1; u32Size <= 4095; ++u32Size) {
        lime_recorder_reset();
        Lime::lime_video_resize(static_cast<unsigned short>(u32Size), static_cast<unsigned short>(u32Size));
        const quint32 u32Margin = u32Size < 720 ? 1 : 0;
        const quint64 u64Vertical = 576ULL * 2048 / (u32Size + 3 * u32Margin);
        const quint64 u64Horizontal = 720ULL * 2048 / (u32Size + 32 * u32Margin);
        const quint32 u32Scale = lime_recorded().front().value;
        const auto cNear = [](quint64 u64Exact, quint32 u32Half) {
            const auto u32Cut = static_cast<quint32>(u64Exact & 0xffff);
            return u32Half == u32Cut || u32Half == ((u32Cut - 1) & 0xffff) ||
                   u32Half == ((u32Cut + 1) & 0xffff);
        };
        QVERIFY2(cNear(u64Vertical, u32Scale >> 16), qPrintable(QString::number(u32Size)));
        QVERIFY2(cNear(u64Horizontal, u32Scale & 0xffff), qPrintable(QString::number(u32Size)));
    }
}

void TestLime::places_the_window_without_a_check()
{
    Lime::lime_video_position(100, 50);
    Lime::lime_video_position(0xffffffff, 0xffffffff);
    Lime::lime_video_position(70000, 0x80000001);
    QVERIFY((lime_recorded() == accesses{lime_stored(DISP, 0x124, 50U << 16 | 100),
                                         lime_stored(DISP, 0x124, 0xffffffff),
                                         lime_stored(DISP, 0x124, 0x00010000 | 70000)}));
}

void TestLime::layer_enable_1_off_clears_only_bit_17()
{
    lime_recorder_set(DISP, 0x100, 0xffffffff);
    Lime::lime_layer_enable(1, false);
    QVERIFY((lime_recorded() ==
             accesses{lime_loaded(DISP, 0x100, 0xffffffff), lime_stored(DISP, 0x100, 0xfffdffff)}));
}

void TestLime::layer_enable_reaches_layers_0_to_5_only()
{
    for (int iLayer = 0; iLayer <= 5; ++iLayer) {
        lime_recorder_set(DISP, 0x100, 0x80000005);
        Lime::lime_layer_enable(iLayer, true);
        QVERIFY(lime_recorded().back() == lime_stored(DISP, 0x100, 0x80000005 | 1U << (16 + iLayer)));
    }
    lime_recorder_reset();
    for (const int iLayer : {-1, 6, 16, 32, INT_MIN, INT_MAX})
        Lime::lime_layer_enable(iLayer, true);
    QVERIFY(lime_recorded().empty());
}

void TestLime::sets_the_background_colour()
{
    Lime::lime_set_background_color(0x12, 0xff, 0x80);
    QVERIFY((lime_recorded() == accesses{lime_stored(DISP, 0x184, 0x0012ff80)}));
}

void TestLime::each_window_has_its_place()
{
    const struct {
        quint32 u32Window;
        void (*write)(std::uint32_t, std::uint32_t);
        std::uint32_t (*read)(std::uint32_t);
    } asWindows[] = {
        {0x1fc0000, Lime::lime_write_host_reg, Lime::lime_read_host_reg},
        {0x1fd0000, Lime::lime_write_disp_reg, Lime::lime_read_disp_reg},
        {0x1fd8000, Lime::lime_write_capt_reg, Lime::lime_read_capt_reg},
        {0x1ff0000, Lime::lime_write_draw_reg, Lime::lime_read_draw_reg},
        {0x1ff8000, Lime::lime_write_pio_reg,  Lime::lime_read_pio_reg },
    };
    for (const auto& rsWindow : asWindows) {
        lime_recorder_reset();
        lime_recorder_set(rsWindow.u32Window, 0x28, 0x600d);
        rsWindow.write(0x24, 0xcafe);
        QCOMPARE(rsWindow.read(0x28), 0x600dU);
        QVERIFY((lime_recorded() == accesses{lime_stored(rsWindow.u32Window, 0x24, 0xcafe),
                                             lime_loaded(rsWindow.u32Window, 0x28, 0x600d)}));
    }
}

void TestLime::instance_is_one_object_until_it_is_deleted()
{
    Lime* pcFirst = &Lime::instance();
    QCOMPARE(&Lime::instance(), pcFirst);
    delete pcFirst;
    Lime::instance().lime_set_background_color(0, 0, 1);
    QCOMPARE(lime_recorded().size(), std::size_t{1});
}

// Without a mapping accesses have no base, and lime_load() and lime_store() refuse them.
static bool hasMapping()
{
    Lime::lime_set_background_color(0, 0, 0);
    return lime_recorded().back().base != nullptr;
}

void TestLime::survives_a_device_that_does_not_exist()
{
    Lime::reinit_framebuffer_device(QStringLiteral("/nonexistent/fb0"));
    QVERIFY(!hasMapping());
    Lime::free_lime_framebuffer();
    QVERIFY(!hasMapping());
}

void TestLime::survives_a_device_that_is_too_short()
{
    QTemporaryFile cDevice;
    QVERIFY(cDevice.open());
    QVERIFY(cDevice.resize(static_cast<qint64>(lime_map_length()) - 1));
    Lime::reinit_framebuffer_device(cDevice.fileName());
    QVERIFY(!hasMapping());
    Lime::free_lime_framebuffer();
}

void TestLime::survives_a_descriptor_of_0()
{
    QTemporaryFile cDevice;
    QVERIFY(cDevice.open());
    QVERIFY(cDevice.resize(static_cast<qint64>(lime_map_length())));
    const int iSaved = dup(0);
    close(0);
    Lime::reinit_framebuffer_device(cDevice.fileName());
    QVERIFY(!hasMapping());
    dup2(iSaved, 0);
    close(iSaved);
    Lime::free_lime_framebuffer();
}

void TestLime::reinit_releases_the_earlier_mapping()
{
    QTemporaryFile cDevice;
    QVERIFY(cDevice.open());
    QVERIFY(cDevice.resize(static_cast<qint64>(lime_map_length())));
    // Each mapping takes 32 MiB and a descriptor: neither may pile up.
    Lime::reinit_framebuffer_device(cDevice.fileName());
    const int iFirst = dup(0);
    close(iFirst);
    for (int iRound = 0; iRound < 2000; ++iRound)
        Lime::reinit_framebuffer_device(cDevice.fileName());
    const int iLast = dup(0);
    close(iLast);
    QCOMPARE(iLast, iFirst);
    QVERIFY(hasMapping());
    Lime::free_lime_framebuffer();
    QVERIFY(!hasMapping());
}

QTEST_GUILESS_MAIN(TestLime)

#include "tst_Lime.moc"
