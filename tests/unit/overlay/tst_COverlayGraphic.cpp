/* SPDX-License-Identifier: MIT */
/* The image that nothing draws. */
#include "overlay/COverlayGraphic.h"

#include <QtTest>

class TestCOverlayGraphic : public QObject
{
    Q_OBJECT

private slots:
    void holds_the_image_that_it_was_given_last();
};

static QPixmap pixmap(int iWidth)
{
    return {iWidth, 2};
}

void TestCOverlayGraphic::holds_the_image_that_it_was_given_last()
{
    COverlayGraphic cGraphic(pixmap(3));
    QCOMPARE(cGraphic.getImageData().size(), QSize(3, 2));
    cGraphic.setImageData(pixmap(5));
    QCOMPARE(cGraphic.getImageData().size(), QSize(5, 2));

    // A copy: the graphic doesn't share it.
    cGraphic.getImageData() = QPixmap();
    QCOMPARE(cGraphic.getImageData().size(), QSize(5, 2));
}

QTEST_MAIN(TestCOverlayGraphic)
#include "tst_COverlayGraphic.moc"
