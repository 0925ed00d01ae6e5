/* SPDX-License-Identifier: MIT */
#include "board/picture/CPictureRenderer.h"

#include "board/state/CBoard.h"
#include "hw/lime_registers.h"
#include "hw/video_geometry.h"

namespace
{

const quint32 OPAQUE = 0xff000000;

/// One direction of the scaler.
struct SScale {
    quint32 u32Step; ///< source pixels for each output pixel, 5.11 fixed point; 0 shows nothing
    quint32 u32Size; ///< of the source, in pixels

    int outputSize() const { return u32Step == 0 ? 0 : static_cast<int>((u32Size << 11) / u32Step); }
    int source(int iOutput) const
    {
        return static_cast<int>((static_cast<quint32>(iOutput) * u32Step) >> 11);
    }
};

int high12(quint32 u32Register)
{
    return static_cast<int>(u32Register >> 16 & 0xfff);
}

int low12(quint32 u32Register)
{
    return static_cast<int>(u32Register & 0xfff);
}

/// 1-5-5-5 to 8 bits a colour; full intensity becomes 255.
QRgb rgbOf1555(quint16 u16Pixel)
{
    const auto widen = [](int iBits) { return iBits << 3 | iBits >> 2; };
    return qRgb(widen(u16Pixel >> 10 & 0x1f), widen(u16Pixel >> 5 & 0x1f), widen(u16Pixel & 0x1f));
}

} // namespace

CPictureRenderer::CPictureRenderer(const CBoard& rcBoard, const QImage& rcCaptured)
    : m_rcBoard(rcBoard), m_cCaptured(rcCaptured), m_cPicture(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32)
{
}

QImage CPictureRenderer::render()
{
    const quint32 u32Mode = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_DCM1);
    if ((u32Mode & LIME_DCM1_DISPLAY) == 0 || m_rcBoard.isChipSilent(SAA7129_SLAVE)) {
        m_cPicture.fill(OPAQUE);
        return m_cPicture;
    }
    m_cPicture.fill(OPAQUE | m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_DBGC));
    const quint32 u32Order = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_DLS);
    for (int iPlace = LIME_LAYERS - 1; iPlace >= 0; --iPlace) {
        const quint32 u32Layer = u32Order >> 4 * iPlace & 0xf;
        if ((u32Mode & LIME_DCM1_LAYER(u32Layer)) != 0)
            renderLayer(u32Layer);
    }
    return m_cPicture;
}

void CPictureRenderer::renderLayer(quint32 u32Layer)
{
    if (u32Layer == 0)
        renderGraphic();
    else if (u32Layer == 1)
        renderVideo();
}

void CPictureRenderer::renderGraphic()
{
    const quint32 u32Mode = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0M);
    if ((u32Mode & LIME_L0M_16_BIT) == 0)
        return;
    const quint32 u32Stride = (u32Mode >> 16 & 0xff) * 64;
    const quint32 u32Origin = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0OA) & 0x03ffffff;
    const quint32 u32Place = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0WXY);
    const quint32 u32Size = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0WWH);
    const bool bZeroTransparent =
        (m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0TC) & LIME_L0TC_ZERO) != 0;
    const int iLeft = low12(u32Place);
    const int iTop = high12(u32Place);
    const int iRight = qMin<int>(VIDEO_WIDTH, iLeft + low12(u32Size));
    const int iBottom = qMin<int>(VIDEO_HEIGHT, iTop + high12(u32Size));
    if (iRight <= iLeft)
        return;
    quint16 au16Pixels[VIDEO_WIDTH];
    for (int y = iTop; y < iBottom; ++y) {
        auto* pu32Line = reinterpret_cast<QRgb*>(m_cPicture.scanLine(y)) + iLeft;
        m_rcBoard.limeMemory16(u32Origin + static_cast<quint32>(y - iTop) * u32Stride, iRight - iLeft,
                               au16Pixels);
        for (int x = 0; x < iRight - iLeft; ++x)
            if (au16Pixels[x] != 0 || !bZeroTransparent)
                pu32Line[x] = rgbOf1555(au16Pixels[x]);
    }
}

void CPictureRenderer::renderVideo()
{
    const quint32 u32Scale = m_rcBoard.limeRegister(CBoard::LIME_CAPTURE, LIME_CSC);
    const quint32 u32Place = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L1WXY);
    const quint32 u32Size = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L1WWH);
    const SScale cHorizontal = {u32Scale & 0xffff, VIDEO_WIDTH};
    const SScale cVertical = {u32Scale >> 16, VIDEO_HEIGHT};
    const int iLeft = low12(u32Place);
    const int iTop = high12(u32Place);
    const int iWidth = qMin(VIDEO_WIDTH - iLeft, qMin(low12(u32Size), cHorizontal.outputSize()));
    const int iHeight = qMin(VIDEO_HEIGHT - iTop, qMin(high12(u32Size), cVertical.outputSize()));
    if (iWidth <= 0)
        return;

    int aiSource[VIDEO_WIDTH];
    for (int x = 0; x < iWidth; ++x)
        aiSource[x] = cHorizontal.source(x);
    for (int y = 0; y < iHeight; ++y) {
        const auto* pu32Source =
            reinterpret_cast<const QRgb*>(m_cCaptured.constScanLine(cVertical.source(y)));
        auto* pu32Line = reinterpret_cast<QRgb*>(m_cPicture.scanLine(iTop + y)) + iLeft;
        for (int x = 0; x < iWidth; ++x)
            pu32Line[x] = OPAQUE | pu32Source[aiSource[x]];
    }
}
