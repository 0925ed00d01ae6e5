/* SPDX-License-Identifier: MIT */
#include "board/serve/COutbox.h"

#include <algorithm>

void COutbox::putState(const QByteArray& rcTopic, const QByteArray& rcJson)
{
    const auto pWaiting = std::find_if(m_cStates.begin(), m_cStates.end(),
                                       [&](const auto& rcState) { return rcState.first == rcTopic; });
    if (pWaiting != m_cStates.end())
        pWaiting->second = rcJson;
    else
        m_cStates.emplace_back(rcTopic, rcJson);
}

void COutbox::putLine(const QByteArray& rcTopic, const QByteArray& rcJson)
{
    std::deque<QByteArray>& rcLines = m_cLines[rcTopic];
    rcLines.push_back(rcJson);
    if (rcLines.size() > LINES)
        rcLines.pop_front();
}

void COutbox::putPicture(const QByteArray& rcPicture)
{
    m_cPicture = rcPicture;
}

COutbox::SMessage COutbox::take()
{
    SMessage sMessage;
    if (!m_cPicture.isEmpty()) {
        sMessage = {m_cPicture, true};
        m_cPicture.clear();
    } else if (!m_cStates.empty()) {
        sMessage.cPayload = m_cStates.front().second;
        m_cStates.pop_front();
    } else if (!m_cLines.empty()) {
        const auto pTopic = m_cLines.begin();
        sMessage.cPayload = "{\"type\":\"" + pTopic->first + "\",\"items\":[";
        for (const QByteArray& rcLine : pTopic->second)
            sMessage.cPayload += rcLine + ',';
        sMessage.cPayload.chop(1);
        sMessage.cPayload += "]}";
        m_cLines.erase(pTopic);
    }
    return sMessage;
}
