/* SPDX-License-Identifier: MIT */
#include "ctl/Colors.h"

#include "fpga/palettes.h"

namespace
{

struct SColorRow {
    const char* pszName;
    const char* pszAlias; ///< or null
};

// The number is the row's. 7 is the same colour as 4.
const SColorRow COLOR_NAMES[COLORS] = {
    {"transparent", nullptr    },
    {"white",       nullptr    },
    {"dark-red",    "maroon"   },
    {"dark-green",  nullptr    },
    {"teal",        nullptr    },
    {"navy",        "blue"     },
    {"purple",      nullptr    },
    {"teal-2",      nullptr    },
    {"grey@part",   "gray@part"},
    {"silver",      nullptr    },
    {"red",         nullptr    },
    {"green",       "lime"     },
    {"yellow",      nullptr    },
    {"navy@half",   "blue@half"},
    {"magenta",     "fuchsia"  },
    {"black",       nullptr    },
};

bool isCalled(const SColorRow& rsRow, const QString& rcName)
{
    return rcName == QLatin1String(rsRow.pszName) || rcName == QLatin1String(rsRow.pszAlias);
}

bool isColor(int iColor)
{
    return iColor >= 0 && iColor < COLORS;
}

} // namespace

int colorNumber(const QString& rcName)
{
    bool bNumber = false;
    const int iNumber = rcName.toInt(&bNumber);
    if (bNumber)
        return isColor(iNumber) ? iNumber : NO_COLOR;
    const QString cName = rcName.toLower();
    for (int iColor = 0; iColor < COLORS; ++iColor)
        if (!cName.isEmpty() && isCalled(COLOR_NAMES[iColor], cName))
            return iColor;
    return NO_COLOR;
}

QString colorName(int iColor)
{
    return isColor(iColor) ? QString::fromLatin1(COLOR_NAMES[iColor].pszName) : QString::number(iColor);
}

QStringList colorNames()
{
    QStringList cNames;
    for (const SColorRow& rsRow : COLOR_NAMES)
        cNames << QString::fromLatin1(rsRow.pszName);
    return cNames;
}

std::uint32_t colorValue(int iColor)
{
    return isColor(iColor) ? text_forderground_color_tab[iColor] : 0;
}

QString colorBlock(int iColor)
{
    const std::uint32_t u32Color = colorValue(iColor);
    if (u32Color >> 24 == 0)
        return QStringLiteral("    ");
    return QStringLiteral("\033[48;2;%1;%2;%3m    \033[0m")
        .arg(u32Color >> 16 & 0xff)
        .arg(u32Color >> 8 & 0xff)
        .arg(u32Color & 0xff);
}
