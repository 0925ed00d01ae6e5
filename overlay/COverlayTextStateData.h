/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYTEXTSTATEDATA_H
#define HALDEND_OVERLAY_COVERLAYTEXTSTATEDATA_H

class COverlayTextIds;

/// A text's state beside the text itself: whether it is shown, and the id by which its client finds it again.
/// It starts hidden, with id 0, the id of all texts that were never given one.
class COverlayTextStateData
{
public:
    /// The state of a text that isn't searched for.
    COverlayTextStateData();

    /// The state of the text with this handle. Its id is entered in rcIds as long as the object lives; rcIds
    /// must outlive it.
    COverlayTextStateData(COverlayTextIds& rcIds, unsigned int uHandle);
    ~COverlayTextStateData();

    COverlayTextStateData(const COverlayTextStateData&) = delete;
    COverlayTextStateData& operator=(const COverlayTextStateData&) = delete;

    bool isVisible() const;
    void setVisible(bool bVisible);

    unsigned int getTextId() const;
    void setTextId(unsigned int uTextId);

private:
    bool m_bVisible;
    unsigned int m_uTextId;
    COverlayTextIds* const m_pcIds; ///< not owned, may be null
    const unsigned int m_uHandle;
};

#endif
