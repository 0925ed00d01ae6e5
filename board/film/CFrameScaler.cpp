/* SPDX-License-Identifier: MIT */
#include "board/film/CFrameScaler.h"

namespace
{

/// Where chroma lines lie between luma lines, in 256ths of a line: in a frame, in its first field, in its second.
const int CHROMA_POSITIONS[] = {128, 64, 192};

bool isSubsampled(AVPixelFormat eFormat)
{
    const AVPixFmtDescriptor* psFormat = av_pix_fmt_desc_get(eFormat);
    return psFormat != nullptr && psFormat->log2_chroma_h != 0;
}

/// Fields whose chroma lines alternate too.
bool hasFields(const SPlanes& rsPlanes)
{
    return rsPlanes.iHeight % (isSubsampled(rsPlanes.eFormat) ? 4 : 2) == 0;
}

const int* coefficients(const SPlanes& rsPlanes)
{
    return sws_getCoefficients(rsPlanes.eColors);
}

} // namespace

SPlanes SPlanes::ofPicture(const QImage& rcPicture, const uchar* pu8Bits)
{
    SPlanes sPlanes;
    sPlanes.apu8Data[0] = const_cast<uchar*>(pu8Bits);
    sPlanes.aiStride[0] = rcPicture.bytesPerLine();
    sPlanes.iWidth = rcPicture.width();
    sPlanes.iHeight = rcPicture.height();
    sPlanes.eFormat = AV_PIX_FMT_0RGB32;
    sPlanes.bFullRange = true;
    return sPlanes;
}

SPlanes SPlanes::field(int iField) const
{
    SPlanes sField = *this;
    sField.iHeight /= 2;
    for (int i = 0; i < 4; ++i) {
        if (apu8Data[i] != nullptr)
            sField.apu8Data[i] = apu8Data[i] + iField * aiStride[i];
        sField.aiStride[i] *= 2;
    }
    return sField;
}

bool CFrameScaler::convert(const SPlanes& rsFrom, const SPlanes& rsTo, bool bInterlaced)
{
    if (!bInterlaced || !hasFields(rsFrom) || !hasFields(rsTo))
        return convertPart(FRAME, rsFrom, rsTo);
    return convertPart(FIRST_FIELD, rsFrom.field(0), rsTo.field(0)) &&
           convertPart(SECOND_FIELD, rsFrom.field(1), rsTo.field(1));
}

bool CFrameScaler::convertPart(EPart ePart, const SPlanes& rsFrom, const SPlanes& rsTo)
{
    Ffmpeg::CPointer<SwsContext>& rpcScaler = m_apcScalers[ePart];
    rpcScaler.reset(sws_getCachedContext(rpcScaler.release(), rsFrom.iWidth, rsFrom.iHeight, rsFrom.eFormat,
                                         rsTo.iWidth, rsTo.iHeight, rsTo.eFormat, SWS_BICUBIC, nullptr,
                                         nullptr, nullptr));
    if (rpcScaler == nullptr)
        return false;
    sws_setColorspaceDetails(rpcScaler.get(), coefficients(rsFrom), rsFrom.bFullRange ? 1 : 0,
                             coefficients(rsTo), rsTo.bFullRange ? 1 : 0, 0, 1 << 16, 1 << 16);
    return sws_scale(rpcScaler.get(), rsFrom.apu8Data, rsFrom.aiStride, 0, rsFrom.iHeight, rsTo.apu8Data,
                     rsTo.aiStride) > 0;
}
