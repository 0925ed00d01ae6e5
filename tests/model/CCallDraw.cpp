/* SPDX-License-Identifier: MIT */
#include "tests/model/CCallDraw.h"

#include "tests/model/Locales.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <iterator>
#include <vector>

#include <rapidcheck.h>

namespace
{

// What most of the rules are about is drawn most; a still image waits for the hardware.
struct SWeightRow {
    const char* pszMethod;
    int iWeight;
};

const SWeightRow WEIGHTS[] = {
    {"create_text",                    40},
    {"set_text_position",              60},
    {"set_text_string",                40},
    {"set_text_colors",                20},
    {"show_text",                      50},
    {"hide_text",                      20},
    {"destroy_text",                   15},
    {"set_text_id",                    15},
    {"show_all_texts",                 10},
    {"draw_temp_text",                 20},
    {"set_videocounter",               10},
    {"videocounter_start",             10},
    {"videocounter_stop",              6 },
    {"videocounter_pause",             6 },
    {"videocounter_resume",            6 },
    {"adjust_character_set_to_locale", 8 },
    {"start_video_recording",          15},
    {"pause_video_recording",          8 },
    {"resume_video_recording",         12},
    {"stop_video_recording",           6 },
    {"start_video_playback",           6 },
    {"pause_video_playback",           4 },
    {"resume_video_playback",          6 },
    {"stop_video_playback",            6 },
    {"display_video_image",            4 },
    {"clear_video_image",              4 },
    {"set_video_size",                 4 },
 // After a save a start may fail, and does so on purpose.
    {"save_hardware_config",           0 },
};
const int OTHER_WEIGHT = 1;
const int WORLD_PERCENT = 15;
const int WRONG_TYPES_PERCENT = 3;

int weightOf(const QByteArray& rcMethod)
{
    for (const SWeightRow& rsRow : WEIGHTS)
        if (rcMethod == rsRow.pszMethod)
            return rsRow.iWeight;
    return OTHER_WEIGHT;
}

int below(int iEnd)
{
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(0, iEnd));
}

bool percent(int iPercent)
{
    return below(100) < iPercent;
}

int oneOf(const std::vector<int>& rcValues)
{
    return *rc::gen::elementOf(rcValues);
}

// In range most of the time, else around a border, else anything.
int drawNumber(int iEnd, const std::vector<int>& rcBorders)
{
    const int iKind = below(10);
    if (iKind == 0)
        return oneOf({-1, INT_MIN, INT_MAX});
    return iKind < 4 ? oneOf(rcBorders) : below(iEnd);
}

int drawHandle(const CDaemonModel& rcModel)
{
    const CTextLayerModel::CTexts& rcTexts = rcModel.texts().texts();
    if (rcTexts.empty() || percent(10))
        return oneOf({0, 1, 7, -1, INT_MIN, INT_MAX});
    auto it = rcTexts.begin();
    std::advance(it, *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::size_t>(0, rcTexts.size())));
    return static_cast<int>(it->first);
}

// Letters of all sets and of none: with half characters, accents of their own, and what is invisible.
const std::vector<uint> CHARACTERS = {'a',   'b',    'Z',    '0',    ' ',    '?',    '~',     0x7f,    1,
                                      '\t',  '\n',   0x80,   0x85,   0xe4,   0xdf,   0xd7,    0xa4,    0x20ac,
                                      0x160, 0x218,  0x21a,  0x102,  0x141,  0x416,  0x44f,   0x40e,   0x2116,
                                      0x301, 0x200b, 0xfeff, 0xffff, 0x2550, 0x4e2d, 0x1f600, 0x10ffff};

QByteArray drawString()
{
    const int iKind = below(10);
    const auto cCharacter = rc::gen::elementOf(CHARACTERS);
    std::vector<uint> cCharacters;
    if (iKind == 0) {
        const auto uLength = static_cast<std::size_t>(oneOf({52, 53, 54, 200, 255, 256, 257, 300}));
        cCharacters = *rc::gen::container<std::vector<uint>>(uLength, cCharacter);
    } else {
        cCharacters = *rc::gen::resize(20, rc::gen::container<std::vector<uint>>(cCharacter));
    }
    return QString::fromUcs4(cCharacters.data(), static_cast<int>(cCharacters.size())).toUtf8();
}

QByteArray drawFile(const CDaemonModel& rcModel)
{
    return *rc::gen::weightedElement<QByteArray>({
        {6, rcModel.film() },
        {3, rcModel.still()},
        {1, QByteArray()   },
        {1, "/nowhere/a"   },
        {1, "/"            }
    });
}

using FDraw = std::function<QVariant(const CDaemonModel&)>;

FDraw number(int iEnd, const std::vector<int>& rcBorders)
{
    return [=](const CDaemonModel&) { return QVariant(drawNumber(iEnd, rcBorders)); };
}

struct SValueRow {
    const char* pszName;
    FDraw fnDraw;
};

