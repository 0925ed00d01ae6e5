/* SPDX-License-Identifier: MIT */
#include "overlay/CVideoOverlayFrontEnd.h"

#include "daemon/CEventLogger.h"
#include "overlay/COverlayText.h"
#include "overlay/COverlayTextStateData.h"
#include "overlay/IOverlayObjectManager.h"
#include "overlay/IVideoOverlay.h"

#include <QTimerEvent>

namespace
{

const unsigned char NO_POSITION = 255;

const unsigned int MAX_DURATION = 9999; // seconds
const int MILLISECONDS = 1000;

void log(const char* pszMessage)
{
    CEventLogger::logMessage(CEventLogger::eLogLevelInformational, pszMessage);
}

} // namespace

CVideoOverlayFrontEnd::CVideoOverlayFrontEnd(IVideoOverlay& rcBackEnd, IOverlayObjectManager& rcObjectManager)
    : m_rcBackEnd(rcBackEnd), m_rcObjectManager(rcObjectManager)
{
}

CVideoOverlayFrontEnd::~CVideoOverlayFrontEnd()
{
    clearTemporaryTexts();
}

COverlayTextStateData* CVideoOverlayFrontEnd::stateOf(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? m_rcObjectManager.getTextObjectStateData(*pcText) : nullptr;
}

bool CVideoOverlayFrontEnd::isVisible(const COverlayText& rcText) const
{
    const COverlayTextStateData* pcState = m_rcObjectManager.getTextObjectStateData(rcText);
    return pcState != nullptr && pcState->isVisible();
}

void CVideoOverlayFrontEnd::drawIfVisible(const COverlayText& rcText)
{
    if (isVisible(rcText))
        m_rcBackEnd.drawText(rcText);
}

CVideoOverlayFrontEnd::SNewText CVideoOverlayFrontEnd::newText()
{
    COverlayText* pcText = m_rcObjectManager.createTextObject();
    const unsigned int uHandle = pcText != nullptr ? m_rcObjectManager.getHandleOfTextObject(*pcText) : 0;
    // A temporary text that was destroyed at the manager may have had this handle, and even this address.
    forgetTemporaryText(uHandle);
    return {pcText, uHandle};
}

unsigned int CVideoOverlayFrontEnd::createText()
{
    return newText().uHandle;
}

void CVideoOverlayFrontEnd::destroyText(unsigned int uHandle)
{
    COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    if (isVisible(*pcText))
        m_rcBackEnd.clearText(*pcText);
    forgetTemporaryText(uHandle);
    m_rcObjectManager.destroyTextObject(*pcText);
}

void CVideoOverlayFrontEnd::setTextStr(unsigned int uHandle, const QString& rcText)
{
    COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    pcText->setText(rcText);
    drawIfVisible(*pcText);
}

QString CVideoOverlayFrontEnd::getTextStr(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? pcText->getText() : QString();
}

EOverlayTextColor CVideoOverlayFrontEnd::getTextForegroundColor(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? pcText->getForegroundColor() : EOverlayTextColor{0};
}

EOverlayTextColor CVideoOverlayFrontEnd::getTextBackgroundColor(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? pcText->getBackgroundColor() : EOverlayTextColor{0};
}

void CVideoOverlayFrontEnd::setTextColors(unsigned int uHandle, EOverlayTextColor eForeground,
                                          EOverlayTextColor eBackground)
{
    COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    pcText->setForegroundColor(eForeground);
    pcText->setBackgroundColor(eBackground);
    drawIfVisible(*pcText);
}

unsigned char CVideoOverlayFrontEnd::getTextXPos(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? pcText->getX() : NO_POSITION;
}

unsigned char CVideoOverlayFrontEnd::getTextYPos(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? pcText->getY() : NO_POSITION;
}

unsigned char CVideoOverlayFrontEnd::getTextEndPos(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr ? static_cast<unsigned char>(pcText->getX() + pcText->getTextStrLength())
                             : NO_POSITION;
}

