/* SPDX-License-Identifier: MIT */
/* "/videooverlay" from a client on the bus to the FPGA's memory and the picture. */
#include "board/picture/CBoardPicture.h"
#include "hw/fpga_map.h"
#include "tests/golden.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CScene.h"
#include "tests/support/Introspection.h"
#include "tests/support/Timeouts.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFile>
#include <QLocale>
#include <QSet>
#include <QtTest>

class TestVideoOverlay : public QObject
{
    Q_OBJECT

public slots:
    void onChanged(int hours, int minutes, int seconds, int frames)
    {
        m_cChanges << QList<int>{hours, minutes, seconds, frames};
    }

private slots:
    void init();
    void cleanup();

    void introspection_equals_the_interface_file();
    void introspection_lists_72_methods_and_the_signal();
    void getters_answer_with_their_types();
    void only_one_method_without_a_result_answers();

    void texts_are_seen();
    void a_moved_text_leaves_nothing_behind();
    void hidden_texts_give_the_others_back();
    void letters_follow_the_locale();
    void a_temporary_text_goes_away_by_itself();
    void temporary_texts_at_one_place_go_one_after_the_other();
    void pending_temporary_texts_are_cleared_at_once();
    void a_temporary_text_destroyed_by_its_client_leaves_later_texts_alone();
    void durations_out_of_range_draw_nothing();
    void what_is_logged();
    void what_is_logged_of_other_letters();
    void what_is_printed();

    void the_counter_counts_and_announces_itself();
    void a_paused_counter_stands_still();

    void handles_of_any_value_are_survived_data();
    void handles_of_any_value_are_survived();
    void strings_of_any_kind_are_survived_data();
    void strings_of_any_kind_are_survived();
    void every_place_and_colour_is_survived();
    void every_locale_is_survived();
    void the_65536th_text_gets_no_handle();
    void ten_thousand_calls_are_carried_out_in_order();
    void ends_well_with_pending_texts_and_a_running_counter();

private:
    void send(const char* pszMethod, const QVariantList& rcArguments = {});
    QVariant query(const char* pszMethod, const QVariantList& rcArguments = {});
    int text(const QString& rcText, int x, int y);
    QByteArray row(int iRow, int iColumns = 53);

    QScopedPointer<CScene> m_pcScene;
    QList<QList<int>> m_cChanges;
};

static const QString PATH = QStringLiteral("/videooverlay");
static const QString INTERFACE = QStringLiteral("velmar.haldend.videooverlay");

void TestVideoOverlay::init()
{
    m_cChanges.clear();
    m_pcScene.reset(new CScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    send("show_overlay");
}

void TestVideoOverlay::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
}

// Sends the call without asking for a reply; what was sent is carried out in order.
void TestVideoOverlay::send(const char* pszMethod, const QVariantList& rcArguments)
{
    m_pcScene->daemon().send(PATH, QString::fromLatin1(pszMethod), rcArguments);
}

QVariant TestVideoOverlay::query(const char* pszMethod, const QVariantList& rcArguments)
{
    return m_pcScene->daemon().call(PATH, QString::fromLatin1(pszMethod), rcArguments).arguments().value(0);
}

static QList<int> integers(const QVariant& rcList)
{
    QList<int> cIntegers;
    for (const QVariant& rcValue : qdbus_cast<QVariantList>(rcList))
        cIntegers << rcValue.toInt();
    return cIntegers;
}

// A visible text.
int TestVideoOverlay::text(const QString& rcText, int x, int y)
{
    const int iHandle = query("create_text").toInt();
    send("set_text_string", {iHandle, rcText});
    send("set_text_position", {iHandle, x, y});
    send("show_text", {iHandle});
    return iHandle;
}

