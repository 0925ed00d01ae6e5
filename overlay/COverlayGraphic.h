/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYGRAPHIC_H
#define HALDEND_OVERLAY_COVERLAYGRAPHIC_H

#include <QPixmap>

/// An image for the overlay: the argument of IVideoOverlay's graphic operations. Nothing in the daemon draws
/// one. The class is only a header, so that only programs that use it need Qt's graphics library.
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