void CVideoOverlayFrontEnd::setTextPosition(unsigned int uHandle, unsigned char u8X, unsigned char u8Y)
{
    COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    pcText->setX(u8X);
    pcText->setY(u8Y);
    drawIfVisible(*pcText);
}

bool CVideoOverlayFrontEnd::isTextVisible(unsigned int uHandle) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    return pcText != nullptr && isVisible(*pcText);
}

void CVideoOverlayFrontEnd::showText(unsigned int uHandle)
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    COverlayTextStateData* pcState = m_rcObjectManager.getTextObjectStateData(*pcText);
    if (pcState == nullptr || pcState->isVisible())
        return;
    pcState->setVisible(true);
    m_rcBackEnd.drawText(*pcText);
}

void CVideoOverlayFrontEnd::hideText(unsigned int uHandle)
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(uHandle);
    if (pcText == nullptr)
        return;
    COverlayTextStateData* pcState = m_rcObjectManager.getTextObjectStateData(*pcText);
    if (pcState == nullptr || !pcState->isVisible())
        return;
    pcState->setVisible(false);
    m_rcBackEnd.clearText(*pcText);
}

unsigned int CVideoOverlayFrontEnd::getTextId(unsigned int uHandle) const
{
    const COverlayTextStateData* pcState = stateOf(uHandle);
    return pcState != nullptr ? pcState->getTextId() : 0;
}

void CVideoOverlayFrontEnd::setTextId(unsigned int uHandle, unsigned int uId)
{
    COverlayTextStateData* pcState = stateOf(uHandle);
    if (pcState != nullptr)
        pcState->setTextId(uId);
}

unsigned int CVideoOverlayFrontEnd::getTextHandleById(unsigned int uId) const
{
    const COverlayText* pcText = m_rcObjectManager.getTextObjectById(uId);
    return pcText != nullptr ? m_rcObjectManager.getHandleOfTextObject(*pcText) : 0;
}

void CVideoOverlayFrontEnd::showAllTexts()
{
    const QList<unsigned int> cHandles = m_rcObjectManager.getTextHandles();
    for (const unsigned int uHandle : cHandles)
        showText(uHandle);
}

void CVideoOverlayFrontEnd::hideAllTexts()
{
    const QList<unsigned int> cHandles = m_rcObjectManager.getTextHandles();
    for (const unsigned int uHandle : cHandles)
        hideText(uHandle);
}

void CVideoOverlayFrontEnd::destroyAllTexts()
{
    const QList<unsigned int> cHandles = m_rcObjectManager.getTextHandles();
    for (const unsigned int uHandle : cHandles)
        destroyText(uHandle);
}

void CVideoOverlayFrontEnd::updateAllTexts()
{
    const QList<unsigned int> cHandles = m_rcObjectManager.getTextHandles();
    for (const unsigned int uHandle : cHandles)
        if (isTextVisible(uHandle))
            m_rcBackEnd.drawText(*m_rcObjectManager.getTextObjectByHandle(uHandle));
}

bool CVideoOverlayFrontEnd::isValidDuration(unsigned int uDuration) const
{
    return uDuration >= 1 && uDuration <= MAX_DURATION;
}

void CVideoOverlayFrontEnd::drawTemporaryText(const QString& rcText, EOverlayTextColor eForeground,
                                              EOverlayTextColor eBackground, unsigned char u8X,
                                              unsigned char u8Y, unsigned int uDuration)
{
    if (!isValidDuration(uDuration))
        return;
    const SNewText sNew = newText();
    COverlayText* pcText = sNew.pcText;
    if (pcText == nullptr)
        return;

    log("CVideoOverlayFrontEnd::drawTemporaryText()");
    log(rcText.toLatin1().constData());
    log(rcText.toUtf8().constData());

    pcText->setText(rcText);
    pcText->setForegroundColor(eForeground);
    pcText->setBackgroundColor(eBackground);
    pcText->setX(u8X);
    pcText->setY(u8Y);

    COverlayTextStateData* pcState = m_rcObjectManager.getTextObjectStateData(*pcText);
    if (pcState == nullptr)
        return;
    pcState->setVisible(true);
    m_rcBackEnd.drawText(*pcText);

    const int iTimer = startTimer(static_cast<int>(uDuration) * MILLISECONDS, Qt::PreciseTimer);
    m_cTemporaryTexts.insert(iTimer, {sNew.uHandle, pcText});
    m_cTextTimers.insert(sNew.uHandle, iTimer);
}

