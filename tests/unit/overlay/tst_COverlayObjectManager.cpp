/* SPDX-License-Identifier: MIT */
/* Texts, their state records and the manager's rules for handles and ids. */
#include "overlay/COverlayObjectManager.h"
#include "overlay/COverlayText.h"
#include "overlay/COverlayTextStateData.h"

#include <QRandomGenerator>
#include <QtTest>

#include <limits>
#include <map>

class TestCOverlayObjectManager : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_pcManager.reset(new COverlayObjectManager); }

    void an_empty_manager_finds_nothing();
    void unknown_texts_have_neither_handle_nor_state();
    void a_new_text_has_its_defaults();
    void a_text_keeps_what_it_is_given();
    void a_state_record_keeps_what_it_is_given();
    void handles_count_up_from_1();
    void a_new_handle_is_one_more_than_the_largest();
    void gaps_are_not_filled();
    void after_the_last_text_the_count_begins_again();
    void there_are_65535_texts_at_most();
    void a_foreign_text_is_deleted_and_the_tables_stay();
    void all_handles_are_listed_in_ascending_order();
    void of_several_texts_with_an_id_the_lowest_handle_is_found();
    void texts_without_an_id_are_found_by_0();
    void ids_are_found_whatever_they_are();
    void an_id_follows_its_text();
    void a_destroyed_text_is_found_no_more();
    void agrees_with_plain_tables();

private:
    COverlayText& create()
    {
        COverlayText* pcText = m_pcManager->createTextObject();
        Q_ASSERT(pcText != nullptr);
        return *pcText;
    }
    void destroy(unsigned int uHandle)
    {
        m_pcManager->destroyTextObject(*m_pcManager->getTextObjectByHandle(uHandle));
    }
    unsigned int handleOfNew() { return m_pcManager->getHandleOfTextObject(create()); }
    void setId(unsigned int uHandle, unsigned int uId)
    {
        m_pcManager->getTextObjectStateData(*m_pcManager->getTextObjectByHandle(uHandle))->setTextId(uId);
    }
    unsigned int handleOfId(unsigned int uId)
    {
        const COverlayText* pcText = m_pcManager->getTextObjectById(uId);
        return pcText != nullptr ? m_pcManager->getHandleOfTextObject(*pcText) : 0;
    }

    QScopedPointer<COverlayObjectManager> m_pcManager;
};

using handles = QList<unsigned int>;

static const unsigned int LARGEST = std::numeric_limits<unsigned int>::max();

void TestCOverlayObjectManager::an_empty_manager_finds_nothing()
{
    QCOMPARE(m_pcManager->getTextHandles(), handles());
    for (const unsigned int uNumber : {0U, 1U, 65535U, LARGEST}) {
        QVERIFY(m_pcManager->getTextObjectByHandle(uNumber) == nullptr);
        QVERIFY(m_pcManager->getTextObjectById(uNumber) == nullptr);
    }
}

void TestCOverlayObjectManager::unknown_texts_have_neither_handle_nor_state()
{
    create();
    const COverlayText cForeign;
    QCOMPARE(m_pcManager->getHandleOfTextObject(cForeign), 0U);
    QVERIFY(m_pcManager->getTextObjectStateData(cForeign) == nullptr);
    for (const unsigned int uHandle : {0U, 2U, 65536U, LARGEST})
        QVERIFY(m_pcManager->getTextObjectByHandle(uHandle) == nullptr);
}

void TestCOverlayObjectManager::a_new_text_has_its_defaults()
{
    const COverlayText& rcText = create();
    QVERIFY(rcText.getText().isNull());
    QCOMPARE(rcText.getTextStrLength(), 0U);
    QCOMPARE(rcText.getForegroundColor(), EOverlayTextColor{1});
    QCOMPARE(rcText.getBackgroundColor(), EOverlayTextColor{5});
    QCOMPARE(int{rcText.getX()}, 0);
    QCOMPARE(int{rcText.getY()}, 0);

    const COverlayTextStateData* pcState = m_pcManager->getTextObjectStateData(rcText);
    if (!pcState)
        QFAIL("a new text has no state");
    QVERIFY(!pcState->isVisible());
    QCOMPARE(pcState->getTextId(), 0U);
}

