/* SPDX-License-Identifier: MIT */
/* The luma of pictures, and how far two of them are apart, for tests of films, whose compression changes pixels. */
#ifndef HALDEND_TESTS_LUMA_H
#define HALDEND_TESTS_LUMA_H

#include <QByteArray>
#include <QImage>

#include <cmath>
#include <limits>

/// As television has it: 16 black, 235 white.
inline int lumaOf(QRgb uColor)
{
    return static_cast<int>(
        std::lround(16 + (65.481 * qRed(uColor) + 128.553 * qGreen(uColor) + 24.966 * qBlue(uColor)) / 255));
}

/// A byte a pixel, top line first.
inline QByteArray lumaOf(const QImage& rcPicture)
{
    QByteArray cLuma;
    cLuma.reserve(rcPicture.width() * rcPicture.height());
    for (int y = 0; y < rcPicture.height(); ++y)
        for (int x = 0; x < rcPicture.width(); ++x)
            cLuma += static_cast<char>(lumaOf(reinterpret_cast<const QRgb*>(rcPicture.constScanLine(y))[x]));
    return cLuma;
}

/// The ratio of the largest value to the error, in dB: 30 is a fair film, equal ones are infinitely good. Of as many
/// bytes as the shorter one has, none of which gives -1.
inline double lumaPsnr(const QByteArray& rcOne, const QByteArray& rcOther)
{
    const int iPixels = qMin(rcOne.size(), rcOther.size());
    if (iPixels == 0)
        return -1;
    double dSum = 0;
    for (int i = 0; i < iPixels; ++i) {
        const int iDifference = static_cast<uchar>(rcOne[i]) - static_cast<uchar>(rcOther[i]);
        dSum += iDifference * iDifference;
    }
    return dSum == 0 ? std::numeric_limits<double>::infinity()
                     : 10 * std::log10(255.0 * 255.0 * iPixels / dSum);
}

inline double lumaPsnr(const QImage& rcOne, const QImage& rcOther)
{
    return lumaPsnr(lumaOf(rcOne), lumaOf(rcOther));
}

#endif
