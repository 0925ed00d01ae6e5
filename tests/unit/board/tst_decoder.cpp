/* SPDX-License-Identifier: MIT */
/* The video decoder's and encoder's part in the picture. */
#include "board/camera/decoder.h"
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "hw/saa71xx_registers.h"
#include "regdb/chip_regs.h"
#include "tests/golden.h"
#include "tests/support/CTemporaryBoard.h"
#include "tests/support/LiveVideo.h"

#include <QTest>

namespace
{

const QRgb BLACK = 0xff000000;

// The value with which the daemon's table starts, and which the shipped file has.
quint8 tableValue(unsigned uiSub)
{
    for (const reg_bf_group* psRow = crp_saa7113.regs; psRow->name != nullptr; ++psRow)
        if (psRow->addr == uiSub)
            return static_cast<quint8>(psRow->value >> 24);
    return 0;
}

} // namespace

class TestDecoder : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void the_shipped_settings_change_nothing();
    void settings_by_the_formulae_data();
    void settings_by_the_formulae();
    void hue_turns_the_colours();
    void settings_show_in_the_picture_data();
    void settings_show_in_the_picture();
    void a_zeroed_decoder_gives_no_picture();
    void a_decoder_with_any_register_gives_one();
    void a_zeroed_encoder_leaves_the_monitor_black();
    void neither_touches_other_sources();

private:
    QRgb through(QRgb uColor);
    void set(quint8 u8Sub, int iValue);

    QScopedPointer<CTemporaryBoard> m_pcBoard;
};

void TestDecoder::init()
{
    m_pcBoard.reset(new CTemporaryBoard);
    QVERIFY2(m_pcBoard->make(), qPrintable(m_pcBoard->error()));
    showLiveVideo(m_pcBoard->board());
}

void TestDecoder::set(quint8 u8Sub, int iValue)
{
    m_pcBoard->board().setI2cRegister(SAA7113_SLAVE, u8Sub, static_cast<quint8>(iValue));
}

QRgb TestDecoder::through(QRgb uColor)
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cImage.fill(uColor);
    m_pcBoard->board().setCamera(cImage);
    return CBoardPicture::recorded(m_pcBoard->board()).pixel(350, 280);
}

void TestDecoder::the_shipped_settings_change_nothing()
{
    set(SAA7113_BRIGHTNESS, tableValue(SAA7113_BRIGHTNESS));
    set(SAA7113_CONTRAST, tableValue(SAA7113_CONTRAST));
    set(SAA7113_SATURATION, tableValue(SAA7113_SATURATION));
    set(SAA7113_HUE, tableValue(SAA7113_HUE));
    QCOMPARE(CBoardPicture::recorded(m_pcBoard->board()), CTestPicture::frame(0));
    QCOMPARE(int(tableValue(SAA7113_BRIGHTNESS)), DECODER_BRIGHTNESS);
    QCOMPARE(int(tableValue(SAA7113_SATURATION)), DECODER_SATURATION);
}

// Grey g comes as the level 16 + g * 219 / 255 + 3, and leaves as contrast / 71 * (level - 128) + brightness.
void TestDecoder::settings_by_the_formulae_data()
{
    QTest::addColumn<int>("sub");
    QTest::addColumn<int>("value");
    QTest::addColumn<QRgb>("color");
    QTest::addColumn<QRgb>("seen");
    QTest::newRow("brighter") << SAA7113_BRIGHTNESS << 168 << qRgb(100, 100, 100) << qRgb(150, 150, 150);
    QTest::newRow("darker") << SAA7113_BRIGHTNESS << 82 << qRgb(100, 100, 100) << qRgb(50, 50, 50);
    QTest::newRow("black at the least") << SAA7113_BRIGHTNESS << 0 << qRgb(90, 20, 0) << qRgb(0, 0, 0);
    QTest::newRow("white at the most")
        << SAA7113_BRIGHTNESS << 255 << qRgb(200, 200, 200) << qRgb(255, 255, 255);
    QTest::newRow("no contrast") << SAA7113_CONTRAST << 0 << qRgb(10, 10, 10) << qRgb(127, 127, 127);
    QTest::newRow("more contrast") << SAA7113_CONTRAST << 106 << qRgb(100, 100, 100) << qRgb(87, 87, 87);
    QTest::newRow("inverse") << SAA7113_CONTRAST << -71 << qRgb(0, 0, 0) << qRgb(254, 254, 254);
    QTest::newRow("no colour") << SAA7113_SATURATION << 0 << qRgb(255, 0, 0) << qRgb(77, 77, 77);
    QTest::newRow("half the colour") << SAA7113_SATURATION << 63 << qRgb(255, 0, 0) << qRgb(166, 38, 38);
    QTest::newRow("inverse colour") << SAA7113_SATURATION << -126 << qRgb(150, 100, 100)
                                    << qRgb(80, 130, 130);
}

