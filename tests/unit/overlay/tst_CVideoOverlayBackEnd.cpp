/* SPDX-License-Identifier: MIT */
/* Texts as cells: which are written, in which order, and which are left. The FPGA is recorded. */
#include "fpga/font.h"
#include "fpga/font_tables.h"
#include "overlay/COverlayText.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "tests/support/CCapturedOutput.h"
#include "tests/unit/overlay/RecordedPage.h"

#include <QtTest>

#include <climits>
#include <functional>
#include <type_traits>

class TestCVideoOverlayBackEnd : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void the_interface_has_no_public_destructor();
    void making_and_unmaking_it_touches_no_hardware();
    void switching_on_is_graphic_then_text();
    void switching_off_is_graphic_then_text();
    void the_layer_has_53_columns_and_26_rows();

    void a_text_is_its_characters_in_its_colors();
    void moving_along_the_row_erases_the_old_head();
    void moving_back_along_the_row_erases_the_old_tail();
    void a_shorter_string_erases_the_old_tail();
    void moving_to_another_row_erases_all_and_redraws_neighbours();
    void drawing_again_rewrites_the_cells_and_no_neighbour();
    void other_colors_rewrite_the_cells_and_no_neighbour();
    void a_long_text_is_cut_at_the_right_edge();
    void an_end_beyond_255_wraps_data();
    void an_end_beyond_255_wraps();
    void removing_a_text_erases_it_and_redraws_neighbours();
    void removing_a_text_that_was_never_drawn_does_nothing();
    void removing_a_text_twice_does_nothing_more();
    void a_text_without_cells_stands_on_its_row_all_the_same();
    void a_text_below_the_last_row_is_remembered_and_not_drawn();
    void a_text_right_of_the_last_column_is_remembered_and_not_drawn();

    void who_is_redrawn_data();
    void who_is_redrawn();
    void who_is_redrawn_when_the_end_has_wrapped_data();
    void who_is_redrawn_when_the_end_has_wrapped();
    void neighbours_are_redrawn_in_the_order_of_their_first_drawing();
    void a_text_cleared_and_drawn_again_counts_as_new();
    void what_lies_between_the_old_and_the_new_place_is_wiped();
    void leaving_column_255_redraws_nobody();
    void a_new_text_redraws_nobody_that_it_covers();
    void a_later_text_at_the_same_address_has_no_past();

    void colors_are_packed_as_they_come_data();
    void colors_are_packed_as_they_come();

    void locales_choose_letters_data();
    void locales_choose_letters();
    void the_same_locale_loads_nothing_again();
    void the_codec_stays_when_somebody_else_loads_letters();
    void every_locale_of_qt_under_a_visible_text();

    void without_a_screen_nothing_is_written();
    void graphics_are_ignored();
    void unsupported_operations_say_so_data();
    void unsupported_operations_say_so();
    void all_unsupported_operations_are_listed();

private:
    /// In this order.
    void draw(std::initializer_list<const COverlayText*> cTexts)
    {
        for (const COverlayText* pcText : cTexts)
            m_pcBackEnd->drawText(*pcText);
    }

    QScopedPointer<CRecordedPage> m_pcPage;
    QScopedPointer<CVideoOverlayBackEnd> m_pcBackEnd;
};

static_assert(!std::has_virtual_destructor<IVideoOverlay>::value, "slots are counted by other programs");
static_assert(std::has_virtual_destructor<CVideoOverlayBackEnd>::value, "the daemon deletes it");

static const QByteArray TEN = QByteArrayLiteral("0123456789");

static COverlayText text(const QByteArray& rcText, int iX, int iY, unsigned int uForeground = 1,
                         unsigned int uBackground = 5)
{
    COverlayText cText;
    cText.setText(QString::fromUtf8(rcText));
    cText.setX(static_cast<unsigned char>(iX));
    cText.setY(static_cast<unsigned char>(iY));
    cText.setForegroundColor(EOverlayTextColor{uForeground});
    cText.setBackgroundColor(EOverlayTextColor{uBackground});
    return cText;
}

static void move(COverlayText& rcText, int iX, int iY)
{
    rcText.setX(static_cast<unsigned char>(iX));
    rcText.setY(static_cast<unsigned char>(iY));
}

