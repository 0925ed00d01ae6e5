#include "board/still_image_demo.h"

#include "platform/CMultimediaPlatform.h"

#include <QFile>
#include <QImage>
#include <QPainter>

namespace
{

const int HEADER_BYTES = 54;

bool saveImage(const QString& rcFile)
{
    CMultimediaPlatform::freezeVideoPicture(false);
    return CMultimediaPlatform::saveVideoImage(rcFile) == CMultimediaPlatform::eImageOpResultOk;
}

/* As somebody would with a drawing program, but for the pixels staying 32 bits. */
bool markImage(const QString& rcFile)
{
    QFile cFile(rcFile);
    if (!cFile.open(QIODevice::ReadWrite))
        return false;
    const QByteArray cHeader = cFile.read(HEADER_BYTES);
    QImage cImage = QImage(rcFile).convertToFormat(QImage::Format_RGB32);
    if (cImage.isNull())
        return false;
    QPainter cPainter(&cImage);
    cPainter.setPen(QPen(Qt::yellow, 9));
    cPainter.drawEllipse(QPoint(500, 180), 90, 90);
    cPainter.drawLine(435, 245, 330, 350);
    cPainter.end();
    cImage = cImage.mirrored();
    const auto* pcPixels = reinterpret_cast<const char*>(cImage.constBits());
    return cFile.seek(0) && cFile.write(cHeader) == HEADER_BYTES &&
           cFile.write(pcPixels, cImage.sizeInBytes()) == cImage.sizeInBytes();
}

bool loadImage(const QString& rcFile)
{
    return CMultimediaPlatform::loadVideoImage(rcFile) == CMultimediaPlatform::eImageOpResultOk;
}

} // namespace

const SImageCommand IMAGE_COMMANDS[] = {
    {"still-save", "keeps the live picture in FILE", saveImage},
    {"still-mark", "draws on the picture in FILE",   markImage},
    {"still-load", "shows the picture in FILE",      loadImage},
    {nullptr,      nullptr,                          nullptr  },
};
