/* SPDX-License-Identifier: MIT */
/* Random work on the overlay against a model of its rules: front end, manager and back end on one side, the
 * plainest tables and walks on the other. After each step the FPGA's text page is compared, byte for byte. */
#include "fpga/font.h"
#include "overlay/COverlayObjectManager.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "overlay/CVideoOverlayFrontEnd.h"
#include "tests/model/CTextLayerModel.h"
#include "tests/unit/overlay/RecordedPage.h"

#include <QAbstractEventDispatcher>
#include <QRandomGenerator>
#include <QTimerEvent>
#include <QtTest>

#include <algorithm>
#include <map>
#include <vector>

class TestOverlayModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void the_page_agrees_after_each_of_100000_steps();

private:
    using FStep = QByteArray (TestOverlayModel::*)();

    QByteArray create();
    QByteArray destroy();
    QByteArray show();
    QByteArray hide();
    QByteArray move();
    QByteArray recolor();
    QByteArray rewrite();
    QByteArray drawTemporary();
    QByteArray expire();
    QByteArray clearTemporary();
    QByteArray allAtOnce();

    unsigned int anyHandle();
    int anyColumn();
    int anyRow();
    QString anyString();
    int oneOf(std::initializer_list<int> cChoices);
    void forget(unsigned int uHandle);
    QList<int> timers() const;
    bool isPageEqual() const;

    QRandomGenerator m_cRandom;
    CTextLayerModel m_cModel;
    std::map<int, unsigned int> m_cTemporary; ///< timer to handle

    QScopedPointer<CRecordedPage> m_pcPage;
    QScopedPointer<COverlayObjectManager> m_pcManager;
    QScopedPointer<CVideoOverlayBackEnd> m_pcBackEnd;
    QScopedPointer<CVideoOverlayFrontEnd> m_pcFrontEnd;
};

static const std::size_t MAX_TEXTS = 40;

void TestOverlayModel::init()
{
    load_font(1);
    m_cRandom.seed(20);
    m_cModel = CTextLayerModel();
    m_cTemporary.clear();
    m_pcPage.reset(new CRecordedPage);
    m_pcManager.reset(new COverlayObjectManager);
    m_pcBackEnd.reset(new CVideoOverlayBackEnd);
    m_pcFrontEnd.reset(new CVideoOverlayFrontEnd(*m_pcBackEnd, *m_pcManager));
}

void TestOverlayModel::cleanup()
{
    m_pcFrontEnd.reset();
    m_pcBackEnd.reset();
    m_pcManager.reset();
    m_pcPage.reset();
}

int TestOverlayModel::oneOf(std::initializer_list<int> cChoices)
{
    return *(cChoices.begin() + m_cRandom.bounded(static_cast<int>(cChoices.size())));
}

/// Of a living text; there is one when this returns.
unsigned int TestOverlayModel::anyHandle()
{
    if (m_cModel.texts().empty())
        create();
    auto it = m_cModel.texts().begin();
    std::advance(it, m_cRandom.bounded(static_cast<int>(m_cModel.texts().size())));
    return it->first;
}

// Corners, middles, and around every border at which something changes.
int TestOverlayModel::anyColumn()
{
    return m_cRandom.bounded(3) == 0 ? oneOf({0, 1, 51, 52, 53, 54, 127, 128, 250, 254, 255})
                                     : m_cRandom.bounded(53);
}

// Few rows, so that about five texts share one.
int TestOverlayModel::anyRow()
{
    return oneOf({0, 0, 1, 12, 24, 25, 25, 26, 255});
}

QString TestOverlayModel::anyString()
{
    const int iLength = m_cRandom.bounded(3) == 0 ? oneOf({0, 1, 2, 52, 53, 54, 200, 255, 256, 257, 300})
                                                  : m_cRandom.bounded(20);
    QString cString;
    for (int i = 0; i < iLength; ++i)
        cString.append(QLatin1Char(static_cast<char>('!' + m_cRandom.bounded(94))));
    return cString;
}

QByteArray TestOverlayModel::create()
{
    if (m_cModel.texts().size() >= MAX_TEXTS)
        return destroy();
    const unsigned int uExpected = m_cModel.create();
    const unsigned int uHandle = m_pcFrontEnd->createText();
    return uHandle == uExpected ? "create" : "create: handle " + QByteArray::number(uHandle);
}

