/* SPDX-License-Identifier: MIT */
/* The names of the colours. */
#include "ctl/Colors.h"

#include <QtTest>

class TestColors : public QObject
{
    Q_OBJECT

private slots:
    void every_colour_has_a_name_of_its_own()
    {
        QCOMPARE(colorNames().size(), COLORS);
        for (int iColor = 0; iColor < COLORS; ++iColor) {
            QCOMPARE(colorNumber(colorName(iColor)), iColor);
            QCOMPARE(colorNumber(QString::number(iColor)), iColor);
        }
    }

    void other_spellings()
    {
        QCOMPARE(colorNumber("blue@half"), 13);
        QCOMPARE(colorNumber("Blue"), 5);
        QCOMPARE(colorNumber("gray@part"), 8);
        QCOMPARE(colorNumber(""), NO_COLOR);
        QCOMPARE(colorNumber("16"), NO_COLOR);
        QCOMPARE(colorNumber("-1"), NO_COLOR);
        QCOMPARE(colorName(99), QString("99"));
    }

    void blocks_are_in_the_colour_of_the_palette()
    {
        QCOMPARE(colorValue(12), 0xffffff00U);
        QCOMPARE(colorBlock(12), QString("\033[48;2;255;255;0m    \033[0m"));
        QCOMPARE(colorBlock(0), QString("    "));
    }
};

QTEST_GUILESS_MAIN(TestColors)

#include "tst_Colors.moc"
