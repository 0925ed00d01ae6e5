/* SPDX-License-Identifier: MIT */
/* The monitor's picture, from the registers of the display controller. */
#include "board/create/CBoardMaker.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "tests/golden.h"
#include "tests/support/LiveVideo.h"

#include <QTemporaryDir>
#include <QTest>

namespace
{

const quint32 L0M = 0x020;
const quint32 L0OA = 0x024;
const quint32 L0TC = 0x0bc;
const quint32 DCM1 = 0x100;
const quint32 L0WXY = 0x114;
const quint32 L0WWH = 0x118;
const quint32 L1WXY = 0x124;
const quint32 L1WWH = 0x128;
const quint32 DLS = 0x180;
const quint32 DBGC = 0x184;
const quint32 DISPLAY_ON = 1u << 31;
const quint32 LAYER_0 = 1u << 16;
const quint32 LAYER_1 = 1u << 17;
const QRgb BLACK = 0xff000000;
const QRgb RED = 0xffff0000;

} // namespace

class TestCPictureRenderer : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void display_off_is_black();
    void no_layer_is_the_background();
    void unscaled_it_shows_the_camera();
    void unplugged_camera_is_black();
    void quarter_size_at_a_place();
    void larger_than_the_screen();
    void off_the_screen();
    void partly_off_the_screen();
    void a_scale_of_zero_shows_no_video_data();
    void a_scale_of_zero_shows_no_video();
    void the_window_cuts_at_right_and_bottom();
    void video_smaller_than_the_window_leaves_background();
    void layer_off_shows_the_background();
    void every_pixel_of_a_doubled_picture();
    void extreme_registers_stay_in_bounds_data();
    void extreme_registers_stay_in_bounds();

    void graphic_shows_controller_memory();
    void graphic_needs_16_bit_mode();
    void graphic_zero_can_be_transparent();
    void layers_are_ordered();
    void a_layer_without_a_place_is_not_shown();

private:
    void display(quint32 u32Offset, quint32 u32Value)
    {
        m_cBoard.setLimeRegister(CBoard::LIME_DISPLAY, u32Offset, u32Value);
    }
    void scale(quint32 u32Vertical, quint32 u32Horizontal)
    {
        m_cBoard.setLimeRegister(CBoard::LIME_CAPTURE, 0x004, u32Vertical << 16 | u32Horizontal);
    }
    void place(quint32 x, quint32 y) { display(L1WXY, y << 16 | x); }
    void window(quint32 u32Width, quint32 u32Height) { display(L1WWH, u32Height << 16 | u32Width); }

    QScopedPointer<QTemporaryDir> m_pcDirectory;
    CBoard m_cBoard;
};

void TestCPictureRenderer::init()
{
    m_pcDirectory.reset(new QTemporaryDir);
    const QString cPath = m_pcDirectory->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cPath, cError) && m_cBoard.open(cPath), qPrintable(cError));
    showLiveVideo(m_cBoard);
}

static QImage plain(QRgb uColor)
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cImage.fill(uColor);
    return cImage;
}

void TestCPictureRenderer::display_off_is_black()
{
    display(DBGC, 0xff0000);
    display(DCM1, LAYER_1);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
}

void TestCPictureRenderer::no_layer_is_the_background()
{
    display(DBGC, 0x123456);
    display(DCM1, DISPLAY_ON);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(0xff123456));
}

void TestCPictureRenderer::unscaled_it_shows_the_camera()
{
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    QCOMPARE(cPicture.copy(0, 0, 688, 573), CTestPicture::frame(0).copy(0, 0, 688, 573));
    QCOMPARE(differenceFromGolden(cPicture, QStringLiteral("renderer_unscaled")), QString());
}

void TestCPictureRenderer::unplugged_camera_is_black()
{
    display(DBGC, 0xff0000);
    m_cBoard.setCameraPlugged(false);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    QCOMPARE(cPicture.pixel(687, 572), BLACK);
    QCOMPARE(cPicture.pixel(688, 572), RED);
    QCOMPARE(cPicture.pixel(687, 573), RED);
}

void TestCPictureRenderer::quarter_size_at_a_place()
{
    scale(4053, 3761);
    window(360, 288);
    place(100, 50);
    QCOMPARE(
        differenceFromGolden(CBoardPicture::monitor(m_cBoard), QStringLiteral("renderer_360x288_at_100_50")),
        QString());
}

void TestCPictureRenderer::larger_than_the_screen()
{
    scale(2048, 1440);
    window(1024, 576);
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cBoard), QStringLiteral("renderer_1024x576")),
             QString());
}

void TestCPictureRenderer::off_the_screen()
{
    place(720, 0);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
    place(0, 576);
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cBoard), QStringLiteral("renderer_off_screen")),
             QString());
}

void TestCPictureRenderer::partly_off_the_screen()
{
    place(719, 575);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    QCOMPARE(cPicture.pixel(719, 575), CTestPicture::frame(0).pixel(0, 0));
    QCOMPARE(cPicture.pixel(718, 575), BLACK);
}

void TestCPictureRenderer::a_scale_of_zero_shows_no_video_data()
{
    QTest::addColumn<quint32>("vertical");
    QTest::addColumn<quint32>("horizontal");
    QTest::newRow("vertical") << 0u << 0x800u;
    QTest::newRow("horizontal") << 0x800u << 0u;
    QTest::newRow("both") << 0u << 0u;
}

void TestCPictureRenderer::a_scale_of_zero_shows_no_video()
{
    QFETCH(quint32, vertical);
    QFETCH(quint32, horizontal);
    display(DBGC, 0xff0000);
    scale(vertical, horizontal);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(RED));
}

