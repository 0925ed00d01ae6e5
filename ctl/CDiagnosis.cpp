/* SPDX-License-Identifier: MIT */
#include "ctl/CDiagnosis.h"

#include "ctl/CCommandRun.h"

void CDiagnosis::wrong(const char* pszCode, const QString& rcText)
{
    ++m_iWrong;
    add(pszCode, rcText, true);
}

void CDiagnosis::possible(const char* pszCode, const QString& rcText)
{
    add(pszCode, rcText, false);
}

void CDiagnosis::add(const char* pszCode, const QString& rcText, bool bKnown)
{
    m_rcRun.tell(
        QStringLiteral("%1: %2%3").arg(m_cTopic, bKnown ? QString() : QStringLiteral("perhaps "), rcText));
    m_cFindings << QJsonObject{
        {QStringLiteral("topic"), m_cTopic                    },
        {QStringLiteral("code"),  QString::fromLatin1(pszCode)},
        {QStringLiteral("known"), bKnown                      },
        {QStringLiteral("text"),  rcText                      }
    };
}

void CDiagnosis::finish()
{
    m_rcRun.set("findings", m_cFindings);
    if (m_iWrong != 0)
        m_rcRun.setStatus(eFailed);
    else
        m_rcRun.say(QStringLiteral("nothing wrong that can be seen from here"));
}
