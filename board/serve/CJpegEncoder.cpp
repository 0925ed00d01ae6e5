/* SPDX-License-Identifier: MIT */
#include "board/serve/CJpegEncoder.h"

#include <QtGlobal>

#include <turbojpeg.h>

static const int QUALITY = 85;
static const int PIXELS = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? TJPF_BGRX : TJPF_XRGB;

CJpegEncoder::CJpegEncoder() : m_pvCompressor(tjInitCompress()) {}

CJpegEncoder::~CJpegEncoder()
{
    if (m_pvCompressor != nullptr)
        tjDestroy(m_pvCompressor);
}

QByteArray CJpegEncoder::encode(const QImage& rcImage)
{
    unsigned char* pu8Jpeg = nullptr;
    unsigned long uBytes = 0;
    QByteArray cJpeg;
    if (m_pvCompressor != nullptr &&
        tjCompress2(m_pvCompressor, rcImage.constBits(), rcImage.width(), rcImage.bytesPerLine(),
                    rcImage.height(), PIXELS, &pu8Jpeg, &uBytes, TJSAMP_444, QUALITY, TJFLAG_FASTDCT) == 0)
        cJpeg = QByteArray(reinterpret_cast<const char*>(pu8Jpeg), static_cast<int>(uBytes));
    tjFree(pu8Jpeg);
    return cJpeg;
}