void TestCPictureRenderer::the_window_cuts_at_right_and_bottom()
{
    display(DBGC, 0xff0000);
    window(10, 20);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    QCOMPARE(cPicture.copy(0, 0, 10, 20), CTestPicture::frame(0).copy(0, 0, 10, 20));
    QCOMPARE(cPicture.pixel(10, 0), RED);
    QCOMPARE(cPicture.pixel(0, 20), RED);
}

void TestCPictureRenderer::video_smaller_than_the_window_leaves_background()
{
    display(DBGC, 0xff0000);
    scale(0x1000, 0x1000);
    window(720, 576);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    QVERIFY(cPicture.pixel(359, 287) != RED);
    QCOMPARE(cPicture.pixel(360, 287), RED);
    QCOMPARE(cPicture.pixel(359, 288), RED);
}

void TestCPictureRenderer::layer_off_shows_the_background()
{
    display(DBGC, 0xff0000);
    display(DCM1, DISPLAY_ON);
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cBoard), QStringLiteral("renderer_layer_off_red")),
             QString());
}

void TestCPictureRenderer::every_pixel_of_a_doubled_picture()
{
    scale(0x400, 0x400);
    window(720, 576);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    const QImage cCamera = CTestPicture::frame(0);
    int iWrong = 0;
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            iWrong += cPicture.pixel(x, y) == cCamera.pixel(x / 2, y / 2) ? 0 : 1;
    QCOMPARE(iWrong, 0);
}

void TestCPictureRenderer::extreme_registers_stay_in_bounds_data()
{
    QTest::addColumn<quint32>("scales");
    QTest::addColumn<quint32>("size");
    QTest::addColumn<quint32>("position");
    const quint32 VALUES[] = {0, 0x00010001, 0x7fffffff, 0x80008000, 0xffffffff};
    for (const quint32 u32Scale : VALUES)
        for (const quint32 u32Size : VALUES)
            for (const quint32 u32Place : VALUES)
                QTest::addRow("%08x %08x %08x", u32Scale, u32Size, u32Place)
                    << u32Scale << u32Size << u32Place;
}

void TestCPictureRenderer::extreme_registers_stay_in_bounds()
{
    QFETCH(quint32, scales);
    QFETCH(quint32, size);
    QFETCH(quint32, position);
    m_cBoard.setLimeRegister(CBoard::LIME_CAPTURE, 0x004, scales);
    display(L1WWH, size);
    display(L1WXY, position);
    display(DCM1, 0xffffffff);
    display(L0M, 0xffffffff);
    display(L0OA, 0xffffffff);
    display(L0WWH, size);
    display(L0WXY, position);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).size(), QSize(720, 576));
}

// Graphic layer

static void drawGraphic(CBoard& rcBoard)
{
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, L0M, 1u << 31 | 2u << 16);
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, L0OA, 0x10000);
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, L0WXY, 50u << 16 | 100u);
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, L0WWH, 2u << 16 | 3u);
    const quint16 PIXELS[2][3] = {
        {0x7c00, 0x03e0, 0x001f},
        {0x0000, 0x7fff, 0x4210}
    };
    for (quint32 y = 0; y < 2; ++y)
        for (quint32 x = 0; x < 3; ++x)
            rcBoard.setLimeMemory16(0x10000 + y * 128 + x * 2, PIXELS[y][x]);
}

void TestCPictureRenderer::graphic_shows_controller_memory()
{
    drawGraphic(m_cBoard);
    display(DBGC, 0x0000aa);
    display(DCM1, DISPLAY_ON | LAYER_0);
    const QImage cPicture = CBoardPicture::monitor(m_cBoard);
    const QRgb EXPECTED[2][3] = {
        {0xffff0000, 0xff00ff00, 0xff0000ff},
        {BLACK,      0xffffffff, 0xff848484}
    };
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            QCOMPARE(cPicture.pixel(100 + x, 50 + y), EXPECTED[y][x]);
    for (const QPoint& rcAround : {QPoint(99, 50), QPoint(103, 50), QPoint(100, 49), QPoint(100, 52)})
        QCOMPARE(cPicture.pixel(rcAround), 0xff0000aau);
}

void TestCPictureRenderer::graphic_needs_16_bit_mode()
{
    drawGraphic(m_cBoard);
    display(L0M, 2u << 16);
    display(DCM1, DISPLAY_ON | LAYER_0);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
}

void TestCPictureRenderer::graphic_zero_can_be_transparent()
{
    drawGraphic(m_cBoard);
    display(L0TC, 1u << 15);
    display(DBGC, 0x0000aa);
    display(DCM1, DISPLAY_ON | LAYER_0);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).pixel(100, 51), 0xff0000aau);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).pixel(100, 50), RED);
}

void TestCPictureRenderer::layers_are_ordered()
{
    drawGraphic(m_cBoard);
    display(DCM1, DISPLAY_ON | LAYER_0 | LAYER_1);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).pixel(100, 50), RED);
    display(DLS, 0x00543201);
    QCOMPARE(CBoardPicture::monitor(m_cBoard).pixel(100, 50), CTestPicture::frame(0).pixel(100, 50));
}

void TestCPictureRenderer::a_layer_without_a_place_is_not_shown()
{
    display(DLS, 0x00555555);
    QCOMPARE(CBoardPicture::monitor(m_cBoard), plain(BLACK));
}

QTEST_GUILESS_MAIN(TestCPictureRenderer)
#include "tst_CPictureRenderer.moc"
