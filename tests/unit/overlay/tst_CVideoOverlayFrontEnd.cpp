/* SPDX-License-Identifier: MIT */
/* The front end on a back end that only notes its calls, and the real manager. */
#include "daemon/CEventLogger.h"
#include "overlay/COverlayObjectManager.h"
#include "overlay/COverlayText.h"
#include "overlay/COverlayTextStateData.h"
#include "overlay/CVideoOverlayFrontEnd.h"
#include "overlay/IVideoOverlay.h"
#include "tests/support/CCapturedOutput.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QTimerEvent>
#include <QtTest>

#include <climits>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace
{

QString noted(const QString& rcString)
{
    return rcString;
}

QString noted(int iNumber)
{
    return QString::number(iNumber);
}

QString noted(bool bValue)
{
    return bValue ? QStringLiteral("true") : QStringLiteral("false");
}

/// Notes the calls, one a line, and the mistakes that only a caller can make.
class CNotingBackEnd final : public IVideoOverlay
{
private:
    template <typename... TArguments>
    void note(const char* pszOperation, const TArguments&... rcArguments)
    {
        m_cCalls << QStringList{QString::fromLatin1(pszOperation), noted(rcArguments)...}.join(
            QLatin1Char(' '));
    }
    auto noteWith(const char* pszOperation)
    {
        return [=](const auto&... rcArguments) { note(pszOperation, rcArguments...); };
    }

public:
    QStringList takeCalls()
    {
        QStringList cCalls;
        cCalls.swap(m_cCalls);
        return cCalls;
    }

    /// The texts that are drawn and not cleared.
    const std::set<const COverlayText*>& drawn() const { return m_cDrawn; }

    bool isOverlayEnabled() const override { return m_bEnabled; }
    void setOverlayEnabled(bool bEnabled) override
    {
        m_bEnabled = bEnabled;
        note("setOverlayEnabled", bEnabled);
    }
    void drawText(const COverlayText& rcText) override
    {
        m_cDrawn.insert(&rcText);
        note("drawText", rcText.getText(), int{rcText.getX()}, int{rcText.getY()},
             static_cast<int>(rcText.getForegroundColor()), static_cast<int>(rcText.getBackgroundColor()));
    }
    void clearText(const COverlayText& rcText) override
    {
        m_cDrawn.erase(&rcText);
        note("clearText", rcText.getText());
    }
    void drawGraphic(const COverlayGraphic& /*rcGraphic*/) override { note("drawGraphic"); }
    void clearGraphic(const COverlayGraphic& /*rcGraphic*/) override { note("clearGraphic"); }
    void loadCharacterSetForLocale(const QString& rcLocaleName) override
    {
        note("loadCharacterSetForLocale", rcLocaleName);
    }
    unsigned int getMaxTextLineWidth() const override { return 77; }
    unsigned int getMaxTextLineCount() const override { return 33; }

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments bring theirs.
#define NOTED(method, passedOnBy, operation, parameters, arguments) \
    void operation parameters override                              \
    {                                                               \
        noteWith(#operation) arguments;                             \
    }
    OVERLAY_FEATURES_AS_OPERATIONS(NOTED)
    NOTED(, , setOsdTransparency, (int iValue), (iValue))
#undef NOTED
    // NOLINTEND(bugprone-macro-parentheses)

private:
    QStringList m_cCalls;
    std::set<const COverlayText*> m_cDrawn;
    bool m_bEnabled = false;
};

} // namespace

class TestCVideoOverlayFrontEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void unknown_handles_give_defaults_and_do_nothing_data();
    void unknown_handles_give_defaults_and_do_nothing();
    void a_new_text_is_hidden_and_not_drawn();
    void without_a_free_handle_nothing_is_created();
    void a_hidden_text_changes_without_being_drawn();
    void a_visible_text_is_drawn_at_each_change();
    void ids_are_not_drawn();
    void an_id_finds_the_lowest_handle();
    void showing_and_hiding_happen_once();
    void a_visible_text_is_cleared_before_it_is_destroyed();
    void a_hidden_text_is_destroyed_silently();
    void the_end_position_wraps_at_256();
    void positions_and_colors_are_kept_as_they_come();
    void texts_are_shown_hidden_updated_and_destroyed_in_the_order_of_their_handles();
    void whole_set_operations_on_no_texts_do_nothing();

    void durations_are_1_to_9999_data();
    void durations_are_1_to_9999();
    void a_temporary_text_is_drawn_and_goes_when_its_time_is_up();
    void a_temporary_text_is_gone_after_a_real_second();
    void two_at_the_same_place_go_on_their_own_schedules();
    void after_its_expiry_the_timer_goes_on_and_changes_nothing();
    void events_of_other_timers_change_nothing();
    void a_hidden_temporary_text_expires_all_the_same();
    void a_temporary_text_is_an_ordinary_text();
    void without_a_free_handle_no_temporary_text_is_drawn();
    void clearing_no_temporary_texts_does_nothing();
    void clearing_removes_the_pending_ones_and_their_timers();
    void clearing_goes_by_handles();
    void a_temporary_text_that_a_client_destroys_is_not_touched_again();
    void destroying_all_texts_forgets_the_temporary_ones();
    void a_later_text_is_not_harmed_by_an_old_timer();
    void a_temporary_text_destroyed_at_the_manager_is_not_touched_again();
    void a_later_text_is_not_taken_for_one_destroyed_at_the_manager();
    void a_text_made_at_the_manager_is_not_taken_for_a_temporary_one();
    void nothing_destroyed_stays_drawn();
    void the_end_removes_temporary_texts_and_leaves_the_others();

    void temporary_texts_and_locales_are_logged();
    void a_locale_is_passed_on();
    void the_whole_overlay_is_passed_on();
    void transparency_draws_all_visible_texts_again();
    void operations_are_passed_on_data();
    void operations_are_passed_on();

private:
    unsigned int newText(const char* pszText);
    unsigned int newTemporaryText(const char* pszText, unsigned int uDuration = 5);
    QList<int> timers() const;
    int onlyTimer() const { return timers().value(0); }
    void expire(int iTimer);
    QStringList calls() { return m_pcBackEnd->takeCalls(); }

    QScopedPointer<CNotingBackEnd> m_pcBackEnd;
    QScopedPointer<COverlayObjectManager> m_pcManager;
    QScopedPointer<CVideoOverlayFrontEnd> m_pcFrontEnd;
};