void TestCVideoOverlayBackEnd::init()
{
    // The glyph set is remembered for the process.
    load_font(1);
    m_pcPage.reset(new CRecordedPage);
    m_pcBackEnd.reset(new CVideoOverlayBackEnd);
}

void TestCVideoOverlayBackEnd::cleanup()
{
    m_pcBackEnd.reset();
    m_pcPage.reset();
}

void TestCVideoOverlayBackEnd::the_interface_has_no_public_destructor()
{
    QVERIFY(!std::is_destructible<IVideoOverlay>::value);
    QVERIFY(std::is_abstract<IVideoOverlay>::value);
}

void TestCVideoOverlayBackEnd::making_and_unmaking_it_touches_no_hardware()
{
    QVERIFY(!m_pcBackEnd->isOverlayEnabled());
    COverlayText cText = text("left over", 3, 3);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    m_pcBackEnd.reset();
    const CVideoOverlayBackEnd cAnother;
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

void TestCVideoOverlayBackEnd::switching_on_is_graphic_then_text()
{
    m_pcBackEnd->setOverlayEnabled(true);
    QVERIFY(m_pcBackEnd->isOverlayEnabled());
    QCOMPARE(m_pcPage->take(),
             (fpga_accesses{
                 {write_register, FPGA_CTRL, 0x00010001},
                 {write_register, FPGA_CTRL, 0x00030003}
    }));
}

void TestCVideoOverlayBackEnd::switching_off_is_graphic_then_text()
{
    current_screen->control_shadow = 0xffffffff;
    m_pcBackEnd->setOverlayEnabled(false);
    QVERIFY(!m_pcBackEnd->isOverlayEnabled());
    // The cursor's bits stay.
    QCOMPARE(m_pcPage->take(),
             (fpga_accesses{
                 {write_register, FPGA_CTRL, 0xfffefffe},
                 {write_register, FPGA_CTRL, 0xfffcfffc}
    }));
}

void TestCVideoOverlayBackEnd::the_layer_has_53_columns_and_26_rows()
{
    QCOMPARE(m_pcBackEnd->getMaxTextLineWidth(), 53U);
    QCOMPARE(m_pcBackEnd->getMaxTextLineCount(), 26U);
}

void TestCVideoOverlayBackEnd::a_text_is_its_characters_in_its_colors()
{
    m_pcBackEnd->drawText(text("Km 12", 5, 3, 12, 8));
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5, 10}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(4, 7), QByteArray("\0Km 12\0", 7));
    QCOMPARE(m_pcPage->colors(3).mid(4, 7), QByteArray("\0\xc8\xc8\xc8\xc8\xc8\0", 7));
}

void TestCVideoOverlayBackEnd::moving_along_the_row_erases_the_old_head()
{
    COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    move(cText, 8, 3);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5, 8 },
                                   {3, 8, 18}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(5, 14), "   " + TEN + QByteArray(1, '\0'));
    QCOMPARE(m_pcPage->colors(3).mid(5, 4), QByteArray("\0\0\0\x15", 4));
}

void TestCVideoOverlayBackEnd::moving_back_along_the_row_erases_the_old_tail()
{
    COverlayText cText = text(TEN, 8, 3);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    move(cText, 5, 3);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 15, 18},
                                   {3, 5,  15}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(5, 13), TEN + "   ");
}

void TestCVideoOverlayBackEnd::a_shorter_string_erases_the_old_tail()
{
    COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    cText.setText(QStringLiteral("ab"));
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 7, 15},
                                   {3, 5, 7 }
    }));
    cText.setText(QString());
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5, 7}
    }));
}

void TestCVideoOverlayBackEnd::moving_to_another_row_erases_all_and_redraws_neighbours()
{
    const COverlayText cBefore = text("ends", 1, 3);
    const COverlayText cOverlapping = text("over", 12, 3);
    const COverlayText cAfter = text("starts", 15, 3);
    const COverlayText cBehind = text("behind", 16, 3);
    const COverlayText cElsewhere = text("elsewhere", 5, 5);
    COverlayText cText = text(TEN, 5, 3);
    draw({&cBefore, &cOverlapping, &cAfter, &cBehind, &cElsewhere});
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();

    move(cText, 5, 4);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5,  15},
                                   {3, 12, 16},
                                   {3, 15, 21},
                                   {4, 5,  15}
    }));
    QCOMPARE(m_pcPage->codes(3).left(22), QByteArray("\0ends       ovestartsd", 22));
}

