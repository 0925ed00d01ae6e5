/* SPDX-License-Identifier: MIT */
/* haldenctl text: the texts of the overlay, by handle or by id. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Grid.h"
#include "ctl/Interfaces.h"
#include "ctl/Letters.h"
#include "ctl/Texts.h"
#include "ctl/Words.h"

#include <QJsonArray>

namespace
{

void warnUnlessEmpty(CCommandRun& rcRun, const QString& rcWarning)
{
    if (!rcWarning.isEmpty())
        rcRun.warn(rcWarning);
}

/// Sends a change of a text behind the question where the text stands, which tells whether there is one.
/// fnFinish gets the cell that the text had before.
void change(CCommandRun& rcRun, int iHandle, const char* pszMethod, const QVariantList& rcArguments,
            const std::function<void(CCommandRun&, QPoint)>& rcFinish = {})
{
    CBus& rcBus = rcRun.bus();
    const SAsked sPosition = rcBus.ask(OVERLAY, "get_text_position", {iHandle});
    const SAsked sChange = rcBus.send(OVERLAY, pszMethod, QVariantList{iHandle} + rcArguments);
    rcRun.set("handle", iHandle);
    rcRun.whenAnswered({sPosition, sChange},
                       [iHandle, rcFinish](CCommandRun& rcLater, const QList<QVariantList>& rcAnswers) {
                           const QList<int> cPosition = numbersOf(rcAnswers[0].value(0));
                           if (isNoText(cPosition))
                               throw noText(iHandle);
                           if (rcFinish)
                               rcFinish(rcLater, {at(cPosition, 0), at(cPosition, 1)});
                       });
}

QJsonObject objectOf(const SText& rsText)
{
    return {
        {QStringLiteral("handle"),     rsText.iHandle                         },
        {QStringLiteral("id"),         rsText.iId                             },
        {QStringLiteral("text"),       rsText.cText                           },
        {QStringLiteral("x"),          rsText.cCell.x()                       },
        {QStringLiteral("y"),          rsText.cCell.y()                       },
        {QStringLiteral("end"),        rsText.iEnd                            },
        {QStringLiteral("foreground"), colorObject(rsText.sColors.iForeground)},
        {QStringLiteral("background"), colorObject(rsText.sColors.iBackground)},
        {QStringLiteral("shown"),      rsText.bShown                          },
        {QStringLiteral("counter"),    rsText.bCounter                        },
    };
}

QString lineOf(const SText& rsText)
{
    return QStringLiteral("%1  %2 at %3,%4  %5 on %6%7  \"%8\"")
        .arg(rsText.iHandle, 5)
        .arg(rsText.bShown ? QStringLiteral("shown ") : QStringLiteral("hidden"))
        .arg(rsText.cCell.x())
        .arg(rsText.cCell.y())
        .arg(colorName(rsText.sColors.iForeground), colorName(rsText.sColors.iBackground),
             rsText.iId != 0 ? QStringLiteral("  id %1").arg(rsText.iId) : QString(), rsText.cText);
}

} // namespace

void runTextNew(CCommandRun& rcRun)
{
    const CArguments& rcArguments = rcRun.arguments();
    const QString cText = rcArguments.text("STRING");
    const QPoint cCell = rcArguments.position("at");
    warnUnlessEmpty(rcRun, checkLetters(cText).cWarning);
    warnUnlessEmpty(rcRun, cutOffWarning(cText, cCell));
    CBus& rcBus = rcRun.bus();
    const int iHandle = rcRun.number(rcBus.ask(OVERLAY, "create_text"));
    if (iHandle == 0)
        throw CFailure(eFailed, QStringLiteral("there are 65535 texts already: delete some"));
    QList<SAsked> cAsked{rcBus.send(OVERLAY, "set_text_string", {iHandle, cText}),
                         rcBus.send(OVERLAY, "set_text_position", {iHandle, cCell.x(), cCell.y()})};
    if (rcArguments.has("color")) {
        const SColors sColors = rcArguments.colors("color");
        cAsked << rcBus.send(
            OVERLAY, "set_text_colors",
            {iHandle, sColors.iForeground,
             sColors.iBackground != NO_COLOR ? sColors.iBackground : DEFAULT_COLORS.iBackground});
    }
    if (rcArguments.has("id"))
        cAsked << rcBus.send(OVERLAY, "set_text_id", {iHandle, rcArguments.number("id")});
    if (!rcArguments.has("hidden"))
        cAsked << rcBus.send(OVERLAY, "show_text", {iHandle});
    rcRun.set("handle", iHandle);
    rcRun.whenAnswered(cAsked, [iHandle](CCommandRun& rcLater, const QList<QVariantList>&) {
        rcLater.tell(QString::number(iHandle));
    });
}

void runTextSet(CCommandRun& rcRun)
{
    const QString cText = rcRun.arguments().text("STRING");
    warnUnlessEmpty(rcRun, checkLetters(cText).cWarning);
    change(rcRun, namedHandle(rcRun), "set_text_string", {cText},
           [cText](CCommandRun& rcLater, QPoint cCell) {
               warnUnlessEmpty(rcLater, cutOffWarning(cText, cCell));
           });
}

void runTextMove(CCommandRun& rcRun)
{
    const int iHandle = namedHandle(rcRun);
    const QPoint cCell = rcRun.arguments().position("X,Y");
    CBus& rcBus = rcRun.bus();
    const SAsked sPosition = rcBus.ask(OVERLAY, "get_text_position", {iHandle});
    const SAsked sText = rcBus.ask(OVERLAY, "get_text_string", {iHandle});
    const SAsked sChange = rcBus.send(OVERLAY, "set_text_position", {iHandle, cCell.x(), cCell.y()});
    rcRun.set("handle", iHandle);
    rcRun.whenAnswered({sPosition, sText, sChange},
                       [iHandle, cCell](CCommandRun& rcLater, const QList<QVariantList>& rcAnswers) {
                           if (isNoText(numbersOf(rcAnswers[0].value(0))))
                               throw noText(iHandle);
                           warnUnlessEmpty(rcLater, cutOffWarning(rcAnswers[1].value(0).toString(), cCell));
                       });
}

void runTextColor(CCommandRun& rcRun)
{
    const int iHandle = namedHandle(rcRun);
    SColors sColors = rcRun.arguments().colors("FG[,BG]");
    if (sColors.iBackground == NO_COLOR)
        sColors.iBackground = at(rcRun.numbers(rcRun.bus().ask(OVERLAY, "get_text_colors", {iHandle})), 1);
    change(rcRun, iHandle, "set_text_colors", {sColors.iForeground, sColors.iBackground});
}

void runTextId(CCommandRun& rcRun)
{
    change(rcRun, namedHandle(rcRun), "set_text_id", {rcRun.arguments().number("N")});
}

void runTextPlain(CCommandRun& rcRun)
{
    const QByteArray cCall = QByteArray(rcRun.arguments().command().pszCalls).split(' ').first();
    change(rcRun, namedHandle(rcRun), cCall.split('.').last().constData(), {});
}

void runTextGet(CCommandRun& rcRun)
{
    const int iHandle = namedHandle(rcRun);
    const QList<SText> cTexts = readTexts(rcRun, iHandle, iHandle);
    if (cTexts.isEmpty())
        throw noText(iHandle);
    rcRun.tell(lineOf(cTexts.first()));
    rcRun.set("text", objectOf(cTexts.first()));
}

void runTextList(CCommandRun& rcRun)
{
    const int iLast = rcRun.arguments().number("up-to", LIST_DEFAULT);
    const QList<SText> cTexts = readTexts(rcRun, 1, iLast);
    QJsonArray cObjects;
    for (const SText& rsText : cTexts) {
        rcRun.tell(lineOf(rsText));
        cObjects << objectOf(rsText);
    }
    rcRun.say(QStringLiteral("handles 1 to %1 asked for, texts found: %2").arg(iLast).arg(cTexts.size()));
    rcRun.set("texts", cObjects);
    rcRun.set("up_to", iLast);
}
