/* SPDX-License-Identifier: MIT */
/* Why a text isn't seen. */
#include "ctl/CCommandRun.h"
#include "ctl/CDiagnosis.h"
#include "ctl/Grid.h"
#include "ctl/Letters.h"
#include "ctl/Texts.h"

namespace
{

const std::uint32_t OPAQUE = 0xff000000;

void diagnoseString(CDiagnosis& rcDiagnosis, const SText& rsText)
{
    const QString cCommand = QStringLiteral("haldenctl text set %1 STRING").arg(rsText.iHandle);
    if (rsText.cText.isEmpty())
        rcDiagnosis.wrong("empty", QStringLiteral("it says nothing: %1").arg(cCommand));
    else if (rsText.cText.trimmed().isEmpty())
        rcDiagnosis.wrong("blank", QStringLiteral("it says only blanks: %1").arg(cCommand));
    const SLetters sLetters = checkLetters(rsText.cText);
    if (!sLetters.cNowhere.isEmpty())
        rcDiagnosis.wrong(
            "no-letters",
            QStringLiteral("the overlay has no letters for \"%1\": %2").arg(sLetters.cNowhere, cCommand));
    if (!sLetters.cWarning.isEmpty())
        rcDiagnosis.possible("letters", sLetters.cWarning);
}

void diagnosePlace(CDiagnosis& rcDiagnosis, const SText& rsText)
{
    const QString cWarning = cutOffWarning(rsText.cText, rsText.cCell);
    if (!cWarning.isEmpty())
        rcDiagnosis.wrong(isInGrid(rsText.cCell) ? "cut-off" : "outside",
                          QStringLiteral("%1: haldenctl text move %2 X,Y").arg(cWarning).arg(rsText.iHandle));
}

void diagnoseColors(CDiagnosis& rcDiagnosis, const SText& rsText)
{
    const std::uint32_t u32Foreground = colorValue(rsText.sColors.iForeground);
    const QString cCommand = QStringLiteral("haldenctl text color %1 FG,BG").arg(rsText.iHandle);
    if (u32Foreground == colorValue(rsText.sColors.iBackground))
        rcDiagnosis.wrong("same-colors", QStringLiteral("letters and background are both %1: %2")
                                             .arg(colorName(rsText.sColors.iForeground), cCommand));
    if ((u32Foreground & OPAQUE) == 0)
        rcDiagnosis.wrong("transparent", QStringLiteral("its letters are transparent: %1").arg(cCommand));
}

/// Which of the two was drawn last, and so is on top, can't be asked for.
void diagnoseNeighbours(CDiagnosis& rcDiagnosis, const SText& rsText, const QList<SText>& rcTexts)
{
    for (const SText& rsOther : rcTexts) {
        const int iFirst = qMax(rsText.cCell.x(), rsOther.cCell.x());
        const int iLast =
            qMin(rsText.cCell.x() + rsText.cText.size(), rsOther.cCell.x() + rsOther.cText.size());
        if (rsOther.iHandle == rsText.iHandle || !rsOther.bShown || rsOther.cCell.y() != rsText.cCell.y() ||
            iFirst >= iLast)
            continue;
        rcDiagnosis.wrong(
            "covered",
            QStringLiteral("text %1 (\"%2\") has the columns %3 to %4 too, and covers them if it was "
                           "drawn later: move or hide one of them")
                .arg(rsOther.iHandle)
                .arg(rsOther.cText)
                .arg(iFirst)
                .arg(iLast - 1));
    }
}

/// Causes that all texts have in common.
void diagnoseOverlay(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    if (!rcRun.flag(rcRun.bus().ask("videooverlay", "is_overlay_visible")))
        rcDiagnosis.wrong("overlay-hidden", QStringLiteral("the overlay is off: haldenctl overlay show"));
    const bool bPlaying = rcRun.flag(rcRun.bus().ask("videoprocessing", "is_video_playback_running"));
    const bool bPaused = rcRun.flag(rcRun.bus().ask("videoprocessing", "is_video_playback_paused"));
    if (bPlaying || bPaused)
        rcDiagnosis.possible("playback", QStringLiteral("the playback covers it: haldenctl play stop"));
    rcDiagnosis.possible(
        "still", QStringLiteral("a still image is on show, which can't be asked for: haldenctl image clear"));
    rcDiagnosis.possible("reload",
                         QStringLiteral("a reload of the register files has emptied the overlay: haldenctl "
                                        "overlay show, then haldenctl overlay redraw"));
}

void diagnoseOne(CDiagnosis& rcDiagnosis, const SText& rsText, const QList<SText>& rcTexts)
{
    rcDiagnosis.lookAt(QStringLiteral("text %1").arg(rsText.iHandle));
    diagnoseString(rcDiagnosis, rsText);
    diagnosePlace(rcDiagnosis, rsText);
    diagnoseColors(rcDiagnosis, rsText);
    diagnoseNeighbours(rcDiagnosis, rsText, rcTexts);
}

} // namespace

void diagnoseText(CCommandRun& rcRun, CDiagnosis& rcDiagnosis, int iHandle)
{
    rcDiagnosis.lookAt(QStringLiteral("text %1").arg(iHandle));
    const QList<SText> cTexts = readTexts(rcRun, 1, qMax(iHandle, LIST_DEFAULT));
    for (const SText& rsText : cTexts) {
        if (rsText.iHandle != iHandle)
            continue;
        if (!rsText.bShown)
            rcDiagnosis.wrong("hidden", QStringLiteral("it is hidden: haldenctl text show %1").arg(iHandle));
        diagnoseOne(rcDiagnosis, rsText, cTexts);
        diagnoseOverlay(rcRun, rcDiagnosis);
        return;
    }
    rcDiagnosis.wrong("no-text", QStringLiteral("there is no text with this handle: haldenctl text list"));
}

void diagnoseTexts(CCommandRun& rcRun, CDiagnosis& rcDiagnosis, int iLast)
{
    bool bShown = false;
    const QList<SText> cTexts = readTexts(rcRun, 1, iLast);
    for (const SText& rsText : cTexts) {
        if (rsText.bShown)
            diagnoseOne(rcDiagnosis, rsText, cTexts);
        bShown = bShown || rsText.bShown;
    }
    rcDiagnosis.lookAt(QStringLiteral("overlay"));
    if (bShown)
        diagnoseOverlay(rcRun, rcDiagnosis);
}
