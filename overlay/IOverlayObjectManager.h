/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_IOVERLAYOBJECTMANAGER_H
#define HALDEND_OVERLAY_IOVERLAYOBJECTMANAGER_H

#include <QList>

class COverlayText;
class COverlayTextStateData;

/// Owns the texts of the overlay and names them by handles. It only stores them: drawing and erasing is up to
/// the caller.
///
/// A handle is the number of one living text; 0 is none. The manager owns texts and state records; their
/// addresses are good until destroyTextObject().
class IOverlayObjectManager
{
public:
    /// Creates a text: empty, hidden, with id 0. Null if no handle is free.
    [[nodiscard]] virtual COverlayText* createTextObject() = 0;

    /// Deletes the text and its state record. A text that the manager doesn't know is deleted too.
    virtual void destroyTextObject(COverlayText& rcText) = 0;

    /// All living handles, in ascending order.
    virtual QList<unsigned int> getTextHandles() const = 0;

    /// The text's handle; 0 for a text that the manager doesn't know.
    virtual unsigned int getHandleOfTextObject(const COverlayText& rcText) const = 0;

    /// The text with that handle; null if there is none.
    virtual COverlayText* getTextObjectByHandle(unsigned int uHandle) const = 0;

    /// The text with that id; null if there is none. If several have it, the one with the lowest handle.
    virtual COverlayText* getTextObjectById(unsigned int uTextId) const = 0;

    /// The text's state; null for a text that the manager doesn't know.
    virtual COverlayTextStateData* getTextObjectStateData(const COverlayText& rcText) const = 0;

protected:
    // Not virtual: a manager is never deleted through this interface.
    ~IOverlayObjectManager() = default;
};

#endif
