/* SPDX-License-Identifier: MIT */
#include "platform/VideoImageFile.h"

#include "fpga/video_image.h"
#include "hw/video_geometry.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>

namespace
{

const quint32 FILE_HEADER_SIZE = 14;
const quint32 INFO_HEADER_SIZE = 40;
const quint32 PIXEL_OFFSET = FILE_HEADER_SIZE + INFO_HEADER_SIZE;

const qint32 WIDTH = VIDEO_WIDTH;
const qint32 HEIGHT = VIDEO_HEIGHT;

QByteArray fileHeader()
{
    QByteArray cHeader;
    QDataStream cStream(&cHeader, QIODevice::WriteOnly);
    cStream.setByteOrder(QDataStream::LittleEndian);
    cStream << quint8('B') << quint8('M')               // signature
            << quint32(VIDEO_IMAGE_SIZE + PIXEL_OFFSET) // file size
            << quint32(0)                               // reserved
            << PIXEL_OFFSET;
    return cHeader;
}

QByteArray infoHeader()
{
    QByteArray cHeader;
    QDataStream cStream(&cHeader, QIODevice::WriteOnly);
    cStream.setByteOrder(QDataStream::LittleEndian);
    cStream << INFO_HEADER_SIZE << WIDTH << HEIGHT //
            << quint16(1) << quint16(32)           // planes, bits a pixel
            << quint32(0)                          // compression
            << quint32(VIDEO_IMAGE_SIZE)           //
            << quint32(0) << quint32(0)            // resolution
            << quint32(0) << quint32(0);           // colours
    return cHeader;
}

bool writeAll(QFile& rcFile, const char* pcBytes, qint64 iBytes)
{
    return rcFile.write(pcBytes, iBytes) == iBytes;
}

bool writeAll(QFile& rcFile, const QByteArray& rcBytes)
{
    return writeAll(rcFile, rcBytes.constData(), rcBytes.size());
}

} // namespace

CMultimediaPlatform::EImageOpResult WriteVideoImageBufferToFile(QFile& rcFile, const char* buf,
                                                                unsigned int len)
{
    const bool bWritten =
        writeAll(rcFile, fileHeader()) && writeAll(rcFile, infoHeader()) && writeAll(rcFile, buf, len);
    return bWritten ? CMultimediaPlatform::eImageOpResultOk
                    : CMultimediaPlatform::eImageOpResultFileWriteError;
}

CMultimediaPlatform::EImageOpResult ReadFileIntoVideoImageBuffer(QFile& rcFile, char* buf, unsigned int len)
{
    const bool bRead = rcFile.seek(PIXEL_OFFSET) && rcFile.read(buf, len) == qint64(len);
    return bRead ? CMultimediaPlatform::eImageOpResultOk : CMultimediaPlatform::eImageOpResultFileReadError;
}