static const EOverlayTextColor RED{10};
static const EOverlayTextColor BLACK{15};

void TestCVideoOverlayFrontEnd::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
    CEventLogger::setLoggingEnabled(false);
}

void TestCVideoOverlayFrontEnd::init()
{
    m_pcBackEnd.reset(new CNotingBackEnd);
    m_pcManager.reset(new COverlayObjectManager);
    m_pcFrontEnd.reset(new CVideoOverlayFrontEnd(*m_pcBackEnd, *m_pcManager));
}

void TestCVideoOverlayFrontEnd::cleanup()
{
    m_pcFrontEnd.reset();
    m_pcManager.reset();
    m_pcBackEnd.reset();
}

/// A hidden text at 3, 4.
unsigned int TestCVideoOverlayFrontEnd::newText(const char* pszText)
{
    const unsigned int uHandle = m_pcFrontEnd->createText();
    m_pcFrontEnd->setTextStr(uHandle, QString::fromUtf8(pszText));
    m_pcFrontEnd->setTextPosition(uHandle, 3, 4);
    return uHandle;
}

/// The handle, which clients don't get.
unsigned int TestCVideoOverlayFrontEnd::newTemporaryText(const char* pszText, unsigned int uDuration)
{
    m_pcFrontEnd->drawTemporaryText(QString::fromUtf8(pszText), RED, BLACK, 7, 8, uDuration);
    return m_pcManager->getTextHandles().last();
}

QList<int> TestCVideoOverlayFrontEnd::timers() const
{
    QList<int> cIds;
    const auto cTimers = QAbstractEventDispatcher::instance()->registeredTimers(m_pcFrontEnd.data());
    for (const QAbstractEventDispatcher::TimerInfo& rsTimer : cTimers)
        cIds << rsTimer.timerId;
    return cIds;
}

void TestCVideoOverlayFrontEnd::expire(int iTimer)
{
    QTimerEvent cEvent(iTimer);
    QCoreApplication::sendEvent(m_pcFrontEnd.data(), &cEvent);
}

void TestCVideoOverlayFrontEnd::unknown_handles_give_defaults_and_do_nothing_data()
{
    QTest::addColumn<unsigned int>("handle");
    for (const unsigned int uHandle : {0U, 2U, 65535U, 65536U, 0x7fffffffU, 0x80000000U, 0xffffffffU})
        QTest::addRow("%u", uHandle) << uHandle;
}

void TestCVideoOverlayFrontEnd::unknown_handles_give_defaults_and_do_nothing()
{
    QFETCH(unsigned int, handle);
    const unsigned int uKnown = newText("known");
    m_pcFrontEnd->showText(uKnown);
    calls();

    QVERIFY(m_pcFrontEnd->getTextStr(handle).isNull());
    QCOMPARE(m_pcFrontEnd->getTextForegroundColor(handle), EOverlayTextColor{0});
    QCOMPARE(m_pcFrontEnd->getTextBackgroundColor(handle), EOverlayTextColor{0});
    QCOMPARE(int{m_pcFrontEnd->getTextXPos(handle)}, 255);
    QCOMPARE(int{m_pcFrontEnd->getTextYPos(handle)}, 255);
    QCOMPARE(int{m_pcFrontEnd->getTextEndPos(handle)}, 255);
    QVERIFY(!m_pcFrontEnd->isTextVisible(handle));
    QCOMPARE(m_pcFrontEnd->getTextId(handle), 0U);

    m_pcFrontEnd->setTextStr(handle, QStringLiteral("other"));
    m_pcFrontEnd->setTextColors(handle, RED, BLACK);
    m_pcFrontEnd->setTextPosition(handle, 30, 20);
    m_pcFrontEnd->setTextId(handle, 9);
    m_pcFrontEnd->showText(handle);
    m_pcFrontEnd->hideText(handle);
    m_pcFrontEnd->destroyText(handle);

    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcManager->getTextHandles(), QList<unsigned int>{uKnown});
    QCOMPARE(m_pcFrontEnd->getTextStr(uKnown), QStringLiteral("known"));
    QCOMPARE(m_pcFrontEnd->getTextHandleById(9), 0U);
}

