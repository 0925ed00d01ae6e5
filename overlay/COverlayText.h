/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYTEXT_H
#define HALDEND_OVERLAY_COVERLAYTEXT_H

#include "overlay/EOverlayTextColor.h"

#include <QString>

/// One text of the overlay: its characters, colours and place. The state data say whether it is shown.
/// Nothing is checked here: the back end decides about texts beyond the edges of the screen.
class COverlayText
{
public:
    /// Empty, white on navy, in the top left corner.
    COverlayText();

    QString getText() const;
    void setText(const QString& rcText);

    /// Length in UTF-16 code units; each takes a cell.
    unsigned int getTextStrLength() const;

    EOverlayTextColor getForegroundColor() const;
    void setForegroundColor(EOverlayTextColor eColor);
    EOverlayTextColor getBackgroundColor() const;
    void setBackgroundColor(EOverlayTextColor eColor);

    /// Column of the first character, in cells from the left, from 0.
    unsigned char getX() const;
    void setX(unsigned char u8X);

    /// Row, in text lines from the top, from 0.
    unsigned char getY() const;
    void setY(unsigned char u8Y);

private:
    QString m_cText;
    EOverlayTextColor m_eForegroundColor;
    EOverlayTextColor m_eBackgroundColor;
    unsigned char m_u8X;
    unsigned char m_u8Y;
};

#endif
