/* SPDX-License-Identifier: MIT */
#include "ctl/CCommandRun.h"

#include "ctl/CFailure.h"

#include <QJsonArray>

CCommandRun::CCommandRun(CSession& rcSession, const SCommand* psCommand, int iLine)
    : m_rcSession(rcSession), m_psCommand(psCommand), m_iLine(iLine)
{
}

void CCommandRun::tell(const QString& rcText)
{
    if (!m_rcSession.output().isJson())
        m_rcSession.output().line(rcText);
}

void CCommandRun::say(const QString& rcText)
{
    if (!m_rcSession.output().isQuiet())
        tell(rcText);
}

void CCommandRun::warn(const QString& rcText)
{
    m_cWarnings << rcText;
    if (!m_rcSession.output().isQuiet())
        m_rcSession.output().error(place() + QStringLiteral("warning: ") + rcText);
}

void CCommandRun::set(const char* pszName, const QJsonValue& rcValue)
{
    m_cObject.insert(QLatin1String(pszName), rcValue);
}

void CCommandRun::stream(const QString& rcText, const QJsonObject& rcObject)
{
    m_bStreamed = true;
    if (m_rcSession.output().isJson())
        m_rcSession.output().object(rcObject);
    else
        m_rcSession.output().line(rcText);
}

QVariantList CCommandRun::wait(const SAsked& rsAsked)
{
    m_rcSession.drain();
    return bus().wait(rsAsked);
}

void CCommandRun::whenAnswered(const QList<SAsked>& rcAsked, CSession::CFinish fnFinish)
{
    m_bOnItsWay = true;
    if (!fnFinish)
        fnFinish = [](CCommandRun&, const QList<QVariantList>&) {};
    m_rcSession.later(shared_from_this(), rcAsked, std::move(fnFinish));
}

void CCommandRun::fail(const CFailure& rcFailure)
{
    m_eStatus = rcFailure.status();
    m_cObject.insert(QStringLiteral("error"), rcFailure.text());
    m_rcSession.output().error(place() + rcFailure.text());
}

void CCommandRun::finish()
{
    // A stream is its own answer; its end is told only when it failed.
    if (!m_rcSession.output().isJson() || (m_bStreamed && m_eStatus == eDone))
        return;
    m_cObject.insert(QStringLiteral("command"), name());
    m_cObject.insert(QStringLiteral("status"), m_eStatus);
    if (!m_cWarnings.isEmpty())
        m_cObject.insert(QStringLiteral("warnings"), QJsonArray::fromStringList(m_cWarnings));
    if (m_iLine != 0)
        m_cObject.insert(QStringLiteral("line"), m_iLine);
    m_rcSession.output().object(m_cObject);
}

QString CCommandRun::name() const
{
    return m_psCommand != nullptr ? QString::fromLatin1(m_psCommand->pszWords) : QString();
}

QString CCommandRun::place() const
{
    return m_iLine != 0 ? QStringLiteral("line %1: ").arg(m_iLine) : QString();
}
