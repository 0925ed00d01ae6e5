/* SPDX-License-Identifier: MIT */
#include "ctl/Texts.h"

#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/Interfaces.h"
#include "ctl/Words.h"

namespace
{

/// The questions about one handle.
struct STextQuestions {
    SAsked sPosition;
    SAsked sText;
    SAsked sColors;
    SAsked sId;
    SAsked sFormat;
    SAsked sShown;
};

STextQuestions ask(CBus& rcBus, int iHandle)
{
    const QVariantList cHandle{iHandle};
    return {
        rcBus.ask(OVERLAY, "get_text_position", cHandle), rcBus.ask(OVERLAY, "get_text_string", cHandle),
        rcBus.ask(OVERLAY, "get_text_colors", cHandle),   rcBus.ask(OVERLAY, "get_text_id", cHandle),
        rcBus.ask(OVERLAY, "get_text_format", cHandle),   rcBus.ask(OVERLAY, "is_text_visible", cHandle),
    };
}

SText textOf(CBus& rcBus, int iHandle, const QList<int>& rcPosition, const STextQuestions& rsQuestions)
{
    const QList<int> cColors = rcBus.numbers(rsQuestions.sColors);
    SText sText;
    sText.iHandle = iHandle;
    sText.iId = rcBus.number(rsQuestions.sId);
    sText.cText = rcBus.text(rsQuestions.sText);
    sText.cCell = {at(rcPosition, 0), at(rcPosition, 1)};
    sText.iEnd = at(rcPosition, 2);
    sText.sColors = {at(cColors, 0), at(cColors, 1)};
    sText.bShown = rcBus.flag(rsQuestions.sShown);
    sText.bCounter = rcBus.number(rsQuestions.sFormat) == 1;
    return sText;
}

/// So many handles are asked about at once: the bus limits the calls that a client has open.
const int BLOCK = 100;

} // namespace

QList<SText> readTexts(CCommandRun& rcRun, int iFirst, int iLast)
{
    rcRun.session().drain();
    CBus& rcBus = rcRun.bus();
    QList<SText> cTexts;
    for (int iBegin = iFirst; iBegin <= iLast; iBegin += BLOCK) {
        const int iEnd = iLast - iBegin < BLOCK ? iLast + 1 : iBegin + BLOCK;
        QList<SAsked> cPositions;
        for (int iHandle = iBegin; iHandle < iEnd; ++iHandle)
            cPositions << rcBus.ask(OVERLAY, "get_text_position", {iHandle});
        QList<QPair<int, STextQuestions>> cFound;
        for (int i = 0; i < cPositions.size(); ++i)
            if (!isNoText(rcBus.numbers(cPositions[i])))
                cFound.append({iBegin + i, ask(rcBus, iBegin + i)});
        for (const auto& rcText : cFound) {
            // It may have gone since.
            const QList<int> cPosition = rcBus.numbers(rcText.second.sPosition);
            if (!isNoText(cPosition))
                cTexts << textOf(rcBus, rcText.first, cPosition, rcText.second);
        }
    }
    return cTexts;
}

bool isNoText(const QList<int>& rcPosition)
{
    return rcPosition == QList<int>({255, 255, 255});
}

CFailure noText(int iHandle)
{
    return {eFailed,
            QStringLiteral("there is no text with the handle %1; see haldenctl text list").arg(iHandle)};
}

int namedHandle(CCommandRun& rcRun)
{
    const CArguments& rcArguments = rcRun.arguments();
    if (!rcArguments.has("id"))
        return rcArguments.number("HANDLE");
    const int iId = rcArguments.number("id");
    const int iHandle = rcRun.number(rcRun.bus().ask(OVERLAY, "get_text_handle_by_id", {iId}));
    if (iHandle == 0)
        throw CFailure(eFailed, QStringLiteral("there is no text with the id %1").arg(iId));
    return iHandle;
}
