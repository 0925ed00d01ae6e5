/* SPDX-License-Identifier: MIT */
/* The places of the drawn texts: which of them are searched, and in which order. */
#include "overlay/COverlayText.h"
#include "overlay/COverlayTextPlaces.h"

#include <QtTest>

#include <vector>

using SPlace = COverlayTextPlaces::SPlace;

class TestCOverlayTextPlaces : public QObject
{
    Q_OBJECT

private slots:
    void texts_that_are_not_on_the_layer_are_not_collected_data();
    void texts_that_are_not_on_the_layer_are_not_collected();
    void neighbours_come_in_the_order_of_their_turns();
    void every_place_beside_every_region();
};

void TestCOverlayTextPlaces::texts_that_are_not_on_the_layer_are_not_collected_data()
{
    QTest::addColumn<int>("startX");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("endX");
    QTest::addColumn<int>("collected");
    QTest::newRow("on the layer") << 3 << 25 << 8 << 65534;
    QTest::newRow("row 26") << 3 << 26 << 8 << 0;
    QTest::newRow("row 200") << 3 << 200 << 8 << 0;
    QTest::newRow("row 255") << 3 << 255 << 8 << 0;
    QTest::newRow("column 53") << 53 << 3 << 53 << 0;
    QTest::newRow("column 250, its end wrapped") << 250 << 3 << 4 << 0;
    QTest::newRow("empty") << 7 << 3 << 7 << 0;
}

void TestCOverlayTextPlaces::texts_that_are_not_on_the_layer_are_not_collected()
{
    QFETCH(int, startX);
    QFETCH(int, y);
    QFETCH(int, endX);
    QFETCH(int, collected);
    const SPlace sPlace = {static_cast<unsigned short>(startX), static_cast<unsigned short>(y),
                           static_cast<unsigned short>(endX)};
    COverlayTextPlaces cPlaces;
    std::vector<COverlayText> cTexts(65534);
    for (std::size_t i = 0; i < cTexts.size(); ++i)
        cPlaces.insert(sPlace, i, cTexts[i]);
    QCOMPARE(cPlaces.collidingWith(sPlace).size(), collected);
    QCOMPARE(cPlaces.collidingWith({0, sPlace.y, 53}).size(), collected);

    for (std::size_t i = 0; i < cTexts.size(); ++i)
        cPlaces.remove(sPlace, i);
    QVERIFY(cPlaces.collidingWith({0, sPlace.y, 53}).isEmpty());
}

void TestCOverlayTextPlaces::neighbours_come_in_the_order_of_their_turns()
{
    const COverlayText cFirst, cSecond, cThird, cFourth;
    COverlayTextPlaces cPlaces;
    cPlaces.insert({1, 3, 9}, 3, cThird);
    cPlaces.insert({5, 3, 9}, 1, cFirst);
    cPlaces.insert({1, 3, 9}, 4, cFourth);
    cPlaces.insert({2, 3, 7}, 2, cSecond);
    QCOMPARE(cPlaces.collidingWith({0, 3, 53}),
             (QVector<const COverlayText*>{&cFirst, &cSecond, &cThird, &cFourth}));
    QVERIFY(cPlaces.collidingWith({0, 2, 53}).isEmpty());
    QVERIFY(cPlaces.collidingWith({0, 4, 53}).isEmpty());
}

/// The rule in its plain form, which also answers for places without cells.
static bool isRedrawn(const SPlace& o, const SPlace& region)
{
    if (o.startX >= region.startX && region.startX > o.endX)
        return true;
    if (region.startX >= o.endX) {
        if (region.endX >= o.endX)
            return false;
    } else if (o.endX <= region.endX) {
        return true;
    }
    return o.startX <= region.endX;
}

void TestCOverlayTextPlaces::every_place_beside_every_region()
{
    // Beginnings and ends of erased regions: ends are cut at 53, and lie before the beginning if they have
    // wrapped.
    std::vector<unsigned short> cStarts, cEnds;
    for (unsigned short x = 0; x < 256; x = static_cast<unsigned short>(x + (x < 55 ? 3 : 100)))
        cStarts.push_back(x);
    for (unsigned short x = 0; x <= 53; ++x)
        cEnds.push_back(x);

    int iRedrawn = 0;
    const COverlayText cText;
    for (unsigned short startX = 0; startX < 53; ++startX)
        for (auto endX = static_cast<unsigned short>(startX + 1); endX <= 53; ++endX) {
            const SPlace sPlace = {startX, 3, endX};
            COverlayTextPlaces cPlaces;
            cPlaces.insert(sPlace, 1, cText);
            for (const unsigned short regionX : cStarts)
                for (const unsigned short regionEnd : cEnds) {
                    const SPlace sRegion = {regionX, 3, regionEnd};
                    const bool bExpected = isRedrawn(sPlace, sRegion);
                    if (cPlaces.collidingWith(sRegion).isEmpty() == bExpected)
                        QFAIL(qPrintable(QStringLiteral("%1 to %2 beside %3 to %4")
                                             .arg(startX)
                                             .arg(endX)
                                             .arg(regionX)
                                             .arg(regionEnd)));
                    iRedrawn += bExpected ? 1 : 0;
                }
        }
    QVERIFY(iRedrawn > 100000);
}

QTEST_GUILESS_MAIN(TestCOverlayTextPlaces)

#include "tst_COverlayTextPlaces.moc"
