/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_CVIDEOOVERLAYFRONTEND_H
#define HALDEND_OVERLAY_CVIDEOOVERLAYFRONTEND_H

#include "overlay/EOverlayTextColor.h"
#include "overlay/UnsupportedOperations.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>

class COverlayText;
class COverlayTextStateData;
class IOverlayObjectManager;
class IVideoOverlay;

/// The daemon's only way to the overlay. It finds texts by their handles, changes them, remembers which are
/// shown, and has the back end draw and erase. Only texts that are shown are drawn.
///
/// A handle without a text, such as 0, makes an operation do nothing; getters return 0, false, a null string,
/// or 255 for a position. Positions are columns from the left and rows from the top, both from 0; positions
/// and colours are not checked. No operation reports failure.
///
/// Nothing else uses the back end and the manager. A temporary text that is destroyed at the manager is left
/// alone when its time is up.
class CVideoOverlayFrontEnd : public QObject
{
    Q_OBJECT

public:
    /// Keeps references: both must outlive the object.
    CVideoOverlayFrontEnd(IVideoOverlay& rcBackEnd, IOverlayObjectManager& rcObjectManager);

    /// Removes the temporary texts. The others stay drawn.
    ~CVideoOverlayFrontEnd() override;

    // One text

    /// Creates a text, empty and hidden. Returns its handle, 0 if there are too many. destroyText() erases
    /// it.
    [[nodiscard]] unsigned int createText();
    void destroyText(unsigned int uHandle);

    void setTextStr(unsigned int uHandle, const QString& rcText);
    QString getTextStr(unsigned int uHandle) const;

    EOverlayTextColor getTextForegroundColor(unsigned int uHandle) const;
    EOverlayTextColor getTextBackgroundColor(unsigned int uHandle) const;
    void setTextColors(unsigned int uHandle, EOverlayTextColor eForeground, EOverlayTextColor eBackground);

    unsigned char getTextXPos(unsigned int uHandle) const;
    unsigned char getTextYPos(unsigned int uHandle) const;

    /// The column behind the last character, modulo 256.
    unsigned char getTextEndPos(unsigned int uHandle) const;
    void setTextPosition(unsigned int uHandle, unsigned char u8X, unsigned char u8Y);

    bool isTextVisible(unsigned int uHandle) const;
    void showText(unsigned int uHandle);
    void hideText(unsigned int uHandle);

    /// The number by which the client finds its text again; 0 if it set none.
    unsigned int getTextId(unsigned int uHandle) const;
    void setTextId(unsigned int uHandle, unsigned int uId);

    /// The lowest handle with the id, 0 if there is none.
    unsigned int getTextHandleById(unsigned int uId) const;

    // All texts, temporary ones too, in ascending order of handles

    void showAllTexts();
    void hideAllTexts();
    void destroyAllTexts();

    /// Draws all shown texts again.
    void updateAllTexts();

    // Temporary texts: ordinary texts whose handles clients don't get, shown until their time is up

    /// Whether a temporary text can be shown for that number of seconds: 1 to 9999.
    bool isValidDuration(unsigned int uDuration) const;

    /// Shows a text for a number of seconds. Does nothing if the duration isn't valid or there are too many
    /// texts.
    void drawTemporaryText(const QString& rcText, EOverlayTextColor eForeground,
                           EOverlayTextColor eBackground, unsigned char u8X, unsigned char u8Y,
                           unsigned int uDuration);

    /// Removes the temporary texts that are shown.
    void clearTemporaryTexts();

    // The overlay as a whole, forwarded to the back end

    unsigned int getMaxTextLineWidth() const;
    unsigned int getMaxTextLineCount() const;
    bool isVideoOverlayEnabled() const;
    void setVideoOverlayEnabled(bool bEnabled);

    /// Chooses the letters for a locale, such as "ro_RO". Shown texts keep their codes until they are drawn
    /// again.
    void loadCharacterSetForLocale(const QString& rcLocaleCode) const;

    /// Passes the value to the back end, and draws all shown texts again.
    void setOsdTransparency(int iValue);

#define DECLARATION(method, operation, passedOnTo, parameters, arguments) void operation parameters;
    OVERLAY_FEATURES_AS_OPERATIONS(DECLARATION)
#undef DECLARATION

protected:
    /// The time of a temporary text is up.
    ///
    /// Kept: the timer goes on, and later ticks find nothing. No other timer gets its number while it lives,
    /// so a tick never removes a later text.
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    /// The text's state; null for an unknown handle.
    COverlayTextStateData* stateOf(unsigned int uHandle) const;

    bool isVisible(const COverlayText& rcText) const;
    void drawIfVisible(const COverlayText& rcText);

    /// Creates a text. Null and 0 if there are too many.
    struct SNewText {
        COverlayText* pcText;
        unsigned int uHandle;
    };
    SNewText newText();

    struct STemporaryText {
        unsigned int uHandle;
        const COverlayText* pcText; ///< the manager's; may be deleted
    };

    /// Stops the timer of a temporary text; nothing for any other handle.
    void forgetTemporaryText(unsigned int uHandle);

    /// Erases and destroys the text, if the manager still has it.
    void removeTemporaryText(const STemporaryText& rsText);

    IVideoOverlay& m_rcBackEnd;
    IOverlayObjectManager& m_rcObjectManager;

    // Both hold the same temporary texts, from drawing to removal.
    QHash<int, STemporaryText> m_cTemporaryTexts; ///< by timer
    QMap<unsigned int, int> m_cTextTimers;        ///< timer ids by handle
};

#endif
