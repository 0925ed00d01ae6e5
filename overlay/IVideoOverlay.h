/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_IVIDEOOVERLAY_H
#define HALDEND_OVERLAY_IVIDEOOVERLAY_H

#include "overlay/UnsupportedOperations.h"

class COverlayGraphic;
class COverlayText;
class QString;

/// A back end of the overlay: it draws what lies over the live picture. No operation reports failure.
class IVideoOverlay
{
public:
    /// The overlay as a whole.
    virtual bool isOverlayEnabled() const = 0;
    virtual void setOverlayEnabled(bool bEnabled) = 0;

    /// Draws a text at its present place and erases its former image. The back end remembers the text by its
    /// address: call clearText() before the text is deleted.
    virtual void drawText(const COverlayText& rcText) = 0;

    /// Removes a text's image; nothing if it has none.
    virtual void clearText(const COverlayText& rcText) = 0;

    virtual void drawGraphic(const COverlayGraphic& rcGraphic) = 0;
    virtual void clearGraphic(const COverlayGraphic& rcGraphic) = 0;

    /// Chooses the letters for a locale, such as "ro_RO". Texts that are drawn keep their codes, shown in the
    /// new letters, until they are drawn again.
    virtual void loadCharacterSetForLocale(const QString& rcLocaleName) = 0;

    /// Columns and rows of the text layer.
    virtual unsigned int getMaxTextLineWidth() const = 0;
    virtual unsigned int getMaxTextLineCount() const = 0;

#define DECLARATION(method, passedOnBy, operation, parameters, arguments) \
    virtual void operation parameters = 0;
    OVERLAY_FEATURES_AS_OPERATIONS(DECLARATION)
#undef DECLARATION

    virtual void setOsdTransparency(int iValue) = 0;

protected:
    // Not virtual: a back end is never deleted through this interface.
    ~IVideoOverlay() = default;
};

#endif
