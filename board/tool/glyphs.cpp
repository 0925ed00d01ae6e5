/* SPDX-License-Identifier: MIT */
/* halden-board: the command that shows the glyph sets. It needs no board. */
#include "board/picture/CGlyphSheet.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"
#include "fpga/font_tables.h"

int commandGlyphs(const QStringList& rcArguments)
{
    QStringList cSets;
    for (int iSet = 1; iSet <= FONT_SETS; ++iSet)
        cSets << QStringLiteral("%1 %2").arg(iSet).arg(QLatin1String(font_sets[iSet - 1].name));
    CCommandLine cLine(QStringLiteral("glyphs"),
                       QStringLiteral("Draws the contact sheet of a glyph set, as a PNG file."));
    cLine.addArgument(QStringLiteral("SET"), cSets.join(QStringLiteral(", ")));
    cLine.addArgument(QStringLiteral("OUT.png"), QStringLiteral("the file, replaced if it exists"));
    if (!cLine.parse(rcArguments, 2, 2))
        return cLine.exitStatus();
    const int iSet = cLine.arguments().first().toInt();
    if (iSet < 1 || iSet > FONT_SETS)
        return cLine.refuse(QStringLiteral("there is no glyph set '%1'").arg(cLine.arguments().first()));
    const QString cPath = cLine.arguments().last();
    const bool bSaved = CGlyphSheet::contactSheet(font_sets[iSet - 1].glyphs->rows).save(cPath, "PNG");
    return bSaved ? cLine.exitStatus() : cLine.fail(QStringLiteral("%1: can't be written").arg(cPath));
}
