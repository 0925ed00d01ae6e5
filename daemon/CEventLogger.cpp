/* SPDX-License-Identifier: MIT */
#include "daemon/CEventLogger.h"

#include <cstring>

#include <syslog.h>

namespace
{

/// The length that the log's socket always takes; syslog() would write a refused line to the console.
const size_t LONGEST_PIECE = 65536;

/// The most bytes that follow the first one of a UTF-8 character.
const size_t LONGEST_REST = 3;

bool isInsideLetter(char cByte)
{
    return (static_cast<unsigned char>(cByte) & 0xc0) == 0x80;
}

/// Length of the first piece of a message. Text that isn't UTF-8 is cut anywhere.
size_t pieceLength(const char* pszMessage)
{
    const size_t uiLength = strnlen(pszMessage, LONGEST_PIECE + 1);
    if (uiLength <= LONGEST_PIECE)
        return uiLength;
    for (size_t uiCut = LONGEST_PIECE; uiCut >= LONGEST_PIECE - LONGEST_REST; --uiCut)
        if (!isInsideLetter(pszMessage[uiCut]))
            return uiCut;
    return LONGEST_PIECE;
}

} // namespace

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
    do {
        const size_t uiLength = pieceLength(pszMessage);
        syslog(eLevel, "%.*s", static_cast<int>(uiLength), pszMessage);
        pszMessage += uiLength;
    } while (*pszMessage != '\0');
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
