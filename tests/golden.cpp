/* SPDX-License-Identifier: MIT */
#include "tests/golden.h"

#include <QColor>
#include <QDir>

static QString save(const QImage& rcPicture, const QString& rcPath)
{
    return rcPicture.save(rcPath, "PNG") ? rcPath : QStringLiteral("(can't be written: %1)").arg(rcPath);
}

static QString saveActual(const QImage& rcPicture, const QString& rcName)
{
    const QDir cDirectory(QStringLiteral(HALDEND_GOLDEN_OUTPUT));
    cDirectory.mkpath(QStringLiteral("."));
    return save(rcPicture, cDirectory.filePath(rcName + QStringLiteral("_actual.png")));
}

static QString comparePixels(const QImage& rcActual, const QImage& rcGolden)
{
    int iCount = 0;
    QString cFirst;
    for (int y = 0; y < rcActual.height(); ++y)
        for (int x = 0; x < rcActual.width(); ++x) {
            const QRgb uActual = rcActual.pixel(x, y);
            const QRgb uGolden = rcGolden.pixel(x, y);
            if (uActual != uGolden && iCount++ == 0)
                cFirst = QStringLiteral("the first at %1,%2: %3 instead of %4")
                             .arg(x)
                             .arg(y)
                             .arg(QColor::fromRgba(uActual).name(QColor::HexArgb),
                                  QColor::fromRgba(uGolden).name(QColor::HexArgb));
        }
    return iCount == 0 ? QString() : QStringLiteral("%1 pixels differ, %2").arg(iCount).arg(cFirst);
}

QString differenceFromGolden(const QImage& rcPicture, const QString& rcName)
{
    const QImage cActual = rcPicture.convertToFormat(QImage::Format_ARGB32);
    const QString cPath = QStringLiteral(HALDEND_GOLDEN_DIR "/%1.png").arg(rcName);
    if (qEnvironmentVariable("HALDEN_WRITE_GOLDEN") == QLatin1String("1")) {
        if (qEnvironmentVariableIsSet("CI"))
            return QStringLiteral("golden pictures are made by people, not by CI");
        return cActual.save(cPath, "PNG") ? QString() : QStringLiteral("%1 can't be written").arg(cPath);
    }
    QImage cGolden;
    if (!cGolden.load(cPath))
        return QStringLiteral("no golden picture %1; actual picture: %2")
            .arg(cPath, saveActual(cActual, rcName));
    cGolden = cGolden.convertToFormat(QImage::Format_ARGB32);
    const QString cDifference = cActual.size() == cGolden.size()
                                    ? comparePixels(cActual, cGolden)
                                    : QStringLiteral("%1 x %2 instead of %3 x %4")
                                          .arg(cActual.width())
                                          .arg(cActual.height())
                                          .arg(cGolden.width())
                                          .arg(cGolden.height());
    if (cDifference.isEmpty())
        return QString();
    return QStringLiteral("%1; actual picture: %2").arg(cDifference, saveActual(cActual, rcName));
}
