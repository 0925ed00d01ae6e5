/* SPDX-License-Identifier: MIT */
#include "tests/storm/AnswerRules.h"

#include <QByteArrayList>

#include <climits>

namespace
{

/// The values of a number, or the values of a list and their type.
struct SRangeRow {
    const char* pszMethod;
    int iFrom;
    int iTo;
    int iCount;
    char cType;
};

const SRangeRow RANGES[] = {
    {"get_max_text_line_width",               53,      53,      1, 'i'},
    {"get_max_text_line_count",               26,      26,      1, 'i'},
    {"create_text",                           0,       65536,   1, 'i'},
    {"get_text_handle_by_id",                 0,       65536,   1, 'i'},
    {"get_text_format",                       1,       255,     1, 'i'},
    {"get_text_length",                       0,       255,     1, 'i'},
    {"get_text_position",                     0,       255,     3, 'i'},
    {"get_text_colors",                       INT_MIN, INT_MAX, 2, 'i'},
    {"get_videocounter",                      INT_MIN, INT_MAX, 5, 'i'},
    {"query_video_recording_time",            0,       INT_MAX, 3, 'u'},
    {"get_displayed_video_width",             1,       4095,    1, 'i'},
    {"get_displayed_video_height",            1,       4095,    1, 'i'},
    {"get_video_recording_average_data_rate", 22,      22,      1, 'i'},
    {"get_video_input_type",                  0,       1,       1, 'i'},
    {"clear_video_image",                     2,       2,       1, 'i'},
    {"save_video_image",                      0,       2,       1, 'i'},
    {"display_video_image",                   0,       4,       1, 'i'},
    {"start_video_recording",                 0,       2,       1, 'i'},
    {"pause_video_recording",                 0,       2,       1, 'i'},
    {"resume_video_recording",                0,       2,       1, 'i'},
    {"stop_video_recording",                  0,       2,       1, 'i'},
    {"start_video_playback",                  0,       2,       1, 'i'},
    {"pause_video_playback",                  0,       2,       1, 'i'},
    {"resume_video_playback",                 0,       2,       1, 'i'},
    {"stop_video_playback",                   0,       2,       1, 'i'},
};
const SRangeRow ANY_NUMBER = {nullptr, INT_MIN, INT_MAX, 1, 'i'};

const SRangeRow& rangeOf(const QByteArray& rcMethod)
{
    for (const SRangeRow& rsRow : RANGES)
        if (rcMethod == rsRow.pszMethod)
            return rsRow;
    return ANY_NUMBER;
}

bool areNumbers(const QByteArray& rcValues, const SRangeRow& rsRange)
{
    const QByteArrayList cParts = rcValues.split(' ');
    bool bOk = cParts.size() == 2 * rsRange.iCount;
    for (int i = 0; bOk && i < cParts.size(); i += 2) {
        const qint64 iValue = cParts[i + 1].toLongLong(&bOk);
        bOk = bOk && cParts[i] == QByteArray(1, rsRange.cType) && iValue >= rsRange.iFrom &&
              iValue <= rsRange.iTo;
    }
    return bOk;
}

} // namespace

bool isPrescribed(const CInterfaces::SMethod& rsMethod, const QByteArray& rcAnswer, bool bWrongTypes)
{
    if (bWrongTypes)
        return rcAnswer == "error org.freedesktop.DBus.Error.UnknownMethod";
    if (rsMethod.cOut.isEmpty())
        return rcAnswer.isEmpty();
    const QByteArray& rcType = rsMethod.cOut[0].cType;
    if (rcType == "s")
        return rcAnswer.startsWith("s \"") && rcAnswer.endsWith('"');
    if (rcType == "b")
        return rcAnswer == "b true" || rcAnswer == "b false";
    const QByteArray cValues = rcType == "av" && rcAnswer.startsWith("av ") ? rcAnswer.mid(3) : rcAnswer;
    return (rcType == "av") == rcAnswer.startsWith("av ") && areNumbers(cValues, rangeOf(rsMethod.cName));
}
