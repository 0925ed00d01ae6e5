/* SPDX-License-Identifier: MIT */
#include "tests/model/CTimersModel.h"

#include <algorithm>

void CTimersModel::insert(const STimer& rsTimer)
{
    const auto it = std::find_if(m_cTimers.begin(), m_cTimers.end(),
                                 [&rsTimer](const STimer& rsOther) { return rsOther.iDue > rsTimer.iDue; });
    m_cTimers.insert(it, rsTimer);
}

void CTimersModel::start(const SPurpose& rsPurpose, int iSeconds)
{
    stop(rsPurpose);
    insert({m_iNow + iSeconds, iSeconds, rsPurpose});
}

void CTimersModel::stop(const SPurpose& rsPurpose)
{
    m_cTimers.erase(std::remove_if(m_cTimers.begin(), m_cTimers.end(),
                                   [&](const STimer& rsTimer) { return rsTimer.sPurpose == rsPurpose; }),
                    m_cTimers.end());
}

std::vector<unsigned int> CTimersModel::handles(int iKind) const
{
    std::vector<unsigned int> cHandles;
    for (const STimer& rsTimer : m_cTimers)
        if (rsTimer.sPurpose.iKind == iKind)
            cHandles.push_back(rsTimer.sPurpose.uHandle);
    std::sort(cHandles.begin(), cHandles.end());
    return cHandles;
}

void CTimersModel::repeatFirst()
{
    STimer sTimer = m_cTimers.front();
    m_cTimers.erase(m_cTimers.begin());
    sTimer.iDue += sTimer.iInterval;
    if (sTimer.iDue < m_iNow)
        sTimer.iDue = m_iNow + sTimer.iInterval;
    insert(sTimer);
}
