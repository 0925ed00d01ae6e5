#ifndef HALDEND_OVERLAY_IOVERLAYOBJECTMANAGER_H
#define HALDEND_OVERLAY_IOVERLAYOBJECTMANAGER_H

#include <QList>

class COverlayText;
class COverlayTextStateData;

/// Owns the texts of the overlay and names them by handles. It only keeps them: drawing and erasing is for the
/// caller to order.
///
/// A handle is the number of one living text; 0 is none. Texts and state records stay the manager's, and stay
/// where they are until destroyTextObject().
class IOverlayObjectManager
{
public:
    /// A new text: empty, hidden, with id 0. Null if no handle is free.
    virtual COverlayText* createTextObject() = 0;

    /// Deletes the text and its state record. A text that the manager doesn't know is deleted too.
    virtual void destroyTextObject(COverlayText& rcText) = 0;

    /// All living handles, in ascending order.
    virtual QList<unsigned int> getTextHandles() const = 0;

    /// 0 for a text that the manager doesn't know.
    virtual unsigned int getHandleOfTextObject(const COverlayText& rcText) const = 0;

    /// Null if there is none.
    virtual COverlayText* getTextObjectByHandle(unsigned int uHandle) const = 0;

    /// Of the texts with this id the one with the lowest handle, null if there is none.
    virtual COverlayText* getTextObjectById(unsigned int uTextId) const = 0;

    /// Null for a text that the manager doesn't know.
    virtual COverlayTextStateData* getTextObjectStateData(const COverlayText& rcText) const = 0;

protected:
    // Nobody deletes a manager through this interface.
    ~IOverlayObjectManager() = default;
};

#endif