void TestCVideoOverlayFrontEnd::a_new_text_is_hidden_and_not_drawn()
{
    QCOMPARE(m_pcFrontEnd->createText(), 1U);
    QCOMPARE(m_pcFrontEnd->createText(), 2U);
    QVERIFY(!m_pcFrontEnd->isTextVisible(1));
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::without_a_free_handle_nothing_is_created()
{
    for (unsigned int uHandle = 1; uHandle <= 65535; ++uHandle)
        QCOMPARE(m_pcFrontEnd->createText(), uHandle);
    QCOMPARE(m_pcFrontEnd->createText(), 0U);
    QCOMPARE(m_pcManager->getTextHandles().size(), 65535);
}

void TestCVideoOverlayFrontEnd::a_hidden_text_changes_without_being_drawn()
{
    const unsigned int uText = m_pcFrontEnd->createText();
    m_pcFrontEnd->setTextStr(uText, QStringLiteral("abc"));
    m_pcFrontEnd->setTextColors(uText, RED, BLACK);
    m_pcFrontEnd->setTextPosition(uText, 12, 5);
    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcFrontEnd->getTextStr(uText), QStringLiteral("abc"));
    QCOMPARE(m_pcFrontEnd->getTextForegroundColor(uText), RED);
    QCOMPARE(m_pcFrontEnd->getTextBackgroundColor(uText), BLACK);
    QCOMPARE(int{m_pcFrontEnd->getTextXPos(uText)}, 12);
    QCOMPARE(int{m_pcFrontEnd->getTextYPos(uText)}, 5);
    QCOMPARE(int{m_pcFrontEnd->getTextEndPos(uText)}, 15);
    QVERIFY(!m_pcFrontEnd->isTextVisible(uText));
}

void TestCVideoOverlayFrontEnd::a_visible_text_is_drawn_at_each_change()
{
    const unsigned int uText = newText("abc");
    m_pcFrontEnd->showText(uText);
    m_pcFrontEnd->setTextStr(uText, QStringLiteral("de"));
    m_pcFrontEnd->setTextColors(uText, RED, BLACK);
    m_pcFrontEnd->setTextPosition(uText, 12, 5);
    QCOMPARE(calls(), (QStringList{"drawText abc 3 4 1 5", "drawText de 3 4 1 5", "drawText de 3 4 10 15",
                                   "drawText de 12 5 10 15"}));
    QVERIFY(m_pcFrontEnd->isTextVisible(uText));
}