// The character codes of a row of text page 0; everything sent before has been carried out.
QByteArray TestVideoOverlay::row(int iRow, int iColumns)
{
    if (!m_pcScene->daemon().settle())
        return "the daemon doesn't answer";
    const QByteArray cCells =
        m_pcScene->board().fpgaMemory(FPGA_TEXT_PAGES + static_cast<quint32>(iRow) * 128, 2 * iColumns);
    QByteArray cCodes;
    for (int i = 0; i < cCells.size(); i += 2)
        cCodes += cCells[i];
    return cCodes.replace('\0', ' ');
}

void TestVideoOverlay::introspection_equals_the_interface_file()
{
    QFile cFile(QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.videooverlay.xml"));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    const QStringList cExpected = describeInterface(cFile.readAll(), INTERFACE);
    QVERIFY(!cExpected.isEmpty());
    QCOMPARE(describeInterface(m_pcScene->daemon().introspect(PATH), INTERFACE), cExpected);
}

void TestVideoOverlay::introspection_lists_72_methods_and_the_signal()
{
    const QStringList cLines = describeInterface(m_pcScene->daemon().introspect(PATH), INTERFACE);
    QCOMPARE(cLines.filter(QStringLiteral("method name=")).size(), 72);
    QCOMPARE(cLines.filter(QStringLiteral("annotation name=org.freedesktop.DBus.Method.NoReply value=true"))
                 .size(),
             72 - 15);
    QCOMPARE(cLines.mid(cLines.size() - 5),
             (QStringList{QStringLiteral("signal name=videocounter_changed"),
                          QStringLiteral("  arg direction=out name=hours type=i"),
                          QStringLiteral("  arg direction=out name=minutes type=i"),
                          QStringLiteral("  arg direction=out name=seconds type=i"),
                          QStringLiteral("  arg direction=out name=frames type=i")}));
}

void TestVideoOverlay::getters_answer_with_their_types()
{
    const struct {
        const char* pszMethod;
        QVariantList cArguments;
        const char* pszSignature;
    } asGetters[] = {
        {"get_max_text_line_width", {},    "i" },
        {"get_max_text_line_count", {},    "i" },
        {"is_overlay_visible",      {},    "b" },
        {"create_text",             {},    "i" },
        {"get_text_handle_by_id",   {1},   "i" },
        {"get_text_id",             {1},   "i" },
        {"get_text_string",         {1},   "s" },
        {"is_text_visible",         {1},   "b" },
        {"get_text_position",       {1},   "av"},
        {"get_text_format",         {1},   "i" },
        {"get_text_length",         {1},   "i" },
        {"get_text_colors",         {1},   "av"},
        {"is_videocounter_active",  {},    "b" },
        {"get_videocounter",        {},    "av"},
        {"set_osd_transparency",    {100}, ""  },
    };
    for (const auto& rsGetter : asGetters) {
        const QDBusMessage cReply =
            m_pcScene->daemon().call(PATH, QString::fromLatin1(rsGetter.pszMethod), rsGetter.cArguments);
        QCOMPARE(cReply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(cReply.signature(), QString::fromLatin1(rsGetter.pszSignature));
    }
    QCOMPARE(query("get_max_text_line_width").toInt(), 53);
    QCOMPARE(query("get_max_text_line_count").toInt(), 26);
    QCOMPARE(query("is_overlay_visible").toBool(), true);
    QCOMPARE(integers(query("get_videocounter")), (QList<int>{0, 0, 0, 0, 0}));
}

void TestVideoOverlay::only_one_method_without_a_result_answers()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));
    send("hide_overlay");
    send("adjust_character_set_to_locale", {QStringLiteral("de_DE")});
    send("destroy_all_texts");
    send("toggle_crosshair_visibility");
    send("videocounter_start", {5});
    m_pcScene->daemon().call(PATH, QStringLiteral("set_osd_transparency"), {1});
    QVERIFY(m_pcScene->daemon().settle());
    QVERIFY2(cMonitor.waitFor("<interface name=\"velmar.haldend.videodisplay\">"),
             cMonitor.seen().constData());
    QCOMPARE(cMonitor.repliesTo(m_pcScene->daemon().client().baseService()), 2);
    QVERIFY(cMonitor.end());
}

