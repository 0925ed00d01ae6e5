/* SPDX-License-Identifier: MIT */
/* haldenctl wait: for scripts and units. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CSignals.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"

#include <QElapsedTimer>

#include <algorithm>

namespace
{

/// Nothing tells that a recording or playback has begun or ended: the daemon is asked so often.
const int ASK_MS = 200;

bool isIdle(CBus& rcBus)
{
    for (const char* pszMethod : {"is_video_recording_running", "is_video_recording_paused",
                                  "is_video_playback_running", "is_video_playback_paused"})
        if (rcBus.flag(rcBus.ask(PROCESSING, pszMethod)))
            return false;
    return true;
}

bool isSo(CBus& rcBus, const QString& rcWhat)
{
    if (!rcBus.flag(rcBus.askBus("NameHasOwner", {SERVICE})))
        return false;
    if (rcWhat == QLatin1String("recording"))
        return rcBus.flag(rcBus.ask(PROCESSING, "is_video_recording_running"));
    if (rcWhat == QLatin1String("idle"))
        return isIdle(rcBus);
    if (rcWhat == QLatin1String("input") || rcWhat == QLatin1String("no-input"))
        return (rcBus.number(rcBus.ask(PROCESSING, "get_video_input_type")) == 0) ==
               (rcWhat == QLatin1String("input"));
    return true;
}

} // namespace

void runWait(CCommandRun& rcRun)
{
    rcRun.session().drain();
    const QString cWhat =
        rcRun.arguments().has("for") ? rcRun.arguments().text("for") : QStringLiteral("running");
    const qint64 iLimit =
        rcRun.arguments().has("timeout") ? rcRun.arguments().number("timeout") * qint64{1000} : -1;
    rcRun.set("for", cWhat);
    QElapsedTimer cTimer;
    cTimer.start();
    CSignals cSignals(rcRun.bus());
    QObject::connect(&cSignals, &CSignals::came, &cSignals, &CSignals::ended);
    while (!isSo(rcRun.bus(), cWhat)) {
        const qint64 iLeft = iLimit < 0 ? ASK_MS : iLimit - cTimer.elapsed();
        if (iLeft <= 0)
            throw CFailure(eFailed, QStringLiteral("waited %1 s for %2").arg(iLimit / 1000).arg(cWhat));
        cSignals.waitFor(static_cast<int>(std::min<qint64>(iLeft, ASK_MS)));
    }
}
