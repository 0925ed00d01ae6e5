/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CJPEGENCODER_H
#define HALDEND_BOARD_SERVE_CJPEGENCODER_H

#include <QByteArray>
#include <QImage>

/// Pictures as JPEG: quality 85, colours at full resolution, since texts are coloured.
class CJpegEncoder
{
public:
    CJpegEncoder();
    ~CJpegEncoder();

    CJpegEncoder(const CJpegEncoder&) = delete;
    CJpegEncoder& operator=(const CJpegEncoder&) = delete;

    /// rcImage: Format_RGB32. Empty if there is no memory.
    QByteArray encode(const QImage& rcImage);

private:
    void* m_pvCompressor;
};

#endif