/// Removes the model's state of a temporary text.
void TestOverlayModel::forget(unsigned int uHandle)
{
    for (auto it = m_cTemporary.begin(); it != m_cTemporary.end();)
        it = it->second == uHandle ? m_cTemporary.erase(it) : std::next(it);
}

QByteArray TestOverlayModel::destroy()
{
    const unsigned int uHandle = anyHandle();
    forget(uHandle);
    m_cModel.destroy(uHandle);
    m_pcFrontEnd->destroyText(uHandle);
    return "destroy";
}

QByteArray TestOverlayModel::show()
{
    const unsigned int uHandle = anyHandle();
    m_cModel.show(uHandle);
    m_pcFrontEnd->showText(uHandle);
    return "show";
}

QByteArray TestOverlayModel::hide()
{
    const unsigned int uHandle = anyHandle();
    m_cModel.hide(uHandle);
    m_pcFrontEnd->hideText(uHandle);
    return "hide";
}

QByteArray TestOverlayModel::move()
{
    const unsigned int uHandle = anyHandle();
    const int x = anyColumn();
    const int y = m_cRandom.bounded(2) == 0 ? anyRow() : m_cModel.find(uHandle)->y;
    m_cModel.change(uHandle, [=](CTextLayerModel::SText& rsText) {
        rsText.x = x;
        rsText.y = y;
    });
    m_pcFrontEnd->setTextPosition(uHandle, static_cast<unsigned char>(x), static_cast<unsigned char>(y));
    return "move";
}

QByteArray TestOverlayModel::recolor()
{
    const unsigned int uHandle = anyHandle();
    const quint32 u32Foreground = m_cRandom.bounded(20U);
    const quint32 u32Background = m_cRandom.bounded(20U);
    m_cModel.change(uHandle, [=](CTextLayerModel::SText& rsText) {
        rsText.u32Foreground = u32Foreground;
        rsText.u32Background = u32Background;
    });
    m_pcFrontEnd->setTextColors(uHandle, EOverlayTextColor{u32Foreground}, EOverlayTextColor{u32Background});
    return "recolor";
}

QByteArray TestOverlayModel::rewrite()
{
    const unsigned int uHandle = anyHandle();
    const QString cString = anyString();
    m_cModel.change(uHandle, [&](CTextLayerModel::SText& rsText) { rsText.cString = cString; });
    m_pcFrontEnd->setTextStr(uHandle, cString);
    return "rewrite";
}

QList<int> TestOverlayModel::timers() const
{
    QList<int> cIds;
    const auto cTimers = QAbstractEventDispatcher::instance()->registeredTimers(m_pcFrontEnd.data());
    for (const QAbstractEventDispatcher::TimerInfo& rsTimer : cTimers)
        cIds << rsTimer.timerId;
    return cIds;
}

QByteArray TestOverlayModel::drawTemporary()
{
    if (m_cModel.texts().size() >= MAX_TEXTS)
        return expire();
    const unsigned int uHandle = m_cModel.create();
    const CTextLayerModel::SText sText = {anyString(), anyColumn(), anyRow(), 4, 15, false, 0};
    m_cModel.change(uHandle, [&](CTextLayerModel::SText& rsText) { rsText = sText; });
    m_cModel.show(uHandle);

    const QList<int> cBefore = timers();
    m_pcFrontEnd->drawTemporaryText(sText.cString, EOverlayTextColor{4}, EOverlayTextColor{15},
                                    static_cast<unsigned char>(sText.x), static_cast<unsigned char>(sText.y),
                                    9999);
    for (const int iTimer : timers())
        if (!cBefore.contains(iTimer))
            m_cTemporary[iTimer] = uHandle;
    return "draw a temporary text";
}