void CVideoOverlayFrontEnd::timerEvent(QTimerEvent* pcEvent)
{
    const auto it = m_cTemporaryTexts.find(pcEvent->timerId());
    if (it == m_cTemporaryTexts.end())
        return;
    const STemporaryText sText = *it;
    m_cTemporaryTexts.erase(it);
    m_cTextTimers.remove(sText.uHandle);
    removeTemporaryText(sText);
}

void CVideoOverlayFrontEnd::clearTemporaryTexts()
{
    // In the order of handles, so that the texts below are redrawn in the same order every time.
    const QList<int> cTimers = m_cTextTimers.values();
    for (const int iTimer : cTimers) {
        const STemporaryText sText = m_cTemporaryTexts.value(iTimer);
        forgetTemporaryText(sText.uHandle);
        removeTemporaryText(sText);
    }
}

// Needed because a later text may get the same handle, and a later timer the same number.
void CVideoOverlayFrontEnd::forgetTemporaryText(unsigned int uHandle)
{
    const auto it = m_cTextTimers.find(uHandle);
    if (it == m_cTextTimers.end())
        return;
    killTimer(*it);
    m_cTemporaryTexts.remove(*it);
    m_cTextTimers.erase(it);
}

void CVideoOverlayFrontEnd::removeTemporaryText(const STemporaryText& rsText)
{
    COverlayText* pcText = m_rcObjectManager.getTextObjectByHandle(rsText.uHandle);
    // It may have no text by now, or another one.
    if (pcText != rsText.pcText)
        return;
    m_rcBackEnd.clearText(*pcText);
    m_rcObjectManager.destroyTextObject(*pcText);
}

unsigned int CVideoOverlayFrontEnd::getMaxTextLineWidth() const
{
    return m_rcBackEnd.getMaxTextLineWidth();
}

unsigned int CVideoOverlayFrontEnd::getMaxTextLineCount() const
{
    return m_rcBackEnd.getMaxTextLineCount();
}

bool CVideoOverlayFrontEnd::isVideoOverlayEnabled() const
{
    return m_rcBackEnd.isOverlayEnabled();
}

void CVideoOverlayFrontEnd::setVideoOverlayEnabled(bool bEnabled)
{
    m_rcBackEnd.setOverlayEnabled(bEnabled);
}

void CVideoOverlayFrontEnd::loadCharacterSetForLocale(const QString& rcLocaleCode) const
{
    log("CVideoOverlayFrontEnd::loadCharacterSetForLocale");
    log(rcLocaleCode.toLatin1().constData());
    m_rcBackEnd.loadCharacterSetForLocale(rcLocaleCode);
}

void CVideoOverlayFrontEnd::setOsdTransparency(int iValue)
{
    m_rcBackEnd.setOsdTransparency(iValue);
    updateAllTexts();
}

#define PASSED_ON(method, operation, passedOnTo, parameters, arguments) \
    void CVideoOverlayFrontEnd::operation parameters                    \
    {                                                                   \
        m_rcBackEnd.passedOnTo arguments;                               \
    }
// Strings are shared, so a move would only lengthen the rows of the table.
OVERLAY_FEATURES_AS_OPERATIONS(PASSED_ON) // NOLINT(performance-unnecessary-value-param)
#undef PASSED_ON
