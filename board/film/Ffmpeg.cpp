/* SPDX-License-Identifier: MIT */
#include "board/film/Ffmpeg.h"

void Ffmpeg::beQuiet()
{
    av_log_set_level(AV_LOG_QUIET);
}

QString Ffmpeg::text(int iError)
{
    char szText[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(iError, szText, sizeof szText);
    return QString::fromLocal8Bit(szText);
}
