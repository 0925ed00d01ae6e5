/* SPDX-License-Identifier: MIT */
/* haldenctl record, play, image and input: commands that answer with a result. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CSignals.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"
#include "ctl/Words.h"

namespace
{

const int SAVE_TIMEOUT_MS = 60000; // a save takes more than a second, and may wait behind other calls

enum EResult { eResultDone = 0, eResultError = 1, eResultNotAllowed = 2 };

/// The reason of a refusal, as far as the bus tells it.
QString reasonOfRefusal(CBus& rcBus)
{
    static const struct {
        const char* pszMethod;
        const char* pszReason;
    } QUESTIONS[] = {
        {"is_video_recording_running", "a recording is running"},
        {"is_video_recording_paused",  "a recording is paused" },
        {"is_video_playback_running",  "a playback is running" },
        {"is_video_playback_paused",   "a playback is paused"  },
    };
    for (const auto& rsQuestion : QUESTIONS)
        if (rcBus.flag(rcBus.ask(PROCESSING, rsQuestion.pszMethod)))
            return QString::fromLatin1(rsQuestion.pszReason);
    return QStringLiteral(
        "there is nothing to do it to, a still image is on show or being saved, or an earlier "
        "failure lasts until haldend is restarted");
}

/// Throws CFailure unless the result is good.
void judge(CCommandRun& rcRun, int iResult)
{
    rcRun.set("result", resultObject(iResult));
    if (iResult == eResultDone)
        return;
    const SResult& rsResult = resultOf(iResult);
    const QString cNext =
        iResult == eResultNotAllowed ? reasonOfRefusal(rcRun.bus()) : QString::fromLatin1(rsResult.pszAdvice);
    throw CFailure(
        eFailed,
        QStringLiteral("%1 (%2): %3").arg(QLatin1String(rsResult.pszMeaning)).arg(iResult).arg(cNext));
}

QString methodOf(const CCommandRun& rcRun)
{
    return QString::fromLatin1(rcRun.arguments().command().pszCalls).section(QLatin1Char('.'), 1);
}

int callOwn(CCommandRun& rcRun)
{
    const QVariantList cValues = rcRun.arguments().values();
    if (rcRun.arguments().has("FILE"))
        rcRun.set("file", rcRun.arguments().text("FILE"));
    return rcRun.number(
        rcRun.bus().sendCall(QString::fromLatin1(PROCESSING), methodOf(rcRun), cValues, true));
}

struct SDone {
    const char* pszCommand;
    const char* pszWords; ///< with the file, if there is one
};

const SDone DONE[] = {
    {"record start",  "recording to %1"                                               },
    {"record pause",  "the recording is paused"                                       },
    {"record resume", "recording goes on"                                             },
    {"record stop",   "the recording is ended"                                        },
    {"play start",    "playing %1"                                                    },
    {"play pause",    "the playback is paused"                                        },
    {"play resume",   "playing goes on"                                               },
    {"play stop",     "the playback is ended"                                         },
    {"image show",    "showing %1; haldenctl image clear shows the live picture again"},
};

void confirm(CCommandRun& rcRun)
{
    for (const SDone& rsDone : DONE) {
        if (qstrcmp(rsDone.pszCommand, rcRun.arguments().command().pszWords) != 0)
            continue;
        const QString cWords = QString::fromLatin1(rsDone.pszWords);
        rcRun.say(rcRun.arguments().has("FILE") ? cWords.arg(rcRun.arguments().text("FILE")) : cWords);
    }
}

} // namespace

void runVideo(CCommandRun& rcRun)
{
    judge(rcRun, callOwn(rcRun));
    confirm(rcRun);
}

void runRecordTime(CCommandRun& rcRun)
{
    const QList<int> cTime = rcRun.numbers(rcRun.bus().ask(PROCESSING, "query_video_recording_time"));
    rcRun.tell(timeText(at(cTime, 0), at(cTime, 1), at(cTime, 2)));
    rcRun.set("time", QJsonObject{
                          {QStringLiteral("hours"),   at(cTime, 0)},
                          {QStringLiteral("minutes"), at(cTime, 1)},
                          {QStringLiteral("seconds"), at(cTime, 2)}
    });
}

/// The file is written after the answer; how that ends comes as a signal.
static void saveAndWait(CCommandRun& rcRun)
{
    rcRun.session().drain();
    CSignals cSignals(rcRun.bus());
    int iSaved = eResultError;
    bool bGone = false;
    QObject::connect(&cSignals, &CSignals::came, [&](const SSignal& rsSignal) {
        bGone = rsSignal.cName == QLatin1String("gone");
        if (rsSignal.cName == QLatin1String("video_image_saved"))
            iSaved = at(rsSignal.cNumbers, 0);
        if (bGone || rsSignal.cName == QLatin1String("video_image_saved"))
            cSignals.quit();
    });
    judge(rcRun, callOwn(rcRun));
    if (!cSignals.waitFor(SAVE_TIMEOUT_MS))
        throw CFailure(eFailed, QStringLiteral("haldend did not say that the image was saved"));
    if (bGone)
        throw CFailure(eNoDaemon, QStringLiteral("haldend ended before the image was saved"));
    if (iSaved == eResultError) {
        rcRun.set("result", resultObject(iSaved));
        throw CFailure(eFailed,
                       QStringLiteral("the picture could not be fetched from the hardware (1): see the log"));
    }
    judge(rcRun, iSaved);
    rcRun.say(QStringLiteral("saved %1").arg(rcRun.arguments().text("FILE")));
}

void runImageSave(CCommandRun& rcRun)
{
    if (rcRun.arguments().has("wait")) {
        saveAndWait(rcRun);
        return;
    }
    judge(rcRun, callOwn(rcRun));
    rcRun.say(QStringLiteral("%1 is being saved; --wait waits for it").arg(rcRun.arguments().text("FILE")));
}

void runImageClear(CCommandRun& rcRun)
{
    const int iResult = callOwn(rcRun);
    rcRun.set("result", resultObject(iResult));
    // The answer is 2 whether there was an image or not.
    if (iResult != eResultNotAllowed)
        judge(rcRun, iResult);
    rcRun.say(
        QStringLiteral("the live picture is shown, if a still image was; the answer is the same either way"));
}

void runInputType(CCommandRun& rcRun)
{
    const int iType = rcRun.number(rcRun.bus().ask(PROCESSING, "get_video_input_type"));
    rcRun.set("input", inputObject(iType));
    rcRun.tell(inputWord(iType));
}
