/* SPDX-License-Identifier: MIT */
#include "board/feed/CVideoDevice.h"

#include "hw/video_geometry.h"

#include <QFile>
#include <QImage>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/videodev2.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

const unsigned BUFFERS = 4;
const int PATIENCE_MS = 100; // for a frame

/// The formats that are understood, the better ones first.
const quint32 FORMATS[] = {V4L2_PIX_FMT_YUYV, V4L2_PIX_FMT_UYVY, V4L2_PIX_FMT_MJPEG, V4L2_PIX_FMT_JPEG};

bool isPacked(quint32 u32Format)
{
    return u32Format == V4L2_PIX_FMT_YUYV || u32Format == V4L2_PIX_FMT_UYVY;
}

int clamp(int iColor)
{
    return qBound(0, iColor >> 16, 255);
}

/// A colour of the digital signal, in which black is 16 and white 235.
QRgb rgbOf(int iY, int iU, int iV)
{
    const int iLuma = 76309 * (iY - 16) + 32768;
    return qRgb(clamp(iLuma + 104597 * (iV - 128)), clamp(iLuma - 25675 * (iU - 128) - 53279 * (iV - 128)),
                clamp(iLuma + 132201 * (iU - 128)));
}

} // namespace

CVideoDevice::~CVideoDevice()
{
    rest();
    if (m_iDevice >= 0)
        ::close(m_iDevice);
}

bool CVideoDevice::failOn(const char* pszStep)
{
    return fail(QStringLiteral("%1: %2: %3")
                    .arg(m_cPath, QLatin1String(pszStep), QString::fromLocal8Bit(std::strerror(errno))));
}

bool CVideoDevice::request(unsigned long ulRequest, void* pvArgument) const
{
    int iResult;
    do
        iResult = ::ioctl(m_iDevice, ulRequest, pvArgument);
    while (iResult < 0 && errno == EINTR);
    return iResult >= 0;
}

