/* SPDX-License-Identifier: MIT */
#include "overlay/COverlayTextIds.h"

void COverlayTextIds::insert(unsigned int uId, unsigned int uHandle)
{
    m_cHandles.insert({uId, uHandle});
}

void COverlayTextIds::remove(unsigned int uId, unsigned int uHandle)
{
    m_cHandles.erase({uId, uHandle});
}

unsigned int COverlayTextIds::findHandle(unsigned int uId) const
{
    const auto it = m_cHandles.lower_bound({uId, 0});
    return it != m_cHandles.end() && it->first == uId ? it->second : 0;
}
