#ifndef HALDEND_OVERLAY_COVERLAYGRAPHIC_H
#define HALDEND_OVERLAY_COVERLAYGRAPHIC_H

#include <QPixmap>

/// An image for the overlay. Nothing in the daemon draws one: the class gives IVideoOverlay's graphic
/// operations their argument. It stands in its header alone, so that only programs that use it need Qt's
/// graphics library.
class COverlayGraphic
{
public:
    explicit COverlayGraphic(QPixmap cImageData) { m_cImageData.swap(cImageData); }

    QPixmap getImageData() const { return m_cImageData; }
    void setImageData(QPixmap cImageData) { m_cImageData.swap(cImageData); }

private:
    QPixmap m_cImageData;
};

#endif
