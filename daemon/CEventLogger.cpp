#include "daemon/CEventLogger.h"

#include <syslog.h>

CEventLogger* CEventLogger::m_pcInstance = nullptr;

CEventLogger::CEventLogger(const char* pszIdent, ELogLevel eMaxLevel)
    : m_bLoggingEnabled(true), m_eMaximumLogLevel(eMaxLevel)
{
    openlog(pszIdent, LOG_PID | LOG_CONS | LOG_NDELAY | LOG_PERROR, LOG_LOCAL2);
}

void CEventLogger::initialize(const char* pszIdent, ELogLevel eMaxLevel)
{
    if (m_pcInstance == nullptr)
        m_pcInstance = new CEventLogger(pszIdent, eMaxLevel);
}

void CEventLogger::logMessage(ELogLevel eLevel, const char* pszMessage)
{
    if (m_pcInstance == nullptr || !m_pcInstance->m_bLoggingEnabled)
        return;
    if (eLevel > m_pcInstance->m_eMaximumLogLevel)
        return;
    syslog(eLevel, "%s", pszMessage);
}

bool CEventLogger::isLoggingEnabled()
{
    return m_pcInstance->m_bLoggingEnabled;
}

void CEventLogger::setLoggingEnabled(bool bEnabled)
{
    m_pcInstance->m_bLoggingEnabled = bEnabled;
}

CEventLogger::ELogLevel CEventLogger::getMaximumLogLevel()
{
    return m_pcInstance->m_eMaximumLogLevel;
}

void CEventLogger::setMaximumLogLevel(ELogLevel eMaxLevel)
{
    m_pcInstance->m_eMaximumLogLevel = eMaxLevel;
}
