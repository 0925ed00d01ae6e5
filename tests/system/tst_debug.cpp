/* SPDX-License-Identifier: MIT */
/* "/debug" from a client on the bus: the actions of service staff on a running board. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "tests/golden.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CScene.h"
#include "tests/support/Introspection.h"
#include "tests/support/Timeouts.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

class TestDebug : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void introspection_equals_the_interface_file();
    void introspection_lists_the_nine_methods_in_order();
    void no_method_answers();

    void prints_a_chip_with_its_fields_data();
    void prints_a_chip_with_its_fields();
    void prints_what_is_in_the_chip_now();
    void prints_nothing_for_other_words_data();
    void prints_nothing_for_other_words();
    void a_closed_bus_reads_as_ff();

    void saves_what_is_in_the_chips();
    void saves_one_file_after_the_other();
    void saves_nothing_where_it_can_not_data();
    void saves_nothing_where_it_can_not();
    void saves_nothing_on_a_full_disk();
    void a_saved_file_of_the_display_controller_stops_the_next_reload();
    void saved_files_of_decoder_and_encoder_program_zeros();

    void reloads_what_the_files_say_now();
    void a_reload_leaves_the_frame_generator_off_until_the_signal_changes();
    void texts_are_back_after_the_calls_of_the_page_data();
    void texts_are_back_after_the_calls_of_the_page();
    void a_reload_goes_on_whatever_fails_data();
    void a_reload_goes_on_whatever_fails();
    void a_reload_survives_any_file_data();
    void a_reload_survives_any_file();
    void a_failed_reload_can_be_printed_and_saved();
    void two_hundred_reloads();
    void reloads_go_on_without_address_space();

    void switches_show_in_the_picture();
    void the_recording_mode_is_back_after_the_playback_mode();

private:
    void send(const char* pszMethod, const QVariantList& rcArguments = {});
    QStringList printed();
    QString file(const QString& rcName)
    {
        return m_pcScene->board().path(BOARD_CNFS) + QLatin1Char('/') + rcName;
    }
    QByteArray contents(const QString& rcName);
    void write(const QString& rcName, const QByteArray& rcText);

    QScopedPointer<CScene> m_pcScene;
};

static const QString PATH = QStringLiteral("/debug");
static const QString INTERFACE = QStringLiteral("velmar.haldend.debug");
static const QStringList FILES = {QStringLiteral("lime.cnf"), QStringLiteral("fpga.cnf"),
                                  QStringLiteral("saa7113.cnf"), QStringLiteral("saa7129.cnf")};

void TestDebug::init()
{
    m_pcScene.reset(new CScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestDebug::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
}

// Sends the call without asking for a reply, and waits until it has been carried out.
void TestDebug::send(const char* pszMethod, const QVariantList& rcArguments)
{
    m_pcScene->daemon().send(PATH, QString::fromLatin1(pszMethod), rcArguments);
    QVERIFY(m_pcScene->daemon().settle());
}

// The output on standard error since the last time, without log lines.
QStringList TestDebug::printed()
{
    // All output is in the pipe already.
    QCoreApplication::processEvents();
    return m_pcScene->daemon().takeUnexpectedOutput();
}

// As much as any register file has: behind a link, one may have no end.
QByteArray TestDebug::contents(const QString& rcName)
{
    const qint64 LONGEST = 1 << 20;
    QFile cFile(file(rcName));
    return cFile.open(QIODevice::ReadOnly) ? cFile.read(LONGEST) : QByteArray();
}

void TestDebug::write(const QString& rcName, const QByteArray& rcText)
{
    QFile cFile(file(rcName));
    QVERIFY(cFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(cFile.write(rcText), qint64(rcText.size()));
}

void TestDebug::introspection_equals_the_interface_file()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.debug.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QStringList cExpected = describeInterface(cFile.readAll(), INTERFACE);
    QVERIFY(!cExpected.isEmpty());
    QCOMPARE(describeInterface(m_pcScene->daemon().introspect(PATH), INTERFACE), cExpected);
}

void TestDebug::introspection_lists_the_nine_methods_in_order()
{
    const QString cNoReply =
        QStringLiteral("  annotation name=org.freedesktop.DBus.Method.NoReply value=true");
    QStringList cExpected;
    for (const char* pszMethod :
         {"reload_hardware_config", "save_hardware_config", "print_hardware_config",
          "fpga_enter_playback_mode", "fpga_enter_recording_mode", "fpga_enable_video_restore",
          "fpga_disable_video_restore", "fpga_enable_frame_generator", "fpga_disable_frame_generator"}) {
        cExpected << QStringLiteral("method name=") + QLatin1String(pszMethod) << cNoReply;
        if (QByteArray(pszMethod) == "print_hardware_config")
            cExpected << QStringLiteral("  arg direction=in name=hardware_name type=s");
    }
    QCOMPARE(describeInterface(m_pcScene->daemon().introspect(PATH), INTERFACE), cExpected);
}

// Not even where the hardware fails.
void TestDebug::no_method_answers()
{
    m_pcScene->board().setFault({BOARD_OPERATION_FPGA_IOCTL_WRITE});
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));
    for (const char* pszMethod :
         {"reload_hardware_config", "save_hardware_config", "fpga_enter_playback_mode",
          "fpga_enter_recording_mode", "fpga_enable_video_restore", "fpga_disable_video_restore",
          "fpga_enable_frame_generator", "fpga_disable_frame_generator"})
        rcDaemon.send(PATH, QString::fromLatin1(pszMethod), {});
    rcDaemon.send(PATH, QStringLiteral("print_hardware_config"), {QStringLiteral("fpga")});
    QVERIFY(rcDaemon.settle());

    // The one reply is that of the call which settle() makes after them.
    QVERIFY2(cMonitor.waitFor("<interface name=\"velmar.haldend.videodisplay\">"),
             cMonitor.seen().constData());
    QCOMPARE(cMonitor.repliesTo(rcDaemon.client().baseService()), 1);
    QVERIFY(cMonitor.seen().contains("member=print_hardware_config"));
    QVERIFY(cMonitor.end());
    QVERIFY(!printed().isEmpty());
}

void TestDebug::prints_a_chip_with_its_fields_data()
{
    QTest::addColumn<int>("registers");
    QTest::addColumn<int>("fields");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("fpga") << 7 << 38
                          << QStringLiteral(
                                 "DEBUG_print_bitfields_by_name:CTRL| Reg-Base-(X):A-off-(00ff0000):"
                                 "V-v32-(00000000) N-help-[FPGA Display-Control-Register]")
                          << QStringLiteral("           res1=L:( 6):V(00000000)");
    QTest::newRow("lime") << 41 << 196
                          << QStringLiteral(
                                 "DEBUG_print_bitfields_by_name:VCM| Reg-Base-(C):A-off-(00000000):"
                                 "V-v32-(83100002) N-help-[Video-Control-Mode]")
                          << QStringLiteral("            vie=L:( 1):V(00000001)");
    QTest::newRow("saa7113") << 31 << 38
                             << QStringLiteral(
                                    "DEBUG_print_bitfields_by_name:CVER| Reg-Base-(X):A-off-(00000000):"
                                    "V-v08-(ff) N-help-[Chip Version]")
                             << QStringLiteral("           cver=L:( 8):V(00)");
    QTest::newRow("saa7129")
        << 73 << 73
        << QStringLiteral("DEBUG_print_bitfields_by_name:RN_0x26| Reg-Base-(X):A-off-(00000026):V-v08-(ff) "
                          "N-help-[Wide Screen Signal - WSS7  WSS6  WSS5  WSS4 WSS3  WSS2  WSS1 WSS0 -]")
        << QStringLiteral("        bf_0x26=L:( 8):V(00)");
}

void TestDebug::prints_a_chip_with_its_fields()
{
    QFETCH(int, registers);
    QFETCH(int, fields);
    QFETCH(QString, first);
    QFETCH(QString, second);
    send("print_hardware_config", {QString::fromLatin1(QTest::currentDataTag())});
    const QStringList cLines = printed();
    QCOMPARE(cLines.value(0), first);
    QCOMPARE(cLines.value(1), second);
    QCOMPARE(cLines.filter(QStringLiteral("DEBUG_print_bitfields_by_name:")).size(), registers);
    QCOMPARE(cLines.filter(QStringLiteral("=L:(")).size(), fields);
    QCOMPARE(cLines.size(), registers + fields);
}

void TestDebug::prints_what_is_in_the_chip_now()
{
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_size"), {360, 288});
    send("print_hardware_config", {QStringLiteral("lime")});
    QVERIFY(
        printed().contains(QStringLiteral("DEBUG_print_bitfields_by_name:CSC| Reg-Base-(C):A-off-(00000004):"
                                          "V-v32-(0fd50eb1) N-help-[Capture-Scale]")));
}

// The trace without the poll of the camera signal, which may come at any time.
static QStringList operations(const CBoard& rcBoard)
{
    QStringList cLines = rcBoard.traceLines();
    cLines.removeAll(QStringLiteral("i2c read 0x1f = 0x00"));
    return cLines;
}

void TestDebug::prints_nothing_for_other_words_data()
{
    QTest::addColumn<QString>("word");
    for (const char* pszWord : {"", "LIME", "Lime", "lime ", " lime", "saa", "saa71130", "all", "\xc3\xbc"})
        QTest::newRow(pszWord) << QString::fromUtf8(pszWord);
}

void TestDebug::prints_nothing_for_other_words()
{
    QFETCH(QString, word);
    m_pcScene->board().setTracing(true);
    send("print_hardware_config", {word});
    QCOMPARE(printed(), QStringList());
    QCOMPARE(operations(m_pcScene->board()), QStringList());
}

// The I2C bus is open during the bring-up only; later another file may have its number.
void TestDebug::a_closed_bus_reads_as_ff()
{
    m_pcScene->board().setTracing(true);
    send("print_hardware_config", {QStringLiteral("saa7113")});
    const QStringList cRegisters = printed().filter(QStringLiteral("DEBUG_print_bitfields_by_name:"));
    QCOMPARE(cRegisters.filter(QStringLiteral("V-v08-(ff)")).size(), 31);
    QCOMPARE(operations(m_pcScene->board()), QStringList());
}

void TestDebug::saves_what_is_in_the_chips()
{
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.setFpgaRegister(0xff000c, 0x301);
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x00112233);
    send("save_hardware_config");
    QVERIFY2(contents(QStringLiteral("fpga.cnf"))
                 .contains(
                     "SRIC:  // REG-Function:(Store Image control) REG-Addr:(X:0x00ff000c) Val:(0x00000301)\n"
                     "{\n"
                     "      res1 = 0   ;  // (16) (0x00000000)      \n"
                     "      sinr = 3   ;  // (08) (0x00000003)   Store Videimage Nr:0-7\n"
                     "      rinr = 1   ;  // (08) (0x00000001)   Restore Videoimage Nr:0-7\n"
                     "};\n"),
             contents(QStringLiteral("fpga.cnf")).constData());
    QVERIFY(contents(QStringLiteral("lime.cnf")).contains("      dbgr = 17  ;  // (08) (0x00000011)  "));
    QVERIFY(contents(QStringLiteral("lime.cnf")).contains("   res##id = 0   ;"));
    for (const QString& rcName : FILES)
        QVERIFY(contents(rcName).startsWith("\n#\n# All Registername must be written in upper-case an,\n"
                                            "# All Bitfields must be written in Lowercases\n#\n# Date:"));
}

// In this order, as service staff expect it of an interrupted one.
void TestDebug::saves_one_file_after_the_other()
{
    const int iWatch = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    QVERIFY(iWatch >= 0);
    QVERIFY(inotify_add_watch(iWatch, QFile::encodeName(m_pcScene->board().path(BOARD_CNFS)).constData(),
                              IN_CLOSE_WRITE) >= 0);
    send("save_hardware_config");
    alignas(inotify_event) char acEvents[4096];
    const ssize_t iBytes = read(iWatch, acEvents, sizeof(acEvents));
    close(iWatch);
    QStringList cWritten;
    for (ssize_t i = 0; i < iBytes;) {
        const auto* psEvent = reinterpret_cast<const inotify_event*>(acEvents + i);
        cWritten << QString::fromUtf8(psEvent->name);
        i += static_cast<ssize_t>(sizeof(inotify_event) + psEvent->len);
    }
    QCOMPARE(cWritten, FILES);
}

void TestDebug::saves_nothing_where_it_can_not_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("full") << QStringLiteral("/dev/full");
    QTest::newRow("no such folder") << QStringLiteral("none/lime.cnf");
    QTest::newRow("below a file") << QStringLiteral("fpga.cnf/lime.cnf");
    QTest::newRow("a folder") << QStringLiteral(".");
}

// One file after the other: a failure of one harms no other.
void TestDebug::saves_nothing_where_it_can_not()
{
    QFETCH(QString, place);
    const QString cLime = QStringLiteral("lime.cnf");
    QVERIFY(QFile::remove(file(cLime)));
    QVERIFY(QFile::link(place, file(cLime)));
    send("save_hardware_config");
    for (const QString& rcName : FILES)
        QCOMPARE(contents(rcName).endsWith("};\n\n"), rcName != cLime);
    QVERIFY(QFileInfo(file(cLime)).isSymLink());
    QVERIFY(QFile::remove(file(cLime)));
    send("save_hardware_config");
    QVERIFY(contents(cLime).endsWith("};\n\n"));
}

void TestDebug::saves_nothing_on_a_full_disk()
{
    QList<QByteArray> cBefore;
    for (const QString& rcName : FILES)
        cBefore << contents(rcName);
    m_pcScene->board().setFault({BOARD_OPERATION_CNFS_WRITE});
    send("save_hardware_config");
    QCOMPARE(m_pcScene->board().faults().value(0).u32Hits, 4U);
    QList<QByteArray> cAfter;
    for (const QString& rcName : FILES)
        cAfter << contents(rcName);
    QCOMPARE(cAfter, cBefore);
}

void TestDebug::a_saved_file_of_the_display_controller_stops_the_next_reload()
{
    send("save_hardware_config");
    send("reload_hardware_config");
    const QStringList cLines = printed();
    QCOMPARE(cLines.size(), 2);
    QVERIFY(cLines[0].startsWith(
        QStringLiteral("Errormessage in configfile: /usr/etc/cnfs/lime.cnf, Linenumber:")));
    QCOMPARE(cLines[1], QStringLiteral("syntax error"));
    QCOMPARE(m_pcScene->daemon().log().constLast(), QStringLiteral("Error initializing Lime"));
}

void TestDebug::saved_files_of_decoder_and_encoder_program_zeros()
{
    send("save_hardware_config");
    for (const QString& rcName : {QStringLiteral("saa7113.cnf"), QStringLiteral("saa7129.cnf")})
        for (const QByteArray& rcLine : contents(rcName).split('\n'))
            QVERIFY2(!rcLine.contains(" = ") || rcLine.contains(" = 0   ;"), rcLine.constData());
    // Whatever the chips hold.
    QCOMPARE(contents(QStringLiteral("saa7113.cnf")).count(" Val:(0xff)\n"), 31);
    QCOMPARE(contents(QStringLiteral("saa7129.cnf")).count(" Val:(0xff)\n"), 73);
    QVERIFY(m_pcScene->board().i2cRegister(SAA7129_SLAVE, 0x61) != 0);
    send("reload_hardware_config");
    for (int iSub = 0x26; iSub <= 0x7f; ++iSub)
        QCOMPARE(m_pcScene->board().i2cRegister(SAA7129_SLAVE, static_cast<quint8>(iSub)), quint8(0));
    QCOMPARE(m_pcScene->board().i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0));
    QCOMPARE(printed().size(), 2); // the display controller's file
}

void TestDebug::reloads_what_the_files_say_now()
{
    CBoard& rcBoard = m_pcScene->board();
    write(QStringLiteral("fpga.cnf"), "FGCC: { col = 0x800000; };\nTSXP: { tsx = 60; };\n");
    write(QStringLiteral("lime.cnf"), "CSC: { vsci = 2; hsci = 2; };\n");
    write(QStringLiteral("saa7113.cnf"), "LUBR: { lubr = 0x10; };\n");
    rcBoard.setLimeRegister(CBoard::LIME_DISPLAY, 0x184, 0x00ff8040);
    send("reload_hardware_config");
    QCOMPARE(rcBoard.fpgaRegister(0xff0004), 0x00800000U);
    QCOMPARE(rcBoard.fpgaRegister(0xff1a00), 60U);
    QCOMPARE(rcBoard.limeRegister(CBoard::LIME_CAPTURE, 4), 0x10001000U);
    QCOMPARE(rcBoard.limeRegister(CBoard::LIME_DISPLAY, 0x184), 0U);
    QCOMPARE(rcBoard.i2cRegister(SAA7113_SLAVE, 0x0a), quint8(0x10));
    QCOMPARE(
        differenceFromGolden(CBoardPicture::monitor(rcBoard), QStringLiteral("debug_reloaded_at_half_size")),
        QString());
}

// The register file says so. The signal monitor writes only when the signal changes.
void TestDebug::a_reload_leaves_the_frame_generator_off_until_the_signal_changes()
{
    const quint32 CTRL = 0xff0000;
    const quint32 FRAME_GENERATOR = 0x00800000;
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.setCameraPlugged(false);
    QTRY_COMPARE_WITH_TIMEOUT(rcBoard.fpgaRegister(CTRL), FRAME_GENERATOR, TIMEOUT_CALL_MS);
    send("reload_hardware_config");
    QCOMPARE(rcBoard.fpgaRegister(CTRL), 0U);
    rcBoard.setTracing(true);
    QTRY_VERIFY_WITH_TIMEOUT(rcBoard.traceLines().count(QStringLiteral("i2c read 0x1f = 0x40")) >= 2,
                             TIMEOUT_CALL_MS);
    QCOMPARE(rcBoard.fpgaRegister(CTRL), 0U);
}

void TestDebug::texts_are_back_after_the_calls_of_the_page_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("first glyph set") << QString();
    QTest::newRow("another glyph set") << QStringLiteral("ru_RU");
}

// As docs/dbus-api.md says.
void TestDebug::texts_are_back_after_the_calls_of_the_page()
{
    QFETCH(QString, locale);
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    const QString cOverlay = QStringLiteral("/videooverlay");
    const auto cLoadGlyphs = [&] {
        if (!locale.isEmpty())
            rcDaemon.send(cOverlay, QStringLiteral("adjust_character_set_to_locale"), {locale});
    };
    cLoadGlyphs();
    const int iHandle = rcDaemon.call(cOverlay, QStringLiteral("create_text")).arguments().value(0).toInt();
    rcDaemon.send(cOverlay, QStringLiteral("set_text_string"), {iHandle, QStringLiteral("Колодец 17")});
    rcDaemon.send(cOverlay, QStringLiteral("show_text"), {iHandle});
    rcDaemon.send(cOverlay, QStringLiteral("show_overlay"), {});
    QVERIFY(rcDaemon.settle());
    const QImage cBefore = CBoardPicture::monitor(m_pcScene->board());

    send("reload_hardware_config");
    QVERIFY(CBoardPicture::monitor(m_pcScene->board()) != cBefore);
    cLoadGlyphs();
    rcDaemon.send(cOverlay, QStringLiteral("show_overlay"), {});
    QVERIFY(rcDaemon.settle());
    QVERIFY(CBoardPicture::monitor(m_pcScene->board()) != cBefore);
    rcDaemon.send(cOverlay, QStringLiteral("set_osd_transparency"), {0});
    QVERIFY(rcDaemon.settle());
    QCOMPARE(CBoardPicture::monitor(m_pcScene->board()), cBefore);

    // The overlay is hidden too: drawing alone isn't enough.
    send("reload_hardware_config");
    cLoadGlyphs();
    rcDaemon.send(cOverlay, QStringLiteral("set_osd_transparency"), {0});
    QVERIFY(rcDaemon.settle());
    QVERIFY(CBoardPicture::monitor(m_pcScene->board()) != cBefore);
}

void TestDebug::a_reload_goes_on_whatever_fails_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QString>("label");
    const auto cRow = [](const char* pszName, board_operation eOperation, int iNth, const char* pszLabel) {
        QTest::newRow(pszName) << int(eOperation) << iNth << QString::fromLatin1(pszLabel);
    };
    cRow("display controller can't be opened", BOARD_OPERATION_LIME_OPEN, 1,
         "Error initializing Lime framebuffer");
    cRow("display controller can't be mapped", BOARD_OPERATION_LIME_MAP, 1,
         "Error initializing Lime framebuffer");
    cRow("nor for the window", BOARD_OPERATION_LIME_MAP, 2, "");
    cRow("FPGA can't be opened", BOARD_OPERATION_FPGA_OPEN, 1, "Error initializing FPGA framebuffer");
    cRow("FPGA can't be written", BOARD_OPERATION_FPGA_WRITE, 1, "");
    cRow("FPGA's registers can't be written", BOARD_OPERATION_FPGA_IOCTL_WRITE, 1, "");
    cRow("bus can't be opened for the decoder", BOARD_OPERATION_I2C_OPEN, 1, "Error initializing SAA7113");
    cRow("bus can't be opened for the encoder", BOARD_OPERATION_I2C_OPEN, 2, "Error initializing SAA7129");
    cRow("no decoder on the bus", BOARD_OPERATION_I2C_SLAVE, 1, "Error initializing SAA7113");
    cRow("no encoder on the bus", BOARD_OPERATION_I2C_SLAVE, 2, "Error initializing SAA7129");
    cRow("chips don't take what is written", BOARD_OPERATION_I2C_WRITE, 1, "");
}

void TestDebug::a_reload_goes_on_whatever_fails()
{
    QFETCH(int, operation);
    QFETCH(int, nth);
    QFETCH(QString, label);
    CBoard& rcBoard = m_pcScene->board();
    CBoard::SFault sFault;
    sFault.eOperation = static_cast<board_operation>(operation);
    sFault.u32Nth = static_cast<quint32>(nth);
    rcBoard.setFault(sFault);
    send("reload_hardware_config");
    QCoreApplication::processEvents();
    QCOMPARE(
        m_pcScene->daemon().log().mid(1).filter(label.isEmpty() ? QStringLiteral("Error") : label).isEmpty(),
        label.isEmpty());
    rcBoard.clearFaults();
    send("reload_hardware_config");
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"), {3, 4});
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(rcBoard.limeRegister(CBoard::LIME_DISPLAY, 0x124), 0x00040003U);
    QCOMPARE(rcBoard.fpgaRegister(0xff1a00), 42U);
    QCOMPARE(rcBoard.i2cRegister(SAA7129_SLAVE, 0x61), quint8(2));
}

void TestDebug::a_reload_survives_any_file_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("syntax error") << QByteArray("CTRL {");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
    QTest::newRow("top-level array and list")
        << QByteArray("CTRL = [1, 2, 3];\nFGCC = ( { col = 1; }, 3 );\n");
    QTest::newRow("nested groups") << QByteArray("CTRL: { fgon: { a = 1; }; avr = [1]; ato = (1, \"x\"); };");
    QTest::newRow("includes itself") << QByteArray("@include \"/usr/etc/cnfs/fpga.cnf\"\n");
    QTest::newRow("includes a folder") << QByteArray("@include \"/usr/etc/cnfs\"\n");
    QTest::newRow("includes a FIFO") << QByteArray("@include \"/usr/etc/cnfs/fifo\"\n");
    QTest::newRow("includes what isn't there") << QByteArray("@include \"/nonexistent/file\"\n");
    QTest::newRow("a folder") << QByteArray("FOLDER");
    QTest::newRow("a FIFO") << QByteArray("FIFO");
    QTest::newRow("a terminal") << QByteArray("LINK /dev/ptmx");
    QTest::newRow("a file that waits when it is read") << QByteArray("LINK /proc/kmsg");
    QTest::newRow("includes a file that waits when it is read") << QByteArray("@include \"/proc/kmsg\"\n");
}

void TestDebug::a_reload_survives_any_file()
{
    QFETCH(QByteArray, text);
    const QString cFpga = QStringLiteral("fpga.cnf");
    const QByteArray cGood = contents(cFpga);
    QCOMPARE(mkfifo(qPrintable(file(QStringLiteral("fifo"))), 0600), 0);
    QVERIFY(QFile::remove(file(cFpga)));
    if (text == "FOLDER")
        QVERIFY(QDir().mkdir(file(cFpga)));
    else if (text == "FIFO")
        QCOMPARE(mkfifo(qPrintable(file(cFpga)), 0600), 0);
    else if (text.startsWith("LINK "))
        QVERIFY(QFile::link(QString::fromLatin1(text.mid(5)), file(cFpga)));
    else
        write(cFpga, text);
    send("reload_hardware_config");
    send("print_hardware_config", {QStringLiteral("fpga")});
    QVERIFY(printed().size() >= 45);

    QVERIFY(QFile::remove(file(cFpga)) || QDir().rmdir(file(cFpga)));
    write(cFpga, cGood);
    m_pcScene->board().setFpgaRegister(0xff1a00, 0);
    send("reload_hardware_config");
    QCOMPARE(m_pcScene->board().fpgaRegister(0xff1a00), 42U);
    QCOMPARE(printed(), QStringList());
}

// A failed reload leaves no configuration to the calls after it.
void TestDebug::a_failed_reload_can_be_printed_and_saved()
{
    for (const QString& rcName : FILES)
        write(rcName, "{");
    send("reload_hardware_config");
    QCOMPARE(printed().size(), 4 * 2);
    for (const char* pszChip : {"lime", "fpga", "saa7113", "saa7129"})
        send("print_hardware_config", {QString::fromLatin1(pszChip)});
    QCOMPARE(printed().size(), 7 + 38 + 41 + 196 + 31 + 38 + 73 + 73);
    send("save_hardware_config");
    QVERIFY(contents(QStringLiteral("fpga.cnf")).contains("       tsx = 42  ;"));
}

void TestDebug::two_hundred_reloads()
{
    for (int iReload = 0; iReload < 200; ++iReload)
        m_pcScene->daemon().send(PATH, QStringLiteral("reload_hardware_config"), {});
    QVERIFY(m_pcScene->daemon().settle());
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"), {3, 4});
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(m_pcScene->board().limeRegister(CBoard::LIME_DISPLAY, 0x124), 0x00040003U);
    QCOMPARE(m_pcScene->daemon().log().size(), 1);
}

// Many reloads on the target, whose address space holds some tens of mappings: the mapping of the tables
// fails then, and the window's own takes the place that it gave up.
void TestDebug::reloads_go_on_without_address_space()
{
    CBoard& rcBoard = m_pcScene->board();
    for (int iReload = 0; iReload < 3; ++iReload) {
        CBoard::SFault sFault;
        sFault.eOperation = BOARD_OPERATION_LIME_MAP;
        sFault.u32Count = 1;
        rcBoard.setFault(sFault);
        send("reload_hardware_config");
    }
    QCoreApplication::processEvents();
    QCOMPARE(m_pcScene->daemon().log().mid(1),
             QStringList({QStringLiteral("Error initializing Lime framebuffer"),
                          QStringLiteral("Error initializing Lime framebuffer"),
                          QStringLiteral("Error initializing Lime framebuffer")}));
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"), {3, 4});
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(rcBoard.limeRegister(CBoard::LIME_DISPLAY, 0x124), 0x00040003U);
}

void TestDebug::switches_show_in_the_picture()
{
    CBoard& rcBoard = m_pcScene->board();
    const QImage cLive = CBoardPicture::monitor(rcBoard);
    send("fpga_enable_frame_generator");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0x00800000U);
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(300, 200), 0xff000080U);
    send("fpga_enable_video_restore");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0x00900010U);
    QCOMPARE(CBoardPicture::monitor(rcBoard).pixel(300, 200), 0xff000000U); // nothing was ever stored
    send("fpga_disable_frame_generator");
    send("fpga_disable_video_restore");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0U);
    QCOMPARE(CBoardPicture::monitor(rcBoard), cLive);
}

void TestDebug::the_recording_mode_is_back_after_the_playback_mode()
{
    CBoard& rcBoard = m_pcScene->board();
    send("fpga_enter_playback_mode");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0x03000000U);
    send("fpga_enter_recording_mode");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0U);
    // Kept: the switches bring back the mode of the start; clients that switch the overlay during playback
    // see it.
    send("fpga_enter_playback_mode");
    send("fpga_enable_frame_generator");
    QCOMPARE(rcBoard.fpgaRegister(0xff0000), 0x00800000U);
}

QTEST_GUILESS_MAIN(TestDebug)

#include "tst_debug.moc"
