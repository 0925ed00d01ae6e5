/* SPDX-License-Identifier: MIT */
#include "tests/storm/CStormClient.h"

#include "tests/storm/AnswerRules.h"
#include "tests/support/Timeouts.h"

#include <QDeadlineTimer>

// The daemon may wait for the codec service several times before an answer.
static const int ANSWER_MS = 3 * TIMEOUT_CALL_MS;

bool CStormClient::start(const QString& rcBusAddress)
{
    m_cUnderWay.clear();
    m_pcCaller = std::make_unique<CCaller>();
    return m_pcCaller->start(rcBusAddress);
}

void CStormClient::post(const CStormDraw::SDrawn& rsDrawn)
{
    if (rsDrawn.psMethod->bReply)
        m_cUnderWay.insert(m_pcCaller->post(rsDrawn.sCall), rsDrawn);
    else
        m_pcCaller->send(rsDrawn.sCall);
}

bool CStormClient::receive(int iUnderWay)
{
    int iTimeoutMs = 0;
    QDeadlineTimer cDeadline(ANSWER_MS);
    while (true) {
        const bool bConnected = m_pcCaller->receive(iTimeoutMs);
        m_pcCaller->takeSignals();
        const QHash<quint32, QByteArray> cAnswers = m_pcCaller->takeAnswers();
        for (auto it = cAnswers.begin(); it != cAnswers.end(); ++it)
            if (!check(it.key(), it.value()))
                return false;
        if (!bConnected)
            m_cError = "the bus has closed the connection";
        if (!bConnected || m_cUnderWay.size() <= iUnderWay)
            return bConnected;
        if (!cAnswers.isEmpty())
            cDeadline.setRemainingTime(ANSWER_MS);
        if (cDeadline.hasExpired()) {
            m_cError = "no answer to " + m_cUnderWay.begin()->sCall.describe();
            return false;
        }
        iTimeoutMs = ANSWER_MS;
    }
}

bool CStormClient::check(quint32 u32Serial, const QByteArray& rcAnswer)
{
    const auto it = m_cUnderWay.find(u32Serial);
    // Errors come for calls that want no answer, too: such as wrong types.
    if (it == m_cUnderWay.end())
        return true;
    ++m_iAnswers;
    m_iErrors += rcAnswer.startsWith("error ") ? 1 : 0;
    const bool bOk = isPrescribed(*it->psMethod, rcAnswer, it->bWrongTypes);
    if (!bOk)
        m_cError = it->sCall.describe().left(300) + " answered " + rcAnswer.left(300);
    m_cUnderWay.erase(it);
    return bOk;
}