void TestDecoder::settings_by_the_formulae()
{
    QFETCH(int, sub);
    QFETCH(int, value);
    QFETCH(QRgb, color);
    QFETCH(QRgb, seen);
    set(static_cast<quint8>(sub), value);
    const QRgb uSeen = through(color);
    QVERIFY2(qAbs(qRed(uSeen) - qRed(seen)) <= 1 && qAbs(qGreen(uSeen) - qGreen(seen)) <= 1 &&
                 qAbs(qBlue(uSeen) - qBlue(seen)) <= 1,
             qPrintable(QString::number(uSeen, 16)));
}

void TestDecoder::hue_turns_the_colours()
{
    const QRgb uColor = qRgb(160, 120, 90);
    const auto isNear = [](int iFirst, int iSecond) { return qAbs(iFirst - iSecond) <= 1; };
    set(SAA7113_HUE, 0x80); // half a turn: the complement
    const QRgb uHalf = through(uColor);
    const int iLuma = (77 * 160 + 150 * 120 + 29 * 90) / 256;
    QVERIFY2(isNear(qRed(uHalf), 2 * iLuma - 160) && isNear(qBlue(uHalf), 2 * iLuma - 90),
             qPrintable(QString::number(uHalf, 16)));
    set(SAA7113_HUE, 64); // a quarter: U takes V's place, and V that of U turned over
    const QRgb uQuarter = through(uColor);
    const int iV = (160 - iLuma) * 877;
    const int iU = (90 - iLuma) * 492;
    QVERIFY2(isNear(qRed(uQuarter), iLuma - iU / 877) && isNear(qBlue(uQuarter), iLuma + iV / 492),
             qPrintable(QString::number(uQuarter, 16)));
    QCOMPARE(qGray(through(qRgb(99, 99, 99))), 99); // grey has no hue
}

void TestDecoder::settings_show_in_the_picture_data()
{
    QTest::addColumn<int>("sub");
    QTest::addColumn<int>("value");
    QTest::newRow("brightness") << SAA7113_BRIGHTNESS << 190;
    QTest::newRow("contrast") << SAA7113_CONTRAST << 35;
    QTest::newRow("saturation") << SAA7113_SATURATION << 30;
    QTest::newRow("hue") << SAA7113_HUE << 40;
}

void TestDecoder::settings_show_in_the_picture()
{
    QFETCH(int, sub);
    QFETCH(int, value);
    set(static_cast<quint8>(sub), value);
    QCOMPARE(differenceFromGolden(CBoardPicture::recorded(m_pcBoard->board()),
                                  QStringLiteral("decoder_") + QLatin1String(QTest::currentDataTag())),
             QString());
}

void TestDecoder::a_zeroed_decoder_gives_no_picture()
{
    CBoard& rcBoard = m_pcBoard->board();
    for (int i = 0; i < 256; ++i)
        set(static_cast<quint8>(i), 0);
    QVERIFY(rcBoard.isChipSilent(SAA7113_SLAVE));
    QCOMPARE(through(qRgb(200, 100, 50)), BLACK);
    rcBoard.setMovingCamera(3);
    QCOMPARE(CBoardPicture::recorded(rcBoard).pixel(100, 100), BLACK);
    QVERIFY(rcBoard.hasSignal()); // the camera is there all the same
}

void TestDecoder::a_decoder_with_any_register_gives_one()
{
    for (int i = 0; i < 256; ++i)
        set(static_cast<quint8>(i), 0);
    set(SAA7113_BRIGHTNESS, 128); // no contrast: grey all over
    QCOMPARE(through(qRgb(200, 100, 50)), qRgb(130, 130, 130));
}

void TestDecoder::a_zeroed_encoder_leaves_the_monitor_black()
{
    CBoard& rcBoard = m_pcBoard->board();
    QVERIFY(CBoardPicture::monitor(rcBoard).pixel(0, 0) != BLACK);
    for (int i = 0; i < 256; ++i)
        rcBoard.setI2cRegister(SAA7129_SLAVE, static_cast<quint8>(i), 0);
    QImage cBlack(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    cBlack.fill(BLACK);
    QCOMPARE(CBoardPicture::monitor(rcBoard), cBlack);
    QCOMPARE(CBoardPicture::recorded(rcBoard), CTestPicture::frame(0));
}

void TestDecoder::neither_touches_other_sources()
{
    CBoard& rcBoard = m_pcBoard->board();
    set(SAA7113_BRIGHTNESS, 255);
    rcBoard.setFpgaRegister(FPGA_FGCC, 0x00102030);
    rcBoard.setFpgaRegister(FPGA_CTRL, FPGA_CTRL_FGON);
    QCOMPARE(CBoardPicture::recorded(rcBoard).pixel(9, 9), 0xff102030u);
}

QTEST_GUILESS_MAIN(TestDecoder)

#include "tst_decoder.moc"
