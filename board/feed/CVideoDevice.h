/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FEED_CVIDEODEVICE_H
#define HALDEND_BOARD_FEED_CVIDEODEVICE_H

#include "board/feed/IFrameSource.h"

#include <QSize>
#include <QVector>

#include <cstddef>

/// A webcam or a capture card, by the kernel's video interface (V4L2): packed 4:2:2 or JPEG, of any size. It captures
/// only while frames are taken.
class CVideoDevice : public IFrameSource
{
public:
    explicit CVideoDevice(const QString& rcPath) : m_cPath(rcPath) {}
    ~CVideoDevice() override;

    bool open() override;
    EResult take(quint32 u32Frame, QRgb* puPixels) override;
    void rest() override;

private:
    struct SBuffer {
        void* pvData;
        std::size_t uiBytes;
    };

    bool failOn(const char* pszStep);
    bool request(unsigned long ulRequest, void* pvArgument) const;
    bool chooseFormat();
    bool start();
    bool mapBuffers(unsigned uiCount);
    bool convert(const uchar* pu8Data, std::size_t uiBytes, QRgb* puPixels) const;
    bool convertPacked(const uchar* pu8Data, std::size_t uiBytes, QRgb* puPixels) const;

    QString m_cPath;
    int m_iDevice = -1;
    quint32 m_u32Format = 0;
    QSize m_cSize;
    std::size_t m_uiStride = 0; ///< bytes from a line to the next
    QVector<SBuffer> m_cBuffers;
    bool m_bCapturing = false;
};

#endif