const SValueRow VALUES[] = {
    {"text_handle",                              [](const CDaemonModel& rcModel) { return QVariant(drawHandle(rcModel)); }},
    {"id",
     [](const CDaemonModel&) {
         return QVariant(oneOf({0, 1, 1, 102, 102, 102, -1}));
     }                                                                                                                    },
    {"xpos",                                     number(53,                                                                 {0, 51, 52, 53, 54, 127, 250, 254, 255, 256, 300})},
    {"ypos",                                          number(3,                                                                                                              {0, 12, 24, 25, 26, 255, 256})},
    {"foreground_color",            number(16,{0, 7, 15, 16, 255, 256})},
    {"background_color",                      number(16,                                                                                               {0, 7, 15, 16, 255, 256})},
    {"display_duration",                         number(6,                                                                    {0, 1, 9998, 9999, 10000})},
    {"sender",                                          number(2,                                                                                                  {0, 1, 2})},
    {"hours",                number(24,                      {0, 99, 100, 101, 1000})},
    {"minutes",number(60,{0, 59, 60, 61})},
    {"seconds",                                    number(60,                                                                                     {0, 57, 58, 59, 60, 61})},
    {"frames",                                          number(25,                                                                                                           {0, 99, 100, 101})},
    {"width",                          number(720,                                                                                                                                             {0, 1, 719, 720, 721, 4095, 4096, 65536})},
    {"height",number(576,{0, 1, 4095, 4096, 65536})},
    {"filename",                                   [](const CDaemonModel& rcModel) { return QVariant(drawFile(rcModel)); }                                                         },
    {"locale_code",
     [](const CDaemonModel&) {
         return QVariant(QByteArray(
             LOCALES[*rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::size_t>(0, std::size(LOCALES)))]
                 .pszName));
     }                                                                                                            },
 // Those of a chip print its registers, and nothing else.
    {"hardware_name", [](const CDaemonModel&) { return QVariant(QByteArray("LIME")); }},
};

const SValueRow TYPES[] = {
    {"i", number(100, {0, 1, 255, 256, 65535, 65536})},
    {"b",   [](const CDaemonModel&) { return QVariant(*rc::gen::arbitrary<bool>()); }          },
    {"s",   [](const CDaemonModel&) { return QVariant(drawString()); }},
};

template <std::size_t N>
const SValueRow* find(const SValueRow (&rasRows)[N], const QByteArray& rcName)
{
    const SValueRow* psRow = std::find_if(std::begin(rasRows), std::end(rasRows),
                                          [&](const SValueRow& rs) { return rcName == rs.pszName; });
    return psRow != std::end(rasRows) ? psRow : nullptr;
}

std::vector<QVariant> simplerValues(const QVariant& rcValue)
{
    if (rcValue.type() == QVariant::Int && rcValue.toInt() != 0)
        return {0, rcValue.toInt() / 2};
    const QString cText = QString::fromUtf8(rcValue.toByteArray());
    if (rcValue.type() == QVariant::ByteArray && !cText.isEmpty())
        return {QByteArray(""), cText.left(cText.size() / 2).toUtf8()};
    return {};
}

} // namespace

CCallDraw::CCallDraw(const QVector<CInterfaces::SMethod>& rcMethods)
{
    for (const CInterfaces::SMethod& rsMethod : rcMethods)
        if (!rsMethod.isGetter())
            m_cLot.insert(m_cLot.end(), static_cast<std::size_t>(weightOf(rsMethod.cName)), rsMethod);
}

bool CCallDraw::knows(const CInterfaces::SArgument& rsArgument)
{
    return find(TYPES, rsArgument.cType) != nullptr;
}

std::vector<CCallDraw::SDrawn> CCallDraw::simpler(const SDrawn& rsDrawn)
{
    std::vector<SDrawn> cSimpler;
    for (int i = 0; i < rsDrawn.sCall.cArguments.size(); ++i) {
        for (const QVariant& rcValue : simplerValues(rsDrawn.sCall.cArguments[i])) {
            cSimpler.push_back(rsDrawn);
            cSimpler.back().sCall.cArguments[i] = rcValue;
        }
    }
    return cSimpler;
}

QVariant CCallDraw::drawValue(const CInterfaces::SArgument& rsArgument, const CDaemonModel& rcModel)
{
    const SValueRow* psRow = find(VALUES, rsArgument.cName);
    return (psRow != nullptr ? psRow : find(TYPES, rsArgument.cType))->fnDraw(rcModel);
}

CCallDraw::SDrawn CCallDraw::draw(const CDaemonModel& rcModel) const
{
    return percent(WORLD_PERCENT) ? drawWorld() : drawCall(rcModel);
}

CCallDraw::SDrawn CCallDraw::drawCall(const CDaemonModel& rcModel) const
{
    const CInterfaces::SMethod sMethod = *rc::gen::elementOf(m_cLot);
    SDrawn sDrawn;
    sDrawn.sCall.cPath = sMethod.cPath;
    sDrawn.sCall.cMethod = sMethod.cName;
    for (const CInterfaces::SArgument& rsArgument : sMethod.cIn)
        sDrawn.sCall.cArguments << drawValue(rsArgument, rcModel);
    sDrawn.bReply = sMethod.bReply;
    if (percent(WRONG_TYPES_PERCENT)) {
        sDrawn.sCall.cArguments << QVariant(true);
        sDrawn.bReply = true;
        sDrawn.bWrongTypes = true;
    }
    return sDrawn;
}

CCallDraw::SDrawn CCallDraw::drawWorld() const
{
    SDrawn sDrawn;
    sDrawn.sCall.cPath = CDaemonModel::WORLD;
    const int iKind = oneOf({0, 0, 0, 0, 0, 0, 0, 0, 1, 2});
    if (iKind == 0) {
        sDrawn.sCall.cMethod = "pass";
        sDrawn.sCall.cArguments = {oneOf({1, 1, 1, 2, 3, 5, 5, 6, 30, 60, 3000, 3479, 3480, 9999}),
                                   !percent(10)};
    } else {
        sDrawn.sCall.cMethod = iKind == 1 ? "codec" : "camera";
        sDrawn.sCall.cArguments = {*rc::gen::arbitrary<bool>()};
    }
    return sDrawn;
}
