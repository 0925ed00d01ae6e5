#ifndef HALDEND_OVERLAY_COVERLAYTEXTSTATEDATA_H
#define HALDEND_OVERLAY_COVERLAYTEXTSTATEDATA_H

class COverlayTextIds;

/// What is known of a text besides the text itself: whether it is shown, and the id by which its client finds
/// it again. Starts hidden, with id 0, which is the id of all texts that were never given one.
class COverlayTextStateData
{
public:
    /// Of a text that nobody searches for.
    COverlayTextStateData();

    /// Of the text with this handle: its id is kept in rcIds as long as the object lives.
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