void TestCVideoOverlayFrontEnd::ids_are_not_drawn()
{
    const unsigned int uText = newText("abc");
    m_pcFrontEnd->showText(uText);
    calls();
    for (const unsigned int uId : {102U, 0U, 0xffffffffU}) {
        m_pcFrontEnd->setTextId(uText, uId);
        QCOMPARE(m_pcFrontEnd->getTextId(uText), uId);
        QCOMPARE(m_pcFrontEnd->getTextHandleById(uId), uText);
    }
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::an_id_finds_the_lowest_handle()
{
    QCOMPARE(m_pcFrontEnd->getTextHandleById(0), 0U);
    for (int i = 0; i < 3; ++i)
        QVERIFY(m_pcFrontEnd->createText() != 0);
    QCOMPARE(m_pcFrontEnd->getTextHandleById(0), 1U);
    m_pcFrontEnd->setTextId(3, 7);
    m_pcFrontEnd->setTextId(2, 7);
    QCOMPARE(m_pcFrontEnd->getTextHandleById(7), 2U);
    QCOMPARE(m_pcFrontEnd->getTextHandleById(8), 0U);
}

void TestCVideoOverlayFrontEnd::showing_and_hiding_happen_once()
{
    const unsigned int uText = newText("abc");
    m_pcFrontEnd->hideText(uText);
    QCOMPARE(calls(), QStringList());
    m_pcFrontEnd->showText(uText);
    m_pcFrontEnd->showText(uText);
    QCOMPARE(calls(), QStringList{"drawText abc 3 4 1 5"});
    QVERIFY(m_pcFrontEnd->isTextVisible(uText));
    m_pcFrontEnd->hideText(uText);
    m_pcFrontEnd->hideText(uText);
    QCOMPARE(calls(), QStringList{"clearText abc"});
    QVERIFY(!m_pcFrontEnd->isTextVisible(uText));
}

void TestCVideoOverlayFrontEnd::a_visible_text_is_cleared_before_it_is_destroyed()
{
    const unsigned int uText = newText("abc");
    m_pcFrontEnd->showText(uText);
    calls();
    m_pcFrontEnd->destroyText(uText);
    QCOMPARE(calls(), QStringList{"clearText abc"});
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
    m_pcFrontEnd->destroyText(uText);
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::a_hidden_text_is_destroyed_silently()
{
    m_pcFrontEnd->destroyText(newText("abc"));
    QCOMPARE(calls(), QStringList());
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
}

void TestCVideoOverlayFrontEnd::the_end_position_wraps_at_256()
{
    const unsigned int uText = m_pcFrontEnd->createText();
    struct SRow {
        int iColumn, iLength, iEnd;
    };
    for (const SRow& rsRow : {
             SRow{0,   0,      0  },
             SRow{0,   53,     53 },
             SRow{52,  2,      54 },
             SRow{0,   255,    255},
             SRow{0,   256,    0  },
             SRow{0,   300,    44 },
             SRow{250, 10,     4  },
             SRow{255, 1,      0  },
             SRow{255, 0,      255},
             SRow{1,   100000, 161}
    }) {
        m_pcFrontEnd->setTextPosition(uText, static_cast<unsigned char>(rsRow.iColumn), 0);
        m_pcFrontEnd->setTextStr(uText, QString(rsRow.iLength, QLatin1Char('x')));
        QCOMPARE(int{m_pcFrontEnd->getTextEndPos(uText)}, rsRow.iEnd);
    }
}

void TestCVideoOverlayFrontEnd::positions_and_colors_are_kept_as_they_come()
{
    const unsigned int uText = m_pcFrontEnd->createText();
    for (const int iPosition : {0, 25, 26, 52, 53, 255}) {
        m_pcFrontEnd->setTextPosition(uText, static_cast<unsigned char>(iPosition),
                                      static_cast<unsigned char>(255 - iPosition));
        QCOMPARE(int{m_pcFrontEnd->getTextXPos(uText)}, iPosition);
        QCOMPARE(int{m_pcFrontEnd->getTextYPos(uText)}, 255 - iPosition);
    }
    for (const unsigned int uColor : {0U, 15U, 16U, 256U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        m_pcFrontEnd->setTextColors(uText, EOverlayTextColor{uColor}, EOverlayTextColor{~uColor});
        QCOMPARE(m_pcFrontEnd->getTextForegroundColor(uText), EOverlayTextColor{uColor});
        QCOMPARE(m_pcFrontEnd->getTextBackgroundColor(uText), EOverlayTextColor{~uColor});
    }
}

void TestCVideoOverlayFrontEnd::texts_are_shown_hidden_updated_and_destroyed_in_the_order_of_their_handles()
{
    for (const char* pszText : {"a", "b", "c", "d"})
        newText(pszText);
    m_pcFrontEnd->destroyText(2);
    m_pcFrontEnd->showText(3);
    calls();

    m_pcFrontEnd->showAllTexts();
    QCOMPARE(calls(), (QStringList{"drawText a 3 4 1 5", "drawText d 3 4 1 5"}));
    m_pcFrontEnd->hideText(4);
    calls();
    m_pcFrontEnd->updateAllTexts();
    QCOMPARE(calls(), (QStringList{"drawText a 3 4 1 5", "drawText c 3 4 1 5"}));
    QVERIFY(!m_pcFrontEnd->isTextVisible(4));
    m_pcFrontEnd->hideAllTexts();
    QCOMPARE(calls(), (QStringList{"clearText a", "clearText c"}));
    m_pcFrontEnd->showText(4);
    m_pcFrontEnd->showText(1);
    calls();
    m_pcFrontEnd->destroyAllTexts();
    QCOMPARE(calls(), (QStringList{"clearText a", "clearText d"}));
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
}

void TestCVideoOverlayFrontEnd::whole_set_operations_on_no_texts_do_nothing()
{
    m_pcFrontEnd->showAllTexts();
    m_pcFrontEnd->hideAllTexts();
    m_pcFrontEnd->updateAllTexts();
    m_pcFrontEnd->destroyAllTexts();
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::durations_are_1_to_9999_data()
{
    QTest::addColumn<unsigned int>("duration");
    QTest::addColumn<bool>("valid");
    QTest::newRow("0") << 0U << false;
    QTest::newRow("1") << 1U << true;
    QTest::newRow("2") << 2U << true;
    QTest::newRow("9998") << 9998U << true;
    QTest::newRow("9999") << 9999U << true;
    QTest::newRow("10000") << 10000U << false;
    QTest::newRow("-1") << static_cast<unsigned int>(-1) << false;
    QTest::newRow("the smallest") << static_cast<unsigned int>(INT_MIN) << false;
    QTest::newRow("the largest") << static_cast<unsigned int>(INT_MAX) << false;
}

void TestCVideoOverlayFrontEnd::durations_are_1_to_9999()
{
    QFETCH(unsigned int, duration);
    QFETCH(bool, valid);
    QCOMPARE(m_pcFrontEnd->isValidDuration(duration), valid);
    m_pcFrontEnd->drawTemporaryText(QStringLiteral("abc"), RED, BLACK, 7, 8, duration);
    QCOMPARE(calls().size(), valid ? 1 : 0);
    QCOMPARE(m_pcManager->getTextHandles().size(), valid ? 1 : 0);

    const auto cTimers = QAbstractEventDispatcher::instance()->registeredTimers(m_pcFrontEnd.data());
    QCOMPARE(cTimers.size(), valid ? 1 : 0);
    if (valid) {
        QCOMPARE(cTimers[0].interval, static_cast<int>(duration) * 1000);
        QCOMPARE(cTimers[0].timerType, Qt::PreciseTimer);
    }
}

void TestCVideoOverlayFrontEnd::a_temporary_text_is_drawn_and_goes_when_its_time_is_up()
{
    const unsigned int uText = newTemporaryText("abc", 9999);
    QCOMPARE(calls(), QStringList{"drawText abc 7 8 10 15"});
    QVERIFY(m_pcFrontEnd->isTextVisible(uText));
    expire(onlyTimer());
    QCOMPARE(calls(), QStringList{"clearText abc"});
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
}

void TestCVideoOverlayFrontEnd::a_temporary_text_is_gone_after_a_real_second()
{
    QElapsedTimer cClock;
    cClock.start();
    newTemporaryText("abc", 1);
    QTRY_VERIFY(m_pcManager->getTextHandles().isEmpty());
    QVERIFY2(cClock.elapsed() >= 999, QByteArray::number(cClock.elapsed()));
    QCOMPARE(calls(), (QStringList{"drawText abc 7 8 10 15", "clearText abc"}));
}

void TestCVideoOverlayFrontEnd::two_at_the_same_place_go_on_their_own_schedules()
{
    newTemporaryText("two", 2);
    const int iTwo = onlyTimer();
    newTemporaryText("five", 5);
    QList<int> cTimers = timers();
    QCOMPARE(cTimers.size(), 2);
    cTimers.removeOne(iTwo);
    QCOMPARE(calls(), (QStringList{"drawText two 7 8 10 15", "drawText five 7 8 10 15"}));
    expire(iTwo);
    QCOMPARE(calls(), QStringList{"clearText two"});
    QCOMPARE(m_pcManager->getTextHandles(), QList<unsigned int>{2});
    expire(cTimers[0]);
    QCOMPARE(calls(), QStringList{"clearText five"});
}

void TestCVideoOverlayFrontEnd::after_its_expiry_the_timer_goes_on_and_changes_nothing()
{
    newTemporaryText("abc");
    const int iTimer = onlyTimer();
    expire(iTimer);
    calls();
    QCOMPARE(timers(), QList<int>{iTimer});

    // Neither does it touch a text that was created since.
    newTemporaryText("later");
    calls();
    expire(iTimer);
    expire(iTimer);
    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcManager->getTextHandles().size(), 1);

    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(timers(), QList<int>{iTimer});
}

void TestCVideoOverlayFrontEnd::events_of_other_timers_change_nothing()
{
    newTemporaryText("abc");
    calls();
    for (const int iTimer : {0, -1, onlyTimer() + 1, INT_MAX, INT_MIN})
        expire(iTimer);
    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcManager->getTextHandles().size(), 1);
}

void TestCVideoOverlayFrontEnd::a_hidden_temporary_text_expires_all_the_same()
{
    const unsigned int uText = newTemporaryText("abc");
    m_pcFrontEnd->hideText(uText);
    calls();
    expire(onlyTimer());
    QCOMPARE(calls(), QStringList{"clearText abc"});
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
}

void TestCVideoOverlayFrontEnd::a_temporary_text_is_an_ordinary_text()
{
    newText("abc");
    const unsigned int uText = newTemporaryText("temporary");
    QCOMPARE(uText, 2U);
    QCOMPARE(m_pcFrontEnd->getTextId(uText), 0U);
    calls();
    m_pcFrontEnd->setTextStr(uText, QStringLiteral("changed"));
    m_pcFrontEnd->setTextPosition(uText, 1, 2);
    m_pcFrontEnd->hideAllTexts();
    m_pcFrontEnd->showText(uText);
    QCOMPARE(calls(), (QStringList{"drawText changed 7 8 10 15", "drawText changed 1 2 10 15",
                                   "clearText changed", "drawText changed 1 2 10 15"}));
}

void TestCVideoOverlayFrontEnd::without_a_free_handle_no_temporary_text_is_drawn()
{
    for (int i = 0; i < 65535; ++i)
        QVERIFY(m_pcFrontEnd->createText() != 0);
    m_pcFrontEnd->drawTemporaryText(QStringLiteral("abc"), RED, BLACK, 7, 8, 5);
    QCOMPARE(calls(), QStringList());
    QVERIFY(timers().isEmpty());
}

void TestCVideoOverlayFrontEnd::clearing_no_temporary_texts_does_nothing()
{
    m_pcFrontEnd->clearTemporaryTexts();
    m_pcFrontEnd->showText(newText("stays"));
    calls();
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcManager->getTextHandles().size(), 1);
}

void TestCVideoOverlayFrontEnd::clearing_removes_the_pending_ones_and_their_timers()
{
    newText("stays");
    newTemporaryText("abc");
    const QList<int> cTimers = timers();
    m_pcFrontEnd->hideText(newTemporaryText("hidden"));
    calls();
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), (QStringList{"clearText abc", "clearText hidden"}));
    QCOMPARE(m_pcManager->getTextHandles(), QList<unsigned int>{1});
    QVERIFY(timers().isEmpty());

    // Nor does anything happen if an event is still queued.
    expire(cTimers[0]);
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::clearing_goes_by_handles()
{
    QStringList cExpected;
    for (int i = 0; i < 100; ++i) {
        const QString cText = QString::number(i);
        newTemporaryText(qPrintable(cText));
        cExpected << QStringLiteral("clearText ") + cText;
    }
    calls();
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), cExpected);
}

