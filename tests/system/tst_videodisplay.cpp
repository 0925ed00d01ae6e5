/* SPDX-License-Identifier: MIT */
/* "/videodisplay" from a client on the bus to the display controller's registers. */
#include "board/picture/CBoardPicture.h"
#include "tests/golden.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CScene.h"
#include "tests/support/Introspection.h"

#include <QDBusMessage>
#include <QFile>
#include <QtTest>

class TestVideoDisplay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void introspection_equals_the_interface_file();
    void introspection_lists_the_eight_methods_in_order();
    void only_the_adaptors_interface_is_exported();
    void getters_answer_with_one_integer_each();
    void sizes_reach_the_controller();
    void every_pair_of_edge_values_is_accepted_as_a_size();
    void every_pair_of_edge_values_is_accepted_as_a_position();
    void the_layer_is_switched();
    void what_is_set_is_seen();
    void layer_0_is_seen_around_the_window();
    void methods_without_effect_change_nothing();
    void calls_that_expect_no_reply_get_none();
    void setters_are_carried_out_in_order();
    void calls_that_do_not_fit_are_refused_data();
    void calls_that_do_not_fit_are_refused();

private:
    void send(const char* pszMethod, const QVariantList& rcArguments);
    int query(const char* pszMethod);
    quint32 display(quint32 u32Offset)
    {
        return m_cScene.board().limeRegister(CBoard::LIME_DISPLAY, u32Offset);
    }
    quint32 capture(quint32 u32Offset)
    {
        return m_cScene.board().limeRegister(CBoard::LIME_CAPTURE, u32Offset);
    }

    CScene m_cScene;
};

static const QString PATH = QStringLiteral("/videodisplay");
static const QString INTERFACE = QStringLiteral("velmar.haldend.videodisplay");

static const quint32 CSC = 0x004;
static const quint32 DCM1 = 0x100;
static const quint32 L1WXY = 0x124;
static const quint32 L1WWH = 0x128;

// A position is stored unchanged; the register has 12 bits for x and for y.
static const QString POSITION_BEYOND_THE_REGISTER =
    QStringLiteral("lime display 0x00000124 0xffffffff: undeclared bits 0xf000f000");

static const int EDGE_VALUES[] = {0, 1, -1, 719, 720, 721, 4095, 4096, 65535, 65536, 70000, INT_MIN, INT_MAX};

void TestVideoDisplay::initTestCase()
{
    QVERIFY2(m_cScene.start(), m_cScene.describe());
}

void TestVideoDisplay::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

void TestVideoDisplay::cleanup()
{
    QCOMPARE(m_cScene.judge(), QString());
}

void TestVideoDisplay::init()
{
    send("set_video_size", {300, 200});
    send("set_video_position", {0, 0});
    send("set_video_layer_enabled", {true});
}

// Sends the call without asking for a reply, and waits until it has been carried out.
void TestVideoDisplay::send(const char* pszMethod, const QVariantList& rcArguments)
{
    m_cScene.daemon().send(PATH, QString::fromLatin1(pszMethod), rcArguments);
    QVERIFY(m_cScene.daemon().settle());
}

int TestVideoDisplay::query(const char* pszMethod)
{
    const QDBusMessage cReply = m_cScene.daemon().call(PATH, QString::fromLatin1(pszMethod));
    return cReply.signature() == QLatin1String("i") ? cReply.arguments().constFirst().toInt() : -1;
}

void TestVideoDisplay::introspection_equals_the_interface_file()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.videodisplay.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QStringList cExpected = describeInterface(cFile.readAll(), INTERFACE);
    QVERIFY(!cExpected.isEmpty());
    QCOMPARE(describeInterface(m_cScene.daemon().introspect(PATH), INTERFACE), cExpected);
}

