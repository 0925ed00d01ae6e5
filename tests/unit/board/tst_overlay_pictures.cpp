/* SPDX-License-Identifier: MIT */
/* Pictures of the overlay library's drawings: the library in process on an attached board, compared with
 * golden pictures. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CGlyphSheet.h"
#include "board/picture/CTestPicture.h"
#include "board/picture/SentencePages.h"
#include "fpga/box.h"
#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/font_tables.h"
#include "fpga/graphic_layer.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "fpga/video_image.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "tests/golden.h"
#include "tests/support/CAttachedBoard.h"
#include "tests/support/LiveVideo.h"
#include "tests/support/SparseFile.h"

#include <QtEndian>
#include <QtTest>

#include <vector>

class TestOverlayPictures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void all_codes_of_a_set_data();
    void all_codes_of_a_set();
    void sentences_of_a_set_data();
    void sentences_of_a_set();
    void contact_sheet_of_a_set_data();
    void contact_sheet_of_a_set();
    void all_palette_pairs();
    void the_page_shown_is_the_one_named();
    void graphics_under_and_over_text();
    void cursor_shapes_data();
    void cursor_shapes();
    void frame_generator();
    void a_stored_picture_is_restored();
    void an_image_written_back_is_restored();
    void storing_keeps_what_is_live();
    void storing_keeps_the_moving_camera_behind_the_decoder();
    void control_sets_are_apart();
    void off_switches_show_the_camera();
    void memory_at_its_limits_is_shown_without_harm();

private:
    void compareWithGolden(const QString& rcName);

    QScopedPointer<CAttachedBoard> m_pcBoard;
    screen m_sScreen = {};
};

static const QRgb CAMERA = qRgb(0x30, 0x50, 0x40);

// The overlay of a board at rest, over a camera picture of one colour, with a window as large as the screen.
void TestOverlayPictures::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    CAttachedBoard& rcBoard = *m_pcBoard;
    QImage cCamera(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cCamera.fill(CAMERA);
    rcBoard->setCamera(cCamera);
    showLiveVideo(*rcBoard);
    rcBoard->setLimeRegister(CBoard::LIME_DISPLAY, 0x128, 576U << 16 | 720U);

    QCOMPARE(init_fpga_framebuffer(rcBoard->path(BOARD_FPGA).toLocal8Bit().constData()), 0);
    // The glyph set is remembered for the process, and the board is new.
    load_font(-1);
    QCOMPARE(init_fpga(), 0);
    fpga_device_write_reg(FPGA_TSXP, 42);
    fpga_device_write_reg(FPGA_TSYP, 14);
    fpga_device_write_reg(FPGA_TESZ, 12 << 8 | 10);
    init_screen(&m_sScreen, nullptr);
    show_text_page(0);
}

// scripts/compare-processors compares the FPGA's memory of each scene with that of another processor.
static void recordMemory(const CBoard& rcBoard)
{
    const QString cFolder = qEnvironmentVariable("HALDEN_RECORD");
    if (cFolder.isEmpty())
        return;
    const QString cTag =
        QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('_'));
    const QString cFile =
        QStringLiteral("%1/%2-%3").arg(cFolder, QString::fromLatin1(QTest::currentTestFunction()), cTag);
    QVERIFY(QDir().mkpath(cFolder) && writeSparse(cFile, rcBoard.fpgaMemory(0, BOARD_FPGA_BYTES)));
}

void TestOverlayPictures::cleanup()
{
    recordMemory(**m_pcBoard);
    destroy_fpga_framebuffer();
    m_pcBoard.reset();
}

void TestOverlayPictures::compareWithGolden(const QString& rcName)
{
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(**m_pcBoard), rcName), QString());
}

static void addSets()
{
    QTest::addColumn<int>("set");
    QTest::newRow("ISO 8859-15") << 1;
    QTest::newRow("ISO 8859-16") << 2;
    QTest::newRow("ISO 8859-5") << 3;
}

void TestOverlayPictures::all_codes_of_a_set_data()
{
    addSets();
}

void TestOverlayPictures::all_codes_of_a_set()
{
    QFETCH(int, set);
    load_font(set);
    for (unsigned int uCode = 0; uCode < 256; ++uCode)
        write_ch_xyc(uCode, 2 + uCode % 16 * 3, 1 + uCode / 16, 0x18);
    text_overlay_on();
    compareWithGolden(QStringLiteral("text_codes_%1").arg(set));
}

void TestOverlayPictures::sentences_of_a_set_data()
{
    addSets();
}

void TestOverlayPictures::sentences_of_a_set()
{
    QFETCH(int, set);
    load_font(set);
    for (unsigned int uRow = 0; uRow < SENTENCE_PAGE_ROWS; ++uRow) {
        const SSentenceRow& rsRow = SENTENCES[set - 1][uRow];
        const QString cText = QString::fromUtf8(rsRow.pszText);
        QVERIFY(cText.size() <= 53);
        const QByteArray cCodes = CGlyphSheet::encoded(set, cText);
        // The full block replaces missing characters; the pages have it only in their pattern of blocks.
        QCOMPARE(cCodes.count('\x96'), cText.count(QChar(0x2588)));
        write_text_xyc(cCodes.leftJustified(53, ' ').constData(), 0, uRow, rsRow.u8Color);
    }
    text_overlay_on();
    compareWithGolden(QStringLiteral("text_sentences_%1").arg(set));
}

void TestOverlayPictures::contact_sheet_of_a_set_data()
{
    addSets();
}

void TestOverlayPictures::contact_sheet_of_a_set()
{
    QFETCH(int, set);
    const font_map_tab* const apsSets[] = {&font_map_tab_iso8859_15, &font_map_tab_iso8859_16,
                                           &font_map_tab_iso8859_5};
    const QImage cSheet = CGlyphSheet::contactSheet(apsSets[set - 1]->rows);
    QCOMPARE(differenceFromGolden(cSheet, QStringLiteral("glyphs_%1").arg(set)), QString());
}

void TestOverlayPictures::all_palette_pairs()
{
    for (unsigned int uColor = 0; uColor < 256; ++uColor) {
        write_ch_xyc('A', 2 + (uColor & 0xf) * 3, 1 + (uColor >> 4), uColor);
        write_ch_xyc(0x97, 3 + (uColor & 0xf) * 3, 1 + (uColor >> 4), uColor);
    }
    text_overlay_on();
    compareWithGolden(QStringLiteral("text_palette_pairs"));
}

void TestOverlayPictures::the_page_shown_is_the_one_named()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    const QImage cEmpty = CBoardPicture::monitor(rcBoard);
    text_overlay_on();
    set_active_text_write_page(3);
    write_text_xyc("page 3", 0, 0, 0x18);
    QVERIFY(CBoardPicture::monitor(rcBoard) == cEmpty);
    show_text_page(3);
    QVERIFY(CBoardPicture::monitor(rcBoard) != cEmpty);
    show_text_page(0);
    QVERIFY(CBoardPicture::monitor(rcBoard) == cEmpty);

    graphic_overlay_on();
    write_graphic_window(0, 0, 100, 100, 10, 5);
    QVERIFY(CBoardPicture::monitor(rcBoard) == cEmpty);
    show_graphic_page(5);
    QVERIFY(CBoardPicture::monitor(rcBoard) != cEmpty);
}

void TestOverlayPictures::graphics_under_and_over_text()
{
    write_graphic_window(60, 30, 300, 60, 10, 0);
    write_graphic_window(100, 60, 300, 60, 24, 0);
    // An image in four bands of its own palette: red, half green, blue, nothing.
    std::vector<unsigned char> cImage = {64, 0,    32, 0,    4,    0, 0, 0,    0, 0, 0xff, 0xff,
                                         0,  0xff, 0,  0x80, 0xff, 0, 0, 0xff, 0, 0, 0,    0};
    for (int iPixel = 0; iPixel < 64 * 32; ++iPixel)
        cImage.push_back(static_cast<unsigned char>(iPixel % 64 / 16));
    write_graphic_image_xy(330, 80, cImage.data(), 0, 40);
    write_text_xyc("Text with graphics", 8, 6, 0x18);
    write_box(6, 4, 22, 5, 0x1d, 0);
    write_text_xyc("Text with graphics", 8, 6, 0x18);
    show_graphic_page(0);
    graphic_overlay_on();
    text_overlay_on();
    compareWithGolden(QStringLiteral("graphic_under_text"));
    graphic_priority_on();
    compareWithGolden(QStringLiteral("graphic_over_text"));
}

void TestOverlayPictures::cursor_shapes_data()
{
    QTest::addColumn<int>("shape");
    const char* const apszNames[] = {"cross", "arrow", "block", "line", "carret"};
    for (int iShape = 0; iShape < CURSOR_SHAPES; ++iShape)
        QTest::newRow(apszNames[iShape]) << iShape;
}

void TestOverlayPictures::cursor_shapes()
{
    QFETCH(int, shape);
    const text_cursor_parameters sParameters = {
        42, 28, 12, 20, 0, 0, 52, 25, static_cast<uint16_t>(shape), ::cursor_shapes};
    text_cursor sCursor = {};
    init_text_cursor(&sCursor, &sParameters);
    set_cursor_xy(3, 2, &sCursor);
    write_text_xyc("Cursor", 0, 2, 0x18);
    text_overlay_on();
    cursor_overlay_on();
    compareWithGolden(QStringLiteral("cursor_%1").arg(QString::fromLatin1(QTest::currentDataTag())));
}

void TestOverlayPictures::frame_generator()
{
    fpga_device_write_reg(FPGA_FGCC, 0x00123456);
    frame_generator_on();
    write_text_xyc("No camera needed", 4, 4, 0x18);
    text_overlay_on();
    compareWithGolden(QStringLiteral("frame_generator"));
    frame_generator_off();
    QCOMPARE(CBoardPicture::monitor(**m_pcBoard).pixel(0, 0), CAMERA);
}

void TestOverlayPictures::a_stored_picture_is_restored()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    const QImage cTestCard = CTestPicture::frame(0);
    const QImage cPlain = rcBoard.cameraImage();
    rcBoard.setCamera(cTestCard);
    store_video();
    rcBoard.setCamera(cPlain);
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(0, 0), CAMERA);
    video_restore_on();
    compareWithGolden(QStringLiteral("restored_still"));
    QVERIFY(CBoardPicture::monitor(rcBoard) == cTestCard.convertToFormat(QImage::Format_RGB32));
    video_restore_off();
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(0, 0), CAMERA);
}

// Kept: after a way through a buffer and back, all but the two outermost lines is as before; so it is in
// clients' pictures.
void TestOverlayPictures::an_image_written_back_is_restored()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    const QImage cTestCard = CTestPicture::frame(0).convertToFormat(QImage::Format_RGB32);
    rcBoard.setCamera(cTestCard);
    store_video();
    std::vector<unsigned char> cBuffer(VIDEO_IMAGE_SIZE);
    QCOMPARE(get_video_image_from_fpga(cBuffer.data(), 0, cBuffer.size()), 0);

    // A buffer is a frame, bottom line first, in little-endian words as in bitmap files.
    QImage cBitmap(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    for (int iLine = 0; iLine < cBitmap.height(); ++iLine)
        qFromLittleEndian<quint32>(cBuffer.data() + 4 * VIDEO_WIDTH * iLine, VIDEO_WIDTH,
                                   cBitmap.scanLine(iLine));
    const QImage cUpright = cBitmap.mirrored(false, true);
    const QRect cInner(0, 1, VIDEO_WIDTH, VIDEO_HEIGHT - 2);
    QVERIFY(cUpright.copy(cInner) == cTestCard.copy(cInner));

    store_video();
    rcBoard.setCameraPlugged(false);
    store_video();
    write_video_image_to_fpga(cBuffer.data(), 0, cBuffer.size());
    video_restore_on();
    QVERIFY(CBoardPicture::monitor(rcBoard).copy(cInner) == cTestCard.copy(cInner));
}

void TestOverlayPictures::storing_keeps_what_is_live()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    video_restore_on();
    rcBoard.setCameraPlugged(false);
    store_video();
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(360, 288), qRgb(0, 0, 0));
    fpga_device_write_reg(FPGA_FGCC, 0x00445566);
    frame_generator_on();
    store_video();
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(360, 288), qRgb(0x44, 0x55, 0x66));
}

void TestOverlayPictures::storing_keeps_the_moving_camera_behind_the_decoder()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    rcBoard.setMovingCamera(33);
    const QImage cCamera = rcBoard.cameraImage();
    store_video();
    rcBoard.setI2cRegister(SAA7113_SLAVE, SAA7113_BRIGHTNESS, 160);
    const QImage cBrighter = CBoardPicture::recorded(rcBoard);
    QVERIFY(cBrighter != cCamera);
    video_restore_on();
    QCOMPARE(CBoardPicture::recorded(rcBoard), cCamera);
    store_video();
    QCOMPARE(CBoardPicture::recorded(rcBoard), cBrighter);
}

void TestOverlayPictures::control_sets_are_apart()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    write_text_xyc("Overlay", 4, 4, 0x1f);
    const QImage cCamera = CBoardPicture::monitor(rcBoard);
    fpga_device_write_reg(FPGA_CTRL, 1U << 1);
    QVERIFY(CBoardPicture::monitor(rcBoard) != cCamera);
    QVERIFY(CBoardPicture::recorded(rcBoard) == cCamera);
    fpga_device_write_reg(FPGA_CTRL, 1U << 17);
    QVERIFY(CBoardPicture::monitor(rcBoard) == cCamera);
    QVERIFY(CBoardPicture::recorded(rcBoard) != cCamera);
    text_overlay_on();
    QVERIFY(CBoardPicture::monitor(rcBoard) == CBoardPicture::recorded(rcBoard));

    // The recorded picture is neither scaled nor placed.
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x124, 100U << 16 | 100U);
    QVERIFY(CBoardPicture::monitor(rcBoard) != CBoardPicture::recorded(rcBoard));
}

void TestOverlayPictures::off_switches_show_the_camera()
{
    CBoard& rcBoard = *m_pcBoard->operator->();
    const QImage cCamera = CBoardPicture::monitor(rcBoard);
    write_text_xyc("Overlay", 4, 4, 0x1f);
    write_graphic_window(0, 0, 100, 100, 10, 0);
    set_cursor_image(&::cursor_shapes[0]);
    QVERIFY(CBoardPicture::monitor(rcBoard) == cCamera);
    for (int (*const pfnOn)(void) : {text_overlay_on, graphic_overlay_on, cursor_overlay_on}) {
        pfnOn();
        QVERIFY(CBoardPicture::monitor(rcBoard) != cCamera);
        text_overlay_off();
        graphic_overlay_off();
        cursor_overlay_off();
        QVERIFY(CBoardPicture::monitor(rcBoard) == cCamera);
    }
}

void TestOverlayPictures::memory_at_its_limits_is_shown_without_harm()
{
    m_pcBoard->dontJudge(); // no program writes these values; the picture has to bear them
    CBoard& rcBoard = *m_pcBoard->operator->();
    fpga_device_write_reg(FPGA_CTRL, 0xffffffff);
    for (const quint32 u32Value : {0U, 1U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        for (const quint32 u32Register : {FPGA_TSXP, FPGA_TSYP, FPGA_TESZ, FPGA_TEMO, FPGA_GRAPHIC_SHOW,
                                          FPGA_CURSOR_X, FPGA_CURSOR_Y, FPGA_CURSOR_SIZE})
            fpga_device_write_reg(u32Register, u32Value);
        QCOMPARE(CBoardPicture::monitor(rcBoard).size(), QSize(VIDEO_WIDTH, VIDEO_HEIGHT));
        QCOMPARE(CBoardPicture::recorded(rcBoard).size(), QSize(VIDEO_WIDTH, VIDEO_HEIGHT));
    }
}

QTEST_GUILESS_MAIN(TestOverlayPictures)

#include "tst_overlay_pictures.moc"