void TestCVideoOverlayFrontEnd::a_temporary_text_that_a_client_destroys_is_not_touched_again()
{
    const unsigned int uText = newTemporaryText("abc");
    const int iTimer = onlyTimer();
    m_pcFrontEnd->destroyText(uText);
    QCOMPARE(calls(), (QStringList{"drawText abc 7 8 10 15", "clearText abc"}));
    QVERIFY(timers().isEmpty());
    expire(iTimer);
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
}

void TestCVideoOverlayFrontEnd::destroying_all_texts_forgets_the_temporary_ones()
{
    newText("abc");
    newTemporaryText("first");
    newTemporaryText("second");
    const QList<int> cTimers = timers();
    calls();
    m_pcFrontEnd->destroyAllTexts();
    QCOMPARE(calls(), (QStringList{"clearText first", "clearText second"}));
    QVERIFY(timers().isEmpty());
    for (const int iTimer : cTimers)
        expire(iTimer);
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
}

// The allocator gives a new text the address of one that has just gone, and the manager the same handle.
void TestCVideoOverlayFrontEnd::a_later_text_is_not_harmed_by_an_old_timer()
{
    const unsigned int uOld = newTemporaryText("old");
    const int iTimer = onlyTimer();
    m_pcFrontEnd->destroyText(uOld);
    const unsigned int uNew = newText("new");
    QCOMPARE(uNew, uOld);
    m_pcFrontEnd->showText(uNew);
    calls();

    expire(iTimer);
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
    QVERIFY(m_pcFrontEnd->isTextVisible(uNew));

    // A temporary one has a timer of its own.
    m_pcFrontEnd->destroyText(uNew);
    newTemporaryText("newer");
    QCOMPARE(timers().size(), 1);
    calls();
    expire(onlyTimer());
    QCOMPARE(calls(), QStringList{"clearText newer"});
}

