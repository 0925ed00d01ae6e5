#ifndef HALDEND_OVERLAY_IVIDEOOVERLAY_H
#define HALDEND_OVERLAY_IVIDEOOVERLAY_H

#include "overlay/UnsupportedOperations.h"

class COverlayGraphic;
class COverlayText;
class QString;

/// What can be laid over the live picture, and what a back end draws of it. No operation reports failure.
class IVideoOverlay
{
public:
    /// The overlay as a whole.
    virtual bool isOverlayEnabled() const = 0;
    virtual void setOverlayEnabled(bool bEnabled) = 0;

    /// Draws a text where it now stands, in the place of its image of before. The back end remembers the text
    /// by its address: clearText() comes before the text is deleted.
    virtual void drawText(const COverlayText& rcText) = 0;

    /// Removes a text's image; nothing if there is none.
    virtual void clearText(const COverlayText& rcText) = 0;

    virtual void drawGraphic(const COverlayGraphic& rcGraphic) = 0;
    virtual void clearGraphic(const COverlayGraphic& rcGraphic) = 0;

    /// Chooses the letters for a locale, named like "ro_RO". Texts that are drawn keep their codes, and are
    /// shown in the new letters, until they are drawn again.
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
    // Nobody deletes a back end through this interface.
    ~IVideoOverlay() = default;
};

#endif