bool CVideoDevice::open()
{
    m_iDevice = ::open(QFile::encodeName(m_cPath).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (m_iDevice < 0)
        return failOn("open");
    v4l2_capability sCapability = {};
    if (!request(VIDIOC_QUERYCAP, &sCapability))
        return failOn("no video device");
    const quint32 u32Capabilities = (sCapability.capabilities & V4L2_CAP_DEVICE_CAPS) != 0
                                        ? sCapability.device_caps
                                        : sCapability.capabilities;
    const quint32 u32Needed = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
    if ((u32Capabilities & u32Needed) != u32Needed)
        return fail(m_cPath + QStringLiteral(": doesn't capture video"));
    return chooseFormat();
}

// The device answers with the nearest that it has.
bool CVideoDevice::chooseFormat()
{
    for (const quint32 u32Wanted : FORMATS) {
        v4l2_format sFormat = {};
        sFormat.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        sFormat.fmt.pix.width = VIDEO_WIDTH;
        sFormat.fmt.pix.height = VIDEO_HEIGHT;
        sFormat.fmt.pix.pixelformat = u32Wanted;
        sFormat.fmt.pix.field = V4L2_FIELD_ANY;
        if (!request(VIDIOC_S_FMT, &sFormat) || sFormat.fmt.pix.pixelformat != u32Wanted)
            continue;
        m_u32Format = u32Wanted;
        m_cSize = QSize(static_cast<int>(sFormat.fmt.pix.width), static_cast<int>(sFormat.fmt.pix.height));
        m_uiStride = qMax<std::size_t>(sFormat.fmt.pix.bytesperline, std::size_t(2) * sFormat.fmt.pix.width);
        return !m_cSize.isEmpty() || fail(m_cPath + QStringLiteral(": no picture size"));
    }
    return fail(m_cPath + QStringLiteral(": has neither packed 4:2:2 nor JPEG pictures"));
}

bool CVideoDevice::mapBuffers(unsigned uiCount)
{
    for (unsigned i = 0; i < uiCount; ++i) {
        v4l2_buffer sBuffer = {};
        sBuffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
        sBuffer.memory = V4L2_MEMORY_MMAP;
        sBuffer.index = i;
        if (!request(VIDIOC_QUERYBUF, &sBuffer))
            return failOn("buffer");
        void* pvData = ::mmap(nullptr, sBuffer.length, PROT_READ | PROT_WRITE, MAP_SHARED, m_iDevice,
                              static_cast<off_t>(sBuffer.m.offset));
        if (pvData == MAP_FAILED)
            return failOn("map");
        m_cBuffers.append({pvData, sBuffer.length});
        if (!request(VIDIOC_QBUF, &sBuffer))
            return failOn("queue");
    }
    return true;
}

bool CVideoDevice::start()
{
    v4l2_requestbuffers sBuffers = {};
    sBuffers.count = BUFFERS;
    sBuffers.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    sBuffers.memory = V4L2_MEMORY_MMAP;
    if (!request(VIDIOC_REQBUFS, &sBuffers))
        return failOn("buffers");
    m_bCapturing = true;
    int iType = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    return mapBuffers(sBuffers.count) && (request(VIDIOC_STREAMON, &iType) || failOn("start"));
}

void CVideoDevice::rest()
{
    if (!m_bCapturing)
        return;
    int iType = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    request(VIDIOC_STREAMOFF, &iType);
    for (const SBuffer& rsBuffer : m_cBuffers)
        ::munmap(rsBuffer.pvData, rsBuffer.uiBytes);
    m_cBuffers.clear();
    v4l2_requestbuffers sBuffers = {};
    sBuffers.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    sBuffers.memory = V4L2_MEMORY_MMAP;
    request(VIDIOC_REQBUFS, &sBuffers);
    m_bCapturing = false;
}

IFrameSource::EResult CVideoDevice::take(quint32, QRgb* puPixels)
{
    if (!m_bCapturing && !start())
        return FAILED;
    pollfd sPoll = {m_iDevice, POLLIN, 0};
    if (::poll(&sPoll, 1, PATIENCE_MS) <= 0)
        return NONE;
    v4l2_buffer sBuffer = {};
    sBuffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    sBuffer.memory = V4L2_MEMORY_MMAP;
    if (!request(VIDIOC_DQBUF, &sBuffer)) {
        if (errno == EAGAIN)
            return NONE;
        failOn("frame");
        return FAILED;
    }
    bool bWhole = false;
    if ((sBuffer.flags & V4L2_BUF_FLAG_ERROR) == 0 && static_cast<int>(sBuffer.index) < m_cBuffers.size()) {
        const SBuffer& rsBuffer = m_cBuffers[static_cast<int>(sBuffer.index)];
        bWhole = convert(static_cast<const uchar*>(rsBuffer.pvData),
                         qMin<std::size_t>(sBuffer.bytesused, rsBuffer.uiBytes), puPixels);
    }
    if (!request(VIDIOC_QBUF, &sBuffer)) {
        failOn("queue");
        return FAILED;
    }
    return bWhole ? NEW : NONE;
}

bool CVideoDevice::convert(const uchar* pu8Data, std::size_t uiBytes, QRgb* puPixels) const
{
    if (isPacked(m_u32Format))
        return convertPacked(pu8Data, uiBytes, puPixels);
    const QImage cFrame = QImage::fromData(pu8Data, static_cast<int>(uiBytes), "JPG");
    if (cFrame.isNull())
        return false;
    const QImage cPicture =
        cFrame.scaled(VIDEO_WIDTH, VIDEO_HEIGHT, Qt::IgnoreAspectRatio).convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        std::memcpy(puPixels + y * VIDEO_WIDTH, cPicture.constScanLine(y), VIDEO_LINE_BYTES);
    return true;
}

// Two pixels share four bytes: YUYV, or UYVY.
bool CVideoDevice::convertPacked(const uchar* pu8Data, std::size_t uiBytes, QRgb* puPixels) const
{
    const int iLuma = m_u32Format == V4L2_PIX_FMT_YUYV ? 0 : 1;
    const int iColor = 1 - iLuma;
    if (uiBytes < m_uiStride * static_cast<std::size_t>(m_cSize.height()))
        return false;
    for (int y = 0; y < VIDEO_HEIGHT; ++y) {
        const uchar* pu8Line =
            pu8Data + m_uiStride * static_cast<std::size_t>(y * m_cSize.height() / VIDEO_HEIGHT);
        for (int x = 0; x < VIDEO_WIDTH; ++x) {
            const int iPixel = x * m_cSize.width() / VIDEO_WIDTH;
            const uchar* pu8Pair = pu8Line + iPixel / 2 * 4;
            *puPixels++ = rgbOf(pu8Pair[iPixel % 2 * 2 + iLuma], pu8Pair[iColor], pu8Pair[iColor + 2]);
        }
    }
    return true;
}
