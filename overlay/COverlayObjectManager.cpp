/* SPDX-License-Identifier: MIT */
#include "overlay/COverlayObjectManager.h"

#include "overlay/COverlayText.h"
#include "overlay/COverlayTextStateData.h"

namespace
{

const int MAX_TEXTS = 65535;

} // namespace

COverlayObjectManager::~COverlayObjectManager()
{
    for (const SRecord& rsRecord : qAsConst(m_cRecords))
        delete rsRecord.pcState;
    qDeleteAll(m_cTexts);
}

unsigned int COverlayObjectManager::getNewTextHandle() const
{
    if (m_cTexts.isEmpty())
        return 1;
    return m_cTexts.size() == MAX_TEXTS ? 0 : m_cTexts.lastKey() + 1;
}

COverlayText* COverlayObjectManager::createTextObject()
{
    const unsigned int uHandle = getNewTextHandle();
    if (uHandle == 0)
        return nullptr;
    auto* pcText = new COverlayText;
    m_cTexts.insert(m_cTexts.constEnd(), uHandle, pcText);
    m_cRecords.insert(pcText, {uHandle, new COverlayTextStateData(m_cIds, uHandle)});
    return pcText;
}

void COverlayObjectManager::destroyTextObject(COverlayText& rcText)
{
    const SRecord sRecord = m_cRecords.take(&rcText);
    m_cTexts.remove(sRecord.uHandle);
    delete sRecord.pcState;
    delete &rcText;
}

QList<unsigned int> COverlayObjectManager::getTextHandles() const
{
    return m_cTexts.keys();
}

unsigned int COverlayObjectManager::getHandleOfTextObject(const COverlayText& rcText) const
{
    return m_cRecords.value(&rcText).uHandle;
}

COverlayText* COverlayObjectManager::getTextObjectByHandle(unsigned int uHandle) const
{
    return m_cTexts.value(uHandle);
}

COverlayText* COverlayObjectManager::getTextObjectById(unsigned int uTextId) const
{
    return getTextObjectByHandle(m_cIds.findHandle(uTextId));
}

COverlayTextStateData* COverlayObjectManager::getTextObjectStateData(const COverlayText& rcText) const
{
    return m_cRecords.value(&rcText).pcState;
}
