/* Golden pictures: what a picture has to look like, pixel by pixel, kept as PNG files in tests/golden.
 *
 *     QCOMPARE(differenceFromGolden(cPicture, QStringLiteral("test_card")), QString());
 *
 * A picture that differs is left in the build tree as golden/NAME_actual.png. A missing
 * golden picture is a failure. To make or renew one, look at the actual picture first, and then run the test
 * with HALDEN_WRITE_GOLDEN=1; where CI is set that is refused.
 */
#ifndef HALDEND_TESTS_GOLDEN_H
#define HALDEND_TESTS_GOLDEN_H

#include <QImage>
#include <QString>

/// Empty if the picture equals the golden one of the name; else says what is wrong: the size, or how many
/// pixels differ, which is the first, and where the actual picture is.
QString differenceFromGolden(const QImage& rcPicture, const QString& rcName);

#endif
