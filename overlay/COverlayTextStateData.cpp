/* SPDX-License-Identifier: MIT */
#include "overlay/COverlayTextStateData.h"

#include "overlay/COverlayTextIds.h"

COverlayTextStateData::COverlayTextStateData()
    : m_bVisible(false), m_uTextId(0), m_pcIds(nullptr), m_uHandle(0)
{
}

COverlayTextStateData::COverlayTextStateData(COverlayTextIds& rcIds, unsigned int uHandle)
    : m_bVisible(false), m_uTextId(0), m_pcIds(&rcIds), m_uHandle(uHandle)
{
    m_pcIds->insert(m_uTextId, m_uHandle);
}

COverlayTextStateData::~COverlayTextStateData()
{
    if (m_pcIds != nullptr)
        m_pcIds->remove(m_uTextId, m_uHandle);
}

bool COverlayTextStateData::isVisible() const
{
    return m_bVisible;
}

void COverlayTextStateData::setVisible(bool bVisible)
{
    m_bVisible = bVisible;
}

unsigned int COverlayTextStateData::getTextId() const
{
    return m_uTextId;
}

void COverlayTextStateData::setTextId(unsigned int uTextId)
{
    if (m_pcIds != nullptr) {
        m_pcIds->remove(m_uTextId, m_uHandle);
        m_pcIds->insert(uTextId, m_uHandle);
    }
    m_uTextId = uTextId;
}