void TestCOverlayObjectManager::a_text_keeps_what_it_is_given()
{
    COverlayText cText;
    cText.setText(QString(100000, QLatin1Char('x')));
    QCOMPARE(cText.getTextStrLength(), 100000U);
    // A character beyond the basic plane is two code units, and so two cells.
    cText.setText(QString::fromUtf8("a\xf0\x9f\x98\x80"));
    QCOMPARE(cText.getTextStrLength(), 3U);
    QCOMPARE(cText.getText(), QString::fromUtf8("a\xf0\x9f\x98\x80"));

    for (const unsigned int uColor : {0U, 15U, 16U, 255U, 256U, 0x80000000U, LARGEST}) {
        cText.setForegroundColor(EOverlayTextColor{uColor});
        cText.setBackgroundColor(EOverlayTextColor{uColor / 3});
        QCOMPARE(cText.getForegroundColor(), EOverlayTextColor{uColor});
        QCOMPARE(cText.getBackgroundColor(), EOverlayTextColor{uColor / 3});
    }
    for (int iPosition = 0; iPosition < 256; ++iPosition) {
        cText.setX(static_cast<unsigned char>(iPosition));
        cText.setY(static_cast<unsigned char>(255 - iPosition));
        QCOMPARE(int{cText.getX()}, iPosition);
        QCOMPARE(int{cText.getY()}, 255 - iPosition);
    }
}

void TestCOverlayObjectManager::a_state_record_keeps_what_it_is_given()
{
    COverlayTextStateData cState;
    QVERIFY(!cState.isVisible());
    QCOMPARE(cState.getTextId(), 0U);
    cState.setVisible(true);
    cState.setTextId(LARGEST);
    QVERIFY(cState.isVisible());
    QCOMPARE(cState.getTextId(), LARGEST);
    cState.setVisible(false);
    QVERIFY(!cState.isVisible());
}

void TestCOverlayObjectManager::handles_count_up_from_1()
{
    for (unsigned int uHandle = 1; uHandle <= 3; ++uHandle) {
        COverlayText& rcText = create();
        QCOMPARE(m_pcManager->getHandleOfTextObject(rcText), uHandle);
        QCOMPARE(m_pcManager->getTextObjectByHandle(uHandle), &rcText);
    }
}

void TestCOverlayObjectManager::a_new_handle_is_one_more_than_the_largest()
{
    for (int i = 0; i < 5; ++i)
        create();
    destroy(3);
    destroy(4);
    QCOMPARE(m_pcManager->getTextHandles(), (handles{1, 2, 5}));
    QCOMPARE(handleOfNew(), 6U);
}

void TestCOverlayObjectManager::gaps_are_not_filled()
{
    for (int i = 0; i < 3; ++i)
        create();
    destroy(3);
    QCOMPARE(handleOfNew(), 3U);
    destroy(1);
    QCOMPARE(handleOfNew(), 4U);
}

void TestCOverlayObjectManager::after_the_last_text_the_count_begins_again()
{
    for (int i = 0; i < 3; ++i)
        create();
    for (const unsigned int uHandle : {2U, 3U, 1U})
        destroy(uHandle);
    QCOMPARE(handleOfNew(), 1U);
}

void TestCOverlayObjectManager::there_are_65535_texts_at_most()
{
    for (unsigned int uHandle = 1; uHandle <= 65535; ++uHandle)
        QCOMPARE(handleOfNew(), uHandle);
    QVERIFY(m_pcManager->createTextObject() == nullptr);
    QCOMPARE(m_pcManager->getTextHandles().size(), 65535);
    QCOMPARE(m_pcManager->getTextHandles().last(), 65535U);

    // The number of texts is limited, not their handles.
    destroy(1);
    QCOMPARE(handleOfNew(), 65536U);
    QVERIFY(m_pcManager->createTextObject() == nullptr);
    destroy(65536);
    QCOMPARE(handleOfNew(), 65536U);
    QVERIFY(m_pcManager->createTextObject() == nullptr);
}

void TestCOverlayObjectManager::a_foreign_text_is_deleted_and_the_tables_stay()
{
    const COverlayText& rcOwn = create();
    setId(1, 7);
    // The leak checker sees that it is deleted.
    m_pcManager->destroyTextObject(*new COverlayText);
    QCOMPARE(m_pcManager->getTextHandles(), handles{1});
    QCOMPARE(m_pcManager->getHandleOfTextObject(rcOwn), 1U);
    QCOMPARE(handleOfId(7), 1U);
    QVERIFY(m_pcManager->getTextObjectStateData(rcOwn) != nullptr);
}