void TestCVideoOverlayFrontEnd::a_temporary_text_destroyed_at_the_manager_is_not_touched_again()
{
    newTemporaryText("expires");
    const int iTimer = onlyTimer();
    const unsigned int uDestroyed = newTemporaryText("destroyed");
    const QList<int> cTimers = timers();
    newTemporaryText("cleared");
    calls();

    m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(uDestroyed));
    expire(cTimers[0] == iTimer ? cTimers[1] : cTimers[0]);
    QCOMPARE(calls(), QStringList());
    expire(iTimer);
    QCOMPARE(calls(), QStringList{"clearText expires"});

    const unsigned int uAlsoDestroyed = newTemporaryText("also destroyed");
    calls();
    m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(uAlsoDestroyed));
    const int iTimersBefore = timers().size();
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList{"clearText cleared"});
    // Those of the two that were cleared; the others had expired.
    QCOMPARE(timers().size(), iTimersBefore - 2);
    QCOMPARE(m_pcManager->getTextHandles(), QList<unsigned int>());
}

// The manager gives it the same handle, and the allocator the same address.
void TestCVideoOverlayFrontEnd::a_later_text_is_not_taken_for_one_destroyed_at_the_manager()
{
    const unsigned int uOld = newTemporaryText("old");
    const int iOldTimer = onlyTimer();
    m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(uOld));
    const unsigned int uNew = newText("new");
    QCOMPARE(uNew, uOld);
    m_pcFrontEnd->showText(uNew);
    calls();
    expire(iOldTimer);
    m_pcFrontEnd->clearTemporaryTexts();
    QCOMPARE(calls(), QStringList());
    QVERIFY(m_pcFrontEnd->isTextVisible(uNew));
    m_pcFrontEnd->destroyText(uNew);

    // A temporary one has a timer of its own, and only that.
    m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(newTemporaryText("old again")));
    QCOMPARE(newTemporaryText("newer"), uOld);
    QCOMPARE(timers().size(), 1);
    calls();
    expire(onlyTimer());
    QCOMPARE(calls(), QStringList{"clearText newer"});
}

