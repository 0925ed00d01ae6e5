/* SPDX-License-Identifier: MIT */
/* The sixteen colours of the overlay by number and name. */
#ifndef HALDEND_CTL_COLORS_H
#define HALDEND_CTL_COLORS_H

#include <QString>
#include <QStringList>

#include <cstdint>

/// Of a text. A background that wasn't named is NO_COLOR.
struct SColors {
    int iForeground;
    int iBackground;
};

const int COLORS = 16;
const int NO_COLOR = -1;

/// The colours of new texts and messages.
const SColors DEFAULT_COLORS = {1, 5};

/// The number of the colour that is called so, or NO_COLOR. Numbers are names too, and other spellings than the one
/// of colorName(), such as maroon or blue@half.
int colorNumber(const QString& rcName);

/// Of a number from 0 to 15; else the number.
QString colorName(int iColor);
QStringList colorNames();

/// As the overlay's palette has it: ARGB. Of other numbers than 0 to 15: 0.
std::uint32_t colorValue(int iColor);

/// A block of that colour on an ANSI terminal; blanks where it is transparent.
QString colorBlock(int iColor);

#endif
