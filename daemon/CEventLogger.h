#ifndef HALDEND_DAEMON_CEVENTLOGGER_H
#define HALDEND_DAEMON_CEVENTLOGGER_H

/// The daemon's only log channel: syslog with facility local 2, echoed on standard error, with a switch and
/// a maximum level. One per process, created by initialize() before anything is logged, never destroyed.
class CEventLogger
{
public:
    /// The syslog priorities, 0 the most severe. The daemon uses error for failures, informational for
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

    /// Opens the log under an identifier, which is not copied and has to live as long as the process.
    /// Messages of a greater level than the maximum are dropped. Only the first call has an effect.
    static void initialize(const char* pszIdent, ELogLevel eMaxLevel);

    /// Logs a message as it stands: percent signs have no meaning in it. One of more than 64 KiB becomes several lines
    /// of at most that, cut between letters of UTF-8. Nothing is logged before initialize().
    static void logMessage(ELogLevel eLevel, const char* pszMessage);

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
