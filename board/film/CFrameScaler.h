/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFRAMESCALER_H
#define HALDEND_BOARD_FILM_CFRAMESCALER_H

#include "board/film/Ffmpeg.h"

#include <QImage>

/// A frame in memory, for the scaler. The pixels stay the caller's.
struct SPlanes {
    uint8_t* apu8Data[4] = {};
    int aiStride[4] = {}; ///< bytes from a line to the next
    int iWidth = 0;
    int iHeight = 0;
    AVPixelFormat eFormat = AV_PIX_FMT_NONE;
    AVColorSpace eColors = AVCOL_SPC_UNSPECIFIED; ///< of formats with luma and chroma
    bool bFullRange = false;

    /// A picture in Format_RGB32. pu8Bits: its pixels, as the scaler needs them, to be read or to be written.
    static SPlanes ofPicture(const QImage& rcPicture, const uchar* pu8Bits);

    /// The lines of a frame: all, or those of one field.
    SPlanes field(int iField) const;
};

/// Brings frames into another size and format, by swscale; interlaced ones field by field, so that colours don't run
/// from one field into the other. Keeps what is worked out for a size and format until these change.
class CFrameScaler
{
public:
    /// False if the libraries can't convert the one into the other.
    bool convert(const SPlanes& rsFrom, const SPlanes& rsTo, bool bInterlaced);

private:
    /// Whole frames, first fields, second fields.
    enum EPart { FRAME, FIRST_FIELD, SECOND_FIELD, PARTS };

    bool convertPart(EPart ePart, const SPlanes& rsFrom, const SPlanes& rsTo);

    Ffmpeg::CPointer<SwsContext> m_apcScalers[PARTS];
};

#endif
