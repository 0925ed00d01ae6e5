/* SPDX-License-Identifier: MIT */
/* Why there is no live picture, and why a recording doesn't go on. */
#include "ctl/CCommandRun.h"
#include "ctl/CDiagnosis.h"
#include "ctl/Interfaces.h"
#include "ctl/Words.h"

#include <QFileInfo>
#include <QStorageInfo>

namespace
{

const qint64 MEGABYTE = 1000000;
const qint64 MINUTES_ENOUGH = 58; // the longest recording

bool isPlaying(CCommandRun& rcRun)
{
    const SAsked sRunning = rcRun.bus().ask(PROCESSING, "is_video_playback_running");
    const SAsked sPaused = rcRun.bus().ask(PROCESSING, "is_video_playback_paused");
    const bool bRunning = rcRun.flag(sRunning);
    return rcRun.flag(sPaused) || bRunning;
}

/// Looks at the folder that the codec service is to write to. That service may run as another user.
void diagnoseFile(CCommandRun& rcRun, CDiagnosis& rcDiagnosis, const QString& rcFile)
{
    const QFileInfo cFolder(QFileInfo(rcFile).absolutePath());
    if (!cFolder.isDir()) {
        rcDiagnosis.wrong("no-folder",
                          QStringLiteral("there is no folder %1: make it").arg(cFolder.filePath()));
        return;
    }
    const bool bAnybody = (cFolder.permissions() & QFile::WriteOther) != 0;
    if (!bAnybody)
        rcDiagnosis.possible("folder-owner",
                             QStringLiteral("the codec service may not write to %1: only %2 and the group "
                                            "%3 may, as far as its mode lets them")
                                 .arg(cFolder.filePath(), cFolder.owner(), cFolder.group()));
    const QStorageInfo cStorage(cFolder.filePath());
    const int iRate = rcRun.number(rcRun.bus().ask(PROCESSING, "get_video_recording_average_data_rate"));
    const qint64 iMinutes = cStorage.bytesAvailable() / (qMax(iRate, 1) * MEGABYTE);
    const QString cSpace =
        QStringLiteral("%1 has space for %2 minutes").arg(cFolder.filePath()).arg(iMinutes);
    rcRun.set("minutes", static_cast<double>(iMinutes));
    if (iMinutes < MINUTES_ENOUGH)
        rcDiagnosis.wrong("space", cSpace + QStringLiteral(", less than the longest recording: make room"));
    else
        rcRun.say(QStringLiteral("recording: ") + cSpace);
}

} // namespace

void diagnosePicture(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    rcDiagnosis.lookAt(QStringLiteral("picture"));
    const int iWidth = rcRun.number(rcRun.bus().ask("videodisplay", "get_displayed_video_width"));
    const int iHeight = rcRun.number(rcRun.bus().ask("videodisplay", "get_displayed_video_height"));
    if (iWidth == 0 || iHeight == 0)
        rcDiagnosis.wrong("size",
                          QStringLiteral("the window has the size 0: haldenctl display size 720 576"));
    if (rcRun.number(rcRun.bus().ask(PROCESSING, "get_video_input_type")) != 0)
        rcDiagnosis.wrong("no-input", QStringLiteral("there is no camera signal: look at camera and cable"));
    if (isPlaying(rcRun))
        rcDiagnosis.wrong("playback", QStringLiteral("a playback is on show: haldenctl play stop"));
    rcDiagnosis.possible(
        "position",
        QStringLiteral(
            "the window, %1 x %2, stands outside of the 720 x 576 pixels: haldenctl display position 0 0")
            .arg(iWidth)
            .arg(iHeight));
    rcDiagnosis.possible("layer", QStringLiteral("the live video is off: haldenctl display on"));
    rcDiagnosis.possible("input", QStringLiteral("the input is off: haldenctl input on"));
    rcDiagnosis.possible("generator",
                         QStringLiteral("the frame generator is on: haldenctl debug frame-generator off"));
    rcDiagnosis.possible("still", QStringLiteral("a still image is on show: haldenctl image clear"));
}

void diagnoseRecording(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    rcDiagnosis.lookAt(QStringLiteral("recording"));
    if (!rcRun.flag(rcRun.bus().askBus("NameHasOwner", {CODEC_SERVICE})))
        rcDiagnosis.wrong(
            "no-codec", QStringLiteral("the codec service %1 isn't on the bus: start it").arg(CODEC_SERVICE));
    if (isPlaying(rcRun))
        rcDiagnosis.wrong("playback",
                          QStringLiteral("a playback is on, and prevents recordings: haldenctl play stop"));
    const bool bRunning = rcRun.flag(rcRun.bus().ask(PROCESSING, "is_video_recording_running"));
    const bool bPaused = rcRun.flag(rcRun.bus().ask(PROCESSING, "is_video_recording_paused"));
    if (bPaused)
        rcDiagnosis.wrong("paused", QStringLiteral("the recording is paused: haldenctl record resume"));
    if (!bRunning && !bPaused)
        rcDiagnosis.possible(
            "error-state",
            QStringLiteral("an earlier failure lasts: then every command of record, play and image is "
                           "refused, and only a restart of haldend helps"));
    const CArguments& rcArguments = rcRun.arguments();
    if (rcRun.bus().isRemote())
        rcDiagnosis.possible(
            "folder",
            QStringLiteral(
                "the file's folder is full or missing: run haldenctl doctor recording FILE on the board"));
    else if (rcArguments.has("FILE"))
        diagnoseFile(rcRun, rcDiagnosis, rcArguments.text("FILE"));
    else
        rcDiagnosis.possible(
            "folder",
            QStringLiteral("the file's folder is full or missing: haldenctl doctor recording FILE tells"));
}