void TestVideoOverlay::texts_are_seen()
{
    const int iTitle = text(QStringLiteral(" Inspection 17 · Main Street "), 12, 0);
    send("set_text_colors", {iTitle, 12, 13});
    text(QStringLiteral("DN 300"), 0, 25);
    text(QStringLiteral("cut at the right edge, never continued"), 40, 12);
    const int iTransparent = text(QStringLiteral("no background"), 20, 20);
    send("set_text_colors", {iTransparent, 15, 0});
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(
        differenceFromGolden(CBoardPicture::monitor(m_pcScene->board()), QStringLiteral("overlay_texts")),
        QString());
}

void TestVideoOverlay::a_moved_text_leaves_nothing_behind()
{
    const int iHandle = text(QStringLiteral("0123456789"), 5, 3);
    QCOMPARE(row(3, 20), QByteArray("     0123456789     "));
    send("set_text_position", {iHandle, 8, 3});
    QCOMPARE(row(3, 20), QByteArray("        0123456789  "));
    send("set_text_position", {iHandle, 8, 4});
    QCOMPARE(row(3, 20), QByteArray(20, ' '));
    QCOMPARE(row(4, 20), QByteArray("        0123456789  "));
    send("set_text_string", {iHandle, QStringLiteral("ab")});
    QCOMPARE(row(4, 20), QByteArray("        ab          "));
    send("destroy_text", {iHandle});
    QCOMPARE(row(4, 20), QByteArray(20, ' '));
}

void TestVideoOverlay::hidden_texts_give_the_others_back()
{
    text(QStringLiteral("underneath"), 0, 0);
    const int iAbove = text(QStringLiteral("ABOVE"), 3, 0);
    QCOMPARE(row(0, 12), QByteArray("undABOVEth  "));
    send("hide_text", {iAbove});
    QCOMPARE(row(0, 12), QByteArray("underneath  "));
    send("show_text", {iAbove});
    QCOMPARE(row(0, 12), QByteArray("undABOVEth  "));
    send("hide_all_texts");
    QCOMPARE(row(0, 12), QByteArray(12, ' '));
    send("show_all_texts");
    QCOMPARE(row(0, 12), QByteArray("undABOVEth  "));
    send("destroy_all_texts");
    QCOMPARE(row(0, 12), QByteArray(12, ' '));
}

void TestVideoOverlay::letters_follow_the_locale()
{
    send("adjust_character_set_to_locale", {QStringLiteral("ru_RU")});
    text(QStringLiteral("Колодец 17"), 2, 2);
    QCOMPARE(row(2, 14), QByteArray("  \xba\xde\xdb\xde\xd4\xd5\xe6 17  "));
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(
        differenceFromGolden(CBoardPicture::monitor(m_pcScene->board()), QStringLiteral("overlay_cyrillic")),
        QString());
    send("destroy_all_texts");
    send("adjust_character_set_to_locale", {QStringLiteral("ro_RO")});
    text(QStringLiteral("Țeavă ștanțată"), 2, 2);
    QCOMPARE(row(2, 17), QByteArray("  \xde"
                                    "eav\xe3 \xbatan\xfe"
                                    "at\xe3 "));
}

void TestVideoOverlay::a_temporary_text_goes_away_by_itself()
{
    send("draw_temp_text", {QStringLiteral("Saved"), 1, 5, 10, 10, 1});
    QCOMPARE(row(10, 16), QByteArray("          Saved "));
    QTRY_COMPARE(row(10, 16), QByteArray(16, ' '));
}

void TestVideoOverlay::temporary_texts_at_one_place_go_one_after_the_other()
{
    send("draw_temp_text", {QStringLiteral("first"), 1, 5, 0, 10, 1});
    send("draw_temp_text", {QStringLiteral("2nd"), 1, 5, 0, 10, 2});
    QCOMPARE(row(10, 6), QByteArray("2ndst "));
    QTRY_COMPARE(row(10, 6), QByteArray("2nd   "));
    QTRY_COMPARE(row(10, 6), QByteArray(6, ' '));
}