void TestVideoDisplay::introspection_lists_the_eight_methods_in_order()
{
    const QStringList cLines = describeInterface(m_cScene.daemon().introspect(PATH), INTERFACE);
    const QString cNoReply =
        QStringLiteral("  annotation name=org.freedesktop.DBus.Method.NoReply value=true");
    QCOMPARE(cLines, (QStringList{
                         QStringLiteral("method name=set_video_layer_enabled"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=value type=b"),
                         QStringLiteral("method name=set_video_size"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=width type=i"),
                         QStringLiteral("  arg direction=in name=height type=i"),
                         QStringLiteral("method name=set_video_rotation"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=rot type=i"),
                         QStringLiteral("method name=set_video_restart"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=var type=i"),
                         QStringLiteral("method name=set_video_mode"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=var type=i"),
                         QStringLiteral("method name=set_video_position"),
                         cNoReply,
                         QStringLiteral("  arg direction=in name=x type=i"),
                         QStringLiteral("  arg direction=in name=y type=i"),
                         QStringLiteral("method name=get_displayed_video_width"),
                         QStringLiteral("  arg direction=out name=width type=i"),
                         QStringLiteral("method name=get_displayed_video_height"),
                         QStringLiteral("  arg direction=out name=height type=i"),
                     }));
}

void TestVideoDisplay::only_the_adaptors_interface_is_exported()
{
    const QByteArray cXml = m_cScene.daemon().introspect(PATH);
    QCOMPARE(cXml.count("<interface name=\"velmar."), 1);
    QVERIFY(!cXml.contains("local."));
}

void TestVideoDisplay::getters_answer_with_one_integer_each()
{
    for (const char* pszMethod : {"get_displayed_video_width", "get_displayed_video_height"}) {
        const QDBusMessage cReply = m_cScene.daemon().call(PATH, QString::fromLatin1(pszMethod));
        QCOMPARE(cReply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(cReply.signature(), QStringLiteral("i"));
    }
    QCOMPARE(query("get_displayed_video_width"), 300);
    QCOMPARE(query("get_displayed_video_height"), 200);
}

void TestVideoDisplay::sizes_reach_the_controller()
{
    send("set_video_size", {360, 288});
    QCOMPARE(capture(CSC), 0x0fd50eb1U);
    QCOMPARE(display(L1WWH), 288U << 16 | 360U);

    send("set_video_size", {720, 576});
    QCOMPARE(capture(CSC), 0x08000800U);
    QCOMPARE(display(L1WWH), 576U << 16 | 688U);
    QCOMPARE(query("get_displayed_video_width"), 688);

    send("set_video_size", {1024, 576});
    QCOMPARE(display(L1WWH), 576U << 16 | 1024U);
    QCOMPARE(query("get_displayed_video_width"), 1024);

    send("set_video_size", {70000, 5});
    QCOMPARE(query("get_displayed_video_width"), 1024);
    send("set_video_size", {65536 + 464, 5});
    QCOMPARE(query("get_displayed_video_width"), 464);
    QCOMPARE(query("get_displayed_video_height"), 5);
}

void TestVideoDisplay::every_pair_of_edge_values_is_accepted_as_a_size()
{
    for (const int iWidth : EDGE_VALUES) {
        for (const int iHeight : EDGE_VALUES) {
            send("set_video_size", {300, 200});
            send("set_video_size", {iWidth, iHeight});
            const quint32 u32Width = static_cast<quint32>(iWidth) % 65536;
            const quint32 u32Height = static_cast<quint32>(iHeight) % 65536;
            const bool bRefused = u32Width == 0 || u32Height == 0 || u32Width > 4095 || u32Height > 4095;
            const quint32 u32Shown = u32Width == 720 ? 688 : u32Width;
            const quint32 u32Expected = bRefused ? 200U << 16 | 300U : u32Height << 16 | u32Shown;
            QVERIFY2(display(L1WWH) == u32Expected,
                     qPrintable(QStringLiteral("%1 x %2").arg(iWidth).arg(iHeight)));
            QCOMPARE(query("get_displayed_video_width"), int(u32Expected & 0xffff));
            QCOMPARE(query("get_displayed_video_height"), int(u32Expected >> 16));
        }
    }
}

void TestVideoDisplay::every_pair_of_edge_values_is_accepted_as_a_position()
{
    for (const int iX : EDGE_VALUES) {
        for (const int iY : EDGE_VALUES) {
            send("set_video_position", {iX, iY});
            const quint32 u32Expected = static_cast<quint32>(iY) * 65536 | static_cast<quint32>(iX);
            QVERIFY2(display(L1WXY) == u32Expected, qPrintable(QStringLiteral("%1, %2").arg(iX).arg(iY)));
        }
    }
    m_cScene.announceJudgement(POSITION_BEYOND_THE_REGISTER);
}

void TestVideoDisplay::the_layer_is_switched()
{
    const quint32 u32Before = display(DCM1);
    send("set_video_layer_enabled", {false});
    QCOMPARE(display(DCM1), u32Before & ~0x00020000U);
    send("set_video_layer_enabled", {true});
    QCOMPARE(display(DCM1), u32Before);
}

void TestVideoDisplay::what_is_set_is_seen()
{
    send("set_video_size", {720, 576});
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cScene.board()), QStringLiteral("window_full")),
             QString());
    send("set_video_size", {360, 288});
    send("set_video_position", {300, 200});
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cScene.board()), QStringLiteral("window_quarter")),
             QString());
    send("set_video_layer_enabled", {false});
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cScene.board()), QStringLiteral("window_off")),
             QString());
    // Off the right edge: the controller uses 12 bits of it.
    send("set_video_layer_enabled", {true});
    send("set_video_position", {-1, 0});
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(m_cScene.board()), QStringLiteral("window_off")),
             QString());
    m_cScene.announceJudgement(POSITION_BEYOND_THE_REGISTER);
}

