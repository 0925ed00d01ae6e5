/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOOL_CCODECCHECK_H
#define HALDEND_BOARD_TOOL_CCODECCHECK_H

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include <functional>

/// Calls a codec service as the daemon does: a recording with a pause, one that ends without an answer, a playback with a
/// pause. Says of each step whether the daemon could live with it.
class CCodecCheck
{
public:
    /// How long things may take; the defaults are the daemon's.
    struct SLimits {
        int iAnswerMs = 25000; ///< until a call is answered
        int iGrowthMs = 5000;  ///< from one look at the recorded file to the next
        int iSlowMs = 300;     ///< what takes longer is reported: the daemon serves no client until then
    };

    /// Is given a line for each step.
    using FReport = std::function<void(const QString& rcLine)>;

    CCodecCheck(const QDBusConnection& rcBus, const SLimits& rsLimits, const FReport& rcReport);

    /// Makes a recording in rcFile, an absolute path that has no file yet, and plays it. The file stays. False if the daemon
    /// couldn't work with the service.
    [[nodiscard]] bool run(const QString& rcFile);

private:
    bool isThere();
    bool records(const QString& rcFile);
    bool stopsWithoutAnswer(const QString& rcFile);
    bool plays(const QString& rcFile);

    /// A call as the daemon makes it. False if it isn't confirmed.
    bool confirms(const char* pszPath, const char* pszMethod, const QVariantList& rcArguments = {});
    void tell(const char* pszPath, const char* pszMethod);
    /// Waits for the next look at the file. False if the daemon would take the recording as stalled.
    bool grows(const QString& rcFile);

    bool report(bool bGood, const QString& rcWhat, const QString& rcFinding);

    QDBusConnection m_cBus;
    SLimits m_sLimits;
    FReport m_fReport;
    qint64 m_iLastSize = 0; ///< of the recorded file
};

#endif
