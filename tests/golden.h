/* SPDX-License-Identifier: MIT */
/* Golden pictures: the expected pictures, pixel by pixel, as PNG files in tests/golden.
 *
 *     QCOMPARE(differenceFromGolden(cPicture, QStringLiteral("test_card")), QString());
 *
 * A picture that differs is left in the build tree as golden/NAME_actual.png. A missing golden picture is a
 * failure. To make or renew one, look at the actual picture first, then run the test with
 * HALDEN_WRITE_GOLDEN=1. Where CI is set that is refused.
 */
#ifndef HALDEND_TESTS_GOLDEN_H
#define HALDEND_TESTS_GOLDEN_H

#include <QImage>
#include <QString>

/// Empty if the picture equals the golden one of the name. Otherwise a text with the fault: the size, or the
/// number of pixels that differ, the first of them, and the path of the actual picture.
QString differenceFromGolden(const QImage& rcPicture, const QString& rcName);

#endif
