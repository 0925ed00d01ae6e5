/* SPDX-License-Identifier: MIT */
#include "tests/storm/CStormDraw.h"

#include <climits>
#include <vector>

namespace
{

struct SWeightRow {
    const char* pszMethod;
    int iWeight;
};

const SWeightRow WEIGHTS[] = {
    {"create_text",            12},
    {"set_text_position",      30},
    {"set_text_string",        20},
    {"set_text_colors",        10},
    {"show_text",              20},
    {"show_all_texts",         3 },
    {"hide_text",              8 },
    {"destroy_text",           8 },
    {"set_text_id",            5 },
    {"draw_temp_text",         5 },
    {"clear_temp_texts",       2 },
    {"start_video_recording",  5 },
    {"resume_video_recording", 4 },
    {"start_video_playback",   3 },
    {"resume_video_playback",  3 },
 // A start may fail after it.
    {"save_hardware_config",   0 },
 // By the storm, which counts them.
    {"reload_hardware_config", 0 },
};
const int OTHER_WEIGHT = 2;
const int RARE_WEIGHT = 1; // features that the board doesn't have, and switches
const int WRONG_TYPES_PERCENT = 2;

struct SNumberRow {
    const char* pszArgument;
    std::vector<int> cValues;
};

const std::vector<int> ANY = {0, 1, 2, 7, 100, 255, 256, 65535, 65536, -1, INT_MIN, INT_MAX};

// Handles as four clients get them, because they destroy all texts now and then. Temporary texts last long, because each
// that disappears by itself leaves a timer.
const SNumberRow NUMBERS[] = {
    {"text_handle",      {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 20, 25, 0, -1, INT_MIN}},
    {"id",               {0, 1, 102, 102, -1}                                                           },
    {"xpos",             {0, 1, 5, 10, 20, 30, 40, 51, 52, 53, 54, 200, 250, 255, 256, -1, INT_MAX}     },
    {"ypos",             {0, 0, 1, 1, 12, 24, 25, 26, 255, 256, -1, INT_MIN}                            },
    {"foreground_color", {0, 1, 4, 8, 15, 16, 255, -1, INT_MAX}                                         },
    {"background_color", {0, 1, 5, 13, 15, 16, 255, -1, INT_MIN}                                        },
    {"display_duration", {9999, 9998, 9000, 9500, 0, -1, 10000, INT_MAX}                                },
    {"sender",           {0, 0, 1, 2, -1}                                                               },
    {"width",            {0, 1, 360, 688, 719, 720, 721, 4095, 4096, 65536, -1}                         },
    {"height",           {0, 1, 288, 573, 576, 4095, 4096, 65536, -1}                                   },
};

bool isRare(const QByteArray& rcMethod)
{
    return rcMethod.startsWith("change_") || rcMethod.startsWith("toggle_") || rcMethod.startsWith("fpga_") ||
           rcMethod.startsWith("set_roi") || rcMethod == "draw_roi" || rcMethod == "move_video_position" ||
           rcMethod == "print_hardware_config" || rcMethod == "destroy_all_texts";
}

int weightOf(const QByteArray& rcMethod)
{
    for (const SWeightRow& rsRow : WEIGHTS)
        if (rcMethod == rsRow.pszMethod)
            return rsRow.iWeight;
    return isRare(rcMethod) ? RARE_WEIGHT : OTHER_WEIGHT;
}

} // namespace

CStormDraw::CStormDraw(const QVector<CInterfaces::SMethod>& rcMethods, const QString& rcFiles,
                       quint32 u32Seed)
    : m_cFiles(rcFiles), m_cRandom(u32Seed)
{
    for (const CInterfaces::SMethod& rsMethod : rcMethods)
        m_cLot += QVector<const CInterfaces::SMethod*>(weightOf(rsMethod.cName), &rsMethod);
}

CStormDraw::SDrawn CStormDraw::draw()
{
    const CInterfaces::SMethod* psMethod = m_cLot[below(m_cLot.size())];
    SDrawn sDrawn = {
        {psMethod->cPath, psMethod->cName, {}},
        psMethod, percent(WRONG_TYPES_PERCENT)
    };
    for (const CInterfaces::SArgument& rsArgument : psMethod->cIn)
        sDrawn.sCall.cArguments << value(rsArgument);
    if (sDrawn.bWrongTypes)
        sDrawn.sCall.cArguments << QVariant(QByteArray("one too many"));
    return sDrawn;
}

QVariant CStormDraw::value(const CInterfaces::SArgument& rsArgument)
{
    if (rsArgument.cType == "b")
        return percent(50);
    if (rsArgument.cType == "i")
        return number(rsArgument.cName);
    if (rsArgument.cName == "filename")
        return file();
    if (rsArgument.cName == "hardware_name" && percent(50))
        return QByteArray(percent(50) ? "fpga" : "saa7113");
    if (rsArgument.cName == "locale_code" && percent(50))
        return QByteArray(percent(50) ? "ru_RU" : "ro_RO");
    return text();
}

int CStormDraw::number(const QByteArray& rcName)
{
    const std::vector<int>* pcValues = &ANY;
    for (const SNumberRow& rsRow : NUMBERS)
        if (rcName == rsRow.pszArgument)
            pcValues = &rsRow.cValues;
    return (*pcValues)[static_cast<std::size_t>(below(static_cast<int>(pcValues->size())))];
}

QByteArray CStormDraw::text()
{
    static const uint CHARACTERS[] = {'a',  'B',    '7',   ' ',   '\n',   1,      0x7f,
                                      0xe4, 0x20ac, 0x416, 0x102, 0x200b, 0xfeff, 0x1f600};
    const int iLength = percent(10) ? oneOf({52, 53, 54, 255, 256, 300, 5000}) : below(20);
    QVector<uint> cCharacters;
    for (int i = 0; i < iLength; ++i)
        cCharacters << CHARACTERS[below(static_cast<int>(sizeof CHARACTERS / sizeof *CHARACTERS))];
    return QString::fromUcs4(cCharacters.constData(), cCharacters.size()).toUtf8();
}

QByteArray CStormDraw::hugeText()
{
    return QByteArray(1000000 * (1 + below(3)), 'x');
}

QByteArray CStormDraw::file()
{
    static const char* const NAMES[] = {"a.ts", "b.ts", "c.bmp", "d.bmp", ".", "", "none/e", "\xd0\x96"};
    const char* pszName = NAMES[below(static_cast<int>(sizeof NAMES / sizeof *NAMES))];
    return *pszName != '\0' ? m_cFiles.toUtf8() + '/' + pszName : QByteArray();
}
