/* SPDX-License-Identifier: MIT */
/* The cells that texts stand in, and the part of a text that leaves them. */
#ifndef HALDEND_CTL_GRID_H
#define HALDEND_CTL_GRID_H

#include <QPoint>
#include <QString>

const int GRID_COLUMNS = 53;
const int GRID_ROWS = 26;

bool isInGrid(QPoint cCell);

/// The end of a text that isn't seen when the text begins at that cell: all of it outside of the grid.
QString cutOff(const QString& rcText, QPoint cCell);

/// A sentence about it for the user. Empty if nothing is cut.
QString cutOffWarning(const QString& rcText, QPoint cCell);

#endif
