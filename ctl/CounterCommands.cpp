/* SPDX-License-Identifier: MIT */
/* haldenctl counter: the video counter, which one client at a time controls. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CSignals.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"
#include "ctl/Texts.h"
#include "ctl/Words.h"

#include <QJsonArray>

namespace
{

const int COUNTER_ID = 102;
const int SENDER_MAX = 1; // only 0 and 1 may start the counter

struct SCounter {
    int iOwner;
    int iHours;
    int iMinutes;
    int iSeconds;
    int iFrames;
    bool bActive;
};

SCounter readCounter(CCommandRun& rcRun)
{
    const SAsked sTime = rcRun.bus().ask(OVERLAY, "get_videocounter");
    const SAsked sActive = rcRun.bus().ask(OVERLAY, "is_videocounter_active");
    const QList<int> cTime = rcRun.numbers(sTime);
    return {at(cTime, 0), at(cTime, 1), at(cTime, 2), at(cTime, 3), at(cTime, 4), rcRun.flag(sActive)};
}

QString textOf(const SCounter& rsCounter)
{
    return timeText(rsCounter.iHours, rsCounter.iMinutes, rsCounter.iSeconds);
}

/// The sender to name in the call. Without --sender it is the owner of an active counter, else 0.
int senderOf(CCommandRun& rcRun, const SCounter& rsCounter)
{
    const int iSender = rcRun.arguments().number("sender", rsCounter.bActive ? rsCounter.iOwner : 0);
    if (rsCounter.bActive && iSender != rsCounter.iOwner)
        throw CFailure(eFailed, QStringLiteral("the counter is sender %1's, and ignores sender %2")
                                    .arg(rsCounter.iOwner)
                                    .arg(iSender));
    return iSender;
}

void setTime(CCommandRun& rcRun, const QList<int>& rcTime)
{
    QJsonObject cTime;
    static const char* const NAMES[] = {"hours", "minutes", "seconds", "frames"};
    for (int i = 0; i < 4; ++i)
        cTime.insert(QLatin1String(NAMES[i]), at(rcTime, i));
    rcRun.set("time", cTime);
}

} // namespace

void runCounterSet(CCommandRun& rcRun)
{
    const QList<int> cTime = rcRun.arguments().numbers("H:M:S[:F]");
    const int iSender = senderOf(rcRun, readCounter(rcRun));
    setTime(rcRun, cTime);
    rcRun.whenAnswered({rcRun.bus().send(OVERLAY, "set_videocounter",
                                         {iSender, at(cTime, 0), at(cTime, 1), at(cTime, 2), at(cTime, 3)})});
}

void runCounterStart(CCommandRun& rcRun)
{
    const SCounter sCounter = readCounter(rcRun);
    const int iSender = rcRun.arguments().number("sender", 0);
    if (sCounter.bActive)
        throw CFailure(eFailed,
                       QStringLiteral("the counter is active already, for sender %1: stop or resume it")
                           .arg(sCounter.iOwner));
    if (!rcRun.arguments().isForced() && (iSender < 0 || iSender > SENDER_MAX))
        throw CFailure(eWrongUse,
                       QStringLiteral("only the senders 0 and 1 may start the counter, not %1").arg(iSender));
    rcRun.whenAnswered({rcRun.bus().send(OVERLAY, "videocounter_start", {iSender})});
}

void runCounterControl(CCommandRun& rcRun)
{
    const SCounter sCounter = readCounter(rcRun);
    if (!sCounter.bActive)
        throw CFailure(eFailed, QStringLiteral("the counter isn't active: haldenctl counter start"));
    const QByteArray cCall = QByteArray(rcRun.arguments().command().pszCalls).split(' ').first();
    rcRun.whenAnswered(
        {rcRun.bus().send(OVERLAY, cCall.split('.').last().constData(), {senderOf(rcRun, sCounter)})});
}

void runCounterGet(CCommandRun& rcRun)
{
    const SCounter sCounter = readCounter(rcRun);
    rcRun.tell(sCounter.bActive
                   ? QStringLiteral("%1, active, sender %2").arg(textOf(sCounter)).arg(sCounter.iOwner)
                   : QStringLiteral("%1, not active").arg(textOf(sCounter)));
    setTime(rcRun, {sCounter.iHours, sCounter.iMinutes, sCounter.iSeconds, sCounter.iFrames});
    rcRun.set("active", sCounter.bActive);
    rcRun.set("sender", sCounter.iOwner);
}

void runCounterShow(CCommandRun& rcRun)
{
    CBus& rcBus = rcRun.bus();
    const SCounter sCounter = readCounter(rcRun);
    int iHandle = rcRun.number(rcBus.ask(OVERLAY, "get_text_handle_by_id", {COUNTER_ID}));
    QList<SAsked> cAsked;
    if (iHandle == 0) {
        iHandle = rcRun.number(rcBus.ask(OVERLAY, "create_text"));
        cAsked << rcBus.send(OVERLAY, "set_text_id", {iHandle, COUNTER_ID});
        // As the daemon writes it at the next change: hours in three places.
        cAsked << rcBus.send(OVERLAY, "set_text_string", {iHandle, textOf(sCounter).rightJustified(9)});
    }
    if (rcRun.arguments().has("at")) {
        const QPoint cCell = rcRun.arguments().position("at");
        cAsked << rcBus.send(OVERLAY, "set_text_position", {iHandle, cCell.x(), cCell.y()});
    }
    cAsked << rcBus.send(OVERLAY, "show_text", {iHandle});
    rcRun.set("handle", iHandle);
    rcRun.whenAnswered(cAsked, [iHandle](CCommandRun& rcLater, const QList<QVariantList>&) {
        rcLater.tell(QString::number(iHandle));
    });
}

void runCounterFollow(CCommandRun& rcRun)
{
    CSignals cSignals(rcRun.bus());
    QObject::connect(&cSignals, &CSignals::came, [&](const SSignal& rsSignal) {
        if (rsSignal.cName == QLatin1String("videocounter_changed"))
            rcRun.stream(rsSignal.words(), rsSignal.object());
    });
    cSignals.untilTheBusIsGone();
}
