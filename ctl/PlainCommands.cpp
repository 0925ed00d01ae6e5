/* SPDX-License-Identifier: MIT */
/* Commands that are one call and no more. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/Colors.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Grid.h"
#include "ctl/Letters.h"
#include "ctl/Words.h"

#include <QJsonArray>

namespace
{

const QPoint MESSAGE_CELL(2, 2);
const int MESSAGE_SECONDS = 5;

/// The method iIndex of the command's row.
SAsked sendOwn(CCommandRun& rcRun, int iIndex, const QVariantList& rcArguments)
{
    const QString cCall =
        QString::fromLatin1(rcRun.arguments().command().pszCalls).section(QLatin1Char(' '), iIndex, iIndex);
    return rcRun.bus().sendCall(cCall.section(QLatin1Char('.'), 0, 0), cCall.section(QLatin1Char('.'), 1),
                                rcArguments, false);
}

} // namespace

void runPlain(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, 0, rcRun.arguments().values())});
}

void runOn(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, 0, {true})});
}

void runOff(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, 0, {false})});
}

void runEitherWay(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, rcRun.arguments().number("on|off") != 0 ? 0 : 1, {})});
}

void runRedraw(CCommandRun& rcRun)
{
    // The board has no transparency to set: the call draws the texts again, and that is all.
    rcRun.whenAnswered({sendOwn(rcRun, 0, {0})});
}

void runInputOn(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, 0, {1})});
}

void runInputOff(CCommandRun& rcRun)
{
    rcRun.whenAnswered({sendOwn(rcRun, 0, {0})});
}

void runMessage(CCommandRun& rcRun)
{
    const CArguments& rcArguments = rcRun.arguments();
    const QString cText = rcArguments.text("STRING");
    const QPoint cCell = rcArguments.has("at") ? rcArguments.position("at") : MESSAGE_CELL;
    SColors sColors = rcArguments.has("color") ? rcArguments.colors("color") : DEFAULT_COLORS;
    if (sColors.iBackground == NO_COLOR)
        sColors.iBackground = DEFAULT_COLORS.iBackground;
    for (const QString& rcWarning : {checkLetters(cText).cWarning, cutOffWarning(cText, cCell)})
        if (!rcWarning.isEmpty())
            rcRun.warn(rcWarning);
    rcRun.whenAnswered({sendOwn(rcRun, 0,
                                {cText, sColors.iForeground, sColors.iBackground, cCell.x(), cCell.y(),
                                 rcArguments.number("seconds", MESSAGE_SECONDS)})});
}

void runColors(CCommandRun& rcRun)
{
    QJsonArray cColors;
    for (int iColor = 0; iColor < COLORS; ++iColor) {
        const QString cBlock =
            rcRun.session().output().hasColor() ? colorBlock(iColor) + QStringLiteral("  ") : QString();
        const QString cValue = QStringLiteral("#%1").arg(colorValue(iColor), 8, 16, QLatin1Char('0'));
        rcRun.tell(QStringLiteral("%1  %2%3  %4")
                       .arg(iColor, 2)
                       .arg(cBlock, colorName(iColor).leftJustified(11), cValue));
        QJsonObject cColor = colorObject(iColor);
        cColor.insert(QStringLiteral("argb"), cValue);
        cColors << cColor;
    }
    rcRun.set("colors", cColors);
}