// Made at the manager too, so that the front end hears of neither. It has another address than the old one.
void TestCVideoOverlayFrontEnd::a_text_made_at_the_manager_is_not_taken_for_a_temporary_one()
{
    const unsigned int uOld = newTemporaryText("old");
    std::vector<std::unique_ptr<COverlayText>> cFillers;
    const COverlayText* pcOld = m_pcManager->getTextObjectByHandle(uOld);
    m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(uOld));
    while (cFillers.size() < 100 && (cFillers.empty() || cFillers.back().get() != pcOld))
        cFillers.push_back(std::make_unique<COverlayText>());
    const COverlayText* pcNew = m_pcManager->createTextObject();
    QVERIFY(pcNew != pcOld);
    QCOMPARE(m_pcManager->getHandleOfTextObject(*pcNew), uOld);
    calls();
    expire(onlyTimer());
    QCOMPARE(calls(), QStringList());
    QCOMPARE(m_pcManager->getTextObjectByHandle(uOld), pcNew);
}

// In every way that a text can be removed.
void TestCVideoOverlayFrontEnd::nothing_destroyed_stays_drawn()
{
    m_pcFrontEnd->showText(newText("visible"));
    newText("hidden");
    const unsigned int uHiddenAgain = newText("hidden again");
    m_pcFrontEnd->showText(uHiddenAgain);
    m_pcFrontEnd->hideText(uHiddenAgain);
    newTemporaryText("temporary");
    m_pcFrontEnd->hideText(newTemporaryText("hidden temporary"));
    m_pcFrontEnd->hideText(newTemporaryText("shown again temporary"));
    m_pcFrontEnd->showText(6);
    QCOMPARE(m_pcBackEnd->drawn().size(), std::size_t{3});
    m_pcFrontEnd->destroyAllTexts();
    QVERIFY(m_pcBackEnd->drawn().empty());

    newTemporaryText("expires");
    const int iVisible = onlyTimer();
    m_pcFrontEnd->hideText(newTemporaryText("expires hidden"));
    for (const int iTimer : timers())
        expire(iTimer);
    QVERIFY(timers().contains(iVisible));
    QVERIFY(m_pcBackEnd->drawn().empty());

    newTemporaryText("cleared");
    m_pcFrontEnd->clearTemporaryTexts();
    QVERIFY(m_pcBackEnd->drawn().empty());
}

void TestCVideoOverlayFrontEnd::the_end_removes_temporary_texts_and_leaves_the_others()
{
    m_pcFrontEnd->showText(newText("stays"));
    newTemporaryText("goes");
    calls();
    m_pcFrontEnd.reset();
    QCOMPARE(calls(), QStringList{"clearText goes"});
    QCOMPARE(m_pcManager->getTextHandles(), QList<unsigned int>{1});
}

/// The messages among the lines of the log.
static QStringList messagesOf(const QByteArray& rcLog)
{
    QStringList cMessages;
    for (const QByteArray& rcLine : rcLog.split('\n'))
        if (!rcLine.isEmpty())
            cMessages << QString::fromLatin1(rcLine.mid(rcLine.indexOf("]: ") + 3));
    return cMessages;
}

void TestCVideoOverlayFrontEnd::temporary_texts_and_locales_are_logged()
{
    CEventLogger::setLoggingEnabled(true);
    CCapturedOutput cOutput(2);
    newTemporaryText("M\xc3\xbcll 100%s \xd0\x96");
    m_pcFrontEnd->drawTemporaryText(QStringLiteral("refused"), RED, BLACK, 7, 8, 0);
    m_pcFrontEnd->loadCharacterSetForLocale(QStringLiteral("de_DE"));
    const QByteArray cLog = cOutput.take();
    CEventLogger::setMaximumLogLevel(CEventLogger::eLogLevelNotice);
    CCapturedOutput cQuiet(2);
    newTemporaryText("below the level");
    m_pcFrontEnd->loadCharacterSetForLocale(QStringLiteral("de_DE"));
    const QByteArray cNothing = cQuiet.take();
    CEventLogger::setMaximumLogLevel(CEventLogger::eLogLevelInformational);
    CEventLogger::setLoggingEnabled(false);

    QCOMPARE(messagesOf(cLog), (QStringList{"CVideoOverlayFrontEnd::drawTemporaryText()",
                                            QString::fromUtf8("M\u00fcll 100%s ?"),
                                            QString::fromLatin1("M\xc3\xbcll 100%s \xd0\x96"),
                                            "CVideoOverlayFrontEnd::loadCharacterSetForLocale", "de_DE"}));
    QCOMPARE(cNothing, QByteArray());
}

void TestCVideoOverlayFrontEnd::a_locale_is_passed_on()
{
    m_pcFrontEnd->showText(newText("abc"));
    calls();
    m_pcFrontEnd->loadCharacterSetForLocale(QStringLiteral("no such locale"));
    QCOMPARE(calls(), QStringList{"loadCharacterSetForLocale no such locale"});
}

void TestCVideoOverlayFrontEnd::the_whole_overlay_is_passed_on()
{
    QCOMPARE(m_pcFrontEnd->getMaxTextLineWidth(), 77U);
    QCOMPARE(m_pcFrontEnd->getMaxTextLineCount(), 33U);
    QVERIFY(!m_pcFrontEnd->isVideoOverlayEnabled());
    m_pcFrontEnd->setVideoOverlayEnabled(true);
    QVERIFY(m_pcFrontEnd->isVideoOverlayEnabled());
    m_pcFrontEnd->setVideoOverlayEnabled(false);
    QVERIFY(!m_pcFrontEnd->isVideoOverlayEnabled());
    QCOMPARE(calls(), (QStringList{"setOverlayEnabled true", "setOverlayEnabled false"}));
}

