/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CPICTURERENDERER_H
#define HALDEND_BOARD_PICTURE_CPICTURERENDERER_H

#include <QImage>

class CBoard;

/// Composes the monitor's picture, from the memory of a board alone.
///
/// This is the virtual board's model of its display path, not a statement about the hardware:
///
/// - Display off (DCM1 bit 31 clear), or a video encoder whose registers are all 0: black.
/// - Behind everything: the background colour, DBGC.
/// - Layer 1 (DCM1 bit 17): the FPGA's output, scaled by CSC, its top left corner at L1WXY, cut at the right
///   and bottom by the window size L1WWH. A scale of 0 in either direction shows no video.
/// - Layer 0 (DCM1 bit 16), in 16-bit mode only (L0M bit 31): 1-5-5-5 pixels of the controller's memory from
///   L0OA, in the window L0WXY, L0WWH. Pixels of value 0 are transparent if L0TC bit 15 is set.
/// - DLS orders the layers; the lowest nibble names the one on top.
///
/// Nearest neighbour and integers only: the same picture on every host.
class CPictureRenderer
{
public:
    /// Keeps a reference to the board, which must be open. rcCaptured: the FPGA's output, 720 x 576,
    /// Format_RGB32.
    CPictureRenderer(const CBoard& rcBoard, const QImage& rcCaptured);

    /// The picture now, 720 x 576, Format_RGB32.
    QImage render();

private:
    void renderLayer(quint32 u32Layer);
    void renderGraphic();
    void renderVideo();

    const CBoard& m_rcBoard;
    QImage m_cCaptured;
    QImage m_cPicture;
};

#endif
