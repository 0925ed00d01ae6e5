/* SPDX-License-Identifier: MIT */
/* The bring-up on a virtual board: its result, and the state after a failed step. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "daemon/CEventLogger.h"
#include "hw/fpga_map.h"
#include "platform/CMultimediaPlatform.h"
#include "platform/Lime.h"
#include "regdb/chip_regs.h"
#include "regdb/registers.h"
#include "tests/golden.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/support/CPlatformBoard.h"

#include <QFile>
#include <QtTest>

class TestCMultimediaPlatform : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void brings_all_chips_up();
    void a_failing_step_is_logged_and_the_others_are_done_data();
    void a_failing_step_is_logged_and_the_others_are_done();
    void a_missing_decoder_file_leaves_the_decoder_alone();
    void a_missing_file_of_the_display_controller_still_blackens_the_background();
    void a_syntax_error_names_file_and_line();
    void a_table_whose_fields_do_not_add_up_is_reported_data();
    void a_table_whose_fields_do_not_add_up_is_reported();
    void a_reload_changes_only_what_the_files_say();
    void a_reload_after_a_failed_one_brings_all_back();
    void finalize_can_be_called_twice();
    void names_the_register_files();

    void internal_sync_is_the_frame_generator();
    void freezing_stores_the_picture_and_shows_it_on_request();
    void the_stored_picture_is_shown_and_hidden();
    void modes_are_the_two_bits_of_the_control_register();

private:
    /// Starts on the board; m_cLog gets the log lines, without ident and process number.
    int initialize();
    int reload();
    void write(const char* pszName, const QByteArray& rcText);

    QScopedPointer<CPlatformBoard> m_pcBoard;
    QStringList m_cLog;   ///< log lines of the last bring-up
    QStringList m_cOther; ///< other lines on standard error
};

static const quint32 DBGC = 0x184;

void TestCMultimediaPlatform::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
}

void TestCMultimediaPlatform::init()
{
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
}

void TestCMultimediaPlatform::cleanup()
{
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

void TestCMultimediaPlatform::write(const char* pszName, const QByteArray& rcText)
{
    QFile cFile(m_pcBoard->registerFile(pszName));
    QVERIFY(cFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(cFile.write(rcText), qint64(rcText.size()));
}

static QStringList messages(const QByteArray& rcOutput, bool bLog)
{
    QStringList cMessages;
    for (const QByteArray& rcLine : rcOutput.split('\n')) {
        const bool bIsLog = rcLine.startsWith("haldend[");
        if (!rcLine.isEmpty() && bIsLog == bLog)
            cMessages << QString::fromLocal8Bit(bIsLog ? rcLine.mid(rcLine.indexOf("]: ") + 3) : rcLine);
    }
    return cMessages;
}

int TestCMultimediaPlatform::initialize()
{
    CCapturedOutput cOutput(1);
    CCapturedOutput cErrors(2);
    const int iResult = m_pcBoard->initialize();
    const QByteArray cErrorText = cErrors.take();
    m_cLog = messages(cErrorText, true);
    m_cOther = messages(cErrorText, false);
    return iResult;
}

int TestCMultimediaPlatform::reload()
{
    CCapturedOutput cErrors(2);
    const int iResult = CMultimediaPlatform::reinitialize();
    m_cLog = messages(cErrors.take(), true);
    return iResult;
}

void TestCMultimediaPlatform::brings_all_chips_up()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(initialize(), 1);
    QCOMPARE(m_cLog, QStringList());
    QCOMPARE(m_cOther, QStringList());
    QCOMPARE(rcBoard->i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x7d));
    QCOMPARE(rcBoard->i2cRegister(SAA7129_SLAVE, 0x61), quint8(0x02));
    QCOMPARE(rcBoard->fpgaRegister(FPGA_TESZ), 0xc0aU);
    QCOMPARE(rcBoard->limeRegister(CBoard::LIME_CAPTURE, 0x004), 0x08000800U);
    // Full screen: the ragged right and bottom edges of the camera picture are cut off.
    QCOMPARE(CBoardPicture::monitor(*rcBoard).copy(0, 0, 688, 573),
             CTestPicture::frame(0).copy(0, 0, 688, 573));
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(*rcBoard), QStringLiteral("renderer_unscaled")),
             QString());

    // Both mappings show the same controller: the one of the tables and the one of the video window.
    Lime::lime_set_background_color(1, 2, 3);
    QCOMPARE(rcBoard->limeRegister(CBoard::LIME_DISPLAY, DBGC), 0x00010203U);
    QCOMPARE(read_reg_by_name(&crp_lime, "DBGC"), 1);
    QCOMPARE(reg_value(search_reg_bf_group_by_name(&crp_lime, "DBGC")), 0x00010203U);
}

void TestCMultimediaPlatform::a_failing_step_is_logged_and_the_others_are_done_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QStringList>("log");
    const QString cNoFile;
    const int NONE = BOARD_OPERATION_NONE;
    QTest::newRow("display controller can't be opened, for the tables")
        << int(BOARD_OPERATION_LIME_OPEN) << 1 << cNoFile
        << QStringList{QStringLiteral("Error initializing Lime framebuffer")};
    QTest::newRow("display controller can't be mapped, for the tables")
        << int(BOARD_OPERATION_LIME_MAP) << 1 << cNoFile
        << QStringList{QStringLiteral("Error initializing Lime framebuffer")};
    QTest::newRow("display controller can't be opened, for the window")
        << int(BOARD_OPERATION_LIME_OPEN) << 2 << cNoFile << QStringList{};
    QTest::newRow("FPGA can't be opened")
        << int(BOARD_OPERATION_FPGA_OPEN) << 1 << cNoFile
        << QStringList{QStringLiteral("Error initializing FPGA framebuffer")};
    QTest::newRow("bus can't be opened, for the decoder")
        << int(BOARD_OPERATION_I2C_OPEN) << 1 << cNoFile
        << QStringList{QStringLiteral("Error initializing SAA7113")};
    QTest::newRow("bus can't be opened, for the encoder")
        << int(BOARD_OPERATION_I2C_OPEN) << 2 << cNoFile
        << QStringList{QStringLiteral("Error initializing SAA7129")};
    QTest::newRow("decoder can't be chosen") << int(BOARD_OPERATION_I2C_SLAVE) << 1 << cNoFile
                                             << QStringList{QStringLiteral("Error initializing SAA7113")};
    QTest::newRow("encoder can't be chosen") << int(BOARD_OPERATION_I2C_SLAVE) << 2 << cNoFile
                                             << QStringList{QStringLiteral("Error initializing SAA7129")};
    QTest::newRow("no file of the decoder") << NONE << 1 << QStringLiteral("saa7113.cnf")
                                            << QStringList{QStringLiteral("Error initializing SAA7113")};
    QTest::newRow("no file of the encoder") << NONE << 1 << QStringLiteral("saa7129.cnf")
                                            << QStringList{QStringLiteral("Error initializing SAA7129")};
    QTest::newRow("no file of the FPGA")
        << NONE << 1 << QStringLiteral("fpga.cnf") << QStringList{QStringLiteral("Error initializing FPGA")};
    QTest::newRow("no file of the display controller")
        << NONE << 1 << QStringLiteral("lime.cnf") << QStringList{QStringLiteral("Error initializing Lime")};
    // The result of a write to a chip is not checked.
    for (const board_operation eOperation :
         {BOARD_OPERATION_FPGA_WRITE, BOARD_OPERATION_FPGA_SEEK, BOARD_OPERATION_FPGA_IOCTL_READ,
          BOARD_OPERATION_FPGA_IOCTL_WRITE, BOARD_OPERATION_I2C_WRITE})
        QTest::newRow(qPrintable(CBoard::operationName(eOperation) + QStringLiteral(" fails")))
            << int(eOperation) << 1 << cNoFile << QStringList{};
}

void TestCMultimediaPlatform::a_failing_step_is_logged_and_the_others_are_done()
{
    QFETCH(int, operation);
    QFETCH(int, nth);
    QFETCH(QString, missing);
    QFETCH(QStringList, log);
    CPlatformBoard& rcBoard = *m_pcBoard;
    CBoard::SFault sFault;
    sFault.eOperation = static_cast<board_operation>(operation);
    sFault.u32Nth = static_cast<quint32>(nth);
    sFault.u32Count = log.isEmpty() && nth == 1 ? BOARD_FAULT_FOREVER : 1;
    if (sFault.eOperation != BOARD_OPERATION_NONE)
        rcBoard->setFault(sFault);
    // Data written after a failed seek land behind the last write.
    if (sFault.eOperation == BOARD_OPERATION_FPGA_SEEK)
        rcBoard.dontJudge();
    if (!missing.isEmpty())
        QVERIFY(QFile::remove(m_pcBoard->registerFile(qPrintable(missing))));
    QCOMPARE(initialize(), log.isEmpty() ? 1 : 0);
    QCOMPARE(m_cLog, log);
    QVERIFY(sFault.eOperation == BOARD_OPERATION_NONE || rcBoard->faults().value(0).u32Hits > 0);

    // Steps that don't depend on it are done.
    const auto cIsAbout = [&log](const char* pszWord) {
        return log.join(QLatin1Char(' ')).contains(QLatin1String(pszWord));
    };
    const QString cOperation = CBoard::operationName(sFault.eOperation);
    if (!cIsAbout("SAA7113") && !cOperation.startsWith(QLatin1String("i2c-w")))
        QCOMPARE(rcBoard->i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x7d));
    if (!cIsAbout("SAA7129") && !cOperation.startsWith(QLatin1String("i2c-w")))
        QCOMPARE(rcBoard->i2cRegister(SAA7129_SLAVE, 0x61), quint8(0x02));
    if (!cIsAbout("FPGA") && cOperation != QLatin1String("fpga-ioctl-write"))
        QCOMPARE(rcBoard->fpgaRegister(FPGA_TESZ), 0xc0aU);
    if (!cIsAbout("Lime"))
        QCOMPARE(rcBoard->limeRegister(CBoard::LIME_DISPLAY, 0x100), 0x80038083U);
    const bool bWindow = operation != BOARD_OPERATION_LIME_OPEN || nth != 2;
    rcBoard->setLimeRegister(CBoard::LIME_DISPLAY, DBGC, 0);
    Lime::lime_set_background_color(9, 9, 9);
    QCOMPARE(rcBoard->limeRegister(CBoard::LIME_DISPLAY, DBGC), bWindow ? 0x00090909U : 0U);
}

void TestCMultimediaPlatform::a_missing_decoder_file_leaves_the_decoder_alone()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QVERIFY(QFile::remove(m_pcBoard->registerFile("saa7113.cnf")));
    QCOMPARE(initialize(), 0);
    QCOMPARE(m_cOther, (QStringList{QStringLiteral("Errormessage in configfile: /usr/etc/cnfs/saa7113.cnf, "
                                                   "Linenumber:0"),
                                    QStringLiteral("file I/O error")}));
    QCOMPARE(m_cLog, QStringList{QStringLiteral("Error initializing SAA7113")});
    for (int iSub = 0; iSub < 256; ++iSub)
        QCOMPARE(rcBoard->i2cRegister(SAA7113_SLAVE, static_cast<quint8>(iSub)), quint8(0));
    QCOMPARE(rcBoard->i2cRegister(SAA7129_SLAVE, 0x61), quint8(0x02));
}

void TestCMultimediaPlatform::a_missing_file_of_the_display_controller_still_blackens_the_background()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    rcBoard->setLimeRegister(CBoard::LIME_DISPLAY, DBGC, 0x00ff8040);
    QVERIFY(QFile::remove(m_pcBoard->registerFile("lime.cnf")));
    QCOMPARE(initialize(), 0);
    QCOMPARE(rcBoard->limeRegister(CBoard::LIME_DISPLAY, DBGC), 0U);
    QCOMPARE(rcBoard->limeRegister(CBoard::LIME_DISPLAY, 0x100), 0U);
}

void TestCMultimediaPlatform::a_syntax_error_names_file_and_line()
{
    write("lime.cnf", "# 1\n# 2\n# 3\n# 4\n# 5\n# 6\nDBGC: { dbgr = = 1; };\n");
    QCOMPARE(initialize(), 0);
    QCOMPARE(m_cOther, (QStringList{QStringLiteral("Errormessage in configfile: /usr/etc/cnfs/lime.cnf, "
                                                   "Linenumber:7"),
                                    QStringLiteral("syntax error")}));
    QCOMPARE(m_cLog, QStringList{QStringLiteral("Error initializing Lime")});
}

void TestCMultimediaPlatform::a_table_whose_fields_do_not_add_up_is_reported_data()
{
    QTest::addColumn<bool>("lime");
    QTest::addColumn<QString>("label");
    QTest::newRow("display controller") << true << QStringLiteral("Error: Lime regs bit size");
    QTest::newRow("FPGA") << false << QStringLiteral("Error: FPGA regs bit size");
}

void TestCMultimediaPlatform::a_table_whose_fields_do_not_add_up_is_reported()
{
    QFETCH(bool, lime);
    QFETCH(QString, label);
    reg_bf& rsField = (lime ? regs_lime : regs_fpga)[0].bf[0];
    ++rsField.len;
    m_pcBoard->dontJudge(); // the value slips to undeclared bits
    QCOMPARE(initialize(), 0);
    --rsField.len;
    QCOMPARE(m_cLog, QStringList{label});
    // All else was done.
    QCOMPARE((*m_pcBoard)->i2cRegister(SAA7129_SLAVE, 0x61), quint8(0x02));
}

void TestCMultimediaPlatform::a_reload_changes_only_what_the_files_say()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(initialize(), 1);
    write("fpga.cnf", "TSXP: { tsx = 100; };\n");
    write("saa7113.cnf", "lubr: { LUBR = 0x55; };\n");
    QCOMPARE(reload(), 1);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_TSXP), 100U);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_TSYP), 14U);
    QCOMPARE(rcBoard->i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x55));
    QCOMPARE(rcBoard->i2cRegister(SAA7113_SLAVE, 0x0b), quint8(0x47));
    // Registers that were named once go out again, those of the FPGA too.
    rcBoard->setFpgaRegister(FPGA_TSYP, 0);
    QCOMPARE(reload(), 1);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_TSYP), 14U);
}

void TestCMultimediaPlatform::a_reload_after_a_failed_one_brings_all_back()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(initialize(), 1);
    for (const board_operation eOperation :
         {BOARD_OPERATION_LIME_OPEN, BOARD_OPERATION_FPGA_OPEN, BOARD_OPERATION_I2C_OPEN})
        rcBoard->setFault({eOperation});
    QCOMPARE(reload(), 0);
    QCOMPARE(m_cLog, (QStringList{QStringLiteral("Error initializing Lime framebuffer"),
                                  QStringLiteral("Error initializing FPGA framebuffer"),
                                  QStringLiteral("Error initializing SAA7113"),
                                  QStringLiteral("Error initializing SAA7129")}));
    QCOMPARE(Lime::lime_read_disp_reg(0x100), 0U);
    rcBoard->clearFaults();
    rcBoard->setLimeRegister(CBoard::LIME_DISPLAY, 0x100, 0);
    QCOMPARE(reload(), 1);
    QCOMPARE(Lime::lime_read_disp_reg(0x100), 0x80038083U);
}

void TestCMultimediaPlatform::finalize_can_be_called_twice()
{
    QCOMPARE(initialize(), 1);
    CMultimediaPlatform::finalize();
    CMultimediaPlatform::finalize();
    Lime::instance().lime_set_background_color(7, 8, 9);
    QCOMPARE((*m_pcBoard)->limeRegister(CBoard::LIME_DISPLAY, DBGC), 0x00070809U);
    CMultimediaPlatform::finalize();
}

void TestCMultimediaPlatform::names_the_register_files()
{
    QCOMPARE(CMultimediaPlatform::getFPGAConfigFile(), "/usr/etc/cnfs/fpga.cnf");
    QCOMPARE(CMultimediaPlatform::getLimeConfigFile(), "/usr/etc/cnfs/lime.cnf");
    QCOMPARE(CMultimediaPlatform::getSAA7113ConfigFile(), "/usr/etc/cnfs/saa7113.cnf");
    QCOMPARE(CMultimediaPlatform::getSAA7129ConfigFile(), "/usr/etc/cnfs/saa7129.cnf");
}

void TestCMultimediaPlatform::internal_sync_is_the_frame_generator()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(initialize(), 1);
    const QImage cLive = CBoardPicture::monitor(*rcBoard);
    CMultimediaPlatform::setVideoInternalSync(true);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), 0x00800000U);
    QCOMPARE(CBoardPicture::monitor(*rcBoard).pixel(300, 200), 0xff000080U);
    CMultimediaPlatform::setVideoInternalSync(false);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), 0U);
    QCOMPARE(CBoardPicture::monitor(*rcBoard), cLive);
}

void TestCMultimediaPlatform::freezing_stores_the_picture_and_shows_it_on_request()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(initialize(), 1);
    const QImage cFirst = CBoardPicture::monitor(*rcBoard);
    CMultimediaPlatform::freezeVideoPicture(false);
    rcBoard->setCamera(CTestPicture::frame(40));
    const QImage cSecond = CBoardPicture::monitor(*rcBoard);
    QVERIFY(cSecond != cFirst);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), 0U);
    CMultimediaPlatform::freezeVideoPictureDisplay(true);
    QCOMPARE(CBoardPicture::monitor(*rcBoard), cFirst);

    CMultimediaPlatform::freezeVideoPictureDisplay(false);
    rcBoard->setTracing(true);
    CMultimediaPlatform::freezeVideoPicture(true);
    QCOMPARE(m_pcBoard->takeTrace(), (QStringList{QStringLiteral("fpga write32 0x00ff0008 0x00000001"),
                                                  QStringLiteral("fpga write32 0x00ff0000 0x00100010")}));
    QCOMPARE(CBoardPicture::monitor(*rcBoard), cSecond);
}

void TestCMultimediaPlatform::the_stored_picture_is_shown_and_hidden()
{
    QCOMPARE(initialize(), 1);
    CMultimediaPlatform::freezeVideoPictureDisplay(true);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0x00100010U);
    CMultimediaPlatform::freezeVideoPictureDisplay(false);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
}

void TestCMultimediaPlatform::modes_are_the_two_bits_of_the_control_register()
{
    QCOMPARE(initialize(), 1);
    CMultimediaPlatform::enterVideoPlaybackMode();
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0x03000000U);
    CMultimediaPlatform::enterVideoRecordingMode();
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
}

QTEST_GUILESS_MAIN(TestCMultimediaPlatform)

#include "tst_CMultimediaPlatform.moc"
