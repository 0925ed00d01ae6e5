/* SPDX-License-Identifier: MIT */
#include "bench/CBareVideoProcessing.h"

#include "fpga/video_image.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QMetaObject>

#include <cstring>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace
{

const std::size_t HEADER_BYTES = 54;
const std::size_t LINE_BYTES = VIDEO_LINE_BYTES;
const std::size_t LINES = VIDEO_HEIGHT;

const unsigned int STORE_TIME_US = 100000;
const unsigned int SETTLE_TIME_S = 1;

// Each field's lines stand one after the other; the file begins with the last line.
void interleave(char* pcFrame, const char* pcFields)
{
    for (std::size_t i = 0; i < LINES; ++i)
        memcpy(pcFrame + (LINES - 1 - i) * LINE_BYTES, pcFields + (i % 2 * (LINES / 2) + i / 2) * LINE_BYTES,
               LINE_BYTES);
}

bool writeImage(const char* pszFile, const char* pcFrame)
{
    const char acHeader[HEADER_BYTES] = "BM";
    const int iFile = open(pszFile, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const bool bWritten = write(iFile, acHeader, sizeof acHeader) == sizeof acHeader &&
                          write(iFile, pcFrame, VIDEO_IMAGE_SIZE) == VIDEO_IMAGE_SIZE;
    const bool bSynced = fsync(iFile) == 0;
    close(iFile);
    return bWritten && bSynced;
}

int callCodec(const char* pszMethod, const QVariantList& rcArguments)
{
    QDBusMessage cCall = QDBusMessage::createMethodCall(
        QStringLiteral("velmar.mobilygen"), QStringLiteral("/Record"), QString(), QLatin1String(pszMethod));
    cCall.setArguments(rcArguments);
    return QDBusConnection::systemBus().call(cCall).type() == QDBusMessage::ReplyMessage ? 0 : 1;
}

} // namespace

CBareVideoProcessing::CBareVideoProcessing(const char* pszDevice, QObject* pcParent)
    : QObject(pcParent), m_iDevice(open(pszDevice, O_RDWR | O_CLOEXEC))
{
}

int CBareVideoProcessing::start_video_recording(const QString& filename)
{
    return callCodec("record", {filename, 3});
}

int CBareVideoProcessing::stop_video_recording()
{
    return callCodec("stop", {});
}

int CBareVideoProcessing::save_video_image(const QString& filename)
{
    m_cFile = QFile::encodeName(filename);
    return QMetaObject::invokeMethod(this, &CBareVideoProcessing::save, Qt::QueuedConnection) ? 0 : 1;
}

// Memory of its own each time, as nobody keeps three megabytes for a still now and then.
void CBareVideoProcessing::save()
{
    l_write_reg(m_iDevice, FPGA_STORE_VIDEO, 1);
    usleep(STORE_TIME_US);
    std::unique_ptr<char[]> pcFields(new char[VIDEO_IMAGE_SIZE]);
    std::unique_ptr<char[]> pcFrame(new char[VIDEO_IMAGE_SIZE]);
    bool bSaved = lseek(m_iDevice, FPGA_VIDEO_IMAGE, SEEK_SET) == FPGA_VIDEO_IMAGE &&
                  read(m_iDevice, pcFields.get(), VIDEO_IMAGE_SIZE) == VIDEO_IMAGE_SIZE;
    interleave(pcFrame.get(), pcFields.get());
    bSaved = writeImage(m_cFile.constData(), pcFrame.get()) && bSaved;
    pcFrame.reset();
    pcFields.reset();
    sleep(SETTLE_TIME_S);
    emit video_image_saved(bSaved ? 0 : 1);
}
