#ifndef HALDEND_OVERLAY_COVERLAYTEXT_H
#define HALDEND_OVERLAY_COVERLAYTEXT_H

#include "overlay/EOverlayTextColor.h"

#include <QString>

/// One text of the overlay: what it says, its colours and where it stands. Whether it is shown is not known
/// here, and nothing is checked: what lies outside the screen is the back end's affair.
class COverlayText
{
public:
    /// Empty, white on navy, in the top left corner.
    COverlayText();

    QString getText() const;
    void setText(const QString& rcText);

    /// UTF-16 code units of the text; each takes a cell.
    unsigned int getTextStrLength() const;

    EOverlayTextColor getForegroundColor() const;
    void setForegroundColor(EOverlayTextColor eColor);
    EOverlayTextColor getBackgroundColor() const;
    void setBackgroundColor(EOverlayTextColor eColor);

    /// Column of the first character, in cells.
    unsigned char getX() const;
    void setX(unsigned char u8X);

    /// Row, in text lines.
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