void TestVideoOverlay::pending_temporary_texts_are_cleared_at_once()
{
    send("clear_temp_texts");
    for (int i = 0; i < 5; ++i)
        send("draw_temp_text", {QStringLiteral("message"), 1, 5, i * 8, 10, 9999});
    const int iStays = text(QStringLiteral("stays"), 0, 11);
    QCOMPARE(row(10, 40), QByteArray("message message message message message "));
    send("clear_temp_texts");
    QCOMPARE(row(10), QByteArray(53, ' '));
    QCOMPARE(row(11, 6), QByteArray("stays "));
    QCOMPARE(query("is_text_visible", {iStays}).toBool(), true);
}

void TestVideoOverlay::a_temporary_text_destroyed_by_its_client_leaves_later_texts_alone()
{
    send("draw_temp_text", {QStringLiteral("message"), 1, 5, 0, 10, 1});
    send("destroy_all_texts");
    QCOMPARE(row(10, 10), QByteArray(10, ' '));
    // It has the handle of the former message, and often its address.
    const int iLater = text(QStringLiteral("later"), 0, 10);
    QCOMPARE(iLater, 1);
    send("draw_temp_text", {QStringLiteral("next"), 1, 5, 0, 11, 2});
    QTRY_COMPARE(row(11, 5), QByteArray(5, ' '));
    QCOMPARE(row(10, 10), QByteArray("later     "));
    QCOMPARE(query("get_text_string", {iLater}).toString(), QStringLiteral("later"));
}

void TestVideoOverlay::durations_out_of_range_draw_nothing()
{
    for (const int iDuration : {0, -1, 10000, INT_MIN, INT_MAX, -9999, 65536 + 1})
        send("draw_temp_text", {QStringLiteral("message"), 1, 5, 0, 10, iDuration});
    QCOMPARE(row(10, 10), QByteArray(10, ' '));
    QCOMPARE(query("create_text").toInt(), 1);
    send("draw_temp_text", {QStringLiteral("longest"), 1, 5, 0, 10, 9999});
    QCOMPARE(row(10, 10), QByteArray("longest   "));
}

// Once in the letters of the western encodings, with a question mark for all others, and once as it is.
void TestVideoOverlay::what_is_logged_of_other_letters()
{
    send("draw_temp_text", {QStringLiteral("ü Ж"), 1, 5, 0, 10, 1});
    send("adjust_character_set_to_locale", {QStringLiteral("ü Ж")});
    QVERIFY(m_pcScene->daemon().settle());
    QTRY_COMPARE(m_pcScene->daemon().log().size(), 1 + 6 + 4);
    QList<QByteArray> cTexts;
    for (const QByteArray& rcLine : m_pcScene->daemon().standardError().split('\n'))
        cTexts << rcLine.mid(rcLine.indexOf("]: ") + 3);
    const QByteArray cLatin = "\xfc ?";
    QCOMPARE(cTexts.value(2), cLatin);
    QCOMPARE(cTexts.value(3), QStringLiteral("ü Ж").toUtf8());
    QCOMPARE(cTexts.value(5), cLatin);
    QCOMPARE(cTexts.value(6), QStringLiteral("ü Ж").toUtf8());
    QCOMPARE(cTexts.value(8), cLatin);
    QCOMPARE(cTexts.value(10), cLatin);
}

