/* SPDX-License-Identifier: MIT */
/* haldenctl monitor: signals as they come. */
#include "ctl/CCommandRun.h"
#include "ctl/CSignals.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"

#include <QDateTime>

void runMonitor(CCommandRun& rcRun)
{
    rcRun.session().drain();
    CSignals cSignals(rcRun.bus());
    const auto tell = [&rcRun](const SSignal& rsSignal) {
        const QDateTime cNow = QDateTime::currentDateTime();
        QJsonObject cObject = rsSignal.object();
        cObject.insert(QStringLiteral("time_of_day"), cNow.toString(Qt::ISODateWithMs));
        rcRun.stream(cNow.toString(QStringLiteral("HH:mm:ss.zzz  ")) + rsSignal.words(), cObject);
    };
    QObject::connect(&cSignals, &CSignals::came, tell);
    const bool bRunning = rcRun.flag(rcRun.bus().askBus("NameHasOwner", {SERVICE}));
    tell({bRunning ? QStringLiteral("running") : QStringLiteral("gone"), {}});
    cSignals.untilTheBusIsGone();
}
