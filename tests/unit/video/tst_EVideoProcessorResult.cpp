/* SPDX-License-Identifier: MIT */
/* The numbers on the bus, and the results that become them. */
#include "video/EVideoInputType.h"
#include "video/EVideoProcessorResult.h"

#include <QtTest>

class TestEVideoProcessorResult : public QObject
{
    Q_OBJECT

private slots:
    void the_numbers_are_those_of_the_interface();
    void image_results_become_results_data();
    void image_results_become_results();
};

void TestEVideoProcessorResult::the_numbers_are_those_of_the_interface()
{
    QCOMPARE(int(eVideoProcessorResultOk), 0);
    QCOMPARE(int(eVideoProcessorResultError), 1);
    QCOMPARE(int(eVideoProcessorResultInvalidState), 2);
    QCOMPARE(int(eVideoProcessorResultFileOpenError), 3);
    QCOMPARE(int(eVideoProcessorResultFileReadError), 4);
    QCOMPARE(int(eVideoProcessorResultFileWriteError), 5);
    QCOMPARE(int(eVideoProcessorResultMaxLengthReached), 6);
    QCOMPARE(int(eVideoInputTypeExternal), 0);
    QCOMPARE(int(eVideoInputTypeInternal), 1);
}

void TestEVideoProcessorResult::image_results_become_results_data()
{
    QTest::addColumn<int>("image");
    QTest::addColumn<int>("result");
    const int aiResults[] = {0, 1, 3, 4, 5, 1, 1, 1};
    for (int iImage = 0; iImage < 8; ++iImage)
        QTest::addRow("%d", iImage) << iImage << aiResults[iImage];
}

void TestEVideoProcessorResult::image_results_become_results()
{
    QFETCH(int, image);
    QFETCH(int, result);
    const auto eImage = static_cast<CMultimediaPlatform::EImageOpResult>(image);
    QCOMPARE(int(ConvertImageOpResultToVideoProcessorResult(eImage)), result);
}

QTEST_GUILESS_MAIN(TestEVideoProcessorResult)

#include "tst_EVideoProcessorResult.moc"
