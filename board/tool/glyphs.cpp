/* halden-board: the command that shows the glyph sets. It needs no board. */
#include "board/picture/CGlyphSheet.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"
#include "fpga/font_tables.h"

int commandGlyphs(const QStringList& rcArguments)
{
    const font_map_tab* const apsSets[] = {&font_map_tab_iso8859_15, &font_map_tab_iso8859_16,
                                           &font_map_tab_iso8859_5};
    CCommandLine cLine(QStringLiteral("glyphs"),
                       QStringLiteral("Draws the contact sheet of a glyph set, as a PNG file."));
    cLine.addArgument(QStringLiteral("SET"), QStringLiteral("1 ISO 8859-15, 2 ISO 8859-16, 3 ISO 8859-5"));
    cLine.addArgument(QStringLiteral("OUT.png"), QStringLiteral("the file, replaced if it exists"));
    if (!cLine.parse(rcArguments, 2, 2))
        return cLine.exitStatus();
    const int iSet = cLine.arguments().first().toInt();
    if (iSet < 1 || iSet > 3)
        return cLine.refuse(QStringLiteral("there is no glyph set '%1'").arg(cLine.arguments().first()));
    const QString cPath = cLine.arguments().last();
    const bool bSaved = CGlyphSheet::contactSheet(apsSets[iSet - 1]->rows).save(cPath, "PNG");
    return bSaved ? cLine.exitStatus() : cLine.fail(QStringLiteral("%1: can't be written").arg(cPath));
}