void TestVideoOverlay::what_is_logged()
{
    send("draw_temp_text", {QStringLiteral("100 % ü"), 1, 5, 0, 10, 1});
    send("draw_temp_text", {QStringLiteral("refused"), 1, 5, 0, 10, 0});
    send("adjust_character_set_to_locale", {QStringLiteral("de_DE")});
    QVERIFY(m_pcScene->daemon().settle());
    QTRY_COMPARE(m_pcScene->daemon().log().size(), 1 + 6 + 3 + 4);
    const QStringList cLog = m_pcScene->daemon().log();
    QCOMPARE(cLog[1], QStringLiteral("CHaldenVideoOverlay::draw_temp_text"));
    QCOMPARE(cLog[3], QStringLiteral("100 % ü"));
    QCOMPARE(cLog[4], QStringLiteral("CVideoOverlayFrontEnd::drawTemporaryText()"));
    QCOMPARE(cLog[6], QStringLiteral("100 % ü"));
    QCOMPARE(cLog.mid(7), (QStringList{QStringLiteral("CHaldenVideoOverlay::draw_temp_text"),
                                       QStringLiteral("refused"), QStringLiteral("refused"),
                                       QStringLiteral("CHaldenVideoOverlay::adjust_character_set_to_locale"),
                                       QStringLiteral("de_DE"),
                                       QStringLiteral("CVideoOverlayFrontEnd::loadCharacterSetForLocale"),
                                       QStringLiteral("de_DE")}));
}

/// A method for a feature that the board doesn't have, and the name that is printed.
struct SFeature {
    const char* pszMethod;
    const char* pszPrinted;
    QVariantList cArguments;
};

// clang-format off
static const SFeature FEATURES[] = {
    {"toggle_crosshair_visibility",     "toggleCrosshairVisibility",     {}},
    {"change_crosshair_color",          "changeCrosshairColor",          {1}},
    {"change_crosshair_position",       "changeCrosshairPosition",       {1, 2}},
    {"change_crosshair_shape",          "changeCrosshairShape",          {1}},
    {"toggle_camerahorizon_visibility", "toggleCameraHorizonVisibility", {}},
    {"change_camerahorizon_color",      "changeCameraHorizonColor",      {1}},
    {"change_camerahorizon_gridcolor",  "changeCameraHorizonGridColor",  {1}},
    {"change_camerahorizon_position",   "changeCameraHorizonPosition",   {1, 2}},
    {"change_camerahorizon_shape",      "changeCameraHorizonShape",      {1}},
    {"toggle_logo_visibility",          "toggleLogoVisibility",          {}},
    {"toggle_logo_animation",           "toggleLogoAnimation",           {}},
    {"change_logo_file",                "changeLogoFile",                {QStringLiteral("%s")}},
    {"change_logo_position",            "changeLogoPosition",            {1, 2}},
    {"toggle_roi_visibility",           "toggleRoiVisibility",           {}},
    {"change_roi_color",                "changeRoiColor",                {1}},
    {"change_roi_position",             "changeRoiPosition",             {1, 2}},
    {"set_roi_draw_point_1",            "setRoiDrawPoint1",              {1, 2}},
    {"set_roi_draw_point_2",            "setRoiDrawPoint2",              {1, 2}},
    {"change_roi_shape",                "changeRoiShape",                {1}},
    {"change_roi_size",                 "changeRoiSize",                 {1}},
    {"draw_roi",                        "drawRoi",                       {}},
    {"toggle_crawlerroll_visibility",   "toggleCrawlerRollVisibility",   {}},
    {"change_crawlerroll_color",        "changeCrawlerRollColor",        {1}},
    {"change_crawlerroll_shape",        "changeCrawlerRollShape",        {1}},
    {"change_crawlerroll_position",     "changeCrawlerRollPosition",     {1, 2}},
    {"toggle_crawlerpitch_visibility",  "toggleCrawlerPitchVisibility",  {}},
    {"change_crawlerpitch_color",       "changeCrawlerPitchColor",       {1}},
    {"change_crawlerpitch_shape",       "changeCrawlerPitchShape",       {1}},
    {"change_crawlerpitch_position",    "changeCrawlerPitchPosition",    {1, 2}},
    {"toggle_spyhole_visibility",       "toggleSpyholeVisibility",       {}},
    {"change_spyhole_color",            "changeSpyholeColor",            {1}},
    {"change_spyhole_position",         "changeSpyholePosition",         {1, 2}},
    {"change_spyhole_shape",            "changeSpyholeShape",            {1}},
    {"change_video_position",           "changeVideoPosition",           {1}},
    {"move_video_position",             "moveCameraPosition",            {1, 2}},
    {"change_font",                     "changeFont",                    {QStringLiteral("%s%n"), 1, true, 2, false, true}},
};
// clang-format on

