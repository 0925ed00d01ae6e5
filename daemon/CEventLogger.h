/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DAEMON_CEVENTLOGGER_H
#define HALDEND_DAEMON_CEVENTLOGGER_H

/// The daemon's only log channel: syslog with facility local 2, echoed on standard error, with a switch and a
/// maximum level. One per process: initialize() creates it before anything is logged, and it is never
/// destroyed.
class CEventLogger
{
public:
    /// The syslog priorities, 0 the most severe. The daemon uses error for failures and informational for
    /// progress.
    enum ELogLevel {
        eLogLevelEmergency = 0,
        eLogLevelAlert = 1,
        eLogLevelCritical = 2,
        eLogLevelError = 3,
        eLogLevelWarning = 4,
        eLogLevelNotice = 5,
        eLogLevelInformational = 6,
        eLogLevelDebug = 7
    };

    /// Opens the log under an identifier, which is not copied and must live as long as the process. Messages
    /// of a greater level than the maximum are dropped. Only the first call has an effect.
    static void initialize(const char* pszIdent, ELogLevel eMaxLevel);

    /// Logs a message literally: percent signs have no meaning in it. A message of more than 64 KiB becomes
    /// several lines of at most that length, cut between characters of UTF-8. Before initialize() nothing is
    /// logged.
    static void logMessage(ELogLevel eLevel, const char* pszMessage);

    /// The switch and the maximum level. Only valid after initialize(). Logging starts enabled.
    static bool isLoggingEnabled();
    static void setLoggingEnabled(bool bEnabled);
    static ELogLevel getMaximumLogLevel();
    static void setMaximumLogLevel(ELogLevel eMaxLevel);

private:
    CEventLogger(const char* pszIdent, ELogLevel eMaxLevel);

    static CEventLogger* m_pcInstance;

    bool m_bLoggingEnabled;
    ELogLevel m_eMaximumLogLevel;
};

#endif
