/* SPDX-License-Identifier: MIT */
#include "ctl/Grid.h"

bool isInGrid(QPoint cCell)
{
    return cCell.x() >= 0 && cCell.x() < GRID_COLUMNS && cCell.y() >= 0 && cCell.y() < GRID_ROWS;
}

QString cutOff(const QString& rcText, QPoint cCell)
{
    return isInGrid(cCell) ? rcText.mid(GRID_COLUMNS - cCell.x()) : rcText;
}

QString cutOffWarning(const QString& rcText, QPoint cCell)
{
    const QString cCut = cutOff(rcText, cCell);
    if (cCut.isEmpty())
        return {};
    if (cCut.size() == rcText.size())
        return QStringLiteral("nothing of \"%1\" is seen: %2,%3 is outside of the %4 x %5 cells")
            .arg(rcText)
            .arg(cCell.x())
            .arg(cCell.y())
            .arg(GRID_COLUMNS)
            .arg(GRID_ROWS);
    return QStringLiteral("\"%1\" is cut off: from column %2 on %3 of the %4 letters fit")
        .arg(cCut)
        .arg(cCell.x())
        .arg(rcText.size() - cCut.size())
        .arg(rcText.size());
}