void TestVideoOverlay::what_is_printed()
{
    send("set_osd_transparency", {-5});
    QByteArray cExpected = "CHaldenVideoOverlay: set_osd_transparency(i_osd_trans=-5)\n"
                           "setOsdTransparency: Not implemented for orbisk\n";
    for (const SFeature& rsFeature : FEATURES) {
        send(rsFeature.pszMethod, rsFeature.cArguments);
        cExpected += QByteArray(rsFeature.pszPrinted) + ": Not implemented for orbisk\n";
    }
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(m_pcScene->end(), QString());
    QVERIFY2(m_pcScene->daemon().standardOutput().endsWith(cExpected), m_pcScene->describe());
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestVideoOverlay::the_counter_counts_and_announces_itself()
{
    QVERIFY(m_pcScene->daemon().client().connect(QStringLiteral("velmar.haldend"), PATH, INTERFACE,
                                                 QStringLiteral("videocounter_changed"), this,
                                                 SLOT(onChanged(int, int, int, int))));
    const int iHandle = text(QString(), 40, 25);
    send("set_text_id", {iHandle, 102});
    send("set_videocounter", {0, 5, 59, 58, 7});
    QCOMPARE(row(25).mid(40, 9), QByteArray("  5:59:58"));
    send("videocounter_start", {0});
    QTRY_COMPARE_WITH_TIMEOUT(m_cChanges,
                              (QList<QList<int>>{
                                  {5, 59, 59, 7},
                                  {6, 0,  0,  7}
    }),
                              TIMEOUT_CALL_MS);
    QCOMPARE(row(25).mid(40, 9), QByteArray("  6:00:00"));
    send("videocounter_stop", {1});
    QCOMPARE(query("is_videocounter_active").toBool(), true);
    send("videocounter_stop", {0});
    QCOMPARE(query("is_videocounter_active").toBool(), false);
    QCOMPARE(integers(query("get_videocounter")), (QList<int>{0, 6, 0, 0, 7}));
}

void TestVideoOverlay::a_paused_counter_stands_still()
{
    QVERIFY(m_pcScene->daemon().client().connect(QStringLiteral("velmar.haldend"), PATH, INTERFACE,
                                                 QStringLiteral("videocounter_changed"), this,
                                                 SLOT(onChanged(int, int, int, int))));
    send("videocounter_start", {1});
    send("videocounter_pause", {1});
    // A temporary text of two seconds is the clock.
    send("draw_temp_text", {QStringLiteral("two seconds"), 1, 5, 0, 10, 2});
    QCOMPARE(row(10, 3), QByteArray("two"));
    QTRY_COMPARE(row(10, 3), QByteArray(3, ' '));
    QCOMPARE(m_cChanges.size(), 0);
    QCOMPARE(query("is_videocounter_active").toBool(), true);
    send("videocounter_resume", {1});
    QTRY_COMPARE_WITH_TIMEOUT(m_cChanges,
                              (QList<QList<int>>{
                                  {0, 0, 1, 0}
    }),
                              TIMEOUT_CALL_MS);
}

void TestVideoOverlay::handles_of_any_value_are_survived_data()
{
    QTest::addColumn<int>("handle");
    for (const int iHandle : {0, 2, -1, 255, 256, 65535, 65536, INT_MAX, INT_MIN})
        QTest::addRow("%d", iHandle) << iHandle;
}

// No handle here names a text: nothing changes, and the one text stays.
void TestVideoOverlay::handles_of_any_value_are_survived()
{
    QFETCH(int, handle);
    text(QStringLiteral("the text"), 0, 0);
    const QString cText = QStringLiteral("another");
    send("set_text_string", {handle, cText});
    send("set_text_position", {handle, 1, 1});
    send("set_text_colors", {handle, 3, 4});
    send("set_text_id", {handle, 102});
    send("show_text", {handle});
    send("hide_text", {handle});
    send("destroy_text", {handle});
    QCOMPARE(integers(query("get_text_position", {handle})), (QList<int>{255, 255, 255}));
    QCOMPARE(integers(query("get_text_colors", {handle})), (QList<int>{0, 0}));
    QCOMPARE(query("get_text_id", {handle}).toInt(), 0);
    QCOMPARE(query("get_text_string", {handle}).toString(), QString());
    QCOMPARE(query("get_text_length", {handle}).toInt(), 255);
    QCOMPARE(query("get_text_format", {handle}).toInt(), 255);
    QCOMPARE(query("get_text_handle_by_id", {102}).toInt(), 0);
    QCOMPARE(row(0, 9), QByteArray("the text "));
    QCOMPARE(row(1, 9), QByteArray(9, ' '));
}

void TestVideoOverlay::strings_of_any_kind_are_survived_data()
{
    QTest::addColumn<QString>("string");
    QTest::addColumn<QByteArray>("shown"); // at column 0
    const QByteArray cFull(53, 'x');
    for (const int iLength : {0, 1, 52, 53, 54, 255, 300, 100000}) {
        // The end column is taken modulo 256: a text of 300 characters ends like one of 44.
        const int iShown = qMin(iLength % 256, 53);
        QTest::addRow("%d characters", iLength)
            << QString(iLength, QLatin1Char('x')) << QByteArray(iShown, 'x').leftJustified(53);
    }
    QTest::newRow("256 characters") << QString(256, QLatin1Char('x')) << QByteArray(53, ' ');
    QTest::newRow("controls") << QStringLiteral("a\tb\nc\rd\x7f"
                                                "e")
                              << QByteArray("a\tb\nc\rd\x7f"
                                            "e")
                                     .leftJustified(53);
    QTest::newRow("no-break space") << QStringLiteral("a\u00a0b")
                                    << QByteArray("a\xa0"
                                                  "b")
                                           .leftJustified(53);
    QTest::newRow("euro") << QStringLiteral("5 €") << QByteArray("5 \xa4").leftJustified(53);
}

void TestVideoOverlay::strings_of_any_kind_are_survived()
{
    QFETCH(QString, string);
    QFETCH(QByteArray, shown);
    const int iHandle = text(string, 0, 7);
    QCOMPARE(row(7), shown);
    QCOMPARE(query("get_text_string", {iHandle}).toString(), string);
    // The same at the end of the row, cut there.
    send("set_text_position", {iHandle, 50, 7});
    QVERIFY(row(7).startsWith(QByteArray(50, ' ')));
    send("destroy_text", {iHandle});
    QCOMPARE(row(7), QByteArray(53, ' '));
    // Characters that the glyph set lacks do no harm either.
    for (const QString& rcText :
         {QStringLiteral("zero\u200bwidth"), QStringLiteral("e\u0301 combining"), QStringLiteral("漢字 Ж"),
          QStringLiteral("😀 emoji 😀😀"), QStringLiteral("مرحبا"), QStringLiteral("\ufeffmark")}) {
        const int iOther = text(rcText, 0, 8);
        QVERIFY(m_pcScene->daemon().settle());
        send("destroy_text", {iOther});
        QCOMPARE(row(8), QByteArray(53, ' '));
    }
}

void TestVideoOverlay::every_place_and_colour_is_survived()
{
    const int iHandle = text(QStringLiteral("four"), 0, 0);
    const QList<int> cEdges = {0, 1, 24, 25, 26, 51, 52, 53, 254, 255, 256, 257, -1, -256, INT_MAX, INT_MIN};
    for (const int x : cEdges)
        for (const int y : cEdges)
            send("set_text_position", {iHandle, x, y});
    for (const int iColor : {0, 15, 16, 17, 255, 256, -1, INT_MAX, INT_MIN})
        send("set_text_colors", {iHandle, iColor, iColor});
    send("set_text_position", {iHandle, 52, 25});
    send("set_text_colors", {iHandle, 1, 5});
    QCOMPARE(row(25), QByteArray(52, ' ') + "f");
    for (int iRow = 0; iRow < 25; ++iRow)
        QCOMPARE(row(iRow), QByteArray(53, ' '));
}

void TestVideoOverlay::every_locale_is_survived()
{
    text(QStringLiteral("Übergröße Ж"), 0, 0);
    QSet<QString> cNames = {QString(),
                            QStringLiteral("C"),
                            QStringLiteral("nonsense"),
                            QStringLiteral("xx_YY"),
                            QStringLiteral("de"),
                            QString(10000, QLatin1Char('x'))};
    for (const QLocale& rcLocale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry))
        cNames << rcLocale.name();
    QVERIFY(cNames.size() > 300);
    for (const QString& rcName : qAsConst(cNames)) {
        send("adjust_character_set_to_locale", {rcName});
        // Each call writes four lines to a pipe, which must be read.
        QCoreApplication::processEvents();
        QVERIFY(m_pcScene->daemon().settle());
    }
    send("adjust_character_set_to_locale", {QStringLiteral("de_DE")});
    const int iHandle = text(QStringLiteral("Übergröße"), 0, 1);
    QCOMPARE(row(1, 10), QByteArray("\xdc"
                                    "bergr\xf6\xdf"
                                    "e "));
    send("destroy_text", {iHandle});
    QVERIFY(m_pcScene->daemon().settle());
}