void TestCOverlayObjectManager::all_handles_are_listed_in_ascending_order()
{
    handles cExpected;
    for (unsigned int uHandle = 1; uHandle <= 1000; ++uHandle) {
        create();
        if (uHandle % 7 != 0)
            cExpected << uHandle;
    }
    for (unsigned int uHandle = 7; uHandle <= 1000; uHandle += 7)
        destroy(uHandle);
    QCOMPARE(m_pcManager->getTextHandles(), cExpected);
}

void TestCOverlayObjectManager::of_several_texts_with_an_id_the_lowest_handle_is_found()
{
    for (int i = 0; i < 4; ++i)
        create();
    setId(4, 102);
    QCOMPARE(handleOfId(102), 4U);
    setId(2, 102);
    QCOMPARE(handleOfId(102), 2U);
    setId(3, 102);
    QCOMPARE(handleOfId(102), 2U);
    destroy(2);
    QCOMPARE(handleOfId(102), 3U);
}

void TestCOverlayObjectManager::texts_without_an_id_are_found_by_0()
{
    for (int i = 0; i < 3; ++i)
        create();
    QCOMPARE(handleOfId(0), 1U);
    setId(1, 5);
    QCOMPARE(handleOfId(0), 2U);
    setId(2, 5);
    setId(3, 5);
    QVERIFY(m_pcManager->getTextObjectById(0) == nullptr);
    setId(3, 0);
    QCOMPARE(handleOfId(0), 3U);
}

void TestCOverlayObjectManager::ids_are_found_whatever_they_are()
{
    for (const unsigned int uId : {1U, 102U, 65536U, 0x7fffffffU, 0x80000000U, LARGEST - 1, LARGEST}) {
        const unsigned int uHandle = handleOfNew();
        setId(uHandle, uId);
        QCOMPARE(handleOfId(uId), uHandle);
    }
    QVERIFY(m_pcManager->getTextObjectById(103) == nullptr);
}

void TestCOverlayObjectManager::an_id_follows_its_text()
{
    create();
    setId(1, 5);
    setId(1, 5);
    QCOMPARE(handleOfId(5), 1U);
    setId(1, 6);
    QVERIFY(m_pcManager->getTextObjectById(5) == nullptr);
    QCOMPARE(handleOfId(6), 1U);
}

void TestCOverlayObjectManager::a_destroyed_text_is_found_no_more()
{
    create();
    create();
    setId(2, 9);
    destroy(2);
    QVERIFY(m_pcManager->getTextObjectByHandle(2) == nullptr);
    QVERIFY(m_pcManager->getTextObjectById(9) == nullptr);
    QCOMPARE(m_pcManager->getTextHandles(), handles{1});

    // The next text has the handle, but not the id.
    QCOMPARE(handleOfNew(), 2U);
    QVERIFY(m_pcManager->getTextObjectById(9) == nullptr);
}

// Random work, compared with the plainest tables: handle to id, searched by walking.
void TestCOverlayObjectManager::agrees_with_plain_tables()
{
    QRandomGenerator cRandom(1);
    std::map<unsigned int, unsigned int> cIds;
    for (int iStep = 0; iStep < 20000; ++iStep) {
        const quint32 u32What = cRandom.bounded(10U);
        auto it = cIds.lower_bound(cRandom.bounded(60U));
        if (u32What < 4 && cIds.size() < 40) {
            const unsigned int uExpected = cIds.empty() ? 1 : cIds.rbegin()->first + 1;
            QCOMPARE(handleOfNew(), uExpected);
            cIds[uExpected] = 0;
        } else if (it != cIds.end() && u32What < 7) {
            destroy(it->first);
            cIds.erase(it);
        } else if (it != cIds.end()) {
            it->second = cRandom.bounded(4U);
            setId(it->first, it->second);
        }
        for (unsigned int uId = 0; uId < 4; ++uId) {
            unsigned int uExpected = 0;
            for (auto itId = cIds.rbegin(); itId != cIds.rend(); ++itId)
                if (itId->second == uId)
                    uExpected = itId->first;
            QCOMPARE(handleOfId(uId), uExpected);
        }
        QCOMPARE(m_pcManager->getTextHandles().size(), static_cast<int>(cIds.size()));
    }
}

QTEST_GUILESS_MAIN(TestCOverlayObjectManager)

#include "tst_COverlayObjectManager.moc"