void TestCVideoOverlayBackEnd::drawing_again_rewrites_the_cells_and_no_neighbour()
{
    const COverlayText cNeighbour = text("neighbour", 8, 3);
    const COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cNeighbour);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5, 15}
    }));
}

void TestCVideoOverlayBackEnd::other_colors_rewrite_the_cells_and_no_neighbour()
{
    const COverlayText cNeighbour = text("neighbour", 8, 3);
    COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cNeighbour);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    cText.setForegroundColor(EOverlayTextColor{10});
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5, 15}
    }));
    QCOMPARE(m_pcPage->colors(3).mid(5, 10), QByteArray(10, '\xa5'));
}

void TestCVideoOverlayBackEnd::a_long_text_is_cut_at_the_right_edge()
{
    const COverlayText cText = text(QByteArray(60, 'x'), 10, 25);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {25, 10, 53}
    }));
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {25, 10, 53}
    }));
}

void TestCVideoOverlayBackEnd::an_end_beyond_255_wraps_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("drawn"); // cells
    QTest::newRow("behind the edge, and around") << 250 << 10 << 0;
    QTest::newRow("up to 255") << 10 << 245 << 43;
    QTest::newRow("256: no end at all") << 10 << 246 << 0;
    QTest::newRow("to before the beginning") << 10 << 250 << 0;
    QTest::newRow("to the beginning") << 10 << 256 << 0;
    QTest::newRow("around to the next column") << 10 << 257 << 1;
    QTest::newRow("255 characters") << 0 << 255 << 53;
    QTest::newRow("256 characters") << 0 << 256 << 0;
    QTest::newRow("300 characters") << 0 << 300 << 44;
    QTest::newRow("100000 characters, 160 modulo 256") << 0 << 100000 << 53;
}

void TestCVideoOverlayBackEnd::an_end_beyond_255_wraps()
{
    QFETCH(int, column);
    QFETCH(int, length);
    QFETCH(int, drawn);
    const COverlayText cText = text(QByteArray(length, 'x'), column, 7);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {7, column, column + drawn}
    }));
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {7, column, column + drawn}
    }));
}

void TestCVideoOverlayBackEnd::removing_a_text_erases_it_and_redraws_neighbours()
{
    const COverlayText cBeneath = text("beneath", 12, 3);
    const COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cBeneath);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 5,  15},
                                   {3, 12, 19}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(5, 14), "       " + QByteArray("beneath"));
    QCOMPARE(m_pcPage->colors(3).mid(11, 2), QByteArray("\0\x15", 2));
}

void TestCVideoOverlayBackEnd::removing_a_text_that_was_never_drawn_does_nothing()
{
    m_pcBackEnd->clearText(text(TEN, 5, 3));
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

void TestCVideoOverlayBackEnd::removing_a_text_twice_does_nothing_more()
{
    const COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cText);
    m_pcBackEnd->clearText(cText);
    m_pcPage->take();
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

void TestCVideoOverlayBackEnd::a_text_without_cells_stands_on_its_row_all_the_same()
{
    COverlayText cEmpty = text("", 7, 3);
    const COverlayText cNeighbour = text("abc", 7, 3);
    m_pcBackEnd->drawText(cNeighbour);
    m_pcBackEnd->drawText(cEmpty);
    m_pcPage->take();
    // It leaves nothing to erase, but texts that begin at its end are drawn again.
    m_pcBackEnd->clearText(cEmpty);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 7, 10}
    }));
}

void TestCVideoOverlayBackEnd::a_text_below_the_last_row_is_remembered_and_not_drawn()
{
    for (const int iRow : {26, 27, 255}) {
        COverlayText cText = text(TEN, 5, iRow);
        const COverlayText cNeighbour = text("abc", 6, iRow);
        m_pcBackEnd->drawText(cText);
        m_pcBackEnd->drawText(cNeighbour);
        move(cText, 9, iRow);
        m_pcBackEnd->drawText(cText);
        m_pcBackEnd->clearText(cNeighbour);
        QCOMPARE(m_pcPage->take(), fpga_accesses());
        move(cText, 5, 25);
        m_pcBackEnd->drawText(cText);
        QCOMPARE(m_pcPage->take(), accessesOf({
                                       {25, 5, 15}
        }));
        m_pcBackEnd->clearText(cText);
        m_pcPage->take();
    }
}

