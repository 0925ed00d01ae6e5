/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYOBJECTMANAGER_H
#define HALDEND_OVERLAY_COVERLAYOBJECTMANAGER_H

#include "overlay/COverlayTextIds.h"
#include "overlay/IOverlayObjectManager.h"

#include <QHash>
#include <QMap>

/// The manager. At most 65,535 texts live at a time. With more texts only getTextHandles() takes longer; all
/// other operations are look-ups.
class COverlayObjectManager : public IOverlayObjectManager
{
public:
    COverlayObjectManager() = default;

    COverlayObjectManager(const COverlayObjectManager&) = delete;
    COverlayObjectManager& operator=(const COverlayObjectManager&) = delete;

    [[nodiscard]] COverlayText* createTextObject() override;
    void destroyTextObject(COverlayText& rcText) override;
    QList<unsigned int> getTextHandles() const override;
    unsigned int getHandleOfTextObject(const COverlayText& rcText) const override;
    COverlayText* getTextObjectByHandle(unsigned int uHandle) const override;
    COverlayText* getTextObjectById(unsigned int uTextId) const override;
    COverlayTextStateData* getTextObjectStateData(const COverlayText& rcText) const override;

    /// Deletes all texts and state records.
    virtual ~COverlayObjectManager();

private:
    struct SRecord {
        unsigned int uHandle = 0;
        COverlayTextStateData* pcState = nullptr; ///< owned
    };

    /// One more than the largest living handle; 0 if there are too many texts, or no number above the
    /// largest. Gaps are not filled, but the numbers of the last texts are used again once they are gone.
    unsigned int getNewTextHandle() const;

    COverlayTextIds m_cIds;
    QMap<unsigned int, COverlayText*> m_cTexts; ///< owned, by handle
    QHash<const COverlayText*, SRecord> m_cRecords;
};

#endif