// Layer 0 is as large as the register file says: all 720 columns, from the top left corner on.
void TestVideoDisplay::layer_0_is_seen_around_the_window()
{
    const quint32 LINE_BYTES = 23 * 64;
    CBoard& rcBoard = m_cScene.board();
    const auto paint = [&rcBoard](bool bPainted) {
        for (quint32 y = 0; y < 576; ++y)
            for (quint32 x = 0; x < 720; ++x)
                rcBoard.setLimeMemory16(y * LINE_BYTES + x * 2,
                                        bPainted ? static_cast<quint16>(0x4000 | y / 32 << 5 | x / 32) : 0);
    };
    send("set_video_size", {360, 288});
    send("set_video_position", {300, 200});
    paint(true);
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(rcBoard), QStringLiteral("window_over_layer_0")),
             QString());
    paint(false);
    QCOMPARE(differenceFromGolden(CBoardPicture::monitor(rcBoard), QStringLiteral("window_quarter")),
             QString());
}

void TestVideoDisplay::methods_without_effect_change_nothing()
{
    QFile cDevice(m_cScene.board().path(BOARD_LIME));
    QVERIFY(cDevice.open(QIODevice::ReadOnly));
    const QByteArray cBefore = cDevice.readAll();
    for (const int iValue : EDGE_VALUES) {
        for (const char* pszMethod : {"set_video_restart", "set_video_rotation", "set_video_mode"})
            send(pszMethod, {iValue});
        m_cScene.announce(QStringLiteral(
            "QMetaObject::invokeMethod: No such method CHaldenVideoDisplay::set_video_restart(int)"));
    }
    cDevice.seek(0);
    QVERIFY(cDevice.readAll() == cBefore);
    QCOMPARE(query("get_displayed_video_width"), 300);
}

// A bus monitor also sees messages that the test's own library would drop.
void TestVideoDisplay::calls_that_expect_no_reply_get_none()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_cScene.bus().address()));

    CDaemonProcess& rcDaemon = m_cScene.daemon();
    const struct {
        const char* pszMethod;
        QVariantList cArguments;
    } asCalls[] = {
        {"set_video_layer_enabled", {true}    },
        {"set_video_size",          {300, 200}},
        {"set_video_rotation",      {1}       },
        {"set_video_mode",          {1}       },
        {"set_video_position",      {0, 0}    },
    };
    for (const auto& rsCall : asCalls)
        rcDaemon.send(PATH, QString::fromLatin1(rsCall.pszMethod), rsCall.cArguments);
    QVERIFY(rcDaemon.settle());

    // The one reply is that of the call which settle() makes after them.
    QVERIFY2(cMonitor.waitFor("<interface name=\"velmar.haldend.videodisplay\">"),
             cMonitor.seen().constData());
    QCOMPARE(cMonitor.repliesTo(rcDaemon.client().baseService()), 1);
    for (const auto& rsCall : asCalls)
        QVERIFY2(cMonitor.seen().contains(QByteArray("member=") + rsCall.pszMethod), rsCall.pszMethod);
    QVERIFY(cMonitor.end());
}

void TestVideoDisplay::setters_are_carried_out_in_order()
{
    CDaemonProcess& rcDaemon = m_cScene.daemon();
    for (int iStep = 1; iStep <= 10000; ++iStep)
        rcDaemon.send(PATH, QStringLiteral("set_video_position"), {iStep % 4096, (iStep * 7) % 4096});
    QVERIFY(rcDaemon.settle());
    QCOMPARE(display(L1WXY), quint32((10000 * 7) % 4096) << 16 | quint32(10000 % 4096));
}

void TestVideoDisplay::calls_that_do_not_fit_are_refused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("error");
    const QString cMethodError = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
    const QString cObjectError = QStringLiteral("org.freedesktop.DBus.Error.UnknownObject");
    const QString cSize = QStringLiteral("set_video_size");
    QTest::newRow("no argument") << PATH << cSize << QVariantList() << cMethodError;
    QTest::newRow("one too few") << PATH << cSize << QVariantList{1} << cMethodError;
    QTest::newRow("text") << PATH << cSize << QVariantList{QStringLiteral("1"), QStringLiteral("2")}
                          << cMethodError;
    QTest::newRow("real number") << PATH << cSize << QVariantList{1.0, 2.0} << cMethodError;
    QTest::newRow("64 bits") << PATH << cSize << QVariantList{qlonglong(1), qlonglong(2)} << cMethodError;
    QTest::newRow("other method") << PATH << QStringLiteral("set_video_color") << QVariantList{1}
                                  << cMethodError;
    QTest::newRow("service object's own method")
        << PATH << QStringLiteral("setupDBusConnection") << QVariantList() << cMethodError;
    QTest::newRow("other object") << QStringLiteral("/elsewhere") << cSize << QVariantList{1, 2}
                                  << cObjectError;
}

void TestVideoDisplay::calls_that_do_not_fit_are_refused()
{
    QFETCH(QString, path);
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    QFETCH(QString, error);
    const quint32 u32Before = display(L1WWH);
    const QDBusMessage cReply = m_cScene.daemon().call(path, method, arguments);
    QCOMPARE(cReply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(cReply.errorName(), error);
    QCOMPARE(display(L1WWH), u32Before);
}

QTEST_GUILESS_MAIN(TestVideoDisplay)

#include "tst_videodisplay.moc"
