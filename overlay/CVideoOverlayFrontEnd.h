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

/// The one place through which the daemon works the overlay. Finds texts by their handles, changes them, keeps
/// which are shown, and has the back end draw and erase: only those that are shown are drawn.
///
/// A handle that names no text, 0 among them, makes an operation do nothing; getters give 0, false, a null
/// string, or 255 for a position. Positions are cells and lines, and like colours they aren't checked. Nothing
/// reports failure.
///
/// It is the only user of the back end and the manager. A temporary text that is destroyed at the manager all the same
/// is left alone when its time is up.
class CVideoOverlayFrontEnd : public QObject
{
    Q_OBJECT

public:
    /// Both have to outlive the object.
    CVideoOverlayFrontEnd(IVideoOverlay& rcBackEnd, IOverlayObjectManager& rcObjectManager);

    /// Removes the temporary texts that are still there. The others stay, drawn as they are.
    ~CVideoOverlayFrontEnd() override;

    // One text

    /// A new text, empty and hidden. Returns its handle, 0 if there are too many.
    unsigned int createText();
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

    /// The number by which the client finds its text again, 0 before one is set.
    unsigned int getTextId(unsigned int uHandle) const;
    void setTextId(unsigned int uHandle, unsigned int uId);

    /// The lowest handle with the id, 0 if there is none.
    unsigned int getTextHandleById(unsigned int uId) const;

    // All texts, temporary ones included, in ascending order of handles

    void showAllTexts();
    void hideAllTexts();
    void destroyAllTexts();

    /// Draws again what is shown.
    void updateAllTexts();

    // Temporary texts: ordinary ones, with a handle that nobody is told, shown until their time is up

    /// 1 to 9999 seconds.
    bool isValidDuration(unsigned int uDuration) const;

    /// Shows a text for a number of seconds. With a duration that isn't valid, or too many texts, nothing
    /// happens.
    void drawTemporaryText(const QString& rcText, EOverlayTextColor eForeground,
                           EOverlayTextColor eBackground, unsigned char u8X, unsigned char u8Y,
                           unsigned int uDuration);

    /// Removes those whose time isn't up.
    void clearTemporaryTexts();

    // The overlay as a whole, passed on to the back end

    unsigned int getMaxTextLineWidth() const;
    unsigned int getMaxTextLineCount() const;
    bool isVideoOverlayEnabled() const;
    void setVideoOverlayEnabled(bool bEnabled);

    /// Texts that are shown keep their codes until they are drawn again.
    void loadCharacterSetForLocale(const QString& rcLocaleCode) const;

    /// Draws all shown texts again, under the new setting.
    void setOsdTransparency(int iValue);

#define DECLARATION(method, operation, passedOnTo, parameters, arguments) void operation parameters;
    OVERLAY_FEATURES_AS_OPERATIONS(DECLARATION)
#undef DECLARATION

protected:
    /// The time of a temporary text is up.
    ///
    /// Its timer goes on, and finds nothing from then on: no other timer gets its number meanwhile.
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    /// Null for an unknown handle.
    COverlayTextStateData* stateOf(unsigned int uHandle) const;

    bool isVisible(const COverlayText& rcText) const;
    void drawIfVisible(const COverlayText& rcText);

    /// A new text from the manager and its handle; null and 0 if there are too many.
    struct SNewText {
        COverlayText* pcText;
        unsigned int uHandle;
    };
    SNewText newText();

    struct STemporaryText {
        unsigned int uHandle;
        const COverlayText* pcText; ///< the manager's; may be gone
    };

    /// Stops the timer of a temporary text; does nothing for any other handle.
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