// Timers go on after their text's time, so those of earlier texts are among them.
QByteArray TestOverlayModel::expire()
{
    const QList<int> cTimers = timers();
    if (cTimers.isEmpty())
        return "no timer";
    const int iTimer = cTimers[m_cRandom.bounded(cTimers.size())];
    const auto it = m_cTemporary.find(iTimer);
    if (it != m_cTemporary.end()) {
        m_cModel.destroy(it->second);
        m_cTemporary.erase(it);
    }
    QTimerEvent cEvent(iTimer);
    QCoreApplication::sendEvent(m_pcFrontEnd.data(), &cEvent);
    // Otherwise as many stale timers would gather as texts have expired.
    if (cTimers.size() > 100)
        for (const int iOther : cTimers)
            if (m_cTemporary.count(iOther) == 0)
                m_pcFrontEnd->killTimer(iOther);
    return "expire";
}

QByteArray TestOverlayModel::clearTemporary()
{
    std::vector<unsigned int> cHandles;
    for (const auto& rcEntry : m_cTemporary)
        cHandles.push_back(rcEntry.second);
    std::sort(cHandles.begin(), cHandles.end());
    for (const unsigned int uHandle : cHandles)
        m_cModel.destroy(uHandle);
    m_cTemporary.clear();
    m_pcFrontEnd->clearTemporaryTexts();
    return "clear temporary texts";
}

QByteArray TestOverlayModel::allAtOnce()
{
    std::vector<unsigned int> cHandles;
    for (const auto& rcEntry : m_cModel.texts())
        cHandles.push_back(rcEntry.first);
    // Mostly shows texts, because most of the rules concern shown texts.
    const int iWhat = oneOf({0, 0, 0, 0, 0, 0, 1, 2, 3});
    for (const unsigned int uHandle : cHandles) {
        if (iWhat == 0)
            m_cModel.show(uHandle);
        else if (iWhat == 1)
            m_cModel.hide(uHandle);
        else if (iWhat == 2)
            m_cModel.drawIfVisible(uHandle);
        else
            m_cModel.destroy(uHandle);
    }
    if (iWhat == 0)
        m_pcFrontEnd->showAllTexts();
    else if (iWhat == 1)
        m_pcFrontEnd->hideAllTexts();
    else if (iWhat == 2)
        m_pcFrontEnd->updateAllTexts();
    else
        m_pcFrontEnd->destroyAllTexts();
    if (iWhat == 3)
        m_cTemporary.clear();
    return "all at once";
}

bool TestOverlayModel::isPageEqual() const
{
    return std::equal(m_cModel.page(), m_cModel.page() + FPGA_TEXT_PAGE_STRIDE,
                      fpga_memory().begin() + FPGA_TEXT_PAGES);
}

void TestOverlayModel::the_page_agrees_after_each_of_100000_steps()
{
    struct SStepRow {
        FStep pfStep;
        int iWeight;
    };
    static const SStepRow STEPS[] = {
        {&TestOverlayModel::create,         10},
        {&TestOverlayModel::destroy,        6 },
        {&TestOverlayModel::show,           18},
        {&TestOverlayModel::hide,           8 },
        {&TestOverlayModel::move,           30},
        {&TestOverlayModel::recolor,        8 },
        {&TestOverlayModel::rewrite,        15},
        {&TestOverlayModel::drawTemporary,  5 },
        {&TestOverlayModel::expire,         4 },
        {&TestOverlayModel::clearTemporary, 1 },
        {&TestOverlayModel::allAtOnce,      3 },
    };
    std::vector<FStep> cLot;
    for (const SStepRow& rsRow : STEPS)
        cLot.insert(cLot.end(), static_cast<std::size_t>(rsRow.iWeight), rsRow.pfStep);

    for (int iStep = 0; iStep < 100000; ++iStep) {
        const FStep pfStep = cLot[m_cRandom.bounded(static_cast<quint32>(cLot.size()))];
        const QByteArray cDone = (this->*pfStep)();
        m_pcPage->take();
        QVERIFY2(isPageEqual(), "step " + QByteArray::number(iStep) + ": " + cDone);
        QVERIFY2(m_pcManager->getTextHandles().size() == static_cast<int>(m_cModel.texts().size()), cDone);
    }
    // The rules are about the redrawing.
    QVERIFY2(m_cModel.redrawn() > 30000, QByteArray::number(m_cModel.redrawn()));

    m_pcFrontEnd->destroyAllTexts();
    QVERIFY(m_pcManager->getTextHandles().isEmpty());
}

QTEST_GUILESS_MAIN(TestOverlayModel)

#include "tst_overlay_model.moc"
