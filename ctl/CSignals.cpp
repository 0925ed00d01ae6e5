/* SPDX-License-Identifier: MIT */
#include "ctl/CSignals.h"

#include "ctl/CFailure.h"
#include "ctl/Interfaces.h"
#include "ctl/Words.h"

#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>

namespace
{

QString resultText(const QString& rcWhat, int iResult)
{
    return QStringLiteral("%1: %2 (%3)")
        .arg(rcWhat, QLatin1String(resultOf(iResult).pszMeaning))
        .arg(iResult);
}

} // namespace

QString SSignal::words() const
{
    const int iFirst = at(cNumbers, 0);
    if (cName == QLatin1String("videocounter_changed"))
        return QStringLiteral("counter %1").arg(timeText(iFirst, at(cNumbers, 1), at(cNumbers, 2)));
    if (cName == QLatin1String("video_recording_error"))
        return resultText(QStringLiteral("recording ended"), iFirst);
    if (cName == QLatin1String("video_playback_error"))
        return resultText(QStringLiteral("playback ended"), iFirst);
    if (cName == QLatin1String("video_image_saved"))
        return resultText(QStringLiteral("image saved"), iFirst);
    if (cName == QLatin1String("video_input_type_changed"))
        return QStringLiteral("input %1 (%2)").arg(inputWord(iFirst)).arg(iFirst);
    return QStringLiteral("haldend %1")
        .arg(cName == QLatin1String("running") ? QStringLiteral("is on the bus") : QStringLiteral("is gone"));
}

QJsonObject SSignal::object() const
{
    QJsonObject cObject{
        {QStringLiteral("signal"), cName}
    };
    const int iFirst = at(cNumbers, 0);
    if (cName == QLatin1String("videocounter_changed")) {
        static const char* const NAMES[] = {"hours", "minutes", "seconds", "frames"};
        QJsonObject cTime;
        for (int i = 0; i < 4; ++i)
            cTime.insert(QLatin1String(NAMES[i]), at(cNumbers, i));
        cObject.insert(QStringLiteral("time"), cTime);
    } else if (cName == QLatin1String("video_input_type_changed")) {
        cObject.insert(QStringLiteral("input"), inputObject(iFirst));
    } else if (!cNumbers.isEmpty()) {
        cObject.insert(QStringLiteral("result"), resultObject(iFirst));
    }
    return cObject;
}

CSignals::CSignals(CBus& rcBus)
{
    QDBusConnection cConnection = rcBus.connection();
    for (const QString& rcObject : objectNames())
        for (const SMember& rsMember : membersOf(rcObject))
            if (rsMember.bSignal)
                cConnection.connect(SERVICE, pathOf(rcObject), interfaceOf(rcObject), rsMember.cName, this,
                                    SLOT(onSignal(QDBusMessage)));
    auto* pcWatcher =
        new QDBusServiceWatcher(SERVICE, cConnection, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(pcWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &CSignals::onOwnerChanged);
    cConnection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                        SLOT(onDisconnected()));
    // The bus carries out what it is asked in order: behind this answer no signal is missed.
    rcBus.wait(rcBus.askBus("GetId"));
}

void CSignals::onSignal(const QDBusMessage& rcMessage)
{
    SSignal sSignal{rcMessage.member(), {}};
    for (const QVariant& rcArgument : rcMessage.arguments())
        sSignal.cNumbers << rcArgument.toInt();
    emit came(sSignal);
}

void CSignals::onOwnerChanged(const QString& /*rcService*/, const QString& rcOld, const QString& rcNew)
{
    if (!rcOld.isEmpty())
        emit came({QStringLiteral("gone"), {}});
    if (!rcNew.isEmpty())
        emit came({QStringLiteral("running"), {}});
}

void CSignals::onDisconnected()
{
    m_bGone = true;
    emit busGone();
}

void CSignals::untilTheBusIsGone()
{
    while (true)
        waitFor(-1);
}

bool CSignals::waitFor(int iMilliseconds)
{
    QEventLoop cLoop;
    bool bInTime = true;
    connect(this, &CSignals::busGone, &cLoop, &QEventLoop::quit);
    connect(this, &CSignals::ended, &cLoop, &QEventLoop::quit);
    if (iMilliseconds >= 0)
        QTimer::singleShot(iMilliseconds, &cLoop, [&] {
            bInTime = false;
            cLoop.quit();
        });
    if (!m_bQuit && !m_bGone)
        cLoop.exec();
    if (m_bGone)
        throw CFailure(eNoDaemon, QStringLiteral("the bus is gone"));
    return bInTime || m_bQuit;
}

void CSignals::quit()
{
    m_bQuit = true;
    emit ended();
}
