/* SPDX-License-Identifier: MIT */
#include "board/tool/CCodecCheck.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QElapsedTimer>
#include <QThread>

#include <sys/stat.h>

namespace
{

const QString SERVICE = QStringLiteral("velmar.mobilygen");
const char* const RECORD = "/Record";
const char* const PLAY = "/Play";
const int RECORD_PARAMETER = 3; // the daemon's only value

QDBusMessage callOf(const char* pszPath, const char* pszMethod, const QVariantList& rcArguments)
{
    // Without an interface, as the daemon calls.
    QDBusMessage cCall =
        QDBusMessage::createMethodCall(SERVICE, QLatin1String(pszPath), QString(), QLatin1String(pszMethod));
    cCall.setArguments(rcArguments);
    return cCall;
}

QString nameOf(const char* pszPath, const char* pszMethod)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(pszPath), QLatin1String(pszMethod));
}

/// Why there was no confirmation, and a remedy if one is known.
QString explained(const QDBusMessage& rcAnswer, int iLimitMs)
{
    const QDBusError cError(rcAnswer);
    switch (cError.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return QStringLiteral("no answer in %1 ms; answer first, and then do what takes long").arg(iLimitMs);
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownInterface:
        return QStringLiteral("%1; find methods by object and name alone, the daemon names no interface")
            .arg(cError.message());
    case QDBusError::AccessDenied:
        return QStringLiteral("%1; the service's bus policy has to let the user haldend in")
            .arg(cError.message());
    default:
        return QStringLiteral("%1: %2").arg(cError.name(), cError.message());
    }
}

} // namespace

CCodecCheck::CCodecCheck(const QDBusConnection& rcBus, const SLimits& rsLimits, const FReport& rcReport)
    : m_cBus(rcBus), m_sLimits(rsLimits), m_fReport(rcReport)
{
}

bool CCodecCheck::run(const QString& rcFile)
{
    if (!isThere())
        return false;
    const bool bRecords = records(rcFile);
    if (!bRecords) {
        // It may be recording all the same.
        tell(RECORD, "stop");
        return false;
    }
    const bool bStops = stopsWithoutAnswer(rcFile);
    return plays(rcFile) && bStops;
}

bool CCodecCheck::isThere()
{
    QDBusConnectionInterface* pcBus = m_cBus.interface();
    if (pcBus == nullptr)
        return report(false, QStringLiteral("the bus"), m_cBus.lastError().message());
    // The daemon's calls would start it too.
    const bool bThere = pcBus->isServiceRegistered(SERVICE) || pcBus->startService(SERVICE).isValid();
    return report(bThere, SERVICE,
                  bThere ? QStringLiteral("is on the bus")
                         : QStringLiteral("nothing owns the name, and the bus can't start it"));
}

bool CCodecCheck::records(const QString& rcFile)
{
    m_iLastSize = 0;
    if (!confirms(RECORD, "record", {rcFile, RECORD_PARAMETER}) || !grows(rcFile) || !grows(rcFile))
        return false;
    if (!confirms(RECORD, "pause") || !confirms(RECORD, "resume") || !grows(rcFile))
        return false;
    return confirms(RECORD, "stop");
}

// The daemon ends a recording that has stalled in this way.
bool CCodecCheck::stopsWithoutAnswer(const QString& rcFile)
{
    if (!confirms(RECORD, "record", {rcFile, RECORD_PARAMETER}))
        return false;
    tell(RECORD, "stop");
    const QDBusMessage cAnswer =
        m_cBus.call(callOf(RECORD, "record", {rcFile, RECORD_PARAMETER}), QDBus::Block, m_sLimits.iAnswerMs);
    const bool bStopped = cAnswer.type() == QDBusMessage::ReplyMessage;
    report(bStopped, QStringLiteral("/Record stop without an answer"),
           bStopped ? QStringLiteral("is carried out: the next recording starts")
                    : QStringLiteral("the next recording doesn't start: ") +
                          explained(cAnswer, m_sLimits.iAnswerMs));
    return confirms(RECORD, "stop") && bStopped;
}

bool CCodecCheck::plays(const QString& rcFile)
{
    return confirms(PLAY, "play", {rcFile}) && confirms(PLAY, "pause") && confirms(PLAY, "resume") &&
           confirms(PLAY, "stop");
}

bool CCodecCheck::confirms(const char* pszPath, const char* pszMethod, const QVariantList& rcArguments)
{
    QElapsedTimer cTimer;
    cTimer.start();
    const QDBusMessage cAnswer =
        m_cBus.call(callOf(pszPath, pszMethod, rcArguments), QDBus::Block, m_sLimits.iAnswerMs);
    const qint64 iTook = cTimer.elapsed();
    if (cAnswer.type() != QDBusMessage::ReplyMessage)
        return report(false, nameOf(pszPath, pszMethod), explained(cAnswer, m_sLimits.iAnswerMs));
    return report(true, nameOf(pszPath, pszMethod),
                  iTook <= m_sLimits.iSlowMs
                      ? QStringLiteral("confirmed")
                      : QStringLiteral("confirmed, but after %1 ms; until then the daemon serves no client")
                            .arg(iTook));
}

void CCodecCheck::tell(const char* pszPath, const char* pszMethod)
{
    m_cBus.call(callOf(pszPath, pszMethod, {}), QDBus::NoBlock);
}

bool CCodecCheck::grows(const QString& rcFile)
{
    QThread::msleep(static_cast<unsigned long>(m_sLimits.iGrowthMs));
    const QString cWhat = QStringLiteral("file after %1 ms more").arg(m_sLimits.iGrowthMs);
    struct stat sStatus = {};
    if (stat(rcFile.toUtf8().constData(), &sStatus) != 0)
        return report(false, cWhat, QStringLiteral("%1 isn't there for the daemon").arg(rcFile));
    const qint64 iLast = m_iLastSize;
    m_iLastSize = sStatus.st_size;
    return report(
        m_iLastSize != iLast, cWhat,
        m_iLastSize != iLast
            ? QStringLiteral("has grown from %1 to %2 bytes").arg(iLast).arg(m_iLastSize)
            : QStringLiteral("still has %1 bytes; the daemon takes the recording as stalled").arg(iLast));
}

bool CCodecCheck::report(bool bGood, const QString& rcWhat, const QString& rcFinding)
{
    m_fReport(QStringLiteral("%1  %2: %3")
                  .arg(bGood ? QStringLiteral("ok   ") : QStringLiteral("WRONG"), rcWhat, rcFinding));
    return bGood;
}
