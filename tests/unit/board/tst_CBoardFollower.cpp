/* SPDX-License-Identifier: MIT */
/* The follower sees each change of a board, and nothing else. */
#include "board/follow/CBoardFollower.h"
#include "board/picture/CTestPicture.h"
#include "hw/fpga_map.h"
#include "tests/support/CAttachedBoard.h"

#include <QTest>

#include <functional>

#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

Q_DECLARE_METATYPE(std::function<void(CBoard&)>)

class TestCBoardFollower : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void sees_a_new_board();
    void sees_what_tools_change_data();
    void sees_what_tools_change();
    void sees_writes_to_the_fpga_and_no_reads();
    void sees_stores_to_the_display_controller();
    void sees_layer_0_while_it_is_on();

private:
    QScopedPointer<CAttachedBoard> m_pcBoard;
    QScopedPointer<CBoardFollower> m_pcFollower;
};

void TestCBoardFollower::init()
{
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_pcFollower.reset(new CBoardFollower(**m_pcBoard));
}

void TestCBoardFollower::cleanup()
{
    m_pcFollower.reset();
    m_pcBoard.reset();
}

void TestCBoardFollower::sees_a_new_board()
{
    QVERIFY(m_pcFollower->look());
    for (int i = 0; i < 100; ++i)
        QVERIFY(!m_pcFollower->look());
}

void TestCBoardFollower::sees_what_tools_change_data()
{
    QTest::addColumn<std::function<void(CBoard&)>>("change");
    const auto row = [](const char* pszName, const std::function<void(CBoard&)>& rcChange) {
        QTest::newRow(pszName) << rcChange;
    };
    row("camera", [](CBoard& rcBoard) { rcBoard.setCamera(CTestPicture::frame(1)); });
    row("unplugged", [](CBoard& rcBoard) { rcBoard.setCameraPlugged(false); });
    row("codec", [](CBoard& rcBoard) { QVERIFY(rcBoard.setCodecState({SCodecState::PLAYING, 5, "a"})); });
    row("FPGA", [](CBoard& rcBoard) { rcBoard.setFpgaRegister(FPGA_CTRL, 3); });
    row("display controller",
        [](CBoard& rcBoard) { rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, LIME_DBGC, 5); });
}

void TestCBoardFollower::sees_what_tools_change()
{
    QFETCH(std::function<void(CBoard&)>, change);
    QVERIFY(m_pcFollower->look());
    change(**m_pcBoard);
    QVERIFY(m_pcFollower->look());
    QVERIFY(!m_pcFollower->look());
}

void TestCBoardFollower::sees_writes_to_the_fpga_and_no_reads()
{
    const int iDevice = m_pcBoard->openDevice(BOARD_FPGA);
    char acCell[2] = {'A', 0x15};
    quint32 au32Record[2] = {FPGA_CTRL, 3};
    QVERIFY(m_pcFollower->look());
    QCOMPARE(::lseek(iDevice, FPGA_TEXT_PAGES, SEEK_SET), static_cast<off_t>(FPGA_TEXT_PAGES));
    QCOMPARE(::write(iDevice, acCell, 2), ssize_t(2));
    QVERIFY(m_pcFollower->look());
    QCOMPARE(::ioctl(iDevice, 0xc0086b05, au32Record), 0);
    QVERIFY(m_pcFollower->look());
    QCOMPARE(::read(iDevice, acCell, 2), ssize_t(2));
    QCOMPARE(::ioctl(iDevice, 0xc0086b02, au32Record), 0);
    QVERIFY(!m_pcFollower->look());
    ::close(iDevice);
}

void TestCBoardFollower::sees_stores_to_the_display_controller()
{
    const int iDevice = m_pcBoard->openDevice(BOARD_LIME);
    void* pvMemory = ::mmap(nullptr, board_lime_bytes(), PROT_READ | PROT_WRITE, MAP_SHARED, iDevice, 0);
    QVERIFY(pvMemory != MAP_FAILED);
    QVERIFY(m_pcFollower->look());
    static_cast<quint32*>(pvMemory)[(LIME_CAPT_WINDOW + LIME_CSC) / 4] = 0x08000800;
    QVERIFY(m_pcFollower->look());
    QVERIFY(!m_pcFollower->look());
    ::munmap(pvMemory, board_lime_bytes());
    ::close(iDevice);
}

// At one look in ten.
void TestCBoardFollower::sees_layer_0_while_it_is_on()
{
    CBoard& rcBoard = **m_pcBoard;
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, LIME_DCM1, LIME_DCM1_DISPLAY | LIME_DCM1_LAYER(0));
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, LIME_L0M, LIME_L0M_16_BIT | 23 << 16);
    QVERIFY(m_pcFollower->look());
    for (int i = 0; i < 20; ++i)
        QVERIFY(!m_pcFollower->look());
    const QByteArray cMemory = rcBoard.limeMemory(0, 2);
    *const_cast<char*>(cMemory.constData()) = 1;
    int iSeen = 0;
    for (int i = 0; i < 20; ++i)
        iSeen += m_pcFollower->look() ? 1 : 0;
    QCOMPARE(iSeen, 1);
}

QTEST_GUILESS_MAIN(TestCBoardFollower)
#include "tst_CBoardFollower.moc"