void TestCVideoOverlayBackEnd::a_text_right_of_the_last_column_is_remembered_and_not_drawn()
{
    for (const int iColumn : {53, 54, 200, 255}) {
        COverlayText cText = text("abc", iColumn, 3);
        m_pcBackEnd->drawText(cText);
        m_pcBackEnd->clearText(cText);
        QCOMPARE(m_pcPage->take(), fpga_accesses());
    }
}

// A text leaves columns 10-14 of row 3; another stands on the same row.
void TestCVideoOverlayBackEnd::who_is_redrawn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("redrawn");
    QTest::newRow("before it") << 2 << 3 << false;
    QTest::newRow("ends where it begins") << 5 << 5 << false;
    QTest::newRow("overlaps its first cell") << 5 << 6 << true;
    QTest::newRow("begins with it, shorter") << 10 << 2 << true;
    QTest::newRow("the same cells") << 10 << 5 << true;
    QTest::newRow("begins with it, longer") << 10 << 9 << true;
    QTest::newRow("inside") << 11 << 2 << true;
    QTest::newRow("ends with it") << 12 << 3 << true;
    QTest::newRow("around it") << 8 << 20 << true;
    QTest::newRow("overlaps its last cell") << 14 << 5 << true;
    QTest::newRow("begins where it ends") << 15 << 4 << true;
    QTest::newRow("behind it") << 16 << 4 << false;
}

void TestCVideoOverlayBackEnd::who_is_redrawn()
{
    QFETCH(int, column);
    QFETCH(int, length);
    QFETCH(bool, redrawn);
    const COverlayText cNeighbour = text(QByteArray(length, 'x'), column, 3);
    COverlayText cText = text("abcde", 10, 3);
    m_pcBackEnd->drawText(cNeighbour);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    const fpga_accesses cExpected = redrawn ? accessesOf({
                                                  {3, 10,     15             },
                                                  {3, column, column + length}
    })
                                            : accessesOf({{3, 10, 15}});
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), cExpected);

    // Moving away does the same.
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    move(cText, 10, 30);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), cExpected);
}

// A leaving text ends before it begins: nothing is erased, but texts before its end are drawn again.
void TestCVideoOverlayBackEnd::who_is_redrawn_when_the_end_has_wrapped_data()
{
    QTest::addColumn<int>("regionColumn");
    QTest::addColumn<int>("regionLength");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("redrawn");
    QTest::newRow("250 to 4: ends before 4") << 250 << 10 << 0 << 3 << false;
    QTest::newRow("250 to 4: ends at 4") << 250 << 10 << 0 << 4 << false;
    QTest::newRow("250 to 4: ends behind 4") << 250 << 10 << 0 << 5 << true;
    QTest::newRow("250 to 4: around 4") << 250 << 10 << 2 << 6 << true;
    QTest::newRow("250 to 4: begins at 4") << 250 << 10 << 4 << 4 << true;
    QTest::newRow("250 to 4: begins behind 4") << 250 << 10 << 5 << 3 << false;
    QTest::newRow("20 to 4: behind 20") << 20 << 240 << 22 << 8 << false;
    QTest::newRow("20 to 4: around 20") << 20 << 240 << 10 << 20 << false;
    QTest::newRow("20 to 4: around both") << 20 << 240 << 3 << 27 << true;
    QTest::newRow("20 to 4: around 4") << 20 << 240 << 2 << 4 << true;
    QTest::newRow("60 to 53: whole row") << 60 << 5 << 0 << 53 << false;
}

void TestCVideoOverlayBackEnd::who_is_redrawn_when_the_end_has_wrapped()
{
    QFETCH(int, regionColumn);
    QFETCH(int, regionLength);
    QFETCH(int, column);
    QFETCH(int, length);
    QFETCH(bool, redrawn);
    const COverlayText cNeighbour = text(QByteArray(length, 'x'), column, 3);
    const COverlayText cText = text(QByteArray(regionLength, 'y'), regionColumn, 3);
    m_pcBackEnd->drawText(cNeighbour);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), redrawn ? accessesOf({
                                             {3, column, column + length}
    })
                                       : fpga_accesses());
}

