/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CTESTPICTURE_H
#define HALDEND_BOARD_PICTURE_CTESTPICTURE_H

#include <QImage>
#include <QRgb>
#include <QString>

/// The synthetic camera picture, 720 x 576: a test card that shows wrong placing and scaling at once.
///
/// - A frame of one pixel at the very edge and a second one 16 pixels inside: show lost lines and columns.
/// - Corners numbered clockwise from the top left: show mirrored and rotated pictures.
/// - A grid of 40 pixels with coordinates every 80: shows offsets.
/// - A circle with a cross at its centre, ticks every 10 pixels: shows aspect and centre.
/// - In the circle, from the top: the size; colour bars; 16 grey steps; a grey ramp; the cross; gratings of
///   1, 2 and 3 pixels, vertical and horizontal; a pointer that moves 4 pixels a frame; the frame's number.
///
/// Integers and the overlay's letters, no smoothing: the same pixels on every host.
class CTestPicture
{
public:
    /// The picture of a frame, counted from 0, Format_RGB32. Negative numbers count as 0.
    static QImage frame(int iFrame);

private:
    explicit CTestPicture(int iFrame);

    void drawBackground();
    void drawBorder();
    void drawCoordinates();
    void drawCorners();
    void drawCircleContents();
    void drawBars();
    void drawGreys();
    void drawCross();
    void drawGratings();
    void drawPointer();
    void drawRing();

    bool isInCircle(int x, int y, int iRadius) const;
    void plot(int x, int y, QRgb uColor);
    void fill(int x, int y, int iWidth, int iHeight, QRgb uColor);
    void frameRectangle(int x, int y, int iWidth, int iHeight, QRgb uColor);

    /// In glyph set 1. (x, y) is the top left corner of a figure's ink, 8 x 14 pixels of iScale x iScale; the
    /// next one is 12 pixels on.
    void drawText(int x, int y, int iScale, const QString& rcText, QRgb uColor);
    void drawCenteredText(int iCenterX, int y, int iScale, const QString& rcText, QRgb uColor);

    QImage m_cImage;
    int m_iFrame;
    bool m_bInCircle = false; ///< drawing is cut at the circle
};

#endif