void TestVideoOverlay::the_65536th_text_gets_no_handle()
{
    for (int i = 1; i < 65535; ++i) {
        send("create_text");
        // A slow daemon may need longer for all of them than the limit of one reply.
        if (i % 1000 == 0)
            QVERIFY(m_pcScene->daemon().settle());
    }
    QCOMPARE(query("create_text").toInt(), 65535);
    QCOMPARE(query("create_text").toInt(), 0);
    send("draw_temp_text", {QStringLiteral("no room"), 1, 5, 0, 0, 1});
    QCOMPARE(row(0, 8), QByteArray(8, ' '));
    send("destroy_text", {7});
    QCOMPARE(query("create_text").toInt(), 65536);
    send("destroy_all_texts");
    QCOMPARE(query("create_text").toInt(), 1);
}

void TestVideoOverlay::ten_thousand_calls_are_carried_out_in_order()
{
    const int iHandle = text(QStringLiteral("0"), 0, 0);
    for (int iStep = 1; iStep <= 10000; ++iStep) {
        send("set_text_string", {iHandle, QString::number(iStep)});
        if (iStep % 1000 == 0)
            QCOMPARE(query("get_text_string", {iHandle}).toString(), QString::number(iStep));
    }
    QCOMPARE(row(0, 6), QByteArray("10000 "));
}

void TestVideoOverlay::ends_well_with_pending_texts_and_a_running_counter()
{
    const int iHandle = text(QString(), 0, 0);
    send("set_text_id", {iHandle, 102});
    send("videocounter_start", {0});
    for (int i = 0; i < 100; ++i)
        send("draw_temp_text", {QStringLiteral("message"), 1, 5, i % 50, 1 + i % 25, 1 + i});
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(m_pcScene->end(), QString());
    // Temporary texts are removed, ordinary texts stay.
    for (int iRow = 1; iRow < 26; ++iRow)
        QCOMPARE(m_pcScene->board().fpgaMemory(FPGA_TEXT_PAGES + static_cast<quint32>(iRow) * 128, 2).at(1),
                 '\0');
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

QTEST_GUILESS_MAIN(TestVideoOverlay)

#include "tst_videooverlay.moc"