void TestCVideoOverlayBackEnd::neighbours_are_redrawn_in_the_order_of_their_first_drawing()
{
    COverlayText cFirst = text("1111111", 12, 3);
    COverlayText cSecond = text("222222222", 9, 4);
    const COverlayText cThird = text("33333", 13, 3);
    const COverlayText cText = text(TEN, 10, 3);
    draw({&cFirst, &cSecond, &cThird, &cText});
    // It comes to the row last, but was there before the third.
    move(cSecond, 9, 3);
    m_pcBackEnd->drawText(cSecond);
    // Going to another row and back changes nothing either.
    move(cFirst, 0, 20);
    m_pcBackEnd->drawText(cFirst);
    move(cFirst, 12, 3);
    m_pcBackEnd->drawText(cFirst);
    m_pcPage->take();

    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 10, 20},
                                   {3, 12, 19},
                                   {3, 9,  18},
                                   {3, 13, 18}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(9, 11), QByteArray("2222333331 "));
}

void TestCVideoOverlayBackEnd::a_text_cleared_and_drawn_again_counts_as_new()
{
    const COverlayText cFirst = text("1111", 12, 3);
    const COverlayText cSecond = text("2222", 13, 3);
    const COverlayText cText = text(TEN, 10, 3);
    draw({&cFirst, &cSecond, &cText});
    m_pcBackEnd->clearText(cFirst);
    m_pcBackEnd->drawText(cFirst);
    m_pcPage->take();
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 10, 20},
                                   {3, 13, 17},
                                   {3, 12, 16}
    }));
}

// Kept: the row is erased from the old beginning to the new one, but only texts that touched the old place
// are drawn again. The pictures that clients get depend on it.
void TestCVideoOverlayBackEnd::what_lies_between_the_old_and_the_new_place_is_wiped()
{
    COverlayText cText = text("abc", 0, 3);
    const COverlayText cBetween = text("between", 10, 3);
    m_pcBackEnd->drawText(cText);
    m_pcBackEnd->drawText(cBetween);
    m_pcPage->take();
    move(cText, 30, 3);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 0,  30},
                                   {3, 30, 33}
    }));
    QCOMPARE(m_pcPage->codes(3).left(33), QByteArray(30, ' ') + "abc");
}

void TestCVideoOverlayBackEnd::leaving_column_255_redraws_nobody()
{
    for (const int iColumn : {254, 255}) {
        // In both columns the end wraps to 9, inside of the neighbour.
        COverlayText cText = text(QByteArray(265 - iColumn, 'x'), iColumn, 3);
        const COverlayText cNeighbour = text("neighbour", 3, 3);
        m_pcBackEnd->drawText(cNeighbour);
        m_pcBackEnd->drawText(cText);
        m_pcPage->take();
        cText.setText(QStringLiteral("ab"));
        move(cText, 0, 3);
        m_pcBackEnd->drawText(cText);
        if (iColumn == 254)
            QCOMPARE(m_pcPage->take(), accessesOf({
                                           {3, 2, 9 },
                                           {3, 3, 12},
                                           {3, 0, 2 }
            }));
        else
            QCOMPARE(m_pcPage->take(), accessesOf({
                                           {3, 2, 9},
                                           {3, 0, 2}
            }));
        m_pcBackEnd->clearText(cText);
        m_pcBackEnd->clearText(cNeighbour);
    }
}

void TestCVideoOverlayBackEnd::a_new_text_redraws_nobody_that_it_covers()
{
    const COverlayText cFirst = text("1111", 12, 3);
    m_pcBackEnd->drawText(cFirst);
    m_pcPage->take();
    const COverlayText cText = text(TEN, 10, 3);
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {3, 10, 20}
    }));
    QCOMPARE(m_pcPage->codes(3).mid(10, 10), TEN);
}

void TestCVideoOverlayBackEnd::a_later_text_at_the_same_address_has_no_past()
{
    COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cText);
    m_pcBackEnd->clearText(cText);
    cText = text("abc", 20, 4);
    m_pcPage->take();
    m_pcBackEnd->drawText(cText);
    QCOMPARE(m_pcPage->take(), accessesOf({
                                   {4, 20, 23}
    }));
}

