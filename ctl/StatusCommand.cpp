/* SPDX-License-Identifier: MIT */
/* haldenctl status: what the daemon does, on one screen. Everything is asked for at once. */
#include "ctl/CCommandRun.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Interfaces.h"
#include "ctl/Words.h"

namespace
{

struct SStatusQuestions {
    SAsked sOverlay, sWidth, sHeight, sCounter, sActive, sRecording, sPaused, sTime, sRate, sPlaying,
        sPlayPaused, sInput, sCodec;
};

SStatusQuestions askAll(CBus& rcBus)
{
    return {
        rcBus.ask("videooverlay", "is_overlay_visible"),
        rcBus.ask("videodisplay", "get_displayed_video_width"),
        rcBus.ask("videodisplay", "get_displayed_video_height"),
        rcBus.ask("videooverlay", "get_videocounter"),
        rcBus.ask("videooverlay", "is_videocounter_active"),
        rcBus.ask("videoprocessing", "is_video_recording_running"),
        rcBus.ask("videoprocessing", "is_video_recording_paused"),
        rcBus.ask("videoprocessing", "query_video_recording_time"),
        rcBus.ask("videoprocessing", "get_video_recording_average_data_rate"),
        rcBus.ask("videoprocessing", "is_video_playback_running"),
        rcBus.ask("videoprocessing", "is_video_playback_paused"),
        rcBus.ask("videoprocessing", "get_video_input_type"),
        rcBus.askBus("NameHasOwner", {CODEC_SERVICE}),
    };
}

void tellRow(CCommandRun& rcRun, const char* pszName, const QString& rcText)
{
    rcRun.tell(QString::fromLatin1(pszName).leftJustified(10) + rcText);
}

const char* stateOf(bool bRunning, bool bPaused)
{
    if (bRunning)
        return "running";
    return bPaused ? "paused" : "stopped";
}

void tellCounter(CCommandRun& rcRun, const QList<int>& rcCounter, bool bActive)
{
    const QString cTime = timeText(at(rcCounter, 1), at(rcCounter, 2), at(rcCounter, 3));
    tellRow(rcRun, "counter",
            bActive ? QStringLiteral("%1, active, sender %2").arg(cTime).arg(at(rcCounter, 0))
                    : QStringLiteral("%1, not active").arg(cTime));
    rcRun.set("counter", QJsonObject{
                             {QStringLiteral("time"), cTime},
                             {                        QStringLiteral("active"),               bActive     },
                             { QStringLiteral("sender"),                    at(rcCounter,                         0)}
    });
}

void tellRecorder(CCommandRun& rcRun, const char* pszState, const QList<int>& rcTime, int iRate)
{
    const QString cTime = timeText(at(rcTime, 0), at(rcTime, 1), at(rcTime, 2));
    tellRow(rcRun, "recorder",
            QStringLiteral("%1, %2, %3 MB a minute").arg(QLatin1String(pszState), cTime).arg(iRate));
    rcRun.set("recorder", QJsonObject{
                              {QStringLiteral("state"),                QLatin1String(pszState)},
                              {QStringLiteral("time"),                 cTime                  },
                              {QStringLiteral("megabytes_per_minute"), iRate                  }
    });
}

} // namespace

void runStatus(CCommandRun& rcRun)
{
    rcRun.session().drain();
    CBus& rcBus = rcRun.bus();
    const SStatusQuestions sQuestions = askAll(rcBus);
    const bool bOverlay = rcBus.flag(sQuestions.sOverlay);
    const int iWidth = rcBus.number(sQuestions.sWidth);
    const int iHeight = rcBus.number(sQuestions.sHeight);
    const QList<int> cCounter = rcBus.numbers(sQuestions.sCounter);
    const bool bActive = rcBus.flag(sQuestions.sActive);
    const bool bRecording = rcBus.flag(sQuestions.sRecording);
    const char* const pszRecorder = stateOf(bRecording, rcBus.flag(sQuestions.sPaused));
    const QList<int> cTime = rcBus.numbers(sQuestions.sTime);
    const int iRate = rcBus.number(sQuestions.sRate);
    const bool bPlaying = rcBus.flag(sQuestions.sPlaying);
    const char* const pszPlayback = stateOf(bPlaying, rcBus.flag(sQuestions.sPlayPaused));
    const int iInput = rcBus.number(sQuestions.sInput);
    const bool bCodec = rcBus.flag(sQuestions.sCodec);

    tellRow(rcRun, "daemon", QStringLiteral("running"));
    tellRow(rcRun, "overlay", bOverlay ? QStringLiteral("on") : QStringLiteral("off"));
    tellRow(rcRun, "window", QStringLiteral("%1 x %2").arg(iWidth).arg(iHeight));
    tellCounter(rcRun, cCounter, bActive);
    tellRecorder(rcRun, pszRecorder, cTime, iRate);
    tellRow(rcRun, "playback", QString::fromLatin1(pszPlayback));
    tellRow(rcRun, "input", iInput == 0 ? QStringLiteral("camera") : QStringLiteral("no signal"));
    tellRow(rcRun, "codec", bCodec ? QStringLiteral("on the bus") : QStringLiteral("not on the bus"));
    rcRun.set("overlay", bOverlay);
    rcRun.set("window", QJsonObject{
                            {QStringLiteral("width"),  iWidth },
                            {QStringLiteral("height"), iHeight}
    });
    rcRun.set("playback", QLatin1String(pszPlayback));
    rcRun.set("input", inputObject(iInput));
    rcRun.set("codec", bCodec);
}
