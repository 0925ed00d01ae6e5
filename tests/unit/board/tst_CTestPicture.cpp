/* SPDX-License-Identifier: MIT */
/* The test card. */
#include "board/picture/CTestPicture.h"
#include "tests/golden.h"

#include <QTest>

#include <limits>

class TestCTestPicture : public QObject
{
    Q_OBJECT

private slots:
    void is_the_card();
    void has_a_frame_at_the_very_edge();
    void has_gratings_of_single_pixels();
    void moves_in_one_place();
    void takes_any_frame_number_data();
    void takes_any_frame_number();
};

void TestCTestPicture::is_the_card()
{
    QCOMPARE(differenceFromGolden(CTestPicture::frame(0), QStringLiteral("test_card")), QString());
}

void TestCTestPicture::has_a_frame_at_the_very_edge()
{
    const QImage cCard = CTestPicture::frame(0);
    QCOMPARE(cCard.size(), QSize(720, 576));
    for (int x = 0; x < 720; ++x) {
        QCOMPARE(cCard.pixel(x, 0), 0xffffffffu);
        QCOMPARE(cCard.pixel(x, 575), 0xffffffffu);
    }
    for (int y = 0; y < 576; ++y) {
        QCOMPARE(cCard.pixel(0, y), 0xffffffffu);
        QCOMPARE(cCard.pixel(719, y), 0xffffffffu);
    }
    QVERIFY(cCard.pixel(1, 1) != 0xffffffffu);
    QVERIFY(cCard.pixel(718, 574) != 0xffffffffu);
}

void TestCTestPicture::has_gratings_of_single_pixels()
{
    const QImage cCard = CTestPicture::frame(0);
    for (int x = 140; x < 180; ++x)
        QVERIFY(cCard.pixel(x, 350) != cCard.pixel(x + 1, 350));
    for (int y = 330; y < 380; ++y)
        QVERIFY(cCard.pixel(400, y) != cCard.pixel(400, y + 1));
}

void TestCTestPicture::moves_in_one_place()
{
    const QImage cFirst = CTestPicture::frame(0);
    const QImage cSecond = CTestPicture::frame(1);
    QVERIFY(cFirst != cSecond);
    QCOMPARE(cFirst.copy(0, 0, 720, 416), cSecond.copy(0, 0, 720, 416));
    QCOMPARE(cFirst.copy(0, 0, 111, 576), cSecond.copy(0, 0, 111, 576));
    QCOMPARE(cFirst.copy(609, 0, 111, 576), cSecond.copy(609, 0, 111, 576));
}

void TestCTestPicture::takes_any_frame_number_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("same"); // the picture that it equals
    QTest::newRow("negative") << -1 << 0;
    QTest::newRow("most negative") << std::numeric_limits<int>::min() << 0;
}

void TestCTestPicture::takes_any_frame_number()
{
    QFETCH(int, number);
    QFETCH(int, same);
    QCOMPARE(CTestPicture::frame(number), CTestPicture::frame(same));
    QVERIFY(CTestPicture::frame(std::numeric_limits<int>::max()) != CTestPicture::frame(same));
}

QTEST_GUILESS_MAIN(TestCTestPicture)
#include "tst_CTestPicture.moc"