void TestCVideoOverlayBackEnd::colors_are_packed_as_they_come_data()
{
    QTest::addColumn<unsigned int>("foreground");
    QTest::addColumn<unsigned int>("background");
    QTest::addColumn<int>("packed");
    QTest::newRow("none") << 0U << 0U << 0x00;
    QTest::newRow("the default") << 1U << 5U << 0x15;
    QTest::newRow("the last") << 15U << 15U << 0xff;
    QTest::newRow("a foreground of 16 has lost its bit") << 16U << 5U << 0x05;
    QTest::newRow("a background of 16 spills over") << 2U << 16U << 0x30;
    QTest::newRow("256") << 256U << 256U << 0x00;
    QTest::newRow("-1") << static_cast<unsigned int>(-1) << static_cast<unsigned int>(-1) << 0xff;
    QTest::newRow("-2, 0") << static_cast<unsigned int>(-2) << 0U << 0xe0;
    QTest::newRow("0, -16") << 0U << static_cast<unsigned int>(-16) << 0xf0;
    QTest::newRow("the smallest") << static_cast<unsigned int>(INT_MIN) << static_cast<unsigned int>(INT_MIN)
                                  << 0x00;
    QTest::newRow("the largest") << static_cast<unsigned int>(INT_MAX) << static_cast<unsigned int>(INT_MAX)
                                 << 0xff;
}

void TestCVideoOverlayBackEnd::colors_are_packed_as_they_come()
{
    QFETCH(unsigned int, foreground);
    QFETCH(unsigned int, background);
    QFETCH(int, packed);
    m_pcBackEnd->drawText(text("x", 0, 0, foreground, background));
    QCOMPARE(m_pcPage->colors(0).left(1), QByteArray(1, static_cast<char>(packed)));
}

static bool isGlyphSetLoaded(int iSet)
{
    const font_map_tab* const SETS[] = {&font_map_tab_iso8859_15, &font_map_tab_iso8859_16,
                                        &font_map_tab_iso8859_5};
    const unsigned char* pu8Rows = SETS[iSet - 1]->rows;
    const std::vector<unsigned char> cLoaded = fpga_bytes(FPGA_GLYPHS, FONT_MAP_LENGTH);
    bool bLoaded = true;
    for (std::size_t i = 0; i < cLoaded.size(); ++i)
        bLoaded = bLoaded && cLoaded[i] == pu8Rows[i ^ 1];
    return bLoaded;
}

// A letter of each of the three repertoires that the others lack, and one that all have.
static const char* const LETTERS = "\u00f1\u0219\u0416A"; // n with tilde, s with comma below, zhe

void TestCVideoOverlayBackEnd::locales_choose_letters_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("set");
    QTest::addColumn<QByteArray>("codes");
    const QByteArray cLatin9 = QByteArrayLiteral("\xf1??A");
    const QByteArray cLatin10 = QByteArrayLiteral("?\xba?A");
    const QByteArray cCyrillic = QByteArrayLiteral("??\xb6\x41");
    const auto addRows = [](int iSet, const QByteArray& rcCodes, const QByteArrayList& rcLocales) {
        for (const QByteArray& rcLocale : rcLocales)
            QTest::newRow(rcLocale) << QString::fromLatin1(rcLocale) << iSet << rcCodes;
    };
    addRows(3, cCyrillic, {"be_BY", "bg_BG", "kk_KZ", "ky_KG", "mn_MN", "ru_RU", "tg_TJ", "uk_UA"});
    addRows(2, cLatin10, {"sq_AL", "hr_HR", "hu_HU", "pl_PL", "ro_RO", "sl_SI", "sr_RS"});
    addRows(1, cLatin9, {"de_DE", "en_US", "fr_FR", "cs_CZ", "sk_SK", "el_GR", "zh_CN"});
    // The country decides, not the language ...
    addRows(3, cCyrillic, {"tt_RU"});
    addRows(2, cLatin10, {"sr_Cyrl_RS"});
    addRows(1, cLatin9, {"ro_MD", "ru_MD", "sr_BA"});
    // ... but where Qt knows no such language in a country, it takes the language's own.
    addRows(3, cCyrillic, {"ru", "ru_", "ru_DE", "RU_ru", "ru-RU", "ru_RU.UTF-8"});
    addRows(2, cLatin10, {"pl"});
    addRows(1, cLatin9, {"en_RU", "de_RO"});
    // These name nothing.
    addRows(1, cLatin9, {"C", "", " ", "_", "_RU", "xx_RU", "Russia", "\xff\xfe"});
    QTest::newRow("null") << QString() << 1 << cLatin9;
    QTest::newRow("100000 letters") << QString(100000, QLatin1Char('r')) << 1 << cLatin9;
}