void TestCVideoOverlayFrontEnd::transparency_draws_all_visible_texts_again()
{
    m_pcFrontEnd->showText(newText("a"));
    newText("hidden");
    m_pcFrontEnd->showText(newText("c"));
    calls();
    m_pcFrontEnd->setOsdTransparency(-7);
    QCOMPARE(calls(), (QStringList{"setOsdTransparency -7", "drawText a 3 4 1 5", "drawText c 3 4 1 5"}));
}

using call = std::function<void(CVideoOverlayFrontEnd&)>;
Q_DECLARE_METATYPE(call)

void TestCVideoOverlayFrontEnd::operations_are_passed_on_data()
{
    QTest::addColumn<call>("operation");
    QTest::addColumn<QString>("expected");
#define ROW(expected, name, ...)                                                          \
    QTest::newRow(#name) << call([](CVideoOverlayFrontEnd& rc) { rc.name(__VA_ARGS__); }) \
                         << QStringLiteral(expected)
    ROW("toggleCrosshairVisibility", toggleCrosshairVisibility, );
    ROW("changeCrosshairColor 1", changeCrosshairColor, 1);
    ROW("changeCrosshairPosition -2147483648 2147483647", changeCrosshairPosition, INT_MIN, INT_MAX);
    ROW("changeCrosshairShape 3", changeCrosshairShape, 3);
    ROW("toggleCameraHorizonVisibility", toggleCameraHorizonVisibility, );
    ROW("changeCameraHorizonColor 4", changeCameraHorizonColor, 4);
    ROW("changeCameraHorizonGridColor 5", changeCameraHorizonGridColor, 5);
    ROW("changeCameraHorizonPosition 6 7", changeCameraHorizonPosition, 6, 7);
    ROW("changeCameraHorizonShape 8", changeCameraHorizonShape, 8);
    ROW("toggleLogoVisibility", toggleLogoVisibility, );
    ROW("toggleLogoAnimation", toggleLogoAnimation, );
    ROW("changeLogoFile /a/logo.png", changeLogoFile, QStringLiteral("/a/logo.png"));
    ROW("changeLogoPosition 9 10", changeLogoPosition, 9, 10);
    ROW("toggleRoiVisibility", toggleRoiVisibility, );
    ROW("changeRoiColor 11", changeRoiColor, 11);
    ROW("changeRoiPosition 12 13", changeRoiPosition, 12, 13);
    ROW("setRoiDrawPoint1 14 15", setRoiDrawPoint1, 14, 15);
    ROW("setRoiDrawPoint2 16 17", setRoiDrawPoint2, 16, 17);
    ROW("changeRoiShape 18", changeRoiShape, 18);
    ROW("changeRoiSize 19", changeRoiSize, 19);
    ROW("drawRoi", drawRoi, );
    ROW("toggleCrawlerRollVisibility", toggleCrawlerRollVisibility, );
    ROW("changeCrawlerRollColor 20", changeCrawlerRollColor, 20);
    ROW("changeCrawlerRollShape 21", changeCrawlerRollShape, 21);
    ROW("changeCrawlerRollPosition 22 23", changeCrawlerRollPosition, 22, 23);
    ROW("toggleCrawlerPitchVisibility", toggleCrawlerPitchVisibility, );
    ROW("changeCrawlerPitchColor 24", changeCrawlerPitchColor, 24);
    ROW("changeCrawlerPitchShape 25", changeCrawlerPitchShape, 25);
    ROW("changeCrawlerPitchPosition 26 27", changeCrawlerPitchPosition, 26, 27);
    ROW("toggleSpyholeVisibility", toggleSpyholeVisibility, );
    ROW("changeSpyholeColor 28", changeSpyholeColor, 28);
    ROW("changeSpyholeShape 29", changeSpyholeShape, 29);
    ROW("changeSpyholePosition 30 31", changeSpyholePosition, 30, 31);
    ROW("changeVideoPosition 32", changeVideoPosition, 32);
    ROW("moveCameraPosition 33 34", moveVideoPosition, 33, 34);
    ROW("changeFont Sans 35 true -36 false true", changeFont, QStringLiteral("Sans"), 35, true, -36, false,
        true);
    ROW("setOsdTransparency 37", setOsdTransparency, 37);
#undef ROW
}

void TestCVideoOverlayFrontEnd::operations_are_passed_on()
{
    QFETCH(call, operation);
    QFETCH(QString, expected);
    operation(*m_pcFrontEnd);
    QCOMPARE(calls(), QStringList{expected});
}

QTEST_GUILESS_MAIN(TestCVideoOverlayFrontEnd)

#include "tst_CVideoOverlayFrontEnd.moc"
