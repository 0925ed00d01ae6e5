/* SPDX-License-Identifier: MIT */
/* The moving camera: its pictures, and the clock that counts them. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "tests/golden.h"
#include "tests/support/CTemporaryBoard.h"
#include "tests/support/LiveVideo.h"
#include "tests/support/Timeouts.h"

#include <QElapsedTimer>
#include <QTest>

#include <limits>

class TestMovingCamera : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void pictures_of_a_drive_data();
    void pictures_of_a_drive();
    void a_picture_depends_on_its_number_alone();
    void each_frame_is_another_picture();
    void every_number_has_a_picture_data();
    void every_number_has_a_picture();
    void the_clock_counts_the_frames();
    void a_choice_begins_at_the_first_frame();
    void a_fixed_frame_stands_still();
    void another_source_ends_it();
    void an_unplugged_one_is_black();
    void it_is_what_is_recorded_and_shown();

private:
    QImage frame(int iFrame);

    QScopedPointer<CTemporaryBoard> m_pcBoard;
};

void TestMovingCamera::init()
{
    m_pcBoard.reset(new CTemporaryBoard);
    QVERIFY2(m_pcBoard->make(), qPrintable(m_pcBoard->error()));
    showLiveVideo(m_pcBoard->board());
}

QImage TestMovingCamera::frame(int iFrame)
{
    m_pcBoard->board().setMovingCamera(iFrame);
    return m_pcBoard->board().cameraImage();
}

void TestMovingCamera::pictures_of_a_drive_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("golden");
    QTest::newRow("a crack") << 140 << "moving_crack";
    QTest::newRow("a junction") << 400 << "moving_junction";
}

void TestMovingCamera::pictures_of_a_drive()
{
    QFETCH(int, number);
    QFETCH(QString, golden);
    QCOMPARE(differenceFromGolden(frame(number), golden), QString());
}

void TestMovingCamera::a_picture_depends_on_its_number_alone()
{
    const QImage cFirst = frame(1000);
    QVERIFY(frame(3) != cFirst);
    CTemporaryBoard cOther;
    QVERIFY2(cOther.make(), qPrintable(cOther.error()));
    cOther.board().setMovingCamera(1000);
    QCOMPARE(cOther.board().cameraImage(), cFirst);
}

void TestMovingCamera::each_frame_is_another_picture()
{
    QImage cLast = frame(99);
    for (int i = 100; i < 110; ++i) {
        const QImage cNow = frame(i);
        QVERIFY(cNow != cLast);
        cLast = cNow;
    }
}

void TestMovingCamera::every_number_has_a_picture_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("an hour") << 90000;
    QTest::newRow("distance of six digits") << 12800000;
    QTest::newRow("the last") << std::numeric_limits<int>::max() - 1;
}

void TestMovingCamera::every_number_has_a_picture()
{
    QFETCH(int, number);
    const QImage cPicture = frame(number);
    QVERIFY(qGray(cPicture.pixel(100, 100)) > 60); // the wall is lit
    QCOMPARE(qAlpha(cPicture.pixel(100, 100)), 255);
}

void TestMovingCamera::the_clock_counts_the_frames()
{
    CBoard& rcBoard = m_pcBoard->board();
    rcBoard.setMovingCamera();
    QElapsedTimer cTimer;
    cTimer.start();
    const quint32 u32First = rcBoard.cameraFrame();
    QTRY_VERIFY_WITH_TIMEOUT(rcBoard.cameraFrame() >= u32First + 5, TIMEOUT_PROCESS_MS);
    const qint64 iFrames = rcBoard.cameraFrame() - u32First;
    // The first and the last may be cut.
    QVERIFY2((iFrames - 1) * 40 <= cTimer.elapsed() + 1, qPrintable(QString::number(iFrames)));
}

void TestMovingCamera::a_choice_begins_at_the_first_frame()
{
    CBoard& rcBoard = m_pcBoard->board();
    rcBoard.setMovingCamera();
    QTRY_VERIFY_WITH_TIMEOUT(rcBoard.cameraFrame() >= 10, TIMEOUT_PROCESS_MS);
    QElapsedTimer cTimer;
    cTimer.start();
    rcBoard.setMovingCamera();
    const quint32 u32Frame = rcBoard.cameraFrame();
    QVERIFY2(u32Frame <= cTimer.elapsed() / 40 + 1, qPrintable(QString::number(u32Frame)));
}

void TestMovingCamera::a_fixed_frame_stands_still()
{
    CBoard& rcBoard = m_pcBoard->board();
    rcBoard.setMovingCamera(42);
    const QImage cPicture = rcBoard.cameraImage();
    CTemporaryBoard cOther;
    QVERIFY2(cOther.make(), qPrintable(cOther.error()));
    cOther.board().setMovingCamera();
    QTRY_VERIFY_WITH_TIMEOUT(cOther.board().cameraFrame() >= 3, TIMEOUT_PROCESS_MS);
    QCOMPARE(rcBoard.cameraFrame(), 42u);
    QCOMPARE(rcBoard.cameraImage(), cPicture);
}

void TestMovingCamera::another_source_ends_it()
{
    CBoard& rcBoard = m_pcBoard->board();
    rcBoard.setMovingCamera();
    QCOMPARE(rcBoard.cameraSource(), BOARD_CAMERA_MOVING);
    rcBoard.setCamera(CTestPicture::frame(3));
    QCOMPARE(rcBoard.cameraSource(), BOARD_CAMERA_STILL);
    QCOMPARE(rcBoard.cameraImage(), CTestPicture::frame(3));
}

void TestMovingCamera::an_unplugged_one_is_black()
{
    CBoard& rcBoard = m_pcBoard->board();
    rcBoard.setMovingCamera(7);
    rcBoard.setCameraPlugged(false);
    QVERIFY(!rcBoard.hasSignal());
    QCOMPARE(CBoardPicture::recorded(rcBoard).pixel(100, 100), 0xff000000u);
    rcBoard.setCameraPlugged(true);
    QVERIFY(rcBoard.hasSignal());
    QCOMPARE(CBoardPicture::recorded(rcBoard), frame(7));
}

void TestMovingCamera::it_is_what_is_recorded_and_shown()
{
    CBoard& rcBoard = m_pcBoard->board();
    const QImage cPicture = frame(200);
    QCOMPARE(CBoardPicture::recorded(rcBoard), cPicture);
    QCOMPARE(CBoardPicture::monitor(rcBoard).copy(0, 0, 688, 573), cPicture.copy(0, 0, 688, 573));
}

QTEST_GUILESS_MAIN(TestMovingCamera)

#include "tst_moving_camera.moc"