void TestCVideoOverlayBackEnd::locales_choose_letters()
{
    QFETCH(QString, locale);
    QFETCH(int, set);
    QFETCH(QByteArray, codes);
    load_font(-1);
    m_pcPage->take();
    m_pcBackEnd->loadCharacterSetForLocale(locale);
    QCOMPARE(m_pcPage->take(), (fpga_accesses{
                                   {write_memory, FPGA_GLYPHS, FONT_MAP_LENGTH}
    }));
    QVERIFY(isGlyphSetLoaded(set));
    m_pcBackEnd->drawText(text(LETTERS, 0, 0));
    QCOMPARE(m_pcPage->codes(0).left(4), codes);
}

void TestCVideoOverlayBackEnd::the_same_locale_loads_nothing_again()
{
    // Set 1 is what the FPGA has from its start.
    m_pcBackEnd->loadCharacterSetForLocale(QStringLiteral("de_DE"));
    m_pcBackEnd->loadCharacterSetForLocale(QStringLiteral("de_DE"));
    QCOMPARE(m_pcPage->take(), fpga_accesses());
    m_pcBackEnd->loadCharacterSetForLocale(QStringLiteral("ru_RU"));
    QCOMPARE(m_pcPage->take().size(), std::size_t{1});
    m_pcBackEnd->loadCharacterSetForLocale(QStringLiteral("uk_UA"));
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

void TestCVideoOverlayBackEnd::the_codec_stays_when_somebody_else_loads_letters()
{
    m_pcBackEnd->loadCharacterSetForLocale(QStringLiteral("ru_RU"));
    load_font(1);
    m_pcBackEnd->drawText(text(LETTERS, 0, 0));
    QCOMPARE(m_pcPage->codes(0).left(4), QByteArray("??\xb6\x41"));
}

// The letters change under it; drawn again, it has the codes of its locale.
void TestCVideoOverlayBackEnd::every_locale_of_qt_under_a_visible_text()
{
    const QList<QLocale> cLocales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    QVERIFY(cLocales.size() > 500);
    const QByteArray CODES[] = {QByteArrayLiteral("\xf1??A"), QByteArrayLiteral("?\xba?A"),
                                QByteArrayLiteral("??\xb6\x41")};
    int iSeen[3] = {0, 0, 0};
    const COverlayText cText = text(LETTERS, 1, 1);
    m_pcBackEnd->drawText(cText);
    for (const QLocale& rcLocale : cLocales) {
        const QByteArray cBefore = m_pcPage->codes(1);
        m_pcPage->take();
        load_font(-1);
        m_pcBackEnd->loadCharacterSetForLocale(rcLocale.name());
        QCOMPARE(m_pcPage->take(), (fpga_accesses{
                                       {write_memory, FPGA_GLYPHS, FONT_MAP_LENGTH}
        }));
        QCOMPARE(m_pcPage->codes(1), cBefore);

        const int iSet = isGlyphSetLoaded(1) ? 0 : isGlyphSetLoaded(2) ? 1 : 2;
        QVERIFY(isGlyphSetLoaded(iSet + 1));
        ++iSeen[iSet];
        m_pcBackEnd->drawText(cText);
        QCOMPARE(m_pcPage->take(), accessesOf({
                                       {1, 1, 5}
        }));
        QCOMPARE(m_pcPage->codes(1).mid(1, 4), CODES[iSet]);
    }
    QVERIFY(iSeen[0] > 400 && iSeen[1] > 7 && iSeen[2] > 8);
}

void TestCVideoOverlayBackEnd::without_a_screen_nothing_is_written()
{
    current_screen = nullptr;
    const COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->setOverlayEnabled(true);
    m_pcBackEnd->drawText(cText);
    m_pcBackEnd->clearText(cText);
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

void TestCVideoOverlayBackEnd::graphics_are_ignored()
{
    // Only programs with Qt's graphics library know the class of graphics, and the back end doesn't use the
    // argument.
    const COverlayText cSomething;
    const auto& rcGraphic = reinterpret_cast<const COverlayGraphic&>(cSomething);
    CCapturedOutput cOutput(1);
    m_pcBackEnd->drawGraphic(rcGraphic);
    m_pcBackEnd->clearGraphic(rcGraphic);
    QCOMPARE(cOutput.take(), QByteArray());
    QCOMPARE(m_pcPage->take(), fpga_accesses());
}

using operation = std::function<void(IVideoOverlay&)>;
Q_DECLARE_METATYPE(operation)

// Written out, not made from the table: operators search their logs for these names.
void TestCVideoOverlayBackEnd::unsupported_operations_say_so_data()
{
    QTest::addColumn<operation>("call");
#define ROW(name, ...) QTest::newRow(#name) << operation([](IVideoOverlay& rc) { rc.name(__VA_ARGS__); })
    ROW(toggleCrosshairVisibility, );
    ROW(changeCrosshairColor, 1);
    ROW(changeCrosshairPosition, -1, INT_MAX);
    ROW(changeCrosshairShape, INT_MIN);
    ROW(toggleCameraHorizonVisibility, );
    ROW(changeCameraHorizonColor, 1);
    ROW(changeCameraHorizonPosition, 1, 2);
    ROW(changeCameraHorizonShape, 1);
    ROW(changeCameraHorizonGridColor, 1);
    ROW(toggleLogoVisibility, );
    ROW(toggleLogoAnimation, );
    ROW(changeLogoFile, QStringLiteral("/no/such/file"));
    ROW(changeLogoPosition, 1, 2);
    ROW(toggleRoiVisibility, );
    ROW(changeRoiColor, 1);
    ROW(changeRoiPosition, 1, 2);
    ROW(setRoiDrawPoint1, 1, 2);
    ROW(setRoiDrawPoint2, 1, 2);
    ROW(changeRoiShape, 1);
    ROW(changeRoiSize, 1);
    ROW(drawRoi, );
    ROW(toggleCrawlerRollVisibility, );
    ROW(changeCrawlerRollColor, 1);
    ROW(changeCrawlerRollShape, 1);
    ROW(changeCrawlerRollPosition, 1, 2);
    ROW(toggleCrawlerPitchVisibility, );
    ROW(changeCrawlerPitchColor, 1);
    ROW(changeCrawlerPitchShape, 1);
    ROW(changeCrawlerPitchPosition, 1, 2);
    ROW(toggleSpyholeVisibility, );
    ROW(changeSpyholeColor, 1);
    ROW(changeSpyholePosition, 1, 2);
    ROW(changeSpyholeShape, 1);
    ROW(changeVideoPosition, 1);
    ROW(moveCameraPosition, 1, 2);
    ROW(changeFont, QString(), 1, true, 2, false, true);
    ROW(setOsdTransparency, 1);
#undef ROW
}

void TestCVideoOverlayBackEnd::unsupported_operations_say_so()
{
    QFETCH(operation, call);
    const COverlayText cText = text(TEN, 5, 3);
    m_pcBackEnd->drawText(cText);
    m_pcPage->take();
    const QByteArray cLine = QByteArray(QTest::currentDataTag()) + ": Not implemented for orbisk\n";
    CCapturedOutput cOutput(1);
    call(*m_pcBackEnd);
    call(*m_pcBackEnd);
    QCOMPARE(cOutput.take(), cLine + cLine);
    QCOMPARE(m_pcPage->take(), fpga_accesses());
    QVERIFY(!m_pcBackEnd->isOverlayEnabled());
}

void TestCVideoOverlayBackEnd::all_unsupported_operations_are_listed()
{
#define COUNTED(method, passedOnBy, operation, parameters, arguments) +1 // NOLINT(bugprone-macro-parentheses)
    const int iOsdTransparency = 1;
    QCOMPARE(iOsdTransparency OVERLAY_FEATURES_AS_OPERATIONS(COUNTED), 37);
#undef COUNTED
}

QTEST_GUILESS_MAIN(TestCVideoOverlayBackEnd)

#include "tst_CVideoOverlayBackEnd.moc"
